# What the classes that look at the screen, beyond Qt's own windows, share.
pkg_check_modules(XCB_SCREEN REQUIRED IMPORTED_TARGET xcb)

tollbeam_room(tollbeam_freedesktop_screen
  x11/ManagerSelection.cpp
  x11/XServer.cpp)
target_link_libraries(tollbeam_freedesktop_screen
  PUBLIC tollbeam_colour Qt6::Core Qt6::Gui PkgConfig::XCB_SCREEN)
set_target_properties(tollbeam_freedesktop_screen PROPERTIES AUTOMOC ON)
