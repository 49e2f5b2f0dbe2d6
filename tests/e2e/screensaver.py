"""A desktop's screen saver (org.freedesktop.ScreenSaver).

Writes how many programs hold it off to the file named by the first argument, at each change.
"""

import sys
from pathlib import Path

import gi

gi.require_version("Gio", "2.0")
from gi.repository import Gio, GLib  # noqa: E402

_INTERFACE = Gio.DBusNodeInfo.new_for_xml("""<node><interface name="org.freedesktop.ScreenSaver">
  <method name="Inhibit">
    <arg type="s" direction="in"/><arg type="s" direction="in"/><arg type="u" direction="out"/>
  </method>
  <method name="UnInhibit"><arg type="u" direction="in"/></method>
</interface></node>""").interfaces[0]
_holders = {}
_cookies = iter(range(1, 1 << 32))


def tell():
    Path(sys.argv[1]).write_text(str(len(_holders)))


def forget(holder):
    for cookie in [cookie for cookie, name in _holders.items() if name == holder]:
        del _holders[cookie]
    tell()


def call(bus, sender, _path, _interface, method, arguments, invocation):
    if method == "Inhibit":
        cookie = next(_cookies)
        _holders[cookie] = sender
        Gio.bus_watch_name_on_connection(bus, sender, Gio.BusNameWatcherFlags.NONE, None,
                                         lambda _bus, name: forget(name))
        invocation.return_value(GLib.Variant("(u)", (cookie,)))
    else:
        _holders.pop(arguments.unpack()[0], None)
        invocation.return_value(None)
    tell()


_bus = Gio.bus_get_sync(Gio.BusType.SESSION)
_bus.register_object("/org/freedesktop/ScreenSaver", _INTERFACE, call, None, None)
Gio.bus_own_name_on_connection(_bus, "org.freedesktop.ScreenSaver", Gio.BusNameOwnerFlags.NONE,
                               None, None)
tell()
GLib.MainLoop().run()
