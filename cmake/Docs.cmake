# Target docs: the contracts of the ports and of the values, as pages below the build folder. It
# needs doxygen and fails on every warning, so that each name has its contract.
find_package(Doxygen QUIET)
if(DOXYGEN_FOUND)
  set(DOXYGEN_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/docs)
  set(DOXYGEN_STRIP_FROM_PATH ${PROJECT_SOURCE_DIR}/App)
  set(DOXYGEN_JAVADOC_AUTOBRIEF YES)
  set(DOXYGEN_HAVE_DOT NO)
  set(DOXYGEN_QUIET YES)
  set(DOXYGEN_WARN_AS_ERROR FAIL_ON_WARNINGS)
  file(GLOB headers CONFIGURE_DEPENDS App/platform/*.h App/values/*.h)
  doxygen_add_docs(docs ${headers})
endif()
