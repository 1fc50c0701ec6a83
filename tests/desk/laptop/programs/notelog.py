#!/usr/bin/python3
"""notelog.py FILE: listens to the session bus and adds one JSON line for each notification event.

"ev" is start, notify (with the id that the server answered), notify-failed, close-call, action,
closed or signal. "t" is seconds since 1970.
"""
import json
import sys
import time

import dbus
import dbus.bus
import dbus.lowlevel
from dbus.mainloop.glib import DBusGMainLoop
from gi.repository import GLib

NOTIFICATIONS = 'org.freedesktop.Notifications'
CALL, ANSWER, ERROR, SIGNAL = 1, 2, 3, 4
FIELDS = ('app', 'replaces', 'icon', 'summary', 'body', 'actions', 'hints', 'timeout')


def plain(value):
    if isinstance(value, dbus.Boolean):
        return bool(value)
    if isinstance(value, dbus.Array) and value.signature == 'y':
        return '<%d bytes>' % len(value)
    if isinstance(value, (list, tuple)):
        return [plain(v) for v in value]
    if isinstance(value, dict):
        return {str(k): plain(v) for k, v in value.items()}
    if isinstance(value, float):
        return float(value)
    if isinstance(value, int):
        return int(value)
    return str(value)


class Log:
    def __init__(self, file):
        self.out = open(file, 'a', buffering=1)
        self.pending = {}  # Notify calls that the server has not answered yet

    def write(self, ev, **rest):
        self.out.write(json.dumps(dict(t=round(time.time(), 3), ev=ev, **rest), ensure_ascii=False) + '\n')

    def message(self, _bus, m):
        kind, ours, member = m.get_type(), m.get_interface() == NOTIFICATIONS, m.get_member()
        arguments = plain(m.get_args_list())
        answered = (m.get_destination(), m.get_reply_serial())
        if kind == CALL and ours and member == 'Notify':
            self.pending[(m.get_sender(), m.get_serial())] = dict(zip(FIELDS, arguments))
        elif kind == CALL and ours and member == 'CloseNotification':
            self.write('close-call', id=arguments[0])
        elif kind == ANSWER and answered in self.pending:
            self.write('notify', id=arguments[0], **self.pending.pop(answered))
        elif kind == ERROR and answered in self.pending:
            self.write('notify-failed', error=m.get_error_name(), **self.pending.pop(answered))
        elif kind == SIGNAL and ours and member == 'ActionInvoked':
            self.write('action', id=arguments[0], key=arguments[1])
        elif kind == SIGNAL and ours and member == 'NotificationClosed':
            self.write('closed', id=arguments[0], reason=arguments[1])
        elif kind == SIGNAL and ours:
            self.write('signal', name=member, args=arguments)
        return dbus.lowlevel.HANDLER_RESULT_HANDLED


def main():
    DBusGMainLoop(set_as_default=True)
    log = Log(sys.argv[1])
    bus = dbus.bus.BusConnection(dbus.bus.BusConnection.TYPE_SESSION)
    bus.add_message_filter(log.message)
    rules = ["interface='%s'" % NOTIFICATIONS, "type='method_return'", "type='error'"]
    bus.call_blocking('org.freedesktop.DBus', '/org/freedesktop/DBus', 'org.freedesktop.DBus.Monitoring',
                      'BecomeMonitor', 'asu', (rules, 0))
    log.write('start')
    GLib.MainLoop().run()


main()
