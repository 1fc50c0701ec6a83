"""The laptop's loudspeaker: what a real sound server played, by name, and what was to be heard of it.

The server's log tells of every sound from its first sample on, however short it is.
"""
import os
import re

from .waiting import wait_for

SINK = 'desk'
RATE = 44100


class Speaker:
    def __init__(self, desk):
        self._desk = desk

    def played(self):
        """One dictionary of properties (event.id, media.filename, application.name...) a sound, in order."""
        sounds = []
        for line in self._desk.log('sound').split('\n'):
            if 'sink-input.c: Created input' in line:
                sounds.append({})
            said = re.search(r'sink-input\.c: +([a-z_.-]+) = "(.*)"$', line)
            if said and sounds:
                sounds[-1][said.group(1)] = said.group(2)
        return sounds

    def names(self):
        """The sounds by the names in their theme, whether they were asked for by name or as a file."""
        return [s.get('event.id') or os.path.basename(s['media.filename']).rsplit('.', 1)[0] for s in self.played()]

    def listen(self):
        """Records from now on; heard() returns the samples so far, 16 bits each, one channel."""
        file = self._desk.path('heard.raw')
        self._desk.processes.start('ear', ['parec', '--device=%s.monitor' % SINK, '--raw', '--format=s16',
                                           '--rate=%d' % RATE, '--channels=1', '--latency-msec=20', file], self._desk.env)
        wait_for(self.heard, 'the first sample of silence')

    def heard(self):
        try:
            with open(self._desk.path('heard.raw'), 'rb') as f:
                return f.read()
        except FileNotFoundError:
            return b''


def server_command(socket):
    """In the foreground, without the machine's configuration, devices and rights; never idle."""
    return ['pulseaudio', '-n', '--system=false', '--daemonize=no', '--exit-idle-time=-1', '--use-pid-file=no',
            '--disable-shm=yes', '--realtime=no', '--high-priority=no', '--log-target=stderr', '--log-level=info',
            '--load=module-null-sink sink_name=%s rate=%d channels=1' % (SINK, RATE),
            '--load=module-native-protocol-unix socket=%s auth-anonymous=1' % socket]
