"""One program per session, its end in good order, and what a bundle is."""
import json
import os
import shutil
import signal
import unittest

from laptop import wait_for
from laptop.session import RESTART_NEVER, SessionManager
from tollbeam import BUNDLE, CLOSED_BY_CALL, LOW, NAME, PATH, TIMER, ProgramTest, low


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

    def test_it_ends_without_the_popover_while_the_first_is_launching(self):
        self.desk.clock.start_at(self.start_time)
        # The launch waits for what upowerd says; without the time passing it does not give up.
        self.desk.clock.hold()
        upowerd = self.desk.processes.pid('upowerd')
        os.kill(upowerd, signal.SIGSTOP)
        try:
            self.start_only()
            wait_for(lambda: self.desk.session.owner(NAME), 'the name on the bus')
            self.desk.session.call(NAME, PATH, 'org.freedesktop.Application', 'Activate', '(a{sv})', {})
            self.assertFalse(self.follows_the_item_list(), 'the launch did not wait')
        finally:
            os.kill(upowerd, signal.SIGCONT)
        self.desk.clock.release()
        self.wait_until_launched()
        self.assertFalse(self.popover())
        self.open_popover()

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


class SecondSession(ProgramTest):
    """Of the same user, with a bus of its own and the same home."""

    def test_its_program_ends_and_leaves_the_history_to_the_first(self):
        self.start()
        self.discharge_to(77)
        before = os.stat(self.history_file)
        # One that does not end is killed together with its bus.
        second = self.desk.run_app('timeout', '60', 'dbus-run-session', '--', os.path.join(BUNDLE, 'bin', 'tollbeam'))
        self.assertEqual(second, 0)
        self.assertEqual(os.stat(self.history_file), before)
        self.assertIsNotNone(self.desk.app_pid())


class EndTest(ProgramTest):
    """Whatever ends the program, the last sample, which is in memory only, reaches the file."""

    def start_and_change(self, **environment):
        self.desk.clock.start_at(self.start_time)
        self.start_only(BUNDLE, **environment)
        self.wait_until_launched()
        self.discharge_to(77)
        self.assertNotEqual(self.history()[-1]['p'], 77)

    def ends_and_has_saved(self):
        wait_for(lambda: self.desk.app_pid() is None, 'the end of the program')
        self.started = False
        self.assertEqual(self.history()[-1]['p'], 77)


class End(EndTest):
    def end_by(self, sign):
        self.start_and_change()
        os.kill(self.desk.app_pid(), sign)
        self.ends_and_has_saved()
        self.assertEqual(self.desk.app_log(), '')

    def test_history_is_saved_at_the_end_of_the_session(self):
        self.end_by(signal.SIGTERM)

    def test_history_is_saved_at_a_keyboard_interrupt(self):
        self.end_by(signal.SIGINT)

    def test_history_is_saved_when_the_terminal_hangs_up(self):
        self.end_by(signal.SIGHUP)

    def test_history_is_saved_when_the_x_server_is_gone(self):
        self.start_and_change()
        self.desk.kill('screen')
        self.ends_and_has_saved()

    def test_history_is_saved_when_the_wayland_compositor_is_gone(self):
        environment = {'WAYLAND_DISPLAY': 'desk-wayland', 'QT_QPA_PLATFORM': 'wayland'}
        self.desk.processes.start('compositor', ['weston', '--backend=headless-backend.so', '--no-config',
                                                 '--socket=' + environment['WAYLAND_DISPLAY']], self.desk.env)
        wait_for(lambda: os.path.exists(self.desk.path('run', environment['WAYLAND_DISPLAY'])), 'the compositor')
        self.start_and_change(**environment)
        self.desk.kill('compositor')
        self.ends_and_has_saved()

    def test_program_outlives_the_session_bus_and_saves_at_its_end(self):
        self.start_and_change()
        self.desk.kill('session-bus')
        os.kill(self.desk.app_pid(), signal.SIGTERM)
        self.ends_and_has_saved()

    def test_history_is_saved_when_both_buses_and_the_x_server_are_gone(self):
        self.start_and_change()
        for part in ('session-bus', 'system-bus', 'screen'):
            self.desk.kill(part)
        self.ends_and_has_saved()


class EndByTheSessionManager(EndTest):
    def start_and_change(self, **environment):
        self.manager = SessionManager(self.desk)
        super().start_and_change(**self.manager.environment, **environment)
        self.assertEqual(len(self.manager.events('registered')), 1)

    def test_history_is_saved_before_the_session_ends(self):
        self.start_and_change()
        self.manager.ask_to_save()
        self.assertEqual(self.history()[-1]['p'], 77)
        self.manager.tell_to_die()
        self.ends_and_has_saved()
        self.assertEqual(self.desk.app_log(), '')

    def test_history_is_saved_when_the_manager_ends_the_program(self):
        self.start_and_change()
        self.manager.tell_to_die()
        self.ends_and_has_saved()
        self.assertEqual(self.desk.app_log(), '')

    def test_program_is_not_started_again_with_the_next_session(self):
        self.start_and_change()
        self.manager.ask_to_save()
        self.assertEqual({e['style'] for e in self.manager.events('restart')}, {RESTART_NEVER})


class Bubbles(ProgramTest):
    """Without the program their button would do nothing."""
    options = {'panel': 'xfce', 'notify': 'xfce'}

    def alert(self):
        self.start(lowPowerEnabled=False)
        self.laptop.percent(15)
        return self.wait_for_alert(LOW)['id']

    def is_taken_down(self, number):
        wait_for(lambda: self.desk.app_pid() is None, 'the end of the program')
        self.started = False
        ends = wait_for(lambda: self.closed(number), 'the end of the bubble')
        self.assertEqual(ends[0]['reason'], CLOSED_BY_CALL, 'the bubble has expired')

    def test_they_end_with_the_session(self):
        number = self.alert()
        os.kill(self.desk.app_pid(), signal.SIGTERM)
        self.is_taken_down(number)

    def test_they_end_with_a_hangup(self):
        number = self.alert()
        os.kill(self.desk.app_pid(), signal.SIGHUP)
        self.is_taken_down(number)

    def test_they_end_when_the_user_quits(self):
        number = self.alert()
        self.screen.press_tray('left')
        self.popover_says('15%')
        self.screen.press_widget('Tollbeam', 'Quit')
        self.is_taken_down(number)


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
