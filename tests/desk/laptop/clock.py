"""The clock that the program under test reads: real time plus an offset that a test moves on.

libfaketime is preloaded into the program and reads the offset from a file at every look at the
clock. It shifts the monotonic clock as well, so that a 60-second timer is due after `advance(60)`;
a sleeping event loop learns of it by `nudge`, a change of a root window property, which wakes
every X11 toolkit and means nothing to any.

The program opens that file inside the simulated /sys. Elsewhere umockdev's open() calls fstat(),
which libfaketime replaces as well; Debian 13's reads the file while it initialises, its fstat()
waits until that is done, and the program hangs before main().
"""
import datetime
import glob
import os
import subprocess
import time

from .processes import DeskError

SEEN_AS = '/sys/desk-clock'  # a link to the file
# Speeds, counted from the program's start. libfaketime divides by it, and keeps one until it reads another.
HELD, FREE = ' x0.001', ' x1'


class Clock:
    def __init__(self, file, nudge):
        self._file = file
        self._nudge = nudge

    @property
    def offset(self):
        return float(self._read().split()[0])

    def now(self):
        """Seconds since 1970, as the program sees it."""
        return time.time() + self.offset

    def advance(self, seconds):
        """Lets that much time pass at once. Never backwards: timers would stop for as long."""
        if seconds < 0:
            raise DeskError('the clock of a running program cannot go back')
        self._write(self.offset + seconds, HELD if HELD in self._read() else '')
        self._nudge()

    def hold(self):
        """Called before the program is started: its time passes by `advance` only, until `release`."""
        self._write(self.offset, HELD)

    def release(self):
        """The time that was held back passes at once."""
        self._write(self.offset, FREE)
        self._nudge()

    def start_at(self, moment):
        """Chooses the time of day before the program is started: 'YYYY-MM-DD HH:MM', in UTC."""
        when = datetime.datetime.strptime(moment, '%Y-%m-%d %H:%M').replace(tzinfo=datetime.timezone.utc)
        self._write(when.timestamp() - time.time())

    def environment(self):
        return {'LD_PRELOAD': library(), 'FAKETIME_TIMESTAMP_FILE': SEEN_AS, 'FAKETIME_NO_CACHE': '1',
                'NO_FAKE_STAT': '1', 'FAKETIME_DONT_RESET': '1'}

    def _read(self):
        try:
            with open(self._file) as f:
                return f.read()
        except FileNotFoundError:
            return '0'

    def _write(self, offset, speed=''):
        new = self._file + '.new'
        with open(new, 'w') as f:
            f.write('%+.3f%s\n' % (offset, speed))
        os.replace(new, self._file)


def library():
    found = glob.glob('/usr/lib/*/faketime/libfaketimeMT.so.1')
    if not found:
        raise DeskError('libfaketime is missing (see scripts/packages.sh)')
    return found[0]


def root_property_nudge(env):
    """A `nudge` for the X display of `env`."""
    def nudge():
        subprocess.run(['xprop', '-root', '-f', '_DESK_CLOCK', '32c', '-set', '_DESK_CLOCK', str(int(time.time()) & 0xffff)],
                       env=env, check=True)
    return nudge
