# Sounds, and the small program beside tollbeam that plays them. Only that one links the sound
# library, which has no business in a program that waits all day.
pkg_check_modules(CANBERRA REQUIRED IMPORTED_TARGET libcanberra)

tollbeam_room(tollbeam_freedesktop_sounds sounds/DesktopSounds.cpp)
target_link_libraries(tollbeam_freedesktop_sounds PUBLIC tollbeam_ports PRIVATE Qt6::Core)
target_link_libraries(tollbeam_platform_freedesktop INTERFACE tollbeam_freedesktop_sounds)

add_executable(tollbeam-sound sounds/player.cpp)
target_link_libraries(tollbeam-sound PRIVATE PkgConfig::CANBERRA)
# DesktopSounds is told to look beside the program.
set_target_properties(tollbeam-sound PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/App)
