"""A system tray without a picture: writes the bus name of the item that registers itself into a file. tray.py FILE"""
import pathlib
import sys

from gi.repository import Gio, GLib

NAME = "org.kde.StatusNotifierWatcher"
INTERFACE = Gio.DBusNodeInfo.new_for_xml(f"""<node><interface name="{NAME}">
<method name="RegisterStatusNotifierItem"><arg type="s" direction="in"/></method>
<property name="IsStatusNotifierHostRegistered" type="b" access="read"/></interface></node>""").interfaces[0]


def register(_bus, _sender, _path, _interface, _method, arguments, call):
    pathlib.Path(sys.argv[1]).write_text(arguments[0])
    call.return_value(None)


def appear(bus, _name):
    bus.register_object("/StatusNotifierWatcher", INTERFACE, register, lambda *_: GLib.Variant("b", True), None)


Gio.bus_own_name(Gio.BusType.SESSION, NAME, Gio.BusNameOwnerFlags.NONE, appear, None, None)
GLib.MainLoop().run()
