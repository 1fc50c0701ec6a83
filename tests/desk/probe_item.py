#!/usr/bin/python3
"""A minimal status item, to test the desk with: registers with the panel and prints what reaches it."""
import os
import sys

import gi
gi.require_version('Gio', '2.0')
from gi.repository import Gio, GLib

ITEM = '''<node><interface name="org.kde.StatusNotifierItem">
  <property name="Category" type="s" access="read"/><property name="Id" type="s" access="read"/>
  <property name="Title" type="s" access="read"/><property name="Status" type="s" access="read"/>
  <property name="IconName" type="s" access="read"/><property name="IconPixmap" type="a(iiay)" access="read"/>
  <property name="ItemIsMenu" type="b" access="read"/>
  <method name="Activate"><arg type="i" direction="in"/><arg type="i" direction="in"/></method>
  <method name="SecondaryActivate"><arg type="i" direction="in"/><arg type="i" direction="in"/></method>
  <method name="ContextMenu"><arg type="i" direction="in"/><arg type="i" direction="in"/></method>
</interface></node>'''
SIZE = 24
PROPERTIES = {
    'Category': GLib.Variant('s', 'Hardware'), 'Id': GLib.Variant('s', 'desk-probe'),
    'Title': GLib.Variant('s', 'Desk probe'), 'Status': GLib.Variant('s', 'Active'),
    'IconName': GLib.Variant('s', ''), 'ItemIsMenu': GLib.Variant('b', False),
    'IconPixmap': GLib.Variant('a(iiay)', [(SIZE, SIZE, bytes([255, 200, 0, 0]) * SIZE * SIZE)]),
}
WATCHER = ('org.kde.StatusNotifierWatcher', '/StatusNotifierWatcher', 'org.kde.StatusNotifierWatcher')


def called(_bus, _sender, _path, _interface, method, arguments, invocation):
    print(method, *arguments.unpack(), flush=True)
    invocation.return_value(None)


def register(bus, *_):
    bus.call_sync(*WATCHER, 'RegisterStatusNotifierItem', GLib.Variant('(s)', (bus.get_unique_name(),)), None, 0, -1)
    print('registered', flush=True)


bus = Gio.bus_get_sync(Gio.BusType.SESSION)
bus.register_object('/StatusNotifierItem', Gio.DBusNodeInfo.new_for_xml(ITEM).interfaces[0], called,
                    lambda _b, _s, _p, _i, name: PROPERTIES[name])
Gio.bus_watch_name_on_connection(bus, WATCHER[0], Gio.BusNameWatcherFlags.NONE, register, None)
with open('/sys/class/power_supply/BAT0/cycle_count') as f:
    print('cycles', f.read().strip(), flush=True)
GLib.MainLoop().run()
