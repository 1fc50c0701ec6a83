"""One program per session, its end in good order, and what a bundle is."""
import json
import os
import shutil
import signal
import unittest

from laptop import wait_for
from tollbeam import BUNDLE, NAME, TIMER, ProgramTest, low


class SecondStart(ProgramTest):
    options = {'panel': 'xfce', 'notify': 'none'}

    def test_it_opens_the_popover_of_the_first_and_ends(self):
        self.start()
        first = self.desk.app_pid()
        self.assertEqual(self.desk.run_app(BUNDLE), 0)
        self.popover_says('On battery')
        self.assertEqual(self.desk.app_pid(), first)
        self.assertEqual(len(self.screen.tray()), 1)

    def test_it_leaves_an_open_popover_open(self):
        self.start()
        self.screen.press_tray('left')
        self.popover_says('On battery')
        self.assertEqual(self.desk.run_app(BUNDLE), 0)
        self.round_trip()
        self.assertTrue(self.popover())

    def test_it_does_not_touch_the_history(self):
        self.start()
        self.discharge_to(77)
        before = os.stat(self.history_file).st_ino
        self.assertEqual(self.desk.run_app(BUNDLE), 0)
        self.assertEqual(os.stat(self.history_file).st_ino, before)

    def test_after_the_end_of_the_first_it_is_the_first(self):
        self.start()
        self.kill()
        self.start()
        self.screen.press_tray('left')
        self.popover_says('On battery')

    def test_it_takes_the_place_of_a_first_that_is_about_to_end(self):
        self.start()
        first = self.desk.app_pid()
        # It still has the name, and does not answer any more.
        os.kill(first, signal.SIGSTOP)
        self.desk.start_app(BUNDLE, name='other')
        wait_for(lambda: self.desk.session.names_of(self.desk.app_pid('other')), 'the second on the bus')
        self.desk.kill('app')
        self.started = False
        wait_for(lambda: self.desk.session.owner(NAME), 'a new owner of the name')
        self.assertEqual(len(self.screen.tray_item()), 4)
        self.assertIsNotNone(self.desk.app_pid('other'))
        self.assertEqual(self.desk.app_log('other'), '')

    def test_session_that_starts_it_twice_at_once_has_one(self):
        self.desk.clock.start_at(self.start_time)
        for name in ('app', 'other'):
            self.desk.start_app(BUNDLE, name=name)
        wait_for(lambda: [self.desk.app_pid('app'), self.desk.app_pid('other')].count(None) == 1, 'one of them to end')
        self.screen.tray_item()
        self.assertEqual(len(self.screen.tray()), 1)


class End(ProgramTest):
    def end_by(self, sign):
        self.start()
        self.discharge_to(77)
        self.assertNotEqual(self.history()[-1]['p'], 77)
        os.kill(self.desk.app_pid(), sign)
        wait_for(lambda: self.desk.app_pid() is None, 'the end of the program')
        self.started = False
        self.assertEqual(self.history()[-1]['p'], 77)
        self.assertEqual(self.desk.app_log(), '')

    def test_history_is_saved_at_the_end_of_the_session(self):
        self.end_by(signal.SIGTERM)

    def test_history_is_saved_at_a_keyboard_interrupt(self):
        self.end_by(signal.SIGINT)


class Bundle(ProgramTest):
    def place(self, *names):
        path = self.desk.path('home', *names)
        os.makedirs(os.path.dirname(path), exist_ok=True)
        return path

    def runs_and_posts_nothing(self, command):
        self.start(command)
        self.discharge_to(15)
        self.pass_time(TIMER)
        self.assertEqual(self.alerts(), [])
        self.open_popover()
        self.popover_says('15%')

    def test_bundle_elsewhere_under_another_name_posts(self):
        shutil.copytree(BUNDLE, self.place('My programs', 'Reminder.app'))
        self.start(self.place('My programs', 'Reminder.app'), lowPowerEnabled=False)
        self.discharge_to(15)
        self.assertEqual(self.alerts(), [low(15)])

    def test_link_to_the_program_of_a_bundle_posts(self):
        link = self.place('bin', 'tollbeam')
        os.symlink(os.path.join(BUNDLE, 'bin', 'tollbeam'), link)
        self.start(link, lowPowerEnabled=False)
        self.discharge_to(15)
        self.assertEqual(self.alerts(), [low(15)])

    def test_program_alone_posts_nothing(self):
        copy = self.place('bin', 'tollbeam')
        shutil.copy(os.path.join(BUNDLE, 'bin', 'tollbeam'), copy)
        self.runs_and_posts_nothing(copy)

    def test_folder_that_is_not_named_app_posts_nothing(self):
        shutil.copytree(BUNDLE, self.place('Tollbeam'))
        self.runs_and_posts_nothing(self.place('Tollbeam', 'bin', 'tollbeam'))

    def test_name_in_capitals_posts_nothing(self):
        shutil.copytree(BUNDLE, self.place('Tollbeam.APP'))
        self.runs_and_posts_nothing(self.place('Tollbeam.APP', 'bin', 'tollbeam'))

    def test_bundle_without_an_identifier_posts_nothing(self):
        copy = self.place('Tollbeam.app')
        shutil.copytree(BUNDLE, copy)
        with open(os.path.join(copy, 'Info.json')) as f:
            info = json.load(f)
        del info['identifier']
        with open(os.path.join(copy, 'Info.json'), 'w') as f:
            json.dump(info, f)
        self.runs_and_posts_nothing(copy)


if __name__ == '__main__':
    unittest.main()
