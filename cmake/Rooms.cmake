# tollbeam_room(VISIBILITY LIBRARY... [PRECOMPILED SET]): makes this folder a library of its sources,
# named by its path: App/ui/look becomes tollbeam_ui_look. It links only what its sources may use, so
# that an include of anything else does not compile. Headers are included by their path below App/.
function(tollbeam_room)
  cmake_parse_arguments(ARG "" "PRECOMPILED" "PUBLIC;PRIVATE" ${ARGN})
  cmake_path(RELATIVE_PATH CMAKE_CURRENT_SOURCE_DIR BASE_DIRECTORY ${PROJECT_SOURCE_DIR}/App
             OUTPUT_VARIABLE path)
  string(REPLACE / _ room tollbeam/${path})
  file(GLOB sources CONFIGURE_DEPENDS *.cpp)
  add_library(${room} STATIC ${sources})
  target_include_directories(${room} PUBLIC ${PROJECT_SOURCE_DIR}/App)
  target_link_libraries(${room} PUBLIC ${ARG_PUBLIC} PRIVATE ${ARG_PRIVATE})
  if(ARG_PRECOMPILED)
    tollbeam_precompile(${room} ${ARG_PRECOMPILED})
  endif()
endfunction()
