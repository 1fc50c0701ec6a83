# What the classes that speak D-Bus share.
tollbeam_room(tollbeam_freedesktop_dbus DBusValue.cpp)
target_link_libraries(tollbeam_freedesktop_dbus PUBLIC tollbeam_ports Qt6::Core Qt6::DBus)
