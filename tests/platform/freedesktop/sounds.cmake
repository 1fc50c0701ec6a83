tollbeam_test(sounds_tests
  SOURCES
    support/QtMain.cpp
    platform/freedesktop/sounds/DesktopSoundsTest.cpp
    platform/freedesktop/support/Sandbox.cpp
  LIBS tollbeam_freedesktop_sounds tollbeam_test_support Qt6::Widgets
  PRECOMPILED dbus_tests)
