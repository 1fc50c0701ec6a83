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
'''


class TestScript(TreeTest):
    files = ('test.sh', '.ci/run', 'scripts/packages.sh', 'scripts/check_skipped.py', 'scripts/allowed_skips.txt')

    def setUp(self):
        super().setUp()
        self.stand_in('cmake', 'echo "$*" >>"$HOME/built"')
        self.stand_in('./make_app.sh', 'echo "bundle $*" >>"$HOME/built"')
        self.stand_in('tests/other_release', 'echo "other release: $*" >>"$HOME/built"')
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

    def test_without_a_word_what_a_change_needs_is_built_and_run(self):
        result = self.run_tests()
        self.assertEqual(result.returncode, 0, result.output)
        self.assertEqual(result.ran, ['desk', 'unit'])
        self.assertEqual(result.built, ['--build --preset dev', '--preset dev', 'bundle --preset dev'])

    def test_the_desk_alone_or_with_everything_runs_what_is_shipped(self):
        for words in (['desk'], ['all']):
            with self.subTest(words):
                self.assertIn('bundle ', self.run_tests(*words).built)

    def test_everything_is_built_and_run_when_asked_for_and_before_a_merge(self):
        for script, words in (('test.sh', ['all']), ('.ci/run', [])):
            with self.subTest(script):
                result = self.run_tests(*words, script=script)
                self.assertEqual(result.returncode, 0, result.output)
                self.assertEqual(result.ran, ['asan', 'desk', 'lint', 'release', 'unit'])
                for part in ('--preset dev', '--preset asan', 'bundle ', 'other release: build'):
                    self.assertIn(part, result.built)
                os.unlink(os.path.join(self.home, 'ran'))

    def test_another_release_that_cannot_be_made_keeps_no_other_test_from_running(self):
        self.stand_in('dpkg-query', '[[ "${*: -1}" = debootstrap ]] || echo installed')
        self.stand_in('apt-get', 'exit 1')
        self.stand_in('sudo', 'exit 1')
        for code in (1, 77):
            with self.subTest(code):
                self.stand_in('tests/other_release', 'exit %d' % code)
                result = self.run_tests('all')
                self.assertEqual(result.returncode, 0, result.output)
                self.assertEqual(result.ran, ['asan', 'desk', 'lint', 'release', 'unit'])
                os.unlink(os.path.join(self.home, 'ran'))

    def test_what_will_run_is_said_before_anything_is_done(self):
        self.stand_in('cmake', 'exit 1')
        result = self.run_tests('lint', 'unit')
        self.assertRegex(result.output.splitlines()[0], 'lint unit.* minutes')

    def test_the_building_shows_how_far_it_is(self):
        self.stand_in('cmake', 'if [ $1 = --build ]; then echo "[1/2] $*"; fi')
        self.assertIn('[1/2] --build --preset dev\n', self.run_tests('unit').output)

    def test_several_words_are_all_heeded(self):
        result = self.run_tests('unit', 'desk')
        self.assertEqual(result.returncode, 0, result.output)
        self.assertEqual(result.ran, ['desk', 'unit'])
        self.assertIn('bundle --preset dev', result.built)
        self.assertNotIn('--preset asan', result.built)

    def test_a_kind_that_is_asked_for_twice_runs_once(self):
        self.assertEqual(self.run_tests('lint', 'lint').ran, ['lint'])

    def test_an_unknown_word_runs_nothing(self):
        for words in (['units'], ['unit', 'desks'], ['unit desk']):
            with self.subTest(words):
                result = self.run_tests(*words)
                self.assertEqual((result.returncode, result.ran, result.built), (2, [], []), result.output)
                self.assertIn('./test.sh [unit|desk|asan|lint|release|all]', result.output)

    def test_without_the_other_release_everything_else_is_run(self):
        self.stand_in('tests/other_release', 'exit 77')
        result = self.run_tests('all')
        self.assertEqual(result.returncode, 0, result.output)
        self.assertEqual(result.ran, ['asan', 'desk', 'lint', 'release', 'unit'])

    def test_a_failed_test_fails_and_gets_no_second_try(self):
        result = self.run_tests('unit', 'lint', fail='unit')
        self.assertNotEqual(result.returncode, 0)
        self.assertEqual(result.ran, ['lint', 'unit'])

    def test_a_failed_build_runs_no_test(self):
        self.stand_in('cmake', 'exit 1')
        result = self.run_tests('unit')
        self.assertNotEqual(result.returncode, 0)
        self.assertEqual(result.ran, [])

    def test_the_summary_is_the_last_word(self):
        lines = self.run_tests('unit').output.strip().splitlines()
        self.assertIn('100% tests passed, 0 tests failed out of 1', lines)
        self.assertTrue(lines[-1].startswith('Total Test time'), lines)


if __name__ == '__main__':
    unittest.main()
