#!/usr/bin/python3
"""run.sh and what it stands on: which machine is a laptop, and whether Tollbeam really runs there."""
import os
import unittest

from tree import TreeTest

# The session bus as far as it is asked: $HOME/owner holds who owns the name.
DBUS_SEND = r'''
[ -z "${NO_BUS:-}" ] || exit 1
case $* in
*GetId*) echo "   2fee" ;;
*GetConnectionUnixProcessID*string:org.tollbeam.Tollbeam) [ -f "$HOME/owner" ] && echo "   uint32 $(cat "$HOME/owner")" ;;
*) exit 1 ;;
esac
'''
TAKES_THE_NAME = 'echo $$ >"$HOME/owner"; touch "$HOME/started"; exec sleep 60'


class RunScript(TreeTest):
    files = ('run.sh', 'scripts/packages.sh', 'scripts/machine.sh', 'scripts/start.sh')

    def setUp(self):
        super().setUp()
        # Which batteries there are is another test's; here there is one or none.
        with open(os.path.join(self.top, 'scripts/machine.sh'), 'a') as f:
            f.write('has_battery() { [ -n "${BATTERY:-}" ]; }\n')
        self.stand_in('dbus-send', DBUS_SEND)
        self.stand_in('./make_app.sh', 'mkdir -p build; echo made')
        self.stand_in('tests/desk/short_day.py', 'echo "a short day: $*"')
        self.program(TAKES_THE_NAME)
        self.addCleanup(self.end_program)

    def program(self, script):
        self.stand_in('Tollbeam.app/bin/tollbeam', script)

    def owner(self):
        """The process that took the name; None when there is none."""
        try:
            with open(os.path.join(self.home, 'owner')) as f:
                return int(f.read())
        except FileNotFoundError:
            return None

    def end_program(self):
        if os.path.exists(os.path.join(self.home, 'started')):
            os.kill(self.owner(), 9)

    def started(self):
        return os.path.exists(os.path.join(self.home, 'started'))

    def run_sh(self, *words, **env):
        """On a laptop with a desktop, if not said otherwise."""
        return self.run_script('run.sh', *words, **{'BATTERY': 'yes', 'DISPLAY': ':77', **env})

    def test_a_laptop_gets_the_program_itself(self):
        result = self.run_sh()
        self.assertEqual(result.returncode, 0, result.output)
        self.assertIn('Tollbeam runs:', result.output)
        self.assertNotIn('short day', result.output)
        os.kill(self.owner(), 0)
        self.assertNotEqual(os.getsid(self.owner()), os.getsid(0))

    def test_elsewhere_a_short_day_is_played(self):
        for missing, env in (('no battery', {'BATTERY': ''}), ('no desktop', {'DISPLAY': ''}),
                             ('no session bus', {'NO_BUS': '1'})):
            with self.subTest(missing):
                result = self.run_sh('--keep', **env)
                self.assertEqual(result.returncode, 0, result.output)
                self.assertIn('There is %s here' % missing, result.output)
                self.assertIn('a short day: Tollbeam.app build/desk-day --keep', result.output)
                self.assertFalse(self.started())

    def test_the_short_day_may_be_asked_for(self):
        for words in (['--desk'], ['--keep', '--desk']):
            result = self.run_sh(*words)
            self.assertIn('a short day', result.output)
            self.assertNotIn('There is no', result.output)
        self.assertFalse(self.started())

    def test_a_program_that_ends_at_once_is_told_and_the_day_played(self):
        self.program('echo "could not connect to display" >&2; exit 134')
        result = self.run_sh()
        self.assertEqual(result.returncode, 0, result.output)
        self.assertNotIn('Tollbeam runs', result.output)
        self.assertIn('could not connect to display', result.output)
        self.assertIn('a short day', result.output)

    def test_a_program_that_ends_well_without_another_does_not_run(self):
        self.program('exit 0')
        result = self.run_sh()
        self.assertNotIn('Tollbeam runs', result.output)
        self.assertIn('a short day', result.output)

    def test_one_that_ran_already_is_told(self):
        with open(os.path.join(self.home, 'owner'), 'w') as f:
            f.write('4711')
        self.program('exit 0')
        result = self.run_sh()
        self.assertEqual(result.returncode, 0, result.output)
        self.assertIn('A Tollbeam ran already (process 4711)', result.output)
        self.assertNotIn('short day', result.output)

    def test_a_failed_build_starts_nothing(self):
        self.stand_in('./make_app.sh', 'exit 1')
        result = self.run_sh()
        self.assertNotEqual(result.returncode, 0)
        self.assertNotIn('short day', result.output)
        self.assertFalse(self.started())

    def test_unknown_words_do_nothing(self):
        for words in (['nonsense'], ['--keep', 'nonsense']):
            result = self.run_sh(*words)
            self.assertEqual(result.returncode, 2, result.output)
            self.assertNotIn('made', result.output)


class Machine(TreeTest):
    files = ('scripts/machine.sh',)

    def has_battery(self, **supplies):
        """Whether a machine with these supplies ({attribute: value} by name) has one."""
        for name, attributes in supplies.items():
            for attribute, value in attributes.items():
                self.write('supplies/%s/%s' % (name, attribute), value + '\n')
        self.stand_in('./ask', '. "$(dirname "$0")/scripts/machine.sh"; has_battery "$(dirname "$0")/supplies"\n')
        result = self.run_script('ask')
        self.assertEqual(result.output, '')
        return result.returncode == 0

    def test_a_desktop_computer_has_no_battery(self):
        self.assertFalse(self.has_battery())

    def test_a_charger_is_none(self):
        self.assertFalse(self.has_battery(AC={'type': 'Mains', 'online': '1'}))

    def test_a_laptop_has_one(self):
        self.assertTrue(self.has_battery(AC={'type': 'Mains'}, BAT0={'type': 'Battery', 'present': '1'}))

    def test_a_battery_may_say_that_it_is_the_machines(self):
        self.assertTrue(self.has_battery(BAT1={'type': 'Battery', 'scope': 'System'}))

    def test_that_of_a_mouse_is_not_the_machines(self):
        self.assertFalse(self.has_battery(hidpp_battery_0={'type': 'Battery', 'scope': 'Device', 'present': '1'}))

    def test_a_laptop_with_a_mouse_has_its_own(self):
        self.assertTrue(self.has_battery(BAT0={'type': 'Battery'}, hidpp_battery_0={'type': 'Battery', 'scope': 'Device'}))

    def test_an_empty_bay_is_none(self):
        self.assertFalse(self.has_battery(BAT0={'type': 'Battery', 'present': '0'}))


if __name__ == '__main__':
    unittest.main()
