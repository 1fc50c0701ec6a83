"""Tollbeam on the desk: what its tests know of the program itself (files, names, windows), and how
to tell that it has done, or has left, what it was to do.

A test that says "no alert came" must not be right by being early. The program answers D-Bus calls
in its one thread, and buses keep the order of messages; so `alerts()` follows every message that
an alert needs, one step behind, and whatever was under way has arrived before it answers.
"""
import json
import os
import shutil
import sys
import unittest

from gi.repository import GLib

from laptop import Desk, folder_for, wait_for
from laptop.parts import UPOWER, WATCHER
from laptop.waiting import PATIENCE

TOP = os.path.dirname(os.path.dirname(os.path.dirname(os.path.realpath(__file__))))
BUNDLE = os.environ.get('TOLLBEAM_APP') or os.path.join(TOP, 'Tollbeam.app')
NAME, PATH = 'org.tollbeam.Tollbeam', '/org/tollbeam/Tollbeam'
NOTIFICATIONS = ('org.freedesktop.Notifications', '/org/freedesktop/Notifications', 'org.freedesktop.Notifications')
XFCONF = ('org.xfce.Xfconf', '/org/xfce/Xfconf', 'org.xfce.Xfconf')
STORE = ('org.freedesktop.impl.portal.PermissionStore', '/org/freedesktop/impl/portal/PermissionStore',
         'org.freedesktop.impl.portal.PermissionStore')
PLAYER = 'tollbeam-sound'  # plays one sound and ends
APP = 'Tollbeam'  # its name in the accessible tree and on its notifications

CHARGE_LIMIT, LOW, LOW_POWER = 'Charge limit reached', 'Low battery', 'Try Low Power Mode'
TOO_LONG, HEALTH = 'Plugged in for a long time', 'Battery health is low'
SNOOZE = 'Snooze 1 hour'

CLOSED_BY_CALL = 3  # the reason that a server gives

# Its timer is due after a minute, and may take ten seconds more to wake with others.
TIMER = 70
# The wait before a burst of power changes is looked at.
BURST = 1
# How long a charger's contact must be steady to count after a change that came shortly before.
STEADY = 3 + BURST


def charge_limit(percent):
    return CHARGE_LIMIT, 'Battery is at %d%%. Unplug to keep it healthy.' % percent


def low(percent):
    return LOW, 'Battery is at %d%%. Plug in soon.' % percent


def low_power(percent):
    return LOW_POWER, 'Battery is at %d%%. Turn on Low Power Mode (System Settings, Battery) to stretch it.' % percent


class ProgramTest(unittest.TestCase):
    """A test on a desk of its own. What the program prints fails it, and so does its end."""

    options = {'panel': 'none'}
    start_time = '2030-05-06 09:00'  # a Monday; the desk's time zone is UTC

    def setUp(self):
        self.assertTrue(os.path.isdir(BUNDLE), BUNDLE + ' is missing (./make_app.sh makes it)')
        self.desk = Desk(folder_for(self))
        self.addCleanup(self._tell_what_happened)
        self.addCleanup(self.desk.down)
        self.desk.up(**self.options)
        self.laptop, self.screen = self.desk.hardware, self.desk.screen
        self.preferences_file = self.desk.path('home', '.config', 'Tollbeam', 'preferences.json')
        self.history_file = self.desk.path('home', '.local', 'share', 'Tollbeam', 'history.json')
        self.started = False
        self.strangers = set()

    def tearDown(self):
        if self._has_failed() and 'DESK_LOGS' in os.environ and self.desk.is_up():
            os.makedirs(os.environ['DESK_LOGS'], exist_ok=True)
            self.screen.shot(os.path.join(os.environ['DESK_LOGS'], self.id() + '.png'))
        if self.started:
            self.assertIsNotNone(self.desk.app_pid(), 'the program has ended by itself')
            self.assertEqual(self.desk.app_log(), '', 'the program has printed something')

    def _has_failed(self):
        result = self._outcome.result
        return any(test is self for test, _ in result.failures + result.errors)

    def _tell_what_happened(self):
        """A failed test says what there was; $DESK_LOGS is a folder for a picture and all logs."""
        if not self._has_failed() or not self.desk.notes_exist():
            return
        sys.stderr.write('\n--- the program printed:\n%s--- notifications:\n%s' % (
            self.desk.app_log(), ''.join('%s\n' % json.dumps(n) for n in self.desk.notes())))
        if 'DESK_LOGS' in os.environ:
            place = os.path.join(os.environ['DESK_LOGS'], self.id())
            shutil.rmtree(place, ignore_errors=True)
            shutil.copytree(self.desk.path('log'), place)
            shutil.copy(self.desk.path('notes.jsonl'), place)

    # ------------------------------------------------------------------ the program

    def start(self, *command, **preferences):
        """Starts the program at `start_time` and waits until its launch is over."""
        if not os.path.exists(self.desk.path('clock')):
            self.desk.clock.start_at(self.start_time)
        if preferences:
            self.write_preferences(**preferences)
        self.start_only(*command)
        self.wait_until_launched()

    def start_only(self, *command, **options):
        self.desk.start_app(*(command or (BUNDLE,)), **options)
        self.started = True

    def stop(self):
        self.desk.stop_app()
        self.started = False

    def kill(self):
        """Ends the program at once, and waits until the bus knows."""
        self.desk.kill('app')
        self.started = False
        wait_for(lambda: not self.desk.session.owner(NAME), 'the name to be free')

    def wait_until_launched(self):
        """The launch waits for the services' first answers; from its beginning on the program follows
        the list of status items, and the rest of it is one turn of its event loop."""
        wait_for(self.follows_the_item_list, 'the launch')
        self.round_trip()

    def follows_the_item_list(self):
        bus = self.desk.session
        if not bus.owner(NAME):
            return False
        rules = bus.call('org.freedesktop.DBus', '/org/freedesktop/DBus', 'org.freedesktop.DBus.Debug.Stats',
                         'GetAllMatchRules')[0]
        return any(WATCHER in rule for name in bus.names_of(self.desk.app_pid()) for rule in rules.get(name, []))

    def round_trip(self, seconds=PATIENCE):
        """Whatever the program's thread had to do when this was called is done when it returns."""
        try:
            self.desk.session.call(NAME, PATH, 'org.freedesktop.DBus.Properties', 'GetAll', '(s)',
                                   'org.freedesktop.Application', seconds=seconds)
        except GLib.Error as error:
            # That it has no properties is an answer, too.
            if 'UnknownInterface' not in error.message:
                raise

    def pass_time(self, seconds):
        """Lets time pass; what is due at its end has been done when this returns."""
        self.desk.clock.advance(seconds)
        # The first answer may come from the turn of the event loop before the timers.
        self.round_trip()
        self.round_trip()

    def power_becomes(self, **properties):
        """Waits until upowerd says so, and the program, if it runs, has looked at it."""
        for name, value in properties.items():
            wait_for(lambda: self.upower_says(name) == value, '%s = %r' % (name, value))
        # upowerd tells the change when it has nothing else to do.
        for _ in range(3):
            self.desk.upower('Percentage')
        if self.started:
            self.system_bus_round_trip()
            self.pass_time(BURST)

    def upower_says(self, name):
        if name == 'OnBattery':
            return self.desk.system.get(UPOWER, '/org/freedesktop/UPower', UPOWER, name)
        return self.desk.upower(name)

    def system_bus_round_trip(self):
        """What was sent to the program on the system bus until now has reached it."""
        for name in self.desk.system.names_of(self.desk.app_pid()):
            self.desk.system.call(name, '/', 'org.freedesktop.DBus.Peer', 'Ping')
        self.round_trip()

    def discharge_to(self, percent):
        self.laptop.percent(percent)
        self.power_becomes(Percentage=float(percent))

    charge_to = discharge_to

    def plug_in(self, status='Charging'):
        self.laptop.plug_in(status)
        self.power_becomes(OnBattery=False, State={'Charging': 1, 'Not charging': 5}[status])
        self._let_the_contact_be_steady()

    def unplug(self):
        self.laptop.unplug()
        self.power_becomes(OnBattery=True, State=2)
        self._let_the_contact_be_steady()

    def _let_the_contact_be_steady(self):
        if self.started:
            self.pass_time(STEADY)

    # ------------------------------------------------------------------ its notifications

    def posted(self, title=None):
        """The events of its bubbles that were shown so far, in order."""
        return [n for n in self.desk.notes('notify') if n['app'] == APP and title in (None, n['summary'])]

    def wait_for_alert(self, title, count=1):
        """Waits for the count-th bubble of this title and returns its event."""
        return wait_for(lambda: self.posted(title)[count - 1:count], '%s, time %d' % (title, count))[0]

    def alerts(self):
        """(title, body) of every alert that the program has set out to post before this call."""
        # An alert goes from the program to the permission store, back, to the server, back and to
        # the server. Each question here stands behind the program's own in the same queue.
        for _ in range(3):
            self.round_trip()
            self._ask(*STORE, 'Lookup', '(ss)', 'notifications', 'notification')
            self._ask(*NOTIFICATIONS, 'GetCapabilities')
        self.round_trip()
        mark = 'mark %d' % (len(self.strangers) + 1)
        number = self.post_stranger(mark)
        wait_for(lambda: [n for n in self.desk.notes() if n.get('summary') == mark], 'the mark in the log')
        if number is not None:
            self._ask(*NOTIFICATIONS, 'CloseNotification', '(u)', number)
        return [(n['summary'], n['body']) for n in self.posted()]

    def post_stranger(self, title, replaces=0):
        """A bubble of another program; its number, or None when there is no server."""
        self.strangers.add(title)
        answer = self._ask(*NOTIFICATIONS, 'Notify', '(susssasa{sv}i)', 'stranger', replaces, '', title, 'not ours',
                           [], {}, -1)
        return answer and answer[0]

    def _ask(self, *call):
        try:
            return self.desk.session.call(*call)
        except GLib.Error:
            return None

    def closed(self, number):
        return [n for n in self.desk.notes('closed') if n['id'] == number]

    # ------------------------------------------------------------------ its sounds

    def sounds_played(self):
        """The names of the sounds that were set out to be played before this call (a desk with sound).

        The program's thread starts a player for each; a player that has ended has played, or will not.
        """
        # Before a sound the program asks, one after the other, whether the user may be disturbed. Each
        # question here stands behind the program's own in the same queue.
        for _ in range(4):
            self.round_trip()
            self._ask(*NOTIFICATIONS, 'GetServerInformation')
            self._ask(*XFCONF, 'ListChannels')
        self.round_trip()
        wait_for(lambda: not self._players(), 'the end of the sounds')
        return self.desk.speaker.names()

    def _players(self):
        """The processes that play a sound of this desk's program."""
        found = []
        for pid in filter(str.isdigit, os.listdir('/proc')):
            try:
                with open('/proc/%s/comm' % pid) as comm, open('/proc/%s/environ' % pid) as environ:
                    if comm.read().strip() == PLAYER and self.desk.env['PULSE_SERVER'] in environ.read():
                        found.append(int(pid))
            except OSError:
                pass  # it ended meanwhile, or is somebody else's
        return found

    # ------------------------------------------------------------------ its files

    def preferences(self):
        """Empty when there is no file."""
        try:
            with open(self.preferences_file) as f:
                return json.load(f)
        except FileNotFoundError:
            return {}

    def write_preferences(self, **changes):
        """Changes the settings as another program would: a new file takes the old one's place."""
        new = self.preferences_file + '.new'
        os.makedirs(os.path.dirname(new), exist_ok=True)
        with open(new, 'w') as f:
            json.dump(dict(self.preferences(), **changes), f)
        os.replace(new, self.preferences_file)

    def history(self):
        """The samples on disk; None when there is no readable history."""
        try:
            with open(self.history_file) as f:
                return json.load(f)
        except (FileNotFoundError, ValueError):
            return None

    # ------------------------------------------------------------------ its windows

    def window(self, title):
        """{role: [names]} of what is to be seen in the window, empty when it is not on the screen."""
        return self.screen.shown(APP, title)

    def popover(self):
        """What the popover says, one text a label, ring and button; empty while it is closed."""
        speaking = ('label', 'progress bar', 'push button', 'radio button')
        return [name for role, names in self.window('Tollbeam').items() if role in speaking for name in names]

    def popover_says(self, text):
        """Waits until one of the texts of the open popover holds `text`, and returns that."""
        return wait_for(lambda: [t for t in self.popover() if text in t], '%r in the popover' % text)[0]

    def popover_closes(self):
        wait_for(lambda: not self.popover(), 'the popover to close')

    def open_popover(self):
        """By the way a second start takes: it works without a panel."""
        self.activate()
        wait_for(self.popover, 'the popover')

    def activate(self):
        """As a second start does; the popover opens before this returns, and is seen a little later."""
        self.desk.session.call(NAME, PATH, 'org.freedesktop.Application', 'Activate', '(a{sv})', {})
