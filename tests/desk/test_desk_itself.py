"""Does every part of the desk do what it says? Tried with a minimal status item (probe_item.py)."""
import json
import os
import signal
import subprocess
import tempfile
import time
import unittest

from laptop import Desk, DeskError, folder_for, remove, wait_for
from laptop.parts import program
from laptop.processes import started

HERE = os.path.dirname(os.path.realpath(__file__))
PROBE = os.path.join(HERE, 'probe_item.py')
UPOWER = 'org.freedesktop.UPower'
CHARGING, DISCHARGING, FULL, PENDING = 1, 2, 4, 5  # upowerd's states


class DeskTest(unittest.TestCase):
    options = {}

    def setUp(self):
        self.desk = Desk(folder_for(self))
        self.addCleanup(self.desk.down)
        self.desk.up(**self.options)

    def upower_becomes(self, prop, value, device='DisplayDevice'):
        wait_for(lambda: self.desk.upower(prop, device) == value, '%s = %r' % (prop, value))

    def said(self, text):
        wait_for(lambda: text in self.desk.app_log(), '%r from the probe' % text)

    def start_probe(self):
        self.desk.start_app(PROBE)
        self.said('registered')

    def notify(self, summary, *actions, replaces=0):
        """Posts a notification as a program would and returns its id."""
        return self.desk.session.call('org.freedesktop.Notifications', '/org/freedesktop/Notifications',
                                      'org.freedesktop.Notifications', 'Notify', '(susssasa{sv}i)', 'probe', replaces,
                                      '', summary, 'body', actions, {}, -1)[0]


class Hardware(DeskTest):
    options = {'panel': 'none', 'notify': 'none'}

    def test_upowerd_reads_charge_and_state(self):
        self.upower_becomes('Percentage', 80.0)
        self.desk.hardware.percent(37)
        self.upower_becomes('Percentage', 37.0)
        self.desk.hardware.plug_in()
        self.upower_becomes('State', CHARGING)
        self.desk.hardware.status('Not charging')
        self.upower_becomes('State', PENDING)
        self.desk.hardware.status('Full')
        self.upower_becomes('State', FULL)
        self.desk.hardware.unplug()
        self.upower_becomes('State', DISCHARGING)

    def test_upowerd_reads_temperature_and_cycles(self):
        self.desk.hardware.set('BAT0', temp=412, cycle_count=321)
        self.upower_becomes('Temperature', 41.2, 'battery_BAT0')
        self.upower_becomes('ChargeCycles', 321, 'battery_BAT0')

    def test_battery_goes_and_comes_back(self):
        self.desk.hardware.remove('BAT0')
        self.upower_becomes('IsPresent', False)
        self.desk.hardware.add('BAT0')
        self.upower_becomes('IsPresent', True)

    def test_two_batteries_make_one_charge(self):
        self.desk.hardware.add('BAT1', energy_full=40000000, energy_now=10000000, capacity=25)
        self.upower_becomes('Energy', 50.0)

    def test_upowerd_killed_and_started(self):
        self.desk.kill('upowerd')
        wait_for(lambda: not self.desk.system.owner(UPOWER), 'the end of upowerd')
        self.desk.start('upowerd')
        self.desk.hardware.percent(66)
        self.upower_becomes('Percentage', 66.0)

    def test_power_profile(self):
        self.assertEqual(self.desk.profile(), 'balanced')
        self.assertEqual(self.desk.profile('power-saver'), 'power-saver')
        with open(self.desk.env['UMOCKDEV_DIR'] + '/sys/firmware/acpi/platform_profile') as f:
            self.assertEqual(f.read().strip(), 'low-power')

    def test_events_reach_upowerd_while_other_listeners_run(self):
        self.desk.restart('profiles')
        self.desk.hardware.percent(41)
        self.upower_becomes('Percentage', 41.0)

    def test_unknown_words_are_errors(self):
        with self.assertRaises(DeskError):
            self.desk.hardware.send('get', 'BAT7', 'capacity')
        with self.assertRaises(DeskError):
            self.desk.start('nonsense')
        with self.assertRaisesRegex(DeskError, 'unknown command nonsense'):
            self.desk.pythons.run(program('widgets.py'), 'nonsense', 'app', 'name')


class Sleep(DeskTest):
    options = {'panel': 'none', 'notify': 'none'}

    def inhibit(self):
        """A program of its own that holds the sleep up until its standard input ends."""
        return subprocess.Popen(['/usr/bin/python3', '-c', '''
import sys, dbus
fd = dbus.SystemBus().get_object('org.freedesktop.login1', '/org/freedesktop/login1').Inhibit(
    'sleep', 'probe', 'to save', 'delay', dbus_interface='org.freedesktop.login1.Manager').take()
sys.stdin.read()'''], env=self.desk.env, stdin=subprocess.PIPE)

    def test_delay_lock_is_seen_and_its_release_too(self):
        holder = self.inhibit()
        self.addCleanup(holder.wait)
        self.addCleanup(holder.stdin.close)
        wait_for(lambda: self.desk.inhibitors('probe'), 'the lock')
        self.assertEqual(self.desk.inhibitors('probe')[0][:4], ('sleep', 'probe', 'to save', 'delay'))
        holder.stdin.close()
        wait_for(lambda: not self.desk.inhibitors('probe'), 'its release')

    def test_sleep_waits_for_a_lock_only_so_long(self):
        holder = self.inhibit()
        self.addCleanup(holder.wait)
        self.addCleanup(holder.stdin.close)
        wait_for(lambda: self.desk.inhibitors('probe'), 'the lock')
        self.assertEqual([lock[1] for lock in self.desk.go_to_sleep(delay_max=1)], ['probe'])

    def test_upowerd_lets_go_and_reads_the_charge_again(self):
        wait_for(lambda: self.desk.inhibitors('UPower'), "upowerd's lock")
        self.assertEqual(self.desk.go_to_sleep(), [])
        self.desk.wake_up(percent=44)
        self.upower_becomes('Percentage', 44.0)
        wait_for(lambda: self.desk.inhibitors('UPower'), "upowerd's lock again")


class CommandLine(DeskTest):
    options = {'panel': 'xfce', 'notify': 'none'}

    def command(self, *words):
        return subprocess.run([os.path.join(HERE, 'desk'), *words], env=dict(os.environ, DESK_RUN=self.desk.folder),
                              stdin=subprocess.DEVNULL, capture_output=True, text=True)

    def test_steers_the_laptop_of_its_folder(self):
        self.assertEqual(self.command('battery', 'percent', '33').returncode, 0)
        self.upower_becomes('Percentage', 33.0)
        self.assertEqual(self.command('profile', 'power-saver').returncode, 0)
        self.assertEqual(self.command('profile').stdout, 'power-saver\n')
        self.assertEqual(self.command('app', PROBE).returncode, 0)
        self.said('registered')
        self.assertEqual(self.command('kill', 'app').returncode, 0)
        self.assertIsNone(self.desk.app_pid())
        self.assertEqual(self.command('run', 'printenv', 'HOME').stdout, self.desk.path('home') + '\n')

    def test_wrong_words_are_told_in_one_line(self):
        for words in ('battery percent', 'battery percent x', 'battery percent 1 2', 'battery', 'app', 'run',
                      'run no-such-program', 'tray left x', 'menu Quit', 'menu Quit x',
                      'profile nonsense', 'profile balanced x', 'sleep x', 'sleep 0 x', 'clock +x', 'clock tomorrow',
                      'kill nonsense', 'start nonsense', 'hardware nonsense', 'keys', 'a11y click'):
            with self.subTest(words):
                result = self.command(*words.split())
                self.assertEqual((result.returncode, result.stdout), (1, ''), result.stderr)
                self.assertRegex(result.stderr, r'\Adesk: .+\n\Z')
        # None of them has left it asleep.
        self.assertFalse(self.desk.system.get('org.freedesktop.login1', '/org/freedesktop/login1',
                                              'org.freedesktop.login1.Manager', 'PreparingForSleep'))

    def test_unknown_commands_show_what_there_is(self):
        result = self.command('nonsense')
        self.assertEqual(result.returncode, 2)
        self.assertIn('desk battery percent N', result.stdout)


class Clock(DeskTest):
    options = {'panel': 'none', 'notify': 'none'}
    TICKER = ('import time, select\nprint("start", int(time.time()), flush=True)\n'
              'end = time.monotonic() + 3600\n'
              'while time.monotonic() < end: select.select([], [], [], 0.05)\n'
              'print("hour", int(time.time()), flush=True)')

    def test_program_starts_at_the_chosen_time_and_an_hour_passes_at_once(self):
        self.desk.clock.start_at('2030-05-06 21:59')
        self.desk.start_app('/usr/bin/python3', '-c', self.TICKER)
        self.said('start')
        self.assertNotIn('hour', self.desk.app_log())
        self.desk.clock.advance(3601)
        self.said('hour')
        words = self.desk.app_log().split()
        self.assertEqual(time.strftime('%F %H:%M', time.gmtime(int(words[1]))), '2030-05-06 21:59')
        self.assertGreaterEqual(int(words[3]) - int(words[1]), 3601)

    def test_held_time_passes_by_advance_only(self):
        self.desk.clock.start_at('2030-05-06 21:59')
        self.desk.clock.hold()
        # It spins for 0.3 s, whatever its clock says.
        self.desk.start_app('/usr/bin/python3', '-c', '''
import resource, time
def worked(): return resource.getrusage(resource.RUSAGE_SELF).ru_utime - begun
def passed(): return time.monotonic() - start
begun = 0
begun, start = worked(), time.monotonic()
while worked() < 0.3: pass
print("worked", passed() < 0.3, flush=True)
while passed() < 60: pass
print("minute", passed() < 60.3, flush=True)
while passed() < 60.3: pass
print("released", flush=True)''')
        self.said('worked True')
        self.desk.clock.advance(60)
        self.said('minute True')
        self.desk.clock.release()
        self.said('released')

    def test_time_never_goes_back(self):
        with self.assertRaises(DeskError):
            self.desk.clock.advance(-1)

    def test_program_without_the_clock_sees_the_real_time(self):
        self.desk.clock.start_at('2030-05-06 21:59')
        before = int(time.time())
        self.desk.start_app('/usr/bin/python3', '-c', 'import time; print("now", int(time.time()))', clock=False)
        self.said('now')
        self.assertIn(int(self.desk.app_log().split()[1]), range(before, int(time.time()) + 1))


class XfcePanel(DeskTest):
    options = {'panel': 'xfce', 'notify': 'none'}

    def test_item_appears_and_takes_clicks(self):
        self.start_probe()
        wait_for(lambda: len(self.desk.screen.tray()) == 1, 'the item in the panel')
        x, y, width, height = self.desk.screen.tray()[0]
        self.desk.screen.press_tray('left')
        self.said('Activate %d %d' % (x + width // 2, y + height // 2))
        self.desk.screen.press_tray('middle')
        self.said('SecondaryActivate')

    def test_item_goes_with_its_program(self):
        self.start_probe()
        wait_for(self.desk.screen.tray, 'the item in the panel')
        self.desk.stop_app()
        wait_for(lambda: not self.desk.screen.tray(), 'the item to go')

    def test_item_is_back_after_a_panel_restart(self):
        self.start_probe()
        self.desk.restart('panel', signal.SIGKILL)
        wait_for(lambda: self.desk.app_log().count('registered') == 2, 'the item to register again')
        wait_for(self.desk.screen.tray, 'the item in the new panel')

    def test_program_sees_the_simulated_hardware(self):
        self.desk.hardware.set('BAT0', cycle_count=777)
        self.start_probe()
        self.said('cycles 777')


class LxqtPanel(XfcePanel):
    options = {'panel': 'lxqt', 'notify': 'none', 'wm': 'openbox'}


class LargeDarkPanel(DeskTest):
    options = {'dark': True, 'scale': 2, 'notify': 'none'}

    def test_panel_is_dark_and_twice_as_high(self):
        self.start_probe()
        wait_for(self.desk.screen.tray, 'the item in the panel')
        self.assertGreaterEqual(self.desk.screen.tray()[0][3], 56)
        picture = self.desk.screen.shot(self.desk.path('panel.png'), crop=[400, 10, 100, 30])
        mean = float(self.desk.run('convert', picture, '-colorspace', 'gray', '-format', '%[fx:mean]', 'info:'))
        self.assertLess(mean, 0.4)


class Notifications(DeskTest):
    options = {'panel': 'none', 'notify': 'xfce'}

    def test_button_is_pressed_on_the_real_bubble(self):
        number = self.notify('hello', 'snooze', 'Snooze 1 hour')
        self.assertEqual(self.desk.wait_for_note(summary='hello')['id'], number)
        self.desk.screen.press_bubble('Snooze 1 hour')
        self.desk.wait_for_note('action', id=number, key='snooze')
        self.desk.wait_for_note('closed', id=number)

    def test_bubble_is_closed(self):
        number = self.notify('hello')
        self.desk.screen.press_bubble('close')
        self.desk.wait_for_note('closed', id=number)

    def test_missing_server_is_noticed(self):
        self.desk.kill('notify')
        with self.assertRaises(Exception):
            self.notify('hello')
        self.desk.wait_for_note('notify-failed', summary='hello')
        self.desk.start('notify')
        self.notify('again')
        self.desk.wait_for_note(summary='again')

    def test_permission_is_kept(self):
        self.desk.permit_notifications('no')
        store = 'org.freedesktop.impl.portal.PermissionStore'
        answer = self.desk.session.call(store, '/org/freedesktop/impl/portal/PermissionStore', store, 'Lookup', '(ss)',
                                        'notifications', 'notification')
        self.assertEqual(answer[0], {'org.tollbeam.Tollbeam': ['no']})


class Dunst(DeskTest):
    options = {'panel': 'none', 'notify': 'dunst'}

    def test_action_is_chosen_from_its_menu(self):
        number = self.notify('hello', 'default', 'Open', 'snooze', 'Snooze 1 hour')
        self.desk.screen.press_bubble('Snooze 1 hour')
        self.desk.wait_for_note('action', id=number, key='snooze')


class SideBySide(DeskTest):
    options = {'panel': 'none', 'notify': 'none'}

    def test_two_desks_do_not_see_each_other(self):
        with tempfile.TemporaryDirectory(prefix='desk-') as folder:
            other = Desk(folder)
            self.addCleanup(other.down)
            other.up(**self.options)
            self.desk.hardware.percent(11)
            other.hardware.percent(99)
            self.upower_becomes('Percentage', 11.0)
            wait_for(lambda: other.upower('Percentage') == 99.0, 'the other charge')
            other.down()
        self.assertTrue(self.desk.is_up())

    def test_the_screen_takes_in_only_its_user(self):
        look = ['xwininfo', '-root']
        self.assertIn('root window', self.desk.run(*look))
        result = subprocess.run(look, env=dict(self.desk.env, XAUTHORITY='/dev/null'), stdout=subprocess.PIPE,
                                stderr=subprocess.STDOUT, text=True)
        self.assertIn('unable to open display', result.stdout)

    def test_down_leaves_no_process(self):
        pids = [self.desk.processes.pid(n) for n in self.desk.processes.names()]
        self.assertGreater(len([p for p in pids if p]), 6)

        def left():
            text = subprocess.run(['grep', '-lszF', 'HOME=' + self.desk.path('home'), *environments()],
                                  capture_output=True, text=True).stdout
            return text.split()
        self.assertGreater(len(left()), 6)
        self.desk.down()
        self.assertEqual(self.desk.processes.names(), [])
        wait_for(lambda: not left(), 'all processes of the desk to end')

    def test_a_number_that_came_round_again_is_nobody_of_ours(self):
        stranger = subprocess.Popen(['sleep', '600'])
        self.addCleanup(stranger.wait)
        self.addCleanup(stranger.kill)
        file = self.desk.path('pids', 'panel')
        for left_behind in ('%d 1' % stranger.pid, '%d' % stranger.pid):
            with self.subTest(left_behind):
                with open(file, 'w') as f:
                    f.write(left_behind)
                self.assertIsNone(self.desk.processes.pid('panel'))
                self.desk.processes.stop('panel')
                self.assertIsNone(stranger.poll())
                self.assertFalse(os.path.exists(file))


class PrivateFolder(unittest.TestCase):
    """No other user can prepare a folder from which a desk takes whom to end, or what to run."""

    def setUp(self):
        self.stranger = subprocess.Popen(['sleep', '600'])
        self.addCleanup(self.stranger.wait)
        self.addCleanup(self.stranger.kill)
        self.folder = folder_for(self)
        os.mkdir(os.path.join(self.folder, 'pids'))
        for name in ('screen', 'panel'):
            with open(os.path.join(self.folder, 'pids', name), 'w') as f:
                f.write('%d %s' % (self.stranger.pid, started(self.stranger.pid)))
        with open(os.path.join(self.folder, 'desk.json'), 'w') as f:
            json.dump({'options': {}, 'env': {'PATH': self.folder}}, f)
        with open(os.path.join(self.folder, 'xprop'), 'w') as f:
            f.write('#!/bin/sh\necho this is run as you\n')
        os.chmod(f.name, 0o755)

    def command(self, *words, **places):
        env = {k: v for k, v in os.environ.items() if k not in ('DESK_RUN', 'XDG_RUNTIME_DIR')}
        return subprocess.run([os.path.join(HERE, 'desk'), *words], env=dict(env, **places), stdin=subprocess.DEVNULL,
                              stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True)

    def is_left_alone(self, folder, reason):
        for words in (['down'], ['run', 'xprop'], ['up', '--panel', 'none', '--notify', 'none']):
            with self.subTest(words):
                result = self.command(*words, DESK_RUN=folder)
                self.assertEqual(result.returncode, 1, result.stdout)
                self.assertRegex(result.stdout, r'\Adesk: .*%s.*\n\Z' % reason)
                self.assertIsNone(self.stranger.poll())

    def test_what_another_user_owns_is_left_alone(self):
        folder = '/usr'
        if os.geteuid() == 0:
            folder = self.folder
            os.chown(folder, 65534, 65534)
        self.is_left_alone(folder, 'belongs to another user')

    def test_what_other_users_can_enter_is_left_alone(self):
        os.chmod(self.folder, 0o770)
        self.is_left_alone(self.folder, 'can be entered by other users')

    def test_what_a_link_points_to_is_left_alone(self):
        link = self.folder + '-link'
        os.symlink(self.folder, link)
        self.addCleanup(os.unlink, link)
        self.is_left_alone(link, 'is no folder')

    def test_the_default_is_in_the_private_folder_of_the_login(self):
        place = folder_for(self)
        result = self.command('up', '--panel', 'none', '--notify', 'none', XDG_RUNTIME_DIR=place)
        self.addCleanup(lambda: Desk(os.path.join(place, 'tollbeam-desk')).down())
        self.assertEqual(result.returncode, 0, result.stdout)
        self.assertNotIn('DESK_RUN', result.stdout)
        self.assertTrue(Desk(os.path.join(place, 'tollbeam-desk')).is_up())
        self.assertEqual(self.command('down', XDG_RUNTIME_DIR=place).returncode, 0)

    def test_without_such_a_folder_a_fresh_one_is_made_and_named(self):
        os.chmod(self.folder, 0o755)
        for places in ({}, {'XDG_RUNTIME_DIR': self.folder}, {'XDG_RUNTIME_DIR': '/nowhere'}):
            with self.subTest(places):
                self.assertIn('set $DESK_RUN', self.command('down', **places).stdout)
                result = self.command('up', '--panel', 'none', '--notify', 'none', **places)
                self.assertEqual(result.returncode, 0, result.stdout)
                fresh = result.stdout.splitlines()[-1].removeprefix('export DESK_RUN=')
                self.addCleanup(remove, fresh)
                self.assertTrue(Desk(fresh).is_up(), result.stdout)
                self.assertEqual(os.stat(fresh).st_mode & 0o777, 0o700)
                self.assertEqual(self.command('down', DESK_RUN=fresh).returncode, 0)


def environments():
    return ['/proc/%s/environ' % p for p in os.listdir('/proc') if p.isdigit()]


if __name__ == '__main__':
    unittest.main()
