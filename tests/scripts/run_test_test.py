#!/usr/bin/python3
"""tests/desk/run_test.py: what counts as failed or skipped, and that a test that hangs or is ended is taken down."""
import os
import subprocess
import textwrap
import time
import unittest

from tree import TreeTest

# Indented: what lists the tests of this file must not take these for its own.
TESTS = textwrap.dedent('''
    import os, time, unittest

    def note(name):
        with open(os.path.join(os.environ['HOME'], name), 'a') as f:
            f.write('x')

    class Some(unittest.TestCase):
        def test_good(self):
            note('good')
        def test_bad(self):
            note('bad')
            self.fail('this is bad')
        def test_bad_in_a_part(self):
            for part in (1, 2):
                with self.subTest(part=part):
                    self.assertNotEqual(part, 1)
        def test_hangs(self):
            self.addCleanup(note, 'taken down')
            note('hangs')
            time.sleep(600)
        @unittest.skip('not here')
        def test_skipped(self):
            pass
    ''')


class RunTest(TreeTest):
    files = ('tests/desk/run_test.py',)

    def setUp(self):
        super().setUp()
        self.write('tests/desk/test_some.py', TESTS)

    def run_tests(self, *tests, options=()):
        return self.run_script('tests/desk/run_test.py', *options, *('test_some.Some.test_' + t for t in tests))

    def notes(self):
        """{name: how often it was noted}"""
        return {name: os.path.getsize(os.path.join(self.home, name)) for name in os.listdir(self.home)}

    def test_what_passes_is_run_once(self):
        result = self.run_tests('good')
        self.assertEqual((result.returncode, self.notes()), (0, {'good': 1}), result.output)

    def test_a_failure_is_a_failure_and_gets_no_second_try(self):
        result = self.run_tests('bad', 'good')
        self.assertEqual((result.returncode, self.notes()), (1, {'bad': 1, 'good': 1}))
        self.assertIn('this is bad', result.output)

    def test_a_part_that_fails_is_a_failure(self):
        self.assertEqual(self.run_tests('bad_in_a_part').returncode, 1)

    def test_a_test_that_hangs_fails_and_is_taken_down(self):
        result = self.run_tests('hangs', 'good', options=('--patience', '3'))
        self.assertEqual((result.returncode, self.notes()), (1, {'hangs': 1, 'taken down': 1, 'good': 1}))
        self.assertIn('this took more than 3 s', result.output)

    def test_a_runner_that_ends_it_runs_nothing_more_but_all_is_taken_down(self):
        process = subprocess.Popen([os.path.join(self.top, 'tests/desk/run_test.py'),
                                    'test_some.Some.test_hangs', 'test_some.Some.test_good'],
                                   env=self.environment(), stderr=subprocess.PIPE, text=True)
        self.addCleanup(process.kill)
        while not self.notes() and process.poll() is None:
            time.sleep(0.01)
        process.terminate()
        process.communicate()
        self.assertEqual((process.returncode, self.notes()), (1, {'hangs': 1, 'taken down': 1}))

    def test_a_skipped_test_is_counted_as_skipped(self):
        self.assertEqual(self.run_tests('skipped').returncode, 77)

    def test_what_does_not_load_fails(self):
        self.assertEqual(self.run_tests('missing').returncode, 1)
        self.write('tests/desk/test_some.py', 'nonsense(')
        self.assertEqual(self.run_tests('good').returncode, 1)


if __name__ == '__main__':
    unittest.main()
