# Pictures of every state of the windows, for the eye: tests/desk/gallery makes them all.
add_executable(tollbeam_gallery
  gallery/main.cpp
  gallery/ChartPictures.cpp
  gallery/PopoverPictures.cpp
  gallery/SettingsPictures.cpp)
target_include_directories(tollbeam_gallery PRIVATE
  ${PROJECT_SOURCE_DIR}/tests ${PROJECT_SOURCE_DIR}/tests/gallery)
target_link_libraries(tollbeam_gallery PRIVATE tollbeam_ui tollbeam_platform_recorded Qt6::Test)
tollbeam_precompile(tollbeam_gallery widgets)
