# The sounds are judged by Python, which made them.
tollbeam_python_tests(${CMAKE_CURRENT_LIST_DIR}/sounds_test.py)
