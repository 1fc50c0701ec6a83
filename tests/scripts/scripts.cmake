# The scripts, each run in a copy of its part of the tree.
tollbeam_python_tests(${CMAKE_CURRENT_LIST_DIR}/make_app_test.py)
