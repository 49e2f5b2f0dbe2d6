"""Tells what one message of an admin costs a station: memory, and for how long its screen is held.

    /usr/bin/python3 bench/e2e/message_cost.py [KIND ...]

It takes root, for the namespaces that the two computers are. A screen is held for as long as the
program answers nobody on the accessibility bus, which its main thread does between all else. How much
of that it was computing tells what else the machine was doing.
"""

import json
import subprocess
import sys
import time
from pathlib import Path

FOLDER = Path(__file__).resolve().parent
sys.path[:0] = [str(FOLDER.parents[1] / "tests" / "e2e"), str(FOLDER.parent / "drill")]

import gi  # noqa: E402

gi.require_version("Gio", "2.0")
from gi.repository import Gio, GLib  # noqa: E402

import processes  # noqa: E402
import shows  # noqa: E402
import wire  # noqa: E402
from person import Person  # noqa: E402
from scene import Scene  # noqa: E402

LONGEST = 19_999_999
PORT = 40000
ROOT = "/org/a11y/atspi/accessible/root"


def state_with(member, item):
    """A state with so many of `item` in one member of the show that it is as long as may be."""
    record = shows.show("Concert", ["Avant"])
    record[member] = ["@"]
    head, tail = wire.live_state(record).split(b'"@"')
    count = (LONGEST - len(head) - len(tail) + 1) // (len(item) + 1)
    return head + b",".join([item] * count) + tail


def songs(count, **song):
    titles = [f"Chanson {number}" for number in range(count)]
    return wire.live_state(shows.show("Concert", titles, **song))


def guests(count, text, song_count=30):
    record = shows.show("Concert", ["x"] * song_count)
    for song in record["songs"]:
        song["guests"] = [{"id": shows.new_id(), "name": text, "mic": text, "iem": text,
                           "volume": text} for _ in range(count)]
    return json.dumps({"show": record, "activeSongIndex": 0, "currentSongStartedAt": 0.0},
                      ensure_ascii=False).encode()


def song_bytes():
    return json.dumps({"id": shows.new_id(), "title": "", "guests": []}, separators=(",", ":")).encode()


def guest_bytes():
    return json.dumps({"id": shows.new_id(), "name": "", "mic": "", "iem": ""},
                      separators=(",", ":")).encode()


def one_song_of_guests():
    record = shows.show("Concert", ["Avant"])
    record["songs"][0]["guests"] = ["@"]
    head, tail = wire.live_state(record).split(b'"@"')
    item = guest_bytes()
    return head + b",".join([item] * ((LONGEST - len(head) - len(tail)) // (len(item) + 1))) + tail


KINDS = {
    "20 MB of empty labels": lambda: state_with("mics", b'""'),
    "20 MB of numbers": lambda: state_with("mics", b"1"),
    "20 MB of []": lambda: state_with("mics", b"[]"),
    "20 MB of [] that nobody asked for": lambda: state_with("unknown", b"[]"),
    "20 MB of empty songs": lambda: state_with("songs", song_bytes()),
    "20 MB of empty guests of a song": one_song_of_guests,
    "200,000 songs": lambda: songs(200_000, guests=[]),
    "9,000 songs": lambda: songs(9_000, guests=[]),
    "600 songs": lambda: songs(600, guests=[]),
    "strings of 10 MB": lambda: wire.live_state({**shows.show("x" * 9_900_000, ["y" * 9_900_000])}),
    "nesting to 10 million levels": lambda: b"[" * 10_000_000 + b"]" * 9_999_999,
    "no JSON": lambda: b"x" * LONGEST,
    "guitars": lambda: guests(8, "\U0001f3b8" * 150),
    "women": lambda: guests(60, "\U0001f469\u200d\U0001f3a4" * 150, 40),
    "stars": lambda: guests(60, "\u2b50" * 300, 40),
    "letters": lambda: guests(60, "Mw " * 100, 40),
    "letters of Devanagari": lambda: guests(60, "\u0915\u094d\u0937\u093f " * 60, 40),
    "letters of Arabic": lambda: guests(60, "\u0645\u064f\u062d\u064e\u0645\u0651 " * 43, 40),
    "ideographs": lambda: guests(60, "\u8b5c\u9762" * 150, 40),
    "marks on one letter": lambda: guests(60, "a" + "\u0301" * 299, 40),
}


class Held:
    """For how long the program answered nobody."""

    def __init__(self, pid):
        self._schedule = Path(f"/proc/{pid}/task/{pid}/schedstat")
        session = Gio.bus_get_sync(Gio.BusType.SESSION)
        address = session.call_sync("org.a11y.Bus", "/org/a11y/bus", "org.a11y.Bus", "GetAddress",
                                    None, None, Gio.DBusCallFlags.NONE, -1).unpack()[0]
        self._bus = Gio.DBusConnection.new_for_address_sync(
            address, Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT |
            Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION)
        children = self._call("org.a11y.atspi.Registry", ROOT, "org.a11y.atspi.Accessible",
                              "GetChildren")
        self._name = next(name for name, _ in children if self._call(
            "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
            "GetConnectionUnixProcessID", GLib.Variant("(s)", (name,))) == pid)

    def longest_within(self, seconds):
        """The longest time without an answer and the longest that it computed in one, in seconds."""
        longest, most, end = 0.0, 0.0, time.monotonic() + seconds
        while (begin := time.monotonic()) < end:
            computed = self._computed()
            self._call(self._name, ROOT, "org.a11y.atspi.Accessible", "GetRole")
            longest = max(longest, time.monotonic() - begin)
            most = max(most, self._computed() - computed)
            time.sleep(0.002)
        return longest, most

    def _computed(self):
        return int(self._schedule.read_text(encoding="ascii").split()[0]) / 1e9

    def _call(self, name, path, interface, method, arguments=None):
        return self._bus.call_sync(name, path, interface, method, arguments, None,
                                   Gio.DBusCallFlags.NONE, 60_000).unpack()[0]


def peak_megabytes(pid):
    for line in Path(f"/proc/{pid}/status").read_text(encoding="ascii").splitlines():
        if line.startswith("VmHWM"):
            return int(line.split()[1]) / 1e3
    raise AssertionError("no peak")


def main():
    with Scene() as scene:
        switch = scene.add_switch()
        desk, stage = switch.add_host("regie"), switch.add_host("plateau")
        desk.start("publish", "avahi-publish", "-s", "regie", "_tessivo._tcp", PORT)
        print("| message | peak, MB | grew, MB | held, ms | computing, ms |\n|---|---|---|---|---|")
        for kind in sys.argv[1:] or KINDS:
            peer = desk.start("peer", sys.executable, "-B",
                              FOLDER.parents[1] / "tests" / "e2e" / "pretend_admin.py", PORT,
                              stdin=subprocess.PIPE)
            station = Person(scene, stage)
            station.press("Affichage")

            def send(payload, peer=peer):
                peer.stdin.write(wire.frame(payload).hex().encode() + b"\n")
                peer.stdin.flush()

            send(wire.live_state(shows.show("Concert", ["Avant"])))
            station.see("Avant", "heading")
            payload = KINDS[kind]()
            pid = station.program.pid
            held = Held(pid)
            held.longest_within(1.0)
            Path(f"/proc/{pid}/clear_refs").write_text("5", encoding="ascii")
            before = peak_megabytes(pid)
            send(payload)
            longest, most = held.longest_within(12.0)
            peak = peak_megabytes(pid)
            print(f"| {kind}, {len(payload) / 1e6:.1f} MB | {peak:.0f} | {peak - before:.0f} | "
                  f"{1000 * longest:.0f} | {1000 * most:.0f} |", flush=True)
            station.program.kill()
            processes.stop(peer)


if __name__ == "__main__":
    main()
