#!/usr/bin/python3
"""record.py FILE: records this machine's battery, as a trace that the replay test plays.

Runs until it is interrupted (Ctrl-C). A line is written at each change of what UPower, the kernel's
battery files and the power profile say, and at each sleep and wake; tests/recorded/Trace.h
describes the format. Put the file into tests/data/replay/ and run the tests: they write what the
program makes of it beside it. The trace names no more of the machine than its battery's model.
"""
import glob
import json
import os
import signal
import sys
import time

import gi
gi.require_version('Gio', '2.0')
from gi.repository import Gio, GLib

UPOWER, DEVICE = 'org.freedesktop.UPower', '/org/freedesktop/UPower/devices/DisplayDevice'
PROFILES = (('org.freedesktop.UPower.PowerProfiles', '/org/freedesktop/UPower/PowerProfiles'),
            ('net.hadess.PowerProfiles', '/net/hadess/PowerProfiles'))
LOGIN = 'org.freedesktop.login1'
SUPPLIES = '/sys/class/power_supply'
# UPower's numbers.
BATTERY, UPS = 2, 3
UNKNOWN, CHARGING, EMPTY, FULL = 0, 1, 3, 4

BURST_MS = 500        # plugging in makes several signals, and the files follow them late
LOOK_SECONDS = 60     # the files change without a signal


def power_table(device, on_battery, before):
    """The power-source table; a battery that does not tell anything yet leaves what was before."""
    if not device or device['Type'] not in (BATTERY, UPS) or not device['IsPresent']:
        return []
    if device['Percentage'] == 0 and device['State'] in (UNKNOWN, EMPTY):
        return before
    source = {'Type': 'InternalBattery' if device['Type'] == BATTERY else 'UPS', 'Is Present': True,
              'Current Capacity': device['Percentage'], 'Max Capacity': 100,
              'Is Charging': device['State'] == CHARGING, 'Is Charged': device['State'] == FULL,
              'Power Source State': 'Battery Power' if on_battery else 'AC Power',
              'Time to Full Charge': device['TimeToFull'] // 60 or -1,
              'Time to Empty': device['TimeToEmpty'] // 60 or -1}
    if device['Model']:
        source['Name'] = device['Model']
    return [source]


def attributes(folder):
    """The files of one power supply; numbers as numbers."""
    found = {}
    for name in os.listdir(folder):
        try:
            with open(os.path.join(folder, name)) as f:
                text = f.read(4096).strip()
        except (OSError, UnicodeDecodeError):
            continue
        try:
            found[name] = int(text)
        except ValueError:
            found[name] = text
    return found


def smart_battery(supplies):
    """The properties of all internal packs together; None without one."""
    packs = [s for s in supplies if s.get('type') == 'Battery' and s.get('scope') != 'Device' and s.get('present') != 0]
    if not packs:
        return None
    properties = {}

    def put(key, value):
        if value is not None:
            properties[key] = round(value)

    unit = 'energy' if any('energy_full' in p for p in packs) else 'charge'
    for key, name in (('DesignCapacity', unit + '_full_design'), ('AppleRawMaxCapacity', unit + '_full')):
        if all(p.get(name, 0) > 0 for p in packs):
            put(key, sum(p[name] for p in packs) / 1000)
    cycles = [p['cycle_count'] for p in packs if 0 < p.get('cycle_count', 0) < 65535]
    put('CycleCount', max(cycles, default=None))
    temperatures = [p['temp'] * 10 for p in packs if 'temp' in p]
    put('Temperature', max(temperatures, default=None))
    volts = [p['voltage_now'] / 1000 for p in packs if p.get('voltage_now', 0) > 0]
    put('Voltage', volts[0] if volts else None)
    if volts:
        put('Amperage', amperage(packs, volts[0]))
    watts = [s['voltage_max'] * s['current_max'] / 1e12 for s in supplies
             if s.get('type') != 'Battery' and s.get('online') and 'voltage_max' in s and 'current_max' in s]
    if watts:
        properties['AdapterDetails'] = {'Watts': round(max(watts))}
    return properties


def amperage(packs, millivolts):
    """Milliamperes of all packs at one voltage, negative while discharging; None when not told."""
    total, told = 0, False
    for pack in packs:
        if 'current_now' in pack:
            size = abs(pack['current_now']) / 1000
        elif 'power_now' in pack:
            size = abs(pack['power_now']) / millivolts
        else:
            continue
        told = True
        total += -size if pack.get('status') == 'Discharging' else size
    return total if told else None


class Recorder:
    def __init__(self, file):
        self.out = open(file, 'w', buffering=1)
        self.bus = Gio.bus_get_sync(Gio.BusType.SYSTEM)
        self.table, self.battery, self.saving = None, None, None
        self.burst = 0
        for sender, interface, member in ((UPOWER, 'org.freedesktop.DBus.Properties', 'PropertiesChanged'),
                                          (None, 'org.freedesktop.DBus', 'NameOwnerChanged')):
            self.bus.signal_subscribe(sender, interface, member, None, None, 0, lambda *_: self.look_soon())
        for name, path in PROFILES:
            self.bus.signal_subscribe(name, 'org.freedesktop.DBus.Properties', 'PropertiesChanged', path, None, 0,
                                      lambda *_: self.look_soon())
        self.bus.signal_subscribe(LOGIN, LOGIN + '.Manager', 'PrepareForSleep', None, None, 0,
                                  lambda *a: self.sleeps(a[5].unpack()[0]))
        GLib.timeout_add_seconds(LOOK_SECONDS, lambda: self.look() or True)
        self.look()

    def look_soon(self):
        if not self.burst:
            self.burst = GLib.timeout_add(BURST_MS, self.look)

    def properties(self, name, path, interface):
        """Empty when there is no such service."""
        try:
            return self.bus.call_sync(name, path, 'org.freedesktop.DBus.Properties', 'GetAll',
                                      GLib.Variant('(s)', (interface,)), None, 0, 2000).unpack()[0]
        except GLib.Error:
            return {}

    def look(self):
        self.burst = 0
        upower = self.properties(UPOWER, '/org/freedesktop/UPower', UPOWER)
        device = self.properties(UPOWER, DEVICE, UPOWER + '.Device')
        table = power_table(device, upower.get('OnBattery', False), self.table or []) if upower else self.table or []
        battery = smart_battery([attributes(folder) for folder in sorted(glob.glob(SUPPLIES + '/*'))])
        profiles = [self.properties(name, path, name).get('ActiveProfile') for name, path in PROFILES]
        saving = 'power-saver' in profiles

        first, line = self.table is None, {}
        if table != self.table:
            line['table'] = table
        if battery != self.battery or first:
            line['smartBattery'] = battery
        if first:
            line['lowPowerMode'] = saving
        elif 'table' in line:
            line['do'] = 'event'
        if line:
            self.write(line)
        if saving != self.saving and not first:
            self.write({'lowPowerMode': saving, 'do': 'powerState'})
        self.table, self.battery, self.saving = table, battery, saving

    def sleeps(self, start):
        self.write({'do': 'willSleep' if start else 'didWake'})
        if not start:
            self.look_soon()

    def write(self, line):
        self.out.write(json.dumps(dict(t=round(time.time(), 1), **line), ensure_ascii=False, separators=(',', ':')) + '\n')


def main(file):
    loop = GLib.MainLoop()
    for sign in (signal.SIGINT, signal.SIGTERM):
        GLib.unix_signal_add(GLib.PRIORITY_DEFAULT, sign, loop.quit)
    Recorder(file)
    loop.run()


if __name__ == '__main__':
    if len(sys.argv) != 2:
        sys.exit(__doc__.strip())
    main(sys.argv[1])
