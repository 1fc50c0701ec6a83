# The scripts, each run in a copy of its part of the tree.
file(GLOB scripts_tests CONFIGURE_DEPENDS ${CMAKE_CURRENT_LIST_DIR}/*_test.py)
foreach(file ${scripts_tests})
  tollbeam_python_tests(${file})
endforeach()
