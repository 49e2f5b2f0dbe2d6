"""The frame of an end-to-end test: a stage, the screen on it, and what helps when one fails."""

import functools
import json
import os
import sys
import unittest
from pathlib import Path

import processes
from hosts import Switch
from person import MAIN, Person
from stage import Stage

ROOT = Path(__file__).resolve().parents[2]
#: What was built: the release, unless the environment says otherwise.
BUILD = Path(os.environ.get("TESSIVO_BUILD", ROOT / "build" / "release"))


class EndToEndTest(unittest.TestCase):
    """Stories about the built program, told one after the other on one stage."""

    programs = BUILD / "bin"
    pictures_folder = BUILD / "e2e-pictures"

    @classmethod
    def setUpClass(cls):
        cls.stage = cls.enterClassContext(Stage())
        from screen import Screen  # connects to the bus of the stage, so only now
        cls.screen = Screen(cls.stage)

    def setUp(self):
        self.people = []
        self.switch = Switch(self.stage)
        self.addCleanup(self.switch.remove)
        self.desk = self.switch.add_host("regie")

    @property
    def record(self):
        """The file that the admin keeps its shows in."""
        return self.desk.folder / "config" / "tessivo" / "pavona_data_v1"

    def stored(self):
        """What the admin has stored, also while it is on its way to that file."""
        while True:
            newest = max(self.record.parent.glob(f"{self.record.name}.recent-*"), default=self.record)
            try:
                return json.loads(newest.read_text(encoding="utf-8"))
            except (FileNotFoundError, json.JSONDecodeError):
                continue  # it has just come there

    def start(self, host):
        self.people.append(Person(self, host))
        return self.people[-1]

    def start_admin(self):
        admin = self.start(self.desk)
        admin.press("Admin")
        admin.see("Nouveau show", "push button")
        return admin

    def write_ltc(self, start, seconds, rate="25"):
        """Makes a .wav of timecode that begins at `start` and returns its path."""
        path = self.stage.folder / f"{start.replace(':', '-')}.wav"
        self.stage.run(self.programs / "tessivo-ltc", "--start", start, "--rate", rate,
                       "--length", str(seconds), path)
        return path

    def picture_of(self, person, name):
        person.to_front()
        person.screen().find(None, MAIN)
        self.screen.picture(MAIN, self.pictures_folder / f"{name}.png")

    def note(self, what, figure):
        """Leaves a figure in the test's output. Figures are for reading; no test fails on one."""
        print(f"{what}: {figure}")

    def explain(self):
        """Shows the reader of a failed run what the program showed and said."""
        for person in self.people:
            print("--- output", *person.program.lines(), sep="\n", file=sys.stderr)
        self.stage.show_logs()
        self.stage.picture(self.pictures_folder / "failed.png")
        for program in self.screen.children():
            try:
                print("--- controls", *program.tree(), sep="\n", file=sys.stderr)
            except Exception as error:  # a program that hangs or has ended can't say what it shows
                print(f"--- no controls: {error}", file=sys.stderr)


def explained(test):
    """Decorates a test so that a failure explains itself while everything still stands."""
    @functools.wraps(test)
    def run(self):
        try:
            test(self)
        except BaseException:
            self.explain()
            raise
    return run
