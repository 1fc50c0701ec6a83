#!/usr/bin/python3
"""fork_server.py SOCKET: runs the desk's Python programs in forks of itself, which has loaded their libraries.

Starting Python and loading these libraries takes most of the processor time of such a program.

A request is one JSON line: "words" are the file of the program, or "dbusmock", and its arguments. The
answer is a line with the number of its process. What "stays" prints to the file "log"; another program's
errors go there, and what it prints to its end is the rest of the answer.
Runs under umockdev-wrapper, which testbed.py needs and which changes nothing for the others.
"""
import gc
import json
import os
import runpy
import signal
import socket
import sys
import traceback

gc.disable()  # so that all of this stays in memory that the forks share
# Loaded for the programs. Nothing here may start a thread or connect to a bus: forks would share it.
import argparse  # noqa: F401
import ctypes  # noqa: F401
import dbus.bus  # noqa: F401
import dbus.mainloop.glib  # noqa: F401
import dbusmock.testcase  # noqa: F401
import gi
gi.require_version('Atspi', '2.0')
gi.require_version('UMockdev', '1.0')
from gi.repository import Atspi, GLib, UMockdev  # noqa: F401


def run(program, arguments):
    """Runs the program as Python would, and returns its exit code."""
    sys.argv = [program, *arguments]
    try:
        if program == 'dbusmock':
            runpy.run_module(program, run_name='__main__', alter_sys=True)
        else:
            runpy.run_path(program, run_name='__main__')
    except SystemExit as end:
        if isinstance(end.code, str):
            print(end.code, file=sys.stderr)
        return 0 if end.code is None else end.code if isinstance(end.code, int) else 1
    except BaseException:
        traceback.print_exc()
        return 1
    return 0


def become(words, log, stays, connection):
    """In the fork: runs the program as a process of its own session. Does not return."""
    gc.enable()
    os.setsid()
    signal.signal(signal.SIGCHLD, signal.SIG_DFL)
    connection.sendall(b'%d\n' % os.getpid())
    os.dup2(os.open(log, os.O_WRONLY | os.O_APPEND | os.O_CREAT | os.O_CLOEXEC, 0o600), 2)
    os.dup2(2 if stays else connection.fileno(), 1)
    connection.close()
    code = run(words[0], words[1:])
    try:
        sys.stdout.flush()
    finally:
        os._exit(code)


def main(path):
    gc.freeze()
    signal.signal(signal.SIGCHLD, signal.SIG_IGN)  # the kernel clears the ended forks away
    listener = socket.socket(socket.AF_UNIX, socket.SOCK_STREAM)
    listener.bind(path + '.new')
    listener.listen(8)
    os.rename(path + '.new', path)  # a client that finds the name is answered
    while True:
        connection, _ = listener.accept()
        with connection.makefile() as lines:
            line = lines.readline()
        if line and os.fork() == 0:  # none from a client that has gone
            listener.close()
            become(connection=connection, **json.loads(line))
        connection.close()


main(sys.argv[1])
