"""Tells how long the program takes from its start to the first drawn frame, how much of the processor,
and what it then holds.

    /usr/bin/python3 bench/e2e/start.py [TIMES [PEER...]]

A peer is another program to be started in turn with it, by its name.
"""

import shutil
import sys
import time
from pathlib import Path

sys.path.append(str(Path(__file__).resolve().parents[2] / "tests" / "e2e"))

import processes  # noqa: E402
from case import BUILD  # noqa: E402
from program import Program  # noqa: E402
from stage import Stage  # noqa: E402

TIMES = int(sys.argv[1]) if len(sys.argv) > 1 else 10
PROGRAMS = [BUILD / "bin" / "tessivo", *(Path(shutil.which(peer)) for peer in sys.argv[2:])]


def is_blank(stage):
    """The bare root window is black."""
    return not stage.screen_bytes().strip(b"\0")


with Stage() as stage:
    for _ in range(TIMES):
        for executable in PROGRAMS:
            processes.wait_until(lambda: is_blank(stage), "the windows of an earlier run to go")
            begin = time.monotonic()
            program = Program(stage, executable)
            processes.wait_until(lambda: not is_blank(stage), "the first drawn frame", 60, 0.001)
            milliseconds = 1000 * (time.monotonic() - begin)
            used = 1000 * program.cpu_seconds()
            time.sleep(1)  # until it has settled
            print(f"{executable.name}: {milliseconds:.0f} ms, of the processor {used:.0f} ms, "
                  f"{program.resident_bytes() / 1e6:.0f} MB", flush=True)
            program.stop()
