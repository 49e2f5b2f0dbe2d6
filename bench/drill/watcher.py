"""Tells again and again what the windows of some programs show, each time as one line of JSON.

Its input names them: "watch NAME PID" or "forget NAME". It asks by the accessibility bus, but all
that it wants to know of a screen at once, so that it costs the programs little and a screen that
hangs keeps it from no other.
"""

import json
import os
import sys
import time

import gi

gi.require_version("Gio", "2.0")
from gi.repository import Gio, GLib  # noqa: E402

SECONDS_BETWEEN = 0.3
PATIENCE = 1500  # ms that an answer may take
ROOT = ("org.a11y.atspi.Registry", "/org/a11y/atspi/accessible/root")
ACCESSIBLE = "org.a11y.atspi.Accessible"
SHOWING = 1 << 25  # of the state's first word, as the next are in the Atspi library
HEADING = 83


class Watcher:
    def __init__(self):
        session = Gio.bus_get_sync(Gio.BusType.SESSION)
        address = session.call_sync("org.a11y.Bus", "/org/a11y/bus", "org.a11y.Bus", "GetAddress",
                                    None, None, Gio.DBusCallFlags.NONE, -1).unpack()[0]
        self.bus = Gio.DBusConnection.new_for_address_sync(
            address, Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT |
            Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION)
        self.pids = {}
        self.programs = {}  # the bus name of each

    def obey(self, line):
        word, name, *pid = line.split()
        self.pids.pop(name, None)
        self.programs.pop(name, None)
        if word == "watch":
            self.pids[name] = int(pid[0])
            self.look(name, self.pids[name])

    def look(self, name, pid):
        """Looks at a program, and again after a while for as long as it is the one to watch."""
        if self.pids.get(name) != pid:
            return
        begin = time.monotonic()

        def tell(texts):
            GLib.timeout_add(round(1000 * SECONDS_BETWEEN), lambda: self.look(name, pid))
            if texts is None:
                return
            heading = next((text for role, text in texts if role == HEADING), None)
            print(json.dumps({"name": name, "begin": begin, "end": time.monotonic(),
                              "heading": heading, "texts": [text for _, text in texts if text]}),
                  flush=True)

        if name in self.programs:
            Reading(self, self.programs[name], tell)
        else:
            self.find(name, pid)
            tell([])

    def find(self, name, pid):
        def choose(programs):
            for program, _ in programs[0] if programs else []:
                self.ask(("org.freedesktop.DBus", "/org/freedesktop/DBus"), "org.freedesktop.DBus",
                         "GetConnectionUnixProcessID", GLib.Variant("(s)", (program,)),
                         lambda answer, program=program: note(answer, program))

        def note(answer, program):
            if answer and answer[0] == pid and self.pids.get(name) == pid:
                self.programs[name] = program

        self.ask(ROOT, ACCESSIBLE, "GetChildren", None, choose)

    def ask(self, place, interface, method, arguments, done):
        """`done` is called with what the answer holds, or with None."""
        def finish(bus, result):
            try:
                done(bus.call_finish(result).unpack())
            except GLib.Error:
                done(None)
        self.bus.call(*place, interface, method, arguments, None, Gio.DBusCallFlags.NONE, PATIENCE,
                      None, finish)


class Reading:
    """What a program's windows show, in reading order; None of one that hangs, has ended, or has
    changed its screen meanwhile."""

    def __init__(self, watcher, program, done):
        self.watcher, self.done = watcher, done
        self.open = 0
        self.is_whole = True
        self.top = {}
        self.ask_children((program, ROOT[1]), self.top)

    def ask(self, place, method, arguments, then, interface=ACCESSIBLE):
        self.open += 1

        def finish(answer):
            if answer is None:
                self.is_whole = False
            else:
                then(answer)
            self.open -= 1
            if not self.open:
                self.done(list(texts_in(self.top)) if self.is_whole else None)
        self.watcher.ask(place, interface, method, arguments, finish)

    def ask_children(self, place, node):
        def add(answer):
            node["children"] = [{} for _ in answer[0]]
            for child, where in zip(node["children"], answer[0]):
                self.ask_states(where, child)
        self.ask(place, "GetChildren", None, add)

    def ask_states(self, place, node):
        def judge(answer):
            if answer[0][0] & SHOWING:
                self.ask(place, "GetRole", None, lambda role: node.update(role=role[0]))
                for word in ("Name", "Description"):  # what runs stands in the latter
                    self.ask(place, "Get", GLib.Variant("(ss)", (ACCESSIBLE, word)),
                             lambda text, word=word: node.update({word: text[0]}),
                             "org.freedesktop.DBus.Properties")
                self.ask_children(place, node)
        self.ask(place, "GetState", None, judge)


def texts_in(node):
    if "role" in node:
        yield node["role"], node.get("Name", "")
        yield None, node.get("Description", "")
    for child in node.get("children", []):
        yield from texts_in(child)


watcher = Watcher()


def read(*_):
    data = os.read(0, 65536)
    if not data:
        loop.quit()
    for line in data.decode().splitlines():
        watcher.obey(line)
    return True


loop = GLib.MainLoop()
GLib.unix_fd_add_full(GLib.PRIORITY_DEFAULT, 0, GLib.IOCondition.IN | GLib.IOCondition.HUP, read)
sys.stdout.reconfigure(line_buffering=True)
loop.run()
