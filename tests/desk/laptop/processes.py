"""The processes of one desk, each known by a name and a pid file.

The files, not this object, are what is true: a second program (the command line) can end what a
first one started. Only processes that have a pid file in the desk's folder are ever ended. Numbers
come round again, after a restart of the machine from the first: a file names the start, too.
"""
import os
import signal
import subprocess
import time

from .waiting import PATIENCE, wait_for


class DeskError(Exception):
    """The desk cannot do what was asked."""


class Processes:
    def __init__(self, folder):
        self.pids = os.path.join(folder, 'pids')
        self.logs = os.path.join(folder, 'log')

    def start(self, name, command, env, **options):
        """Starts `command` in a session of its own; its output goes to log/NAME.log."""
        with open(self.log(name), 'ab') as log:
            process = subprocess.Popen(command, env=env, stdin=subprocess.DEVNULL, stdout=log,
                                       stderr=log, start_new_session=True, **options)
        process.returncode = 0  # the pid file is what counts; silences the warning about a running child
        self.keep(name, process.pid)
        return process.pid

    def keep(self, name, pid):
        """A process that runs already is from now on known by this name."""
        with open(os.path.join(self.pids, name), 'w') as f:
            f.write('%d %s' % (pid, started(pid)))

    def log(self, name):
        return os.path.join(self.logs, name + '.log')

    def pid(self, name):
        """None when no such process runs."""
        try:
            with open(os.path.join(self.pids, name)) as f:
                number, start = f.read().split()
                pid = int(number)
        except (OSError, ValueError):
            return None
        return None if gone(pid) or started(pid) != start else pid

    def names(self):
        return sorted(os.listdir(self.pids)) if os.path.isdir(self.pids) else []

    def stop(self, name, sign=signal.SIGTERM, patience=PATIENCE):
        """Ends the process and waits until it is gone; harder when it does not listen."""
        pid = self.pid(name)
        if pid is not None:
            os.kill(pid, sign)
            end = time.monotonic() + patience
            while not gone(pid) and time.monotonic() < end:
                time.sleep(0.01)
            if not gone(pid):
                os.kill(pid, signal.SIGKILL)
                wait_for(lambda: gone(pid), 'the end of ' + name)
        try:
            os.unlink(os.path.join(self.pids, name))
        except FileNotFoundError:
            pass


def gone(pid):
    """True when the process has ended, also when its parent has not yet taken notice."""
    try:
        os.waitpid(pid, os.WNOHANG)
    except ChildProcessError:
        pass
    fields = stat_fields(pid)
    return not fields or fields[0] in 'ZX'


def started(pid):
    """When the process started, in the kernel's own count; None when there is none."""
    fields = stat_fields(pid)
    return fields[19] if fields else None


def stat_fields(pid):
    """What /proc says of the process after its name, which may hold anything; empty when there is none."""
    try:
        with open('/proc/%d/stat' % pid) as f:
            return f.read().rsplit(')', 1)[1].split()
    except (OSError, IndexError):
        return []
