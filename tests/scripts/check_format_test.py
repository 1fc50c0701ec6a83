#!/usr/bin/python3
"""check_format.sh: every C++ file of the tree is looked at, with or without git."""
import unittest

from tree import TreeTest

GOOD = 'int twice(int x);\n'
BAD = 'int  twice( int x );\n'


class CheckFormat(TreeTest):
    files = ('scripts/check_format.sh', '.clang-format')

    def setUp(self):
        super().setUp()
        for name in ('App/a.h', 'App/one room/b.cpp', 'cmake/precompiled/c.h', 'tests/d.cpp'):
            self.write(name, GOOD)
        # As it answers in a tree that it does not know or trust.
        self.stand_in('git', 'exit 128')

    def test_formatted_files_pass(self):
        result = self.run_script('scripts/check_format.sh')
        self.assertEqual((result.returncode, result.output), (0, ''))

    def test_a_file_that_is_not_fails_wherever_it_is(self):
        for name in ('App/new.cpp', 'App/one room/b.cpp', 'cmake/precompiled/c.h', 'tests/d.cpp'):
            with self.subTest(name):
                self.write(name, BAD)
                result = self.run_script('scripts/check_format.sh')
                self.assertNotEqual(result.returncode, 0)
                self.assertIn(name, result.output)
                self.write(name, GOOD)


if __name__ == '__main__':
    unittest.main()
