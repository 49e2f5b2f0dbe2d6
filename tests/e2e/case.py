"""The frame of an end-to-end test: a stage, the screen on it, and what helps when one fails."""

import functools
import os
import sys
import unittest
from pathlib import Path

from program import Program
from stage import Stage


class EndToEndTest(unittest.TestCase):
    """Stories about the built program, told one after the other on one stage.

    The paths of what was built come from the environment, which CTest sets.
    """

    program_path = Path(os.environ["TESSIVO_PROGRAM"])
    ltc_path = Path(os.environ["TESSIVO_LTC"])
    pictures_folder = Path(os.environ["TESSIVO_PICTURES"])

    @classmethod
    def setUpClass(cls):
        cls.stage = cls.enterClassContext(Stage())
        from screen import Screen  # connects to the bus of the stage, so only now
        cls.screen = Screen(cls.stage)

    def setUp(self):
        self.program = None

    def start_program(self):
        self.program = Program(self.stage, self.program_path)
        self.addCleanup(self.program.stop)
        self.note("first frame", f"{self.program.first_frame_seconds * 1000:.0f} ms")

    def write_ltc(self, start, seconds, rate=48000):
        """Makes a .wav of 25 fps timecode that begins at `start` and returns its path."""
        path = self.stage.folder / f"{start.replace(':', '-')}.wav"
        self.stage.run(self.ltc_path, "--start", start, "--rate", "25", "--length", str(seconds),
                       "--sample-rate", str(rate), path)
        return path

    def picture(self, title, name):
        self.screen.picture(title, self.pictures_folder / f"{name}.png")

    def note(self, what, figure):
        """Leaves a figure in the test's output. Figures are for reading; no test fails on one."""
        print(f"{what}: {figure}")

    def explain(self):
        """Shows the reader of a failed run what the program showed and said."""
        print("--- output", *(self.program.lines() if self.program else []), sep="\n",
              file=sys.stderr)
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
