"""Display stations find the admin on a real network, follow it, and come back by themselves."""

import json
import os
import signal
import subprocess
import sys
import time
import unittest
from pathlib import Path

import processes
import shows
import wire
from case import EndToEndTest, explained
from hosts import Switch
from person import MAIN, Person

HERE = Path(__file__).resolve().parent
TITLES = [f"Chanson {number}" for number in range(1, 8)]
SEARCHING = "Recherche d'un admin sur le réseau…"


@unittest.skipUnless(os.geteuid() == 0, "only root can lay cables")
class StationsFollow(EndToEndTest):
    def setUp(self):
        super().setUp()
        self.switch = Switch(self.stage)
        self.addCleanup(self.switch.remove)
        self.desk = self.switch.add_host("regie")
        self.path = shows.write(self.stage.folder / "Concert.tessivo",
                                shows.show("Concert", TITLES))

    @explained
    def test_from_the_first_station_to_the_last_cut(self):
        stages = [self.switch.add_host(name) for name in ("cour", "jardin", "face", "retours",
                                                          "loges")]
        screen_saver = ScreenSaver(self.stage)
        before, *others = (self.start(stage) for stage in stages[:2])
        for station in (before, *others):
            station.press("Affichage")
            station.see(SEARCHING)
        self.picture_of(before, "station-searching")
        admin = self.start(self.desk)
        during = self.start(stages[2])
        admin.press("Admin")
        during.press("Affichage")
        admin.see("Nouveau show", "push button")
        for station in (before, *others, during):
            station.see("Connecté à l'admin")
        self.assertEqual({name for name, _, _ in stages[1].services()}, {"regie"})
        admin.open_show(self.path, TITLES[0])
        after, last = (self.start(stage) for stage in stages[3:])
        for station in (after, last):
            station.press("Affichage")
        others += [during, last]
        self.expect_song(0, before, after, *others)
        screen_saver.wait_for(6)  # five stations, and the live tab
        self.picture_of(after, "station-following")
        self.step(admin, 1, before, after, *others)
        self.check_the_bytes(stages[1])
        for station in others:
            station.program.stop()
        screen_saver.wait_for(3)

        self.chapter("the cable of a station is pulled and put back")
        stages[0].plug(False)
        begin = time.monotonic()
        before.see(SEARCHING)
        self.note("from the pulled cable to the search", f"{time.monotonic() - begin:.1f} s")
        self.step(admin, 2, after)
        stages[0].plug(True)
        self.expect_song(2, before)

        self.chapter("a station's computer sleeps")
        before.program.signal(signal.SIGSTOP)
        self.step(admin, 3, after)
        time.sleep(5)
        self.step(admin, 4, after)
        before.program.signal(signal.SIGCONT)
        self.expect_song(4, before)

        self.chapter("the responder of the admin is restarted")
        self.desk.stop_responder()
        self.desk.start_responder()
        self.step(admin, 5, before, after)
        processes.wait_until(stages[1].services, "the service to be back")

        self.chapter("the admin is killed and started again")
        admin.program.kill()
        before.see(SEARCHING)
        after.see(SEARCHING)
        screen_saver.wait_for(0)
        # The responder still tells of a service for a second after it has gone.
        processes.wait_until(lambda: not self.desk.services(), "the dead admin to be forgotten")
        admin = self.start_admin()
        admin.open_show(self.path, TITLES[0])
        self.expect_song(0, before, after)

    @explained
    def test_a_second_admin_is_refused(self):
        other = self.switch.add_host("autre")
        publisher = other.start("publish", "avahi-publish", "-s", "Console FOH", "_tessivo._tcp",
                                "4242")
        processes.wait_until(self.desk.services, "the other admin")
        admin = self.start(self.desk)
        for _ in range(2):
            admin.press("Admin")
            admin.see("Un admin est déjà actif sur ce réseau")
            admin.see("Console FOH")
            self.picture_of(admin, "admin-conflict")
            admin.press("Changer de mode")
        processes.stop(publisher)
        processes.wait_until(lambda: not self.desk.services(), "the other admin to go")
        # Whatever this computer was before, it meets no ghost of itself.
        for _ in range(2):
            admin.press("Affichage")
            admin.see(SEARCHING)
            admin.press("Changer de mode")
        admin.press("Admin")
        admin.see("Nouveau show", "push button")

    @explained
    def test_a_station_outlives_whatever_is_sent(self):
        port = 4242
        station = self.start(self.switch.add_host("plateau"))
        station.press("Affichage")
        self.desk.start("publish", "avahi-publish", "-s", "regie", "_tessivo._tcp", str(port))
        time.sleep(3)  # in which every connection is refused
        peer = self.desk.start("peer", sys.executable, "-B", HERE / "pretend_admin.py", port,
                               stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True)
        show = shows.show("Concert", TITLES)

        def send(*pieces):
            peer.stdin.write("".join(piece.hex() + "\n" for piece in pieces))
            peer.stdin.flush()

        def next_connection():
            peer.stdin.write("\n")
            peer.stdin.flush()
            self.assertEqual(peer.stdout.readline(), "accepted\n")

        self.assertEqual(peer.stdout.readline(), "accepted\n")
        station.see("Connecté à l'admin")
        good = wire.live_state(show)
        numbers = dict(json.loads(good), activeSongIndex="2")
        for bad in (b"\xff\xfe", good[:-1], b"[" * 1000, json.dumps(numbers).encode(),
                    b'{"show":1}'):
            send(wire.frame(bad))
        send(wire.frame(good))
        self.expect_song(0, station)
        for index, shown in ((7, "Merci !"), (2**63 - 1, "Merci !"),
                             (-1, "En attente du premier morceau…"),
                             (-2**63, "En attente du premier morceau…")):
            with self.subTest(index=index):
                send(wire.frame(wire.live_state(show, index)))
                station.see(shown)
        for started_at in (1.7e308, -1.7e308):
            send(wire.frame(wire.live_state(show, 1, started_at)))
            self.expect_song(1, station)
            send(wire.frame(wire.live_state(show, 2, started_at)))
            self.expect_song(2, station)
        room = 19_999_999 - len(good)
        song = {"id": shows.new_id(), "title": "", "guests": []}
        for what, huge in (("name", dict(show, name="x" * room)),
                           ("setlist", dict(show, songs=show["songs"] + [song] * (room // 80)))):
            self.chapter(f"a message of 20 MB, most of it {what}")
            send(wire.frame(wire.live_state(huge, 3)))
            self.expect_song(3, station)
            send(wire.frame(good))
            self.expect_song(0, station)
        self.note("resident after 20 MB", f"{station.program.resident_bytes() / 1e6:.0f} MB")
        for broken in (bytes(4), b"\x01\x31\x2d\x00", b"\xff\xff\xff\xff", b"\x00\x00", b"\x00\x00\x00\x09{"):
            with self.subTest(broken=broken):
                send(broken)
                next_connection()
                send(wire.frame(good))
                self.expect_song(0, station)

    @explained
    def test_crowds_do_not_slow_the_picture(self):
        """Plain stations beside a drawn one; figures from key press to the change of its picture."""
        crowd = self.switch.add_host("foule")
        admin = self.start_admin()
        admin.open_show(self.path, TITLES[0])
        station = self.start(self.switch.add_host("plateau"))
        station.press("Affichage")
        self.expect_song(0, station)
        self.screen.move_program(station.program.pid, MAIN, 1200, 0)
        _, address, port = next(entry for entry in crowd.services() if "." in entry[1])

        def join(count, *options):
            stations = crowd.start("stations", sys.executable, "-B", HERE / "plain_stations.py",
                                   address, port, count, *options, stdin=subprocess.PIPE,
                                   stdout=subprocess.PIPE, text=True)
            self.assertEqual(stations.stdout.readline(), "connected\n")

        join(19)
        self.note_key_to_picture("20 stations", admin, station)
        resident = admin.program.resident_bytes()
        join(80)
        join(5, "--stall")
        join(1, "--flood")
        self.note_key_to_picture("106 stations, one flooding, five stalled", admin, station)
        self.note("growth of the admin",
                  f"{(admin.program.resident_bytes() - resident) / 1e6:.1f} MB")
        self.assertLess(admin.program.resident_bytes() - resident, 200e6)

    def note_key_to_picture(self, what, admin, station):
        admin.to_front()
        delays = []
        songs = [*range(len(TITLES)), *range(len(TITLES) - 2, 0, -1)]
        for index, following in zip(songs, songs[1:]):
            heading = station.screen().find("heading", TITLES[index])
            processes.wait_until(lambda: heading.extents()[0] > 1200, "the station to be aside")
            x, y, width, height = heading.extents()
            time.sleep(0.3)  # until nothing moves any more
            shown = self.stage.screen_bytes(x, y + height // 2, width)
            begin = time.monotonic()
            self.screen.key("space" if following > index else "Left")
            processes.wait_until(
                lambda: self.stage.screen_bytes(x, y + height // 2, width) != shown,  # noqa: B023
                "the picture to change", interval=0.0005)
            delays.append(time.monotonic() - begin)
        self.screen.key("Left")
        self.expect_song(0, station)
        delays.sort()
        self.note(f"key to picture, {what}",
                  f"median {delays[len(delays) // 2] * 1000:.0f} ms, longest {delays[-1] * 1000:.0f} ms"
                  " (with the start of the program that presses the key)")

    # The people in the stories

    def start(self, host):
        return Person(self, host)

    def start_admin(self):
        admin = self.start(self.desk)
        begin = time.monotonic()
        admin.press("Admin")
        admin.see("Nouveau show", "push button")
        self.note("from choosing to broadcasting", f"{time.monotonic() - begin:.2f} s")
        return admin

    def chapter(self, title):
        self.note("now", title)

    def step(self, admin, index, *stations):
        admin.key("space")
        self.expect_song(index, *stations)

    def expect_song(self, index, *stations):
        for station in stations:
            station.see(TITLES[index], "heading")

    def check_the_bytes(self, host):
        """A plain client gets whole messages, at least one a second, each a whole live state."""
        _, address, port = next(entry for entry in host.services() if "." in entry[1])
        reader = host.start("reader", sys.executable, "-B", HERE / "read_live_states.py", address,
                            port, stdout=subprocess.PIPE, text=True)
        states = [json.loads(reader.stdout.readline()) for _ in range(3)]
        processes.stop(reader)
        for state in states:
            self.assertEqual(set(state), {"show", "activeSongIndex", "currentSongStartedAt"})
            self.assertEqual([song["title"] for song in state["show"]["songs"]], TITLES)
            self.assertEqual(state["activeSongIndex"], 1)

    def picture_of(self, person, name):
        person.to_front()
        person.screen().find(None, MAIN)
        self.picture(MAIN, name)


class ScreenSaver:
    """What stands for the desktop's own: the computers of the stage share one session."""

    def __init__(self, stage):
        self._count = stage.folder / "screens-kept-on"
        stage.start("screensaver", ["/usr/bin/python3", "-B", HERE / "screensaver.py", self._count])
        self.wait_for(0)

    def wait_for(self, count):
        """Waits until so many programs keep their screens on."""
        processes.wait_until(
            lambda: self._count.exists() and self._count.read_text() == str(count),
            f"{count} screens kept on")


if __name__ == "__main__":
    unittest.main()
