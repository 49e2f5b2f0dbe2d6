"""Tells how long a station's picture takes to follow a key press, beside 19 and 105 plain stations.

    /usr/bin/python3 bench/e2e/crowd.py [PRESSES, about 100 if left out]

The key is pressed by a program of its own. How long one takes that presses nothing is told beside.
"""

import subprocess
import sys
import time
import unittest
from pathlib import Path

FOLDER = Path(__file__).resolve().parent
sys.path.append(str(FOLDER.parents[1] / "tests" / "e2e"))

import processes  # noqa: E402
import shows  # noqa: E402
from case import EndToEndTest, explained  # noqa: E402
from person import MAIN  # noqa: E402

TITLES = [f"Chanson {number}" for number in range(1, 8)]
THERE_AND_BACK = [*range(len(TITLES)), *range(len(TITLES) - 2, 0, -1)]
ROUNDS = -(-(int(sys.argv.pop(1)) if len(sys.argv) > 1 else 100) // len(THERE_AND_BACK))


class Crowd(EndToEndTest):
    @explained
    def test_key_to_picture(self):
        path = shows.write(self.stage.folder / "Concert.tessivo", shows.show("Concert", TITLES))
        crowd = self.switch.add_host("foule")
        admin = self.start_admin()
        admin.open_show(path, TITLES[0])
        station = self.start(self.switch.add_host("plateau"))
        station.press("Affichage")
        station.see(TITLES[0], "heading")
        self.screen.move_program(station.program.pid, MAIN, 1200, 0)
        _, address, port = next(entry for entry in crowd.services() if "." in entry[1])

        def join(count, *options):
            stations = crowd.start("stations", sys.executable, "-B", FOLDER / "plain_stations.py",
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
        delays, starts = [], []
        songs = [*THERE_AND_BACK * ROUNDS, 0]
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
            delays.append(1000 * (time.monotonic() - begin))
            begin = time.monotonic()
            self.stage.run("xdotool", "version")
            starts.append(1000 * (time.monotonic() - begin))
        station.see(TITLES[0], "heading")
        delays.sort()
        self.note(f"key to picture, {what}, {len(delays)} times",
                  f"median {delays[len(delays) // 2]:.1f} ms, 99th percentile "
                  f"{delays[len(delays) * 99 // 100]:.1f} ms, longest {delays[-1]:.1f} ms; "
                  f"a program that presses nothing {sorted(starts)[len(starts) // 2]:.1f} ms")


if __name__ == "__main__":
    unittest.main()
