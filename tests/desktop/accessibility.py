"""The program's accessibility tree, over the bus on which assistive technology reads it."""

import gi

gi.require_version("Gio", "2.0")
from gi.repository import Gio, GLib  # noqa: E402

ACCESSIBLE = "org.a11y.atspi.Accessible"
ACTION = "org.a11y.atspi.Action"
COMPONENT = "org.a11y.atspi.Component"
ROOT = "/org/a11y/atspi/accessible/root"
FOCUSABLE, SHOWING = 11, 25


class Node:
    def __init__(self, bus, name, path):
        self._bus, self._name, self._path = bus, name, path

    def _call(self, interface, method, arguments=None, reply=None):
        return self._bus.call_sync(self._name, self._path, interface, method, arguments,
                                   reply and GLib.VariantType(reply), Gio.DBusCallFlags.NONE, 5000, None).unpack()

    def _property(self, interface, key):
        return self._call("org.freedesktop.DBus.Properties", "Get", GLib.Variant("(ss)", (interface, key)), "(v)")[0]

    @property
    def name(self):
        return self._property(ACCESSIBLE, "Name")

    @property
    def role(self):
        return self._call(ACCESSIBLE, "GetRoleName", None, "(s)")[0]

    def has_state(self, bit):
        states = self._call(ACCESSIBLE, "GetState", None, "(au)")[0]
        return bool(states[bit // 32] >> (bit % 32) & 1)

    def children(self):
        return [Node(self._bus, *child) for child in self._call(ACCESSIBLE, "GetChildren", None, "(a(so))")[0]]

    def walk(self):
        yield self
        for child in self.children():
            yield from child.walk()

    def find(self, name, role=None):
        """The first node on the screen of this name; nothing when there is none."""
        try:
            for node in self.walk():
                if node.name == name and (role is None or node.role == role) and node.has_state(SHOWING):
                    return node
        except GLib.Error:
            pass  # the tree changed while it was read
        return None

    def perform(self):
        """What a click does."""
        self._call(ACTION, "DoAction", GLib.Variant("(i)", (0,)), "(b)")

    def middle(self):
        x, y, width, height = self._call(COMPONENT, "GetExtents", GLib.Variant("(u)", (0,)), "((iiii))")[0]
        return x + width // 2, y + height // 2


def program(session_address):
    """The tree of the one program that is on this session's accessibility bus; nothing when there is none yet."""
    flags = Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION
    session = Gio.DBusConnection.new_for_address_sync(session_address, flags, None, None)
    try:
        address = session.call_sync("org.a11y.Bus", "/org/a11y/bus", "org.a11y.Bus", "GetAddress", None,
                                    GLib.VariantType("(s)"), Gio.DBusCallFlags.NONE, 5000, None).unpack()[0]
        bus = Gio.DBusConnection.new_for_address_sync(address, flags, None, None)
        for node in Node(bus, "org.a11y.atspi.Registry", ROOT).children():
            if node.name.lower() == "vantoro":
                return node
    except GLib.Error:
        pass
    finally:
        session.close_sync(None)
    return None
