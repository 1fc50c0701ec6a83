#!/usr/bin/python3
"""make_app.sh: a bundle is made and put into the user's folders whole, or not at all."""
import os
import subprocess
import unittest

from tree import TreeTest

ID = 'org.tollbeam.Tollbeam'
# Makes what the build and the installation of the real one make, as far as the script looks at it.
CMAKE = r'''
case $1 in
--preset) mkdir -p "build/$2" ;;
--build)
  [ -z "${COMPILE_ERROR:-}" ] || { echo "compile error" >&2; exit 1; }
  echo "$VERSION" >"build/$3/tollbeam" ;;
--install)
  prefix=${*: -1}
  [ -f "$2/tollbeam" ] || { echo "nothing was built" >&2; exit 1; }
  mkdir -p "$prefix/bin" "$prefix/resources/sounds/tollbeam"
  cp "$2/tollbeam" "$prefix/bin/tollbeam"
  touch "$prefix/resources/sounds/tollbeam/index.theme" ;;
esac
'''


class MakeApp(TreeTest):
    files = ('make_app.sh', 'scripts/packages.sh', 'packaging/%s.desktop.in' % ID, 'App/resources/%s.svg' % ID)
    home_name = 'a home "of" 100% $HOME `x` \\ = it\'s & co'

    def setUp(self):
        super().setUp()
        self.stand_in('cmake', CMAKE)
        self.installed = os.path.join(self.home, '.local/lib/Tollbeam.app')
        self.entry = os.path.join(self.home, '.local/share/applications', ID + '.desktop')

    def make_app(self, *words, version='1', **env):
        return self.run_script('make_app.sh', *words, VERSION=version, **env)

    def program(self, bundle=None):
        """What the bundle's program is; None when there is none."""
        try:
            with open(os.path.join(bundle or os.path.join(self.top, 'Tollbeam.app'), 'bin/tollbeam')) as f:
                return f.read().strip()
        except FileNotFoundError:
            return None

    def everything_at_home(self):
        return sorted(os.path.relpath(os.path.join(folder, name), self.home)
                      for folder, _, names in os.walk(self.home) for name in names)

    def test_makes_the_bundle_here_and_nothing_else(self):
        result = self.make_app()
        self.assertEqual(result.returncode, 0, result.output)
        self.assertEqual(self.program(), '1')
        self.assertEqual(self.everything_at_home(), [])
        self.assertEqual(os.listdir(os.path.join(self.top, 'build')), ['release'])

    def test_makes_the_bundle_of_another_build(self):
        result = self.make_app('--preset', 'dev')
        self.assertEqual(result.returncode, 0, result.output)
        self.assertEqual(self.program(), '1')
        self.assertEqual(os.listdir(os.path.join(self.top, 'build')), ['dev'])

    def test_a_new_bundle_takes_the_place_of_the_old_one(self):
        self.make_app()
        self.assertEqual(self.make_app(version='2').returncode, 0)
        self.assertEqual(self.program(), '2')
        self.assertNotIn('Tollbeam.app.old', os.listdir(self.top))

    def test_installs_program_entry_icon_and_sounds(self):
        result = self.make_app('--install')
        self.assertEqual(result.returncode, 0, result.output)
        self.assertEqual(self.program(self.installed), '1')
        self.assertEqual(self.everything_at_home(), [
            '.local/lib/Tollbeam.app/bin/tollbeam',
            '.local/lib/Tollbeam.app/resources/sounds/tollbeam/index.theme',
            '.local/share/applications/%s.desktop' % ID,
            '.local/share/icons/hicolor/scalable/apps/%s.svg' % ID,
            '.local/share/sounds/tollbeam/index.theme'])

    def test_installs_a_second_time_over_the_first(self):
        self.make_app('--install')
        before = self.everything_at_home()
        result = self.make_app('--install', version='2')
        self.assertEqual(result.returncode, 0, result.output)
        self.assertEqual(self.program(self.installed), '2')
        self.assertEqual(self.everything_at_home(), before)

    def test_the_entry_starts_the_program_whatever_the_home_is_called(self):
        self.make_app('--install')
        with open(self.entry) as f:
            values = dict(line.rstrip('\n').split('=', 1) for line in f if '=' in line)
        program = os.path.join(self.installed, 'bin/tollbeam')
        self.assertEqual(value_of(values['TryExec']), program)
        self.assertNotIn('@', ''.join(values.values()))
        check = subprocess.run(['desktop-file-validate', self.entry], stdout=subprocess.PIPE, text=True)
        self.assertEqual((check.returncode, check.stdout), (0, ''))
        # As desktops start it, by their library's own tool; both ends of the pipe close with the program.
        with open(program, 'w') as f:
            f.write('#!/bin/sh\necho started\n')
        os.chmod(program, 0o755)
        started = subprocess.run(['gio', 'launch', self.entry], stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True)
        self.assertEqual(started.stdout, 'started\n')

    def test_a_failed_build_installs_nothing_and_leaves_the_old_ones(self):
        self.make_app('--install')
        result = self.make_app('--install', version='2', COMPILE_ERROR='1')
        self.assertNotEqual(result.returncode, 0)
        self.assertNotIn('Made', result.output)
        self.assertNotIn('Installed', result.output)
        self.assertEqual((self.program(), self.program(self.installed)), ('1', '1'))

    def test_a_failed_build_in_a_clean_tree_leaves_the_bundle_that_was_there(self):
        self.write('Tollbeam.app/bin/tollbeam', 'from elsewhere')
        result = self.make_app('--install', COMPILE_ERROR='1')
        self.assertNotEqual(result.returncode, 0)
        self.assertEqual(self.program(), 'from elsewhere')
        self.assertEqual(self.everything_at_home(), [])

    def test_missing_packages_end_it_before_the_build(self):
        self.stand_in('dpkg-query', 'exit 1')
        self.stand_in('apt-get', 'exit 1')
        self.stand_in('sudo', 'exec "$@"')
        result = self.make_app('--install')
        self.assertNotEqual(result.returncode, 0)
        self.assertIn('The packages could not be installed.', result.output)
        self.assertIsNone(self.program())
        self.assertEqual(self.everything_at_home(), [])

    def test_uninstalls_what_it_installed_and_the_start_at_login(self):
        settings, login = '.config/Tollbeam/preferences.json', '.config/autostart/%s.desktop' % ID
        for file in (settings, login):
            self.write(os.path.join(self.home, file), '{}')
        self.make_app('--install')
        result = self.make_app('--uninstall')
        self.assertEqual(result.returncode, 0, result.output)
        self.assertEqual(self.everything_at_home(), [settings])
        self.assertEqual(self.program(), '1')
        self.assertIn('Nothing was installed.', self.make_app('--uninstall').output)

    def test_unknown_or_surplus_words_do_nothing(self):
        for words in (['--instal'], ['--install', 'x'], ['--uninstall', '--install']):
            with self.subTest(words):
                result = self.make_app(*words)
                self.assertEqual(result.returncode, 2, result.output)
                self.assertIn('./make_app.sh --uninstall', result.output)
        self.assertIsNone(self.program())
        self.assertEqual(self.everything_at_home(), [])


def value_of(text):
    """A string of a desktop entry, its own escapes undone."""
    return undone(text, {'s': ' ', 'n': '\n', 't': '\t', 'r': '\r', '\\': '\\'})


def undone(text, escapes):
    characters = iter(text)
    return ''.join(escapes[next(characters)] if c == '\\' else c for c in characters)


if __name__ == '__main__':
    unittest.main()
