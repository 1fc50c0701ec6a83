#!/usr/bin/python3
"""test.sh: what was asked for is built and run, all of it, and the runner's summary is the last word."""
import os
import unittest

from tree import TreeTest

# One test for each kind, which leaves its name; a kind that is called in $FAIL fails.
LIST_TESTS = r'''
for kind in "$@"; do
  printf 'add_test(%s bash -c [=[echo %s >>"$HOME/ran"; [[ "$FAIL" != *%s* ]]]=])\n' $kind $kind $kind
done
printf 'add_test(tells bash -c [=[echo "this was starved once" >&$DESK_TELL]=])\n'
'''


class TestScript(TreeTest):
    files = ('test.sh', '.ci/run', 'scripts/packages.sh', 'scripts/check_skipped.py', 'scripts/allowed_skips.txt')

    def setUp(self):
        super().setUp()
        self.stand_in('cmake', 'echo "$*" >>"$HOME/built"')
        self.stand_in('./make_app.sh', 'echo bundle >>"$HOME/built"')
        self.stand_in('scripts/list_tests.sh', LIST_TESTS)

    def run_tests(self, *words, fail='', script='test.sh'):
        result = self.run_script(script, *words, FAIL=fail)
        result.ran, result.built = self.lines('ran'), self.lines('built')
        return result

    def lines(self, name):
        try:
            with open(os.path.join(self.home, name)) as f:
                return sorted(f.read().splitlines())
        except FileNotFoundError:
            return []

    def test_without_a_word_everything_is_built_and_run(self):
        for script in ('test.sh', '.ci/run'):
            with self.subTest(script):
                result = self.run_tests(script=script)
                self.assertEqual(result.returncode, 0, result.output)
                self.assertEqual(result.ran, ['asan', 'desk', 'lint', 'unit'])
                for part in ('--preset dev', '--preset asan', 'bundle'):
                    self.assertIn(part, result.built)
                os.unlink(os.path.join(self.home, 'ran'))

    def test_several_words_are_all_heeded(self):
        result = self.run_tests('unit', 'desk')
        self.assertEqual(result.returncode, 0, result.output)
        self.assertEqual(result.ran, ['desk', 'unit'])
        self.assertIn('bundle', result.built)
        self.assertNotIn('--preset asan', result.built)

    def test_a_kind_that_is_asked_for_twice_runs_once(self):
        self.assertEqual(self.run_tests('lint', 'lint').ran, ['lint'])

    def test_an_unknown_word_runs_nothing(self):
        for words in (['units'], ['unit', 'desks'], ['unit desk']):
            with self.subTest(words):
                result = self.run_tests(*words)
                self.assertEqual((result.returncode, result.ran, result.built), (2, [], []), result.output)
                self.assertIn('./test.sh [unit|asan|desk|lint|all]', result.output)

    def test_a_failed_test_fails_and_gets_no_second_try(self):
        result = self.run_tests('unit', 'lint', fail='unit')
        self.assertNotEqual(result.returncode, 0)
        self.assertEqual(result.ran, ['lint', 'unit'])

    def test_a_failed_build_runs_no_test(self):
        self.stand_in('cmake', 'exit 1')
        result = self.run_tests('unit')
        self.assertNotEqual(result.returncode, 0)
        self.assertEqual(result.ran, [])

    def test_the_summary_is_the_last_word_even_when_a_second_try_is_told(self):
        lines = self.run_tests('unit').output.strip().splitlines()
        self.assertIn('this was starved once', lines)
        self.assertIn('100% tests passed, 0 tests failed out of 2', lines)
        self.assertTrue(lines[-1].startswith('Total Test time'), lines)


if __name__ == '__main__':
    unittest.main()
