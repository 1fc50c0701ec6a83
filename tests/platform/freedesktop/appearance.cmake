tollbeam_test(look_readings_tests
  SOURCES
    support/StdMain.cpp
    platform/freedesktop/appearance/FontDescriptionTest.cpp
    platform/freedesktop/appearance/LookTest.cpp
    platform/freedesktop/appearance/ThemeNameTest.cpp
    platform/freedesktop/appearance/XSettingsTest.cpp
  LIBS tollbeam_look_readings
  PRECOMPILED std_tests)

tollbeam_test(appearance_tests
  SOURCES
    support/QtMain.cpp
    platform/freedesktop/DesktopAppearanceTest.cpp
    platform/freedesktop/FakeProperties.cpp
    platform/freedesktop/appearance/DesktopFontTest.cpp
    platform/freedesktop/appearance/DesktopPaletteTest.cpp
    platform/freedesktop/appearance/FakePortal.cpp
    platform/freedesktop/appearance/PortalSettingsTest.cpp
  LIBS tollbeam_freedesktop_appearance tollbeam_test_support
  PRECOMPILED dbus_tests)

# These bring an X server of their own (Xvfb), with a settings daemon on it.
tollbeam_test(appearance_x11_tests
  SOURCES
    platform/freedesktop/appearance/FakePortal.cpp
    platform/freedesktop/appearance/FakeSettingsDaemon.cpp
    platform/freedesktop/appearance/SettingsDaemonTest.cpp
    platform/freedesktop/statusbar/XvfbMain.cpp
  LIBS tollbeam_freedesktop_appearance tollbeam_test_support
  PRECOMPILED dbus_tests)
