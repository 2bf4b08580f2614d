#!/usr/bin/env python3
"""A desktop's notification service for the tests: prints each notification as a line of JSON; a line "ID ACTION" on
standard input presses that button."""

import json
import sys

from gi.repository import Gio, GLib

NAME = "org.freedesktop.Notifications"
PATH = "/org/freedesktop/Notifications"
INTERFACE = """<node><interface name="org.freedesktop.Notifications">
  <method name="GetCapabilities"><arg type="as" direction="out"/></method>
  <method name="Notify">
    <arg type="s" direction="in"/><arg type="u" direction="in"/><arg type="s" direction="in"/>
    <arg type="s" direction="in"/><arg type="s" direction="in"/><arg type="as" direction="in"/>
    <arg type="a{sv}" direction="in"/><arg type="i" direction="in"/><arg type="u" direction="out"/>
  </method>
  <signal name="ActionInvoked"><arg type="u"/><arg type="s"/></signal>
  <signal name="ActivationToken"><arg type="u"/><arg type="s"/></signal>
</interface></node>"""


class Server:
    def __init__(self):
        self.loop = GLib.MainLoop()
        self.connection = Gio.bus_get_sync(Gio.BusType.SESSION)
        self.last = 0
        interface = Gio.DBusNodeInfo.new_for_xml(INTERFACE).interfaces[0]
        self.connection.register_object(PATH, interface, self.called, None, None)
        Gio.bus_own_name_on_connection(self.connection, NAME, Gio.BusNameOwnerFlags.NONE,
                                       lambda *_: print(json.dumps("ready"), flush=True), None)
        GLib.io_add_watch(sys.stdin.fileno(), GLib.PRIORITY_DEFAULT, GLib.IOCondition.IN | GLib.IOCondition.HUP, self.told)

    def called(self, connection, sender, path, interface, method, parameters, invocation):
        if method == "GetCapabilities":
            invocation.return_value(GLib.Variant("(as)", (["actions", "body"],)))
            return
        application, replaces, icon, summary, body, actions, _, _ = parameters.unpack()
        self.last = replaces or self.last + 1
        invocation.return_value(GLib.Variant("(u)", (self.last,)))
        print(json.dumps({"id": self.last, "summary": summary, "body": body,
                          "actions": dict(zip(actions[::2], actions[1::2]))}), flush=True)

    def told(self, descriptor, condition):
        line = sys.stdin.readline()
        if not line:
            self.loop.quit()
            return False
        number, action = line.split()
        self.emit("ActivationToken", GLib.Variant("(us)", (int(number), "token")))
        self.emit("ActionInvoked", GLib.Variant("(us)", (int(number), action)))
        return True

    def emit(self, signal, values):
        self.connection.emit_signal(None, PATH, NAME, signal, values)


Server().loop.run()
