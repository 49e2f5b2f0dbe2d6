"""Runs a show by timecode for an hour, or for as many minutes as the first argument says.

    /usr/bin/python3 bench/e2e/soak.py [MINUTES]

Each minute it tells what the admin and a station use; it fails when that grows.
"""

import sys
import time
import unittest
from pathlib import Path

sys.path.append(str(Path(__file__).resolve().parents[2] / "tests" / "e2e"))

import test_the_whole_evening as evening  # noqa: E402  not its class, which unittest would run too
from case import explained  # noqa: E402

MINUTES = int(sys.argv.pop(1)) if len(sys.argv) > 1 else 60
WARM_UP = 5  # minutes
MEGABYTE = 1e6


class Soak(evening.TheWholeEvening):
    test_from_the_run_sheet_to_the_next_day = None

    @explained
    def test_nothing_grows(self):
        self.begin()
        self.admin.press("Ouvrir l'affichage")
        self.open_live_tab()
        self.admin.start_capture(evening.INPUT)
        wav = self.write_ltc("10:00:00:00", 180)
        players, used = [], []
        for minute in range(MINUTES):
            if not players or players[-1].poll() is not None:
                players.append(self.sound.play(wav, evening.INPUT))
            self.admin.key("space" if minute % 2 else "Left")
            time.sleep(60)
            used.append([self.use_of(person) for person in (self.admin, self.station)])
            self.note(f"minute {minute + 1}, admin, station", used[-1])
        moves = sum(line.startswith("LTC:") for line in self.admin.program.lines())
        self.note("songs started by timecode", moves)
        self.assertGreater(moves, MINUTES // 2)
        for before, after in zip(used[min(WARM_UP, MINUTES - 1)], used[-1]):
            self.assertLess(after["MB"], before["MB"] + 8)
            self.assertLessEqual(after["threads"], before["threads"])
            self.assertLessEqual(after["descriptors"], before["descriptors"])

    @staticmethod
    def use_of(person):
        program = person.program
        return {"MB": round(program.resident_bytes() / MEGABYTE, 1), "threads": program.threads(),
                "descriptors": program.descriptors(), "CPU s": round(program.cpu_seconds(), 1)}


if __name__ == "__main__":
    unittest.main()
