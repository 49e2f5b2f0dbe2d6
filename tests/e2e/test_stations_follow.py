"""Display stations find the admin on a real network, follow it, and come back by themselves."""

import json
import re
import signal
import subprocess
import sys
import time
import unittest

import processes
import shows
import wire
from case import ROOT, EndToEndTest, explained

HERE = ROOT / "tests" / "e2e"
TITLES = [f"Chanson {number}" for number in range(1, 8)]
SEARCHING = "Recherche d'un admin sur le réseau…"


class StationsFollow(EndToEndTest):
    def setUp(self):
        super().setUp()
        self.path = shows.write(self.stage.folder / "Concert.tessivo",
                                shows.show("Concert", TITLES))

    @explained
    def test_from_the_first_station_to_the_last_cut(self):
        stages = [self.switch.add_host(name) for name in ("cour", "jardin", "face")]
        screen_saver = ScreenSaver(self.stage)
        before = self.start(stages[0])
        before.press("Affichage")
        before.see(SEARCHING)
        self.picture_of(before, "station-searching")
        admin = self.start(self.desk)
        during = self.start(stages[1])
        admin.press("Admin")
        during.press("Affichage")
        admin.see("Nouveau show", "push button")
        for station in (before, during):
            station.see("Connecté à l'admin")
        self.assertEqual({name for name, _, _ in stages[1].services()}, {"regie"})
        admin.open_show(self.path, TITLES[0])
        after = self.start(stages[2])
        after.press("Affichage")
        self.expect_song(0, before, during, after)
        screen_saver.wait_for(4)  # three stations, and the live tab
        self.picture_of(after, "station-following")
        self.step(admin, 1, before, during, after)
        during.program.stop()
        screen_saver.wait_for(3)

        if self.switch.has_cables:
            self.chapter("the cable of a station is pulled and put back")
            stages[0].plug(False)
            begin = time.monotonic()
            before.see(SEARCHING)
            self.note("from the pulled cable to the search", f"{time.monotonic() - begin:.1f} s")
            self.step(admin, 2, after)
            stages[0].plug(True)
            self.expect_song(2, before)
        else:
            self.chapter("no cable can be pulled here: that takes namespaces, and was left out")
            self.step(admin, 2, before, after)

        self.chapter("a station's computer sleeps")
        before.program.signal(signal.SIGSTOP)
        self.step(admin, 3, after)
        time.sleep(5)
        self.step(admin, 4, after)
        before.program.signal(signal.SIGCONT)
        self.expect_song(4, before)

        self.chapter("the admin hangs")
        admin.program.signal(signal.SIGSTOP)
        before.see(re.compile(r"Sans nouvelles de la régie depuis ([3-9]|\d\d) s"))
        admin.program.signal(signal.SIGCONT)

        self.chapter("the responder of the admin is restarted")
        self.desk.stop_responder()
        self.desk.start_responder()
        self.step(admin, 5, before, after)
        processes.wait_until(stages[1].services, "the service to be back")

        self.chapter("the admin is killed, and a station leads on")
        admin.program.kill()
        before.see(SEARCHING)
        after.see(SEARCHING)
        after.see(TITLES[5], "heading")  # the last picture stays, and so does the screen
        screen_saver.wait_for(2)
        self.picture_of(after, "station-lost")
        lead = before.screen().find("push button", "Reprendre la conduite ici")
        for _ in range(2):  # past "Changer de mode"
            before.key("Tab")
        processes.wait_until(lead.has_focus, "the keyboard on the button")
        self.picture_of(before, "station-leads-on")
        self.screen.hold_key("space", 1.3)
        begin = time.monotonic()
        processes.wait_until(lambda: not after.screen().look(None, SEARCHING),
                             "the other to follow")
        self.note("from the decision to the station that follows",
                  f"{time.monotonic() - begin:.1f} s")
        self.step(before, 6, after)
        admin = self.start(self.desk)
        admin.press("Admin")
        admin.see("Un admin est déjà actif sur ce réseau")

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
    def test_a_station_bears_messages_of_20_megabytes(self):
        port = 4242
        station = self.start(self.switch.add_host("plateau"))
        station.press("Affichage")
        self.desk.start("publish", "avahi-publish", "-s", "regie", "_tessivo._tcp", str(port))
        time.sleep(3)  # in which every connection is refused
        peer = self.desk.start("peer", sys.executable, "-B", HERE / "pretend_admin.py", port,
                               stdin=subprocess.PIPE, text=True)

        def send(payload):
            peer.stdin.write(wire.frame(payload).hex() + "\n")
            peer.stdin.flush()

        station.see("Connecté à l'admin")
        show = shows.show("Concert", TITLES)
        good = wire.live_state(show)
        room = 19_999_999 - len(good)
        song = {"id": shows.new_id(), "title": "", "guests": []}
        for huge in (dict(show, name="x" * room),
                     dict(show, songs=show["songs"] + [song] * (room // 80))):
            send(wire.live_state(huge, 3))
            self.expect_song(3, station)
            send(good)
            self.expect_song(0, station)
        self.note("resident after 20 MB", f"{station.program.resident_bytes() / 1e6:.0f} MB")

    def chapter(self, title):
        self.note("now", title)

    def step(self, admin, index, *stations):
        admin.key("space")
        self.expect_song(index, *stations)

    def expect_song(self, index, *stations):
        for station in stations:
            station.see(TITLES[index], "heading")


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
