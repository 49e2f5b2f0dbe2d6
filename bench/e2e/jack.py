"""Captures 64 channels at 96 kHz from a JACK server of its own, finds the timecode on one of them, and
tells what the program and its audio program take of a core meanwhile.

    /usr/bin/python3 bench/e2e/jack.py

Takes the packages jackd2 and jack-tools besides those of the tests.
"""

import os
import re
import sys
import time
import unittest
from pathlib import Path

sys.path.append(str(Path(__file__).resolve().parents[2] / "tests" / "e2e"))

import processes  # noqa: E402
import shows  # noqa: E402
from case import EndToEndTest, explained  # noqa: E402

CHANNELS, CHANNEL, RATE = 64, 42, 96_000
SECONDS = 15  # of each measurement


class ManyChannels(EndToEndTest):
    def setUp(self):
        name = f"tessivo-{os.getpid()}"
        self.stage.environment.update(JACK_DEFAULT_SERVER=name, JACK_NO_START_SERVER="1")
        self.stage.start("jackd", ["jackd", "-n", name, "-r", "-d", "dummy", "-r", str(RATE), "-p", "512",
                                   "-C", str(CHANNELS), "-P", str(CHANNELS)])
        processes.wait_until(lambda: "system:capture_64" in self.ports(), "the JACK server")
        super().setUp()

    @explained
    def test_timecode_is_found_on_one_of_many_channels(self):
        admin = self.start_admin()
        admin.open_show(shows.write(self.stage.folder / "concert.tessivo",
                                    shows.show("Concert", ["Ouverture"])), "Ouverture")
        self.note_use("without capture", admin)
        admin.start_capture("system")
        admin.see(f"Canal décodé : 1 sur {CHANNELS}")
        self.note_use("searching all channels", admin)
        wav = self.write_ltc("10:00:00:00", 120)
        self.stage.start("jack-play", ["jack-play", str(wav)])
        player, = processes.wait_until(
            lambda: re.findall(r"^jack-play.*:out_1$", self.ports(), re.M), "the player")
        inputs = re.findall(r"^(?!system|jack-play).*in_\d+$", self.ports(), re.M)
        self.assertEqual(len(inputs), CHANNELS)
        self.stage.run("jack_connect", player, inputs[CHANNEL - 1])
        admin.press(f"Décoder le canal {CHANNEL}")
        admin.see_line("25 · .*en marche.*")
        self.note_use("following", admin)
        self.picture_of(admin, "jack-64-channels")
        admin.press("Arrêter la capture")

    def ports(self):
        try:
            return self.stage.run("jack_lsp")
        except AssertionError:  # the server is starting
            return ""

    def note_use(self, what, admin):
        before = self.seconds_used(admin)
        time.sleep(SECONDS)
        shares = [(after - begin) / SECONDS * 100
                  for begin, after in zip(before, self.seconds_used(admin))]
        self.note(what, ", ".join(f"{name} {share:.1f} %"
                                  for name, share in zip(("program", "audio program"), shares)))

    @staticmethod
    def seconds_used(admin):
        """Of the processor by the program, then by each program that it runs."""
        pid = admin.program.pid
        children = Path(f"/proc/{pid}/task/{pid}/children").read_text().split()
        used = []
        for process in [pid, *children]:
            fields = Path(f"/proc/{process}/stat").read_text().rpartition(")")[2].split()
            used.append((int(fields[11]) + int(fields[12])) / os.sysconf("SC_CLK_TCK"))
        return used


if __name__ == "__main__":
    unittest.main()
