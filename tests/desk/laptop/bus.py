"""A private message bus of the desk, as a client of it sees it."""
import os

import gi
gi.require_version('Gio', '2.0')
from gi.repository import Gio, GLib

from .waiting import PATIENCE, wait_for


class Bus:
    """Connects when first used; connects again when the desk behind it was taken down and up."""

    def __init__(self, socket):
        self.socket = socket
        self._connection = None
        self._pids = {}  # by unique name; a bus gives none of them twice

    @property
    def address(self):
        return 'unix:path=' + self.socket

    @property
    def connection(self):
        if self._connection is None or self._connection.is_closed():
            flags = (Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT |
                     Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION)
            self._connection = Gio.DBusConnection.new_for_address_sync(self.address, flags, None, None)
            self._connection.set_exit_on_close(False)
            self._pids.clear()
        return self._connection

    def close(self):
        if self._connection is not None and not self._connection.is_closed():
            self._connection.close_sync(None)
        self._connection = None

    def ready(self):
        return os.path.exists(self.socket)

    def call(self, name, path, interface, method, signature=None, *arguments, seconds=PATIENCE):
        """Returns the answer's values as a tuple. Raises GLib.Error with the service's error."""
        variant = GLib.Variant(signature, arguments) if signature else None
        answer = self.connection.call_sync(name, path, interface, method, variant, None,
                                           Gio.DBusCallFlags.NONE, int(seconds * 1000), None)
        return answer.unpack()

    def get(self, name, path, interface, prop):
        return self.call(name, path, 'org.freedesktop.DBus.Properties', 'Get', '(ss)', interface, prop)[0]

    def set(self, name, path, interface, prop, value):
        self.call(name, path, 'org.freedesktop.DBus.Properties', 'Set', '(ssv)', interface, prop, value)

    def owner(self, name):
        """None when nobody owns the name."""
        try:
            return self.call('org.freedesktop.DBus', '/org/freedesktop/DBus', 'org.freedesktop.DBus',
                             'GetNameOwner', '(s)', name)[0]
        except GLib.Error:
            return None

    def names_of(self, pid):
        """The unique names of a process's connections."""
        bus = ('org.freedesktop.DBus', '/org/freedesktop/DBus', 'org.freedesktop.DBus')
        found = []
        for name in self.call(*bus, 'ListNames')[0]:
            try:
                if name.startswith(':') and name not in self._pids:
                    self._pids[name] = self.call(*bus, 'GetConnectionUnixProcessID', '(s)', name)[0]
            except GLib.Error:
                continue  # it left meanwhile
            if self._pids.get(name) == pid:
                found.append(name)
        return found

    def wait_name(self, name):
        return wait_for(lambda: self.owner(name), name + ' on the bus')
