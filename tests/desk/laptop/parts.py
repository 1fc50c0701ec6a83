"""How each part of the laptop is started, and how it shows that it is there."""
import glob
import os
import subprocess
import sysconfig

from gi.repository import GLib

from . import clock
from .processes import DeskError
from .sound import server_command
from .waiting import wait_for

HERE = os.path.dirname(os.path.abspath(__file__))
PROGRAMS = os.path.join(HERE, 'programs')
CONF = os.path.join(os.path.dirname(HERE), 'conf')
PYTHON = '/usr/bin/python3'
LIBEXEC = '/usr/libexec'
LIBRARIES = '/usr/lib/' + (sysconfig.get_config_var('MULTIARCH') or 'x86_64-linux-gnu')
UPOWER = 'org.freedesktop.UPower'
LOGIN = ('org.freedesktop.login1', '/org/freedesktop/login1', 'org.freedesktop.login1.Manager')
MOCK = 'org.freedesktop.DBus.Mock'
WATCHER = 'org.kde.StatusNotifierWatcher'
SOUND_READY = 'Daemon startup complete'


def program(name):
    return os.path.join(PROGRAMS, name)


def screen(desk):
    """The X server chooses its own display number, so that desks never meet. It offers no OpenGL, which
    no part of the desk draws with: it would only load a driver, and xfwm4 would probe it."""
    number = desk.path('display')
    write_cookie(desk.env['XAUTHORITY'])
    size = 'x'.join(str(int(n) * desk.options['scale']) for n in desk.options['size'].split('x'))
    desk.processes.start('screen', ['bash', '-c', 'exec Xvfb -displayfd 3 -screen 0 "$1" -auth "$XAUTHORITY" '
                                    '-nolisten tcp -noreset -extension GLX 3>"$2"', 'screen', size + 'x24', number],
                         desk.env)
    display = ':' + wait_for(lambda: os.path.exists(number) and text_of(number), 'Xvfb')
    # A colour that is neither a panel's nor a window's, so that pictures show where those end.
    subprocess.run(['xsetroot', '-solid', '#4a6078'], env=dict(desk.env, DISPLAY=display), check=True)
    return display


def write_cookie(file):
    """Without one, an X server takes in every user of the machine. For any address and display."""
    fields = (b'', b'', b'MIT-MAGIC-COOKIE-1', os.urandom(16))
    with open(file, 'wb') as f:
        f.write(b'\xff\xff' + b''.join(len(field).to_bytes(2, 'big') + field for field in fields))


def text_of(file):
    with open(file) as f:
        return f.read().strip()


def buses(desk):
    for name, kind in (('system', 'custom'), ('session', 'session')):
        services = desk.path('services', name)
        os.makedirs(services)
        with open(os.path.join(CONF, 'bus.conf.in')) as f:
            text = f.read()
        for word, value in (('TYPE', kind), ('SOCKET', desk.path(name + '-bus')), ('SERVICES', services)):
            text = text.replace('@%s@' % word, value)
        with open(desk.path(name + '-bus.conf'), 'w') as f:
            f.write(text)
    for name, command in (('org.freedesktop.impl.portal.PermissionStore', LIBEXEC + '/xdg-permission-store'),
                          ('org.a11y.Bus', LIBEXEC + '/at-spi-bus-launcher'),
                          ('org.xfce.Xfconf', LIBRARIES + '/xfce4/xfconf/xfconfd')):
        with open(desk.path('services', 'session', name + '.service'), 'w') as f:
            f.write('[D-BUS Service]\nName=%s\nExec=%s\n' % (name, command))
    for name in ('system', 'session'):
        bus(desk, name)


def bus(desk, name):
    """At the same address each time."""
    desk.processes.start(name + '-bus', ['dbus-daemon', '--config-file=' + desk.path(name + '-bus.conf'), '--nofork',
                                         '--nopidfile', '--nosyslog'], desk.env)
    client = getattr(desk, name)
    wait_for(client.ready, client.address)
    wait_for(lambda: client.owner('org.freedesktop.DBus'), client.address)


def pythons(desk):
    """Loads while the buses start; whoever needs it first waits for it."""
    env = dict(desk.env, TMPDIR=desk.path('tmp'))
    desk.processes.start('pythons', ['umockdev-wrapper', PYTHON, program('fork_server.py'), desk.path('pythons')], env)


def hardware(desk):
    wait_for(desk.pythons.ready, 'the server of Python programs')
    desk.pythons.start('hardware', program('testbed.py'), desk.path('hardware'))
    wait_for(lambda: os.path.exists(desk.path('hardware')), 'the simulated hardware')
    root = desk.hardware.root()
    os.symlink(desk.path('clock'), root + clock.SEEN_AS)
    return root


def logind(desk):
    """systemd does not run on build machines: the one part that is not the real one."""
    desk.pythons.start('logind', 'dbusmock', '--system', '-t', 'logind')
    desk.system.wait_name(LOGIN[0])


def upowerd(desk):
    env = dict(desk.env, UPOWER_HISTORY_DIR=desk.path('upower'), UPOWER_CONF_FILE_NAME=os.path.join(CONF, 'UPower.conf'))
    desk.processes.start('upowerd', ['umockdev-wrapper', LIBEXEC + '/upowerd', '-v'], env)
    desk.system.wait_name(UPOWER)


def profiles(desk):
    """power-profiles-daemon asks polkit who may change the profile; here everybody may."""
    desk.pythons.start('polkit', 'dbusmock', '--system', '-t', 'polkitd')
    desk.system.wait_name('org.freedesktop.PolicyKit1')
    desk.system.call('org.freedesktop.PolicyKit1', '/org/freedesktop/PolicyKit1/Authority', MOCK,
                     'AllowUnknown', '(b)', True)
    desk.processes.start('profiles', [program('fdpad'), '40', 'umockdev-wrapper', LIBEXEC + '/power-profiles-daemon',
                                      '-v'], desk.env)
    desk.system.wait_name('net.hadess.PowerProfiles')


def accessibility(desk):
    desk.session.call('org.a11y.Bus', '/org/a11y/bus', 'org.a11y.Bus', 'GetAddress')
    desk.session.set('org.a11y.Bus', '/org/a11y/bus', 'org.a11y.Status', 'IsEnabled', GLib.Variant('b', True))


def listener(desk):
    """Without one, programs send no accessibility events at all, and nothing can go wrong with them."""
    if desk.options['listener']:
        desk.pythons.start('listener', program('listener.py'), desk.path('heard.jsonl'))
        wait_for(lambda: os.path.exists(desk.path('heard.jsonl')) and desk.heard(ev='start'), 'the listener')


def notelog(desk):
    desk.pythons.start('notelog', program('notelog.py'), desk.path('notes.jsonl'))
    wait_for(desk.notes_exist, 'the log of notifications')


def windows(desk):
    compositor = '--compositor=' + ('on' if desk.options['compositor'] else 'off')
    command = {'xfwm4': ['xfwm4', compositor], 'openbox': ['openbox']}[desk.options['wm']]
    if desk.options['wm'] == 'xfwm4':
        write_xfwm4_defaults(desk)
    desk.processes.start('windows', command, desk.gtk_env())
    wait_for(lambda: b'window id' in subprocess.run(['xprop', '-root', '_NET_SUPPORTING_WM_CHECK'], env=desk.env,
                                                    capture_output=True).stdout, command[0])


def write_xfwm4_defaults(desk):
    """xfwm4 stores every default that is not stored yet, and reads its whole theme again after most of them."""
    def kind(name, value):
        if name.startswith('title_shadow_'):
            return 'string'
        return 'bool' if value in ('true', 'false') else 'int' if value.lstrip('-').isdigit() else 'string'
    with open('/usr/share/xfwm4/defaults') as f:
        defaults = [line.strip().split('=') for line in f if '=' in line]
    lines = ['<property name="%s" type="%s" value="%s"/>\n' % (name, kind(name, value), value) for name, value in defaults]
    with open(desk.path('home', '.config', 'xfce4', 'xfconf', 'xfce-perchannel-xml', 'xfwm4.xml'), 'w') as f:
        f.write('<channel name="xfwm4" version="1.0">\n<property name="general" type="empty">\n%s</property>\n</channel>\n'
                % ''.join(lines))


def notify(desk):
    command = {'xfce': [LIBRARIES + '/xfce4/notifyd/xfce4-notifyd'],
               'dunst': ['dunst', '-conf', desk.path('home', '.config', 'dunst', 'dunstrc')],
               'none': None}[desk.options['notify']]
    if command:
        desk.processes.start('notify', command, desk.gtk_env())
        desk.session.wait_name('org.freedesktop.Notifications')


def panel(desk):
    command = {'xfce': ['xfce4-panel', '-d', '--disable-wm-check'], 'lxqt': ['lxqt-panel'],
               'none': None}[desk.options['panel']]
    if command:
        desk.processes.start('panel', command, desk.qt_env() if desk.options['panel'] == 'lxqt' else desk.gtk_env())
        desk.session.wait_name(WATCHER)


def sound(desk):
    if desk.options['sound']:
        if not glob.glob('/usr/bin/pulseaudio'):
            raise DeskError('pulseaudio is not installed')
        complete = desk.log('sound').count(SOUND_READY)
        desk.processes.start('sound', server_command(desk.path('sound')), desk.env)
        wait_for(lambda: desk.log('sound').count(SOUND_READY) > complete, 'the sound server')


# What `restart`, `kill` and `start` know, with the name of its process.
REPLACEABLE = {'upowerd': upowerd, 'profiles': profiles, 'notify': notify, 'panel': panel, 'windows': windows,
               'logind': logind, 'sound': sound}


def check_installed():
    """Raises DeskError that names what is missing, before anything half works."""
    wanted = [LIBEXEC + '/upowerd', LIBEXEC + '/power-profiles-daemon', LIBEXEC + '/xdg-permission-store',
              LIBEXEC + '/at-spi-bus-launcher', '/usr/bin/umockdev-wrapper', '/usr/bin/Xvfb', '/usr/bin/xdotool',
              '/usr/bin/import', '/usr/bin/xprop', '/usr/bin/xsetroot', '/usr/bin/dbus-daemon']
    missing = [p for p in wanted if not glob.glob(p)]
    if missing:
        raise DeskError('not installed: %s (./test.sh or ./run.sh installs the packages)' % ', '.join(missing))
