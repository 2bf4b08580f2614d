#!/usr/bin/python3
"""A desktop's tray: takes status items, and clicks them as it is told. A line of JSON goes out for each that comes.
Lines in: "menu" answers with the labels of the item's menu, "choose LABEL" picks one of them, "click X Y" activates the
item."""

import json
import sys

import gi

gi.require_version("Gio", "2.0")
from gi.repository import Gio, GLib  # noqa: E402

WATCHER = "org.kde.StatusNotifierWatcher"
ITEM = "org.kde.StatusNotifierItem"
MENU = "com.canonical.dbusmenu"
INTERFACE = """<node><interface name="org.kde.StatusNotifierWatcher">
  <method name="RegisterStatusNotifierItem"><arg type="s" direction="in"/></method>
  <method name="RegisterStatusNotifierHost"><arg type="s" direction="in"/></method>
  <property name="RegisteredStatusNotifierItems" type="as" access="read"/>
  <property name="IsStatusNotifierHostRegistered" type="b" access="read"/>
  <property name="ProtocolVersion" type="i" access="read"/>
  <signal name="StatusNotifierItemRegistered"><arg type="s"/></signal>
  <signal name="StatusNotifierHostRegistered"/>
</interface></node>"""


def say(value):
    print(json.dumps(value), flush=True)


class Tray:
    def __init__(self):
        self.bus = Gio.bus_get_sync(Gio.BusType.SESSION)
        self.items = []
        interface = Gio.DBusNodeInfo.new_for_xml(INTERFACE).interfaces[0]
        self.bus.register_object("/StatusNotifierWatcher", interface, self.called, self.asked, None)
        Gio.bus_own_name_on_connection(self.bus, WATCHER, Gio.BusNameOwnerFlags.NONE, self.ready, None)

    def ready(self, *_):
        self.bus.emit_signal(None, "/StatusNotifierWatcher", WATCHER, "StatusNotifierHostRegistered", None)
        say("ready")

    def called(self, _bus, sender, _path, _interface, method, arguments, invocation):
        if method == "RegisterStatusNotifierItem":
            name = arguments.unpack()[0]
            self.items.append(sender if name.startswith("/") else name)
            self.bus.emit_signal(None, "/StatusNotifierWatcher", WATCHER, "StatusNotifierItemRegistered",
                                 GLib.Variant("(s)", (name,)))
            invocation.return_value(None)
            say({"item": self.property("Id"), "title": self.property("Title"), "icon": self.property("IconName"),
                 "pixels": bool(self.property("IconPixmap"))})
        else:
            invocation.return_value(None)

    def asked(self, _bus, _sender, _path, _interface, key):
        return {"RegisteredStatusNotifierItems": GLib.Variant("as", self.items),
                "IsStatusNotifierHostRegistered": GLib.Variant("b", True),
                "ProtocolVersion": GLib.Variant("i", 0)}[key]

    def call(self, path, interface, method, arguments, reply=None):
        return self.bus.call_sync(self.items[-1], path, interface, method, arguments,
                                  reply and GLib.VariantType(reply), Gio.DBusCallFlags.NONE, 5000, None)

    def property(self, key):
        return self.call("/StatusNotifierItem", "org.freedesktop.DBus.Properties", "Get",
                         GLib.Variant("(ss)", (ITEM, key)), "(v)").unpack()[0]

    def menu(self):
        """The entries' numbers by their labels."""
        path = self.property("Menu")
        self.call(path, MENU, "AboutToShow", GLib.Variant("(i)", (0,)))
        reply = self.call(path, MENU, "GetLayout", GLib.Variant("(iias)", (0, -1, [])), "(u(ia{sv}av))").unpack()
        return {child[1].get("label", "").replace("_", ""): child[0] for child in reply[1][2]}

    def told(self, source, _condition):
        line = source.readline().strip()
        if not line:
            sys.exit(0)
        command, _, rest = line.partition(" ")
        if command == "menu":
            say(list(self.menu()))
        elif command == "choose":
            event = GLib.Variant("(isvu)", (self.menu()[rest], "clicked", GLib.Variant("s", ""), 0))
            self.call(self.property("Menu"), MENU, "Event", event)
            say("chosen")
        elif command == "click":
            x, y = map(int, rest.split())
            self.call("/StatusNotifierItem", ITEM, "Activate", GLib.Variant("(ii)", (x, y)))
            say("clicked")
        return True


tray = Tray()
GLib.io_add_watch(sys.stdin, GLib.IO_IN | GLib.IO_HUP, tray.told)
GLib.MainLoop().run()
