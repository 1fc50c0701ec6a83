#!/usr/bin/python3
"""listener.py FILE: hears every accessibility event, as a screen reader does, and adds one JSON line for each.

Programs send these events only while somebody is registered for them. "source" is the name of the
widget that it comes from, "value" the number that it then has, if that is what changed.
"""
import json
import sys
import warnings

warnings.simplefilter('ignore')
import gi
gi.require_version('Atspi', '2.0')
from gi.repository import Atspi, GLib

out = open(sys.argv[1], 'a', buffering=1)


def write(**line):
    out.write(json.dumps(line, ensure_ascii=False) + '\n')


def heard(event, *_):
    try:
        write(ev=event.type, role=event.source.get_role_name(), source=event.source.get_name(),
              value=value_of(event.source) if event.type.endswith(':accessible-value') else None)
    except GLib.Error:
        write(ev=event.type, role=None, source=None, value=None)  # it went away while we asked


def value_of(widget):
    value = widget.get_value_iface()
    return value.get_current_value() if value else None


Atspi.init()
listener = Atspi.EventListener.new(heard)
for kind in ('object', 'window', 'focus'):
    listener.register(kind)
write(ev='start')
GLib.MainLoop().run()
