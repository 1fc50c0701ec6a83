"""The desk's Python programs: run by one server that has loaded their libraries (programs/fork_server.py)."""
import json
import os
import socket

from .processes import DeskError
from .waiting import PATIENCE


class Pythons:
    def __init__(self, socket_path, processes):
        self._socket = socket_path
        self._processes = processes

    def ready(self):
        return os.path.exists(self._socket)

    def start(self, name, *words):
        """Starts a program that stays, known by `name` as if `processes` had started it."""
        pid, _ = self._request(words, self._processes.log(name), stays=True)
        self._processes.keep(name, int(pid))

    def run(self, *words):
        """Runs a program to its end and returns what it printed."""
        log = self._processes.log(os.path.basename(words[0]))
        _, text = self._request(words, log, stays=False)
        if not text:
            with open(log) as f:
                raise DeskError('%s: %s' % (words[0], f.read().strip()))
        return text

    def _request(self, words, log, stays):
        with socket.socket(socket.AF_UNIX, socket.SOCK_STREAM) as s:
            s.settimeout(PATIENCE)
            s.connect(self._socket)
            s.sendall((json.dumps({'words': words, 'log': log, 'stays': stays}) + '\n').encode())
            with s.makefile() as answer:
                return answer.readline(), '' if stays else answer.read()
