"""The whole laptop: brings its parts up and down, and holds the handles to steer and to watch it."""
import json
import os
import shutil
import signal
import subprocess
import time

from gi.repository import GLib

from . import parts
from .bus import Bus
from .clock import Clock, root_property_nudge
from .folders import check_private
from .hardware import Hardware
from .parts import LOGIN, MOCK
from .processes import DeskError, Processes
from .pythons import Pythons
from .screen import Screen
from .sound import Speaker
from .waiting import PATIENCE, wait_for

OPTIONS = {'panel': 'xfce', 'notify': 'xfce', 'wm': 'xfwm4', 'compositor': False, 'dark': False, 'scale': 1,
           'size': '1280x800', 'sound': False, 'listener': False}

# The parts in the order in which they come up; down is the reverse.
ORDER = ('hardware', 'logind', 'upowerd', 'profiles', 'accessibility', 'listener', 'notelog', 'windows', 'sound',
         'notify', 'panel')
# What ends with its bus, in the order in which it comes up on the next one.
ON_BUS = {'system': ('logind', 'upowerd', 'profiles'),
          'session': ('accessibility', 'listener', 'notelog', 'notify', 'panel')}


class Desk:
    """One laptop in one folder. Several in several folders do not see each other.

    A second Desk object on the folder of a running laptop steers the same laptop.
    """

    def __init__(self, folder):
        self.folder = os.path.abspath(folder)
        check_private(self.folder)
        self.processes = Processes(self.folder)
        self.system = Bus(self.path('system-bus'))
        self.session = Bus(self.path('session-bus'))
        self.hardware = Hardware(self.path('hardware'))
        self.pythons = Pythons(self.path('pythons'), self.processes)
        self.options = dict(OPTIONS)
        self.env = {}
        if os.path.exists(self.path('desk.json')):
            with open(self.path('desk.json')) as f:
                saved = json.load(f)
            self.options, self.env = saved['options'], saved['env']
        self._notes_from = 0

    def path(self, *parts_of_path):
        return os.path.join(self.folder, *parts_of_path)

    # ------------------------------------------------------------------ up and down

    def is_up(self):
        return self.processes.pid('screen') is not None and os.path.exists(self.path('desk.json'))

    def up(self, report=lambda _line: None, **options):
        """Brings the laptop up, from nothing: an older one in this folder is taken down first."""
        unknown = set(options) - set(OPTIONS)
        if unknown:
            raise DeskError('no such option: ' + ', '.join(unknown))
        parts.check_installed()
        check_private(self.folder)
        self.down()
        self.options = dict(OPTIONS, **options)
        self._make_folders()
        self.env = self._environment()
        began = time.monotonic()
        try:
            self.env['DISPLAY'] = parts.screen(self)
            parts.pythons(self)
            parts.buses(self)
            for name in ORDER:
                result = getattr(parts, name)(self)
                if name == 'hardware':
                    self.env['UMOCKDEV_DIR'] = result
                report('%5.2f s  %s' % (time.monotonic() - began, name))
        except BaseException:
            self.down()
            raise
        with open(self.path('desk.json.new'), 'w') as f:
            json.dump({'options': self.options, 'env': self.env}, f, indent=1)
        os.replace(f.name, self.path('desk.json'))  # another program never reads the half of it
        return self

    def down(self):
        """Ends every process of the laptop; the logs stay in the folder until the next `up`."""
        last = ['hardware', 'session-bus', 'system-bus', 'screen']
        first = ['app', 'panel', 'notify', 'windows', 'notelog', 'profiles', 'polkit', 'upowerd', 'logind']
        others = [n for n in self.processes.names() if n not in first + last]
        for bus in (self.system, self.session):
            bus.close()
        for name in first + others + last:
            self.processes.stop(name)
        if os.path.exists(self.path('desk.json')):
            os.unlink(self.path('desk.json'))

    def _make_folders(self):
        if os.path.isdir(self.folder):
            if not os.path.isdir(self.path('pids')) and os.listdir(self.folder):
                raise DeskError(self.folder + ' holds something else than a desk')
            shutil.rmtree(self.folder)
        os.makedirs(os.path.dirname(self.folder), exist_ok=True)
        os.mkdir(self.folder, 0o700)
        for name in ('pids', 'log', 'services', 'tmp', 'upower', 'home', 'run'):
            os.makedirs(self.path(name))
        os.chmod(self.path('run'), 0o700)
        config = self.path('home', '.config')
        shutil.copytree(os.path.join(parts.CONF, 'config'), config)
        for file, changes in self._config_changes().items():
            with open(os.path.join(config, file)) as f:
                text = f.read()
            for old, new in changes:
                text = text.replace(old, new)
            with open(os.path.join(config, file), 'w') as f:
                f.write(text)

    def _config_changes(self):
        dark = self.options['dark']
        return {
            'dunst/dunstrc': [('@PICK@', parts.program('dunst-pick'))],
            'xfce4/xfconf/xfce-perchannel-xml/xfce4-panel.xml': [('@DARK@', 'true' if dark else 'false')],
            'lxqt/panel.conf': [('@BACKGROUND@', '#2b2b2b' if dark else '#f2f1f0'),
                                ('@FOREGROUND@', '#f0f0f0' if dark else '#202020')],
        }

    def _environment(self):
        """Only what is named here, so that the surroundings of the caller never leak in."""
        keep = ('PATH', 'USER', 'LOGNAME', 'ASAN_OPTIONS', 'LSAN_OPTIONS', 'UBSAN_OPTIONS', 'QT_LOGGING_RULES')
        env = {k: os.environ[k] for k in keep if k in os.environ}
        # A reader that asks for a widget which has just gone is no fault of the program; Qt 6.8 says so aloud.
        env.setdefault('QT_LOGGING_RULES', 'qt.accessibility.atspi.warning=false')
        home = self.path('home')
        env.update({
            'HOME': home, 'TZ': 'UTC', 'LANG': 'C.UTF-8', 'LC_ALL': 'C.UTF-8',
            'XAUTHORITY': self.path('cookie'), 'XDG_RUNTIME_DIR': self.path('run'), 'XDG_CONFIG_HOME': home + '/.config',
            'XDG_DATA_HOME': home + '/.local/share', 'XDG_CACHE_HOME': home + '/.cache',
            'XDG_STATE_HOME': home + '/.local/state', 'XDG_SESSION_TYPE': 'x11',
            'XDG_CURRENT_DESKTOP': {'lxqt': 'LXQt'}.get(self.options['panel'], 'XFCE'),
            'DBUS_SYSTEM_BUS_ADDRESS': self.system.address, 'DBUS_SESSION_BUS_ADDRESS': self.session.address,
            'QT_LINUX_ACCESSIBILITY_ALWAYS_ON': '1', 'NO_AT_BRIDGE': '0',
            # Never the machine's own loudspeaker, nor a server that would be started for the asking.
            'PULSE_SERVER': 'unix:' + self.path('sound'), 'CANBERRA_DRIVER': 'pulse',
        })
        return env

    def gtk_env(self):
        return dict(self.env, GDK_SCALE=str(self.options['scale'])) if self.options['scale'] != 1 else self.env

    def qt_env(self):
        return dict(self.env, QT_SCALE_FACTOR=str(self.options['scale'])) if self.options['scale'] != 1 else self.env

    # ------------------------------------------------------------------ the program under test

    @property
    def clock(self):
        return Clock(self.path('clock'), root_property_nudge(self.env))

    def start_app(self, *command, clock=True, name='app', **extra_env):
        """Starts the program on this laptop's session and hardware. Its output is app_log().

        A folder whose name ends in .app is started as the bundle that it is. `clock=False` leaves
        the real clock in the program (sanitizers refuse the preloaded one).
        """
        if name == 'app':
            self.processes.stop(name)
        command, env = self._as_program(command, clock, extra_env)
        return self.processes.start(name, command, env)

    def run_app(self, *command, clock=True, **extra_env):
        """Starts the program beside the one that runs, waits until it ends, and returns its exit code."""
        command, env = self._as_program(command, clock, extra_env)
        return subprocess.run(command, env=env, stdin=subprocess.DEVNULL, timeout=PATIENCE).returncode

    def _as_program(self, command, clock, extra_env):
        env = dict(self.qt_env(), **extra_env)
        if clock:
            if not os.path.exists(self.path('clock')):
                self.clock.advance(0)
            env.update(self.clock.environment())
        return [parts.program('fdpad'), '80', 'umockdev-wrapper', executable(command[0])] + list(command[1:]), env

    def stop_app(self, sign=signal.SIGTERM, name='app'):
        self.processes.stop(name, sign)

    def app_pid(self, name='app'):
        return self.processes.pid(name)

    def app_log(self, name='app'):
        return self.log(name)

    def log(self, part):
        """What a part has printed so far."""
        try:
            with open(self.processes.log(part), errors='replace') as f:
                return f.read()
        except FileNotFoundError:
            return ''

    def run(self, *command, check=True):
        """Runs a command in the session to its end and returns what it printed."""
        result = subprocess.run(command, env=self.env, capture_output=True, text=True)
        if check and result.returncode != 0:
            raise DeskError('%s: %s' % (command[0], (result.stderr or result.stdout).strip()))
        return result.stdout

    # ------------------------------------------------------------------ steering the services

    def kill(self, part, sign=signal.SIGKILL):
        self.processes.stop(part, sign)
        if part == 'panel':
            # Its plugins are processes of their own and notice a little later.
            wait_for(lambda: not self.session.owner(parts.WATCHER), 'the end of the status area')

    def start(self, part):
        if part not in parts.REPLACEABLE:
            raise DeskError('%s is none of: %s' % (part, ' '.join(parts.REPLACEABLE)))
        parts.REPLACEABLE[part](self)

    def restart(self, part, sign=signal.SIGTERM):
        self.kill(part, sign)
        if part == 'profiles':
            self.kill('polkit', signal.SIGTERM)
        self.start(part)

    def lose_bus(self, name):
        """The system or session bus ends at once, and its services with it. The program does not."""
        self.processes.stop(name + '-bus', signal.SIGKILL)
        getattr(self, name).close()
        for part in ON_BUS[name] + (('polkit',) if name == 'system' else ()):
            self.processes.stop(part)

    def restore_bus(self, name):
        """Another one at the same address, with its services. The log of notifications begins anew."""
        parts.bus(self, name)
        if name == 'session':
            os.unlink(self.path('notes.jsonl'))
            self._notes_from = 0
        for part in ON_BUS[name]:
            getattr(parts, part)(self)

    def profile(self, name=None):
        """Reads, or sets, the power profile: power-saver, balanced or performance."""
        at = ('net.hadess.PowerProfiles', '/net/hadess/PowerProfiles', 'net.hadess.PowerProfiles', 'ActiveProfile')
        if name:
            self.system.set(*at, GLib.Variant('s', name))
        return self.system.get(*at)

    def upower(self, prop, device='DisplayDevice'):
        return self.system.get(parts.UPOWER, '/org/freedesktop/UPower/devices/' + device,
                               'org.freedesktop.UPower.Device', prop)

    def inhibitors(self, who=None):
        """Who holds up the sleep now, as (what, who, why, mode, uid, pid)."""
        held = self.system.call(*LOGIN, 'ListInhibitors')[0]
        return [i for i in held if who is None or i[1] == who]

    def go_to_sleep(self, delay_max=PATIENCE):
        """Announces the sleep as logind does, and returns the delay locks that were not released in time.

        The processes go on running: that a machine really stops is what no build machine can show.
        """
        end = time.monotonic() + delay_max
        self._prepare_for_sleep(True)

        def held():
            return [i for i in self.inhibitors() if 'sleep' in i[0].split(':') and i[3] == 'delay']
        while held() and time.monotonic() < end:
            time.sleep(0.01)
        return held()

    def wake_up(self, percent=None):
        """The machine wakes; the charge may have changed meanwhile, unnoticed."""
        if percent is not None:
            self.hardware.percent(percent, silently=True)
        self._prepare_for_sleep(False)

    def _prepare_for_sleep(self, start):
        state = GLib.Variant('b', start)
        self.system.call(LOGIN[0], LOGIN[1], MOCK, 'UpdateProperties', '(sa{sv})', LOGIN[2], {'PreparingForSleep': state})
        self.system.call(LOGIN[0], LOGIN[1], MOCK, 'EmitSignal', '(sssav)', LOGIN[2], 'PrepareForSleep', 'b', [state])

    def permit_notifications(self, answer, application='org.tollbeam.Tollbeam'):
        """What the desktop's permission store says of a program: 'yes', 'no' or None for no entry."""
        store = ('org.freedesktop.impl.portal.PermissionStore', '/org/freedesktop/impl/portal/PermissionStore',
                 'org.freedesktop.impl.portal.PermissionStore')
        if answer is None:
            self.session.call(*store, 'DeletePermission', '(sss)', 'notifications', 'notification', application)
        else:
            self.session.call(*store, 'SetPermission', '(sbssas)', 'notifications', True, 'notification', application, [answer])

    # ------------------------------------------------------------------ watching

    @property
    def screen(self):
        return Screen(self)

    @property
    def speaker(self):
        return Speaker(self)

    def notes_exist(self):
        return os.path.exists(self.path('notes.jsonl')) and os.path.getsize(self.path('notes.jsonl')) > 0

    def notes(self, ev=None):
        """The notification events since the laptop came up or since forget_notes()."""
        with open(self.path('notes.jsonl'), 'rb') as f:
            f.seek(self._notes_from)
            lines = [json.loads(line) for line in f.read().split(b'\n')[:-1]]
        return [n for n in lines if ev is None or n['ev'] == ev]

    def forget_notes(self):
        self._notes_from = os.path.getsize(self.path('notes.jsonl'))

    def heard(self, **fields):
        """The accessibility events with these fields, in order (a desk with a listener)."""
        if not self.options['listener']:
            raise DeskError('nobody listens here (up --listener)')
        with open(self.path('heard.jsonl'), 'rb') as f:
            events = [json.loads(line) for line in f.read().split(b'\n')[:-1]]
        return [e for e in events if all(e.get(k) == v for k, v in fields.items())]

    def wait_for_note(self, ev='notify', **fields):
        """Waits for a notification event with these fields and returns it."""
        def found():
            return [n for n in self.notes(ev) if all(n.get(k) == v for k, v in fields.items())]
        return wait_for(found, 'the notification event %s %r' % (ev, fields))[0]


def executable(path):
    """The program of a bundle folder; any other path is itself."""
    path = os.path.abspath(path) if os.sep in path else path
    if not (path.endswith('.app') and os.path.isdir(path)):
        return path
    with open(os.path.join(path, 'Info.json')) as f:
        return os.path.join(path, json.load(f)['executable'])
