#!/usr/bin/python3
"""A settings portal that wishes for dark windows. Says "ready" once it can be asked.
usage: dark_portal.py [SECONDS], which it takes for each answer"""

import sys
import time

from gi.repository import Gio, GLib

INTERFACE = """<node><interface name="org.freedesktop.portal.Settings">
<method name="Read"><arg type="s" direction="in"/><arg type="s" direction="in"/><arg type="v" direction="out"/></method>
<method name="ReadOne"><arg type="s" direction="in"/><arg type="s" direction="in"/><arg type="v" direction="out"/>
</method></interface></node>"""
DARK = 1
DELAY = float(sys.argv[1]) if len(sys.argv) > 1 else 0


def answer(_connection, _sender, _path, _interface, method, arguments, invocation):
    time.sleep(DELAY)
    if arguments.unpack()[1] != "color-scheme":
        invocation.return_dbus_error("org.freedesktop.portal.Error.NotFound", "no such setting")
        return
    value = GLib.Variant("u", DARK)
    invocation.return_value(GLib.Variant("(v)", (GLib.Variant("v", value) if method == "Read" else value,)))


def offer(connection, _name):
    interface = Gio.DBusNodeInfo.new_for_xml(INTERFACE).interfaces[0]
    connection.register_object("/org/freedesktop/portal/desktop", interface, answer, None, None)


Gio.bus_own_name(Gio.BusType.SESSION, "org.freedesktop.portal.Desktop", Gio.BusNameOwnerFlags.NONE, offer,
                 lambda *_: print("ready", flush=True), None)
GLib.MainLoop().run()
