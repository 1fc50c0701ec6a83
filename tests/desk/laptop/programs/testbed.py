#!/usr/bin/python3
"""testbed.py SOCKET: holds the simulated /sys and obeys one-line commands on a Unix socket.

Runs under umockdev-wrapper: without it the kernel events that it sends are lost. Words of a command
are separated by tabs; the answer is one line, "ok ..." or "err ...".

  set DEVICE (ATTRIBUTE VALUE)...         write attributes, then one "change" event ("-": remove the file)
  raw DEVICE (ATTRIBUTE VALUE)...         the same without an event
  uevent DEVICE [ACTION]                  an event alone
  get DEVICE ATTRIBUTE
  add DEVICE battery|ac [(ATTRIBUTE VALUE)...]
  remove DEVICE
  list | root
"""
import os
import shutil
import signal
import socket
import sys

import gi
gi.require_version('UMockdev', '1.0')
from gi.repository import GLib, UMockdev

DEFAULTS = {
    'battery': {
        'type': 'Battery', 'present': '1', 'status': 'Discharging', 'technology': 'Li-ion',
        'manufacturer': 'Desk', 'model_name': 'D-50', 'serial_number': '12345',
        'energy_full_design': '60000000', 'energy_full': '50000000', 'energy_now': '40000000',
        'power_now': '10000000', 'voltage_now': '12000000', 'voltage_min_design': '11400000',
        'capacity': '80', 'capacity_level': 'Normal', 'cycle_count': '123', 'temp': '305', 'alarm': '0',
        'charge_control_start_threshold': '0', 'charge_control_end_threshold': '100'},
    'ac': {'type': 'Mains', 'online': '0'},
}


class Testbed:
    def __init__(self):
        self.bed = UMockdev.Testbed.new()
        self.root = self.bed.get_root_dir()
        self.paths = {}

    def add(self, name, kind, *pairs):
        attributes = dict(DEFAULTS[kind], **dict(zip(pairs[::2], pairs[1::2])))
        flat = [word for key, value in attributes.items() if value != '-' for word in (key, value)]
        events = ['POWER_SUPPLY_NAME', name, 'POWER_SUPPLY_TYPE', attributes['type']]
        self.paths[name] = self.bed.add_device('power_supply', name, None, flat, events)

    def remove(self, name):
        path = self.paths.pop(name)
        self.bed.uevent(path, 'remove')
        self.bed.remove_device(path)

    def raw(self, name, *pairs):
        for attribute, value in zip(pairs[::2], pairs[1::2]):
            if value == '-':
                try:
                    os.unlink(self.file(name, attribute))
                except FileNotFoundError:
                    pass
            else:
                self.bed.set_attribute(self.paths[name], attribute, value)

    def set(self, name, *pairs):
        self.raw(name, *pairs)
        self.uevent(name)

    def uevent(self, name, action='change'):
        self.bed.uevent(self.paths[name], action)

    def get(self, name, attribute):
        with open(self.file(name, attribute)) as f:
            return f.read().strip()

    def file(self, name, attribute):
        return os.path.join(self.root + self.paths[name], attribute)

    def obey(self, line):
        word, *rest = line.split('\t')
        if word == 'list':
            return ' '.join(sorted(self.paths))
        if word == 'root':
            return self.root
        if word not in ('set', 'raw', 'uevent', 'get', 'add', 'remove'):
            raise ValueError('unknown command ' + word)
        return getattr(self, word)(*rest) or ''


def platform_profiles(root):
    """What power-profiles-daemon needs to find: firmware with three profiles."""
    folder = root + '/sys/firmware/acpi'
    os.makedirs(folder)
    for name, text in (('platform_profile_choices', 'low-power balanced performance'),
                       ('platform_profile', 'balanced')):
        with open(os.path.join(folder, name), 'w') as f:
            f.write(text + '\n')


def main():
    testbed = Testbed()
    platform_profiles(testbed.root)
    testbed.add('AC', 'ac')
    testbed.add('BAT0', 'battery')
    loop = GLib.MainLoop()
    listener = socket.socket(socket.AF_UNIX, socket.SOCK_STREAM)
    listener.bind(sys.argv[1] + '.new')
    listener.listen(8)
    os.rename(sys.argv[1] + '.new', sys.argv[1])  # who finds the name is answered

    def answer(_fd, _condition):
        connection, _ = listener.accept()
        with connection:
            try:
                reply = 'ok ' + testbed.obey(connection.makefile().readline().rstrip('\n'))
            except Exception as error:  # a wrong command must not take the hardware away
                reply = 'err %s: %s' % (type(error).__name__, error)
            connection.sendall((reply + '\n').encode())
        return True

    GLib.io_add_watch(listener.fileno(), GLib.IO_IN, answer)
    GLib.unix_signal_add(GLib.PRIORITY_HIGH, signal.SIGTERM, loop.quit)
    loop.run()
    shutil.rmtree(testbed.root, ignore_errors=True)


main()
