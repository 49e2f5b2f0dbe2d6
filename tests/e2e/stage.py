"""A private computer for one test program: folders, message buses and an X screen.

Nothing in it is shared with the machine it runs on: several may run at the same time, as any
user, without a session, a screen or a sound card. The accessibility library keeps one connection
for the life of a process, so a test program opens one stage and starts the program many times.
"""

import mmap
import os
import shutil
import subprocess
import sys
import tempfile
from pathlib import Path

import processes


class Stage:
    """Opened by `with Stage() as stage`; everything it started is gone when it closes."""

    width, height = 2400, 1350

    def __init__(self):
        self.folder = Path(tempfile.mkdtemp(prefix="tessivo-e2e-"))
        self.environment = self._scratch_environment()
        self._screen_file = None

    def __enter__(self):
        processes.adopt_orphans()
        try:
            self._start_screen()
            self._start_buses()
        except BaseException:
            self.show_logs()
            self.close()
            raise
        return self

    def __exit__(self, *_):
        self.close()

    def close(self):
        processes.stop_all_children()
        if self._screen_file:
            self._screen_file.close()
            self._screen_file = None
        shutil.rmtree(self.folder, ignore_errors=True)

    def start(self, name, command, **options):
        """Starts a process of the stage; its output goes to the log `name`."""
        return processes.start(command, self.log(name), self.environment, **options)

    def run(self, *command, environment=None):
        """Runs a command to its end and returns what it printed; a failure raises."""
        done = subprocess.run(command, env=environment or self.environment, stdin=subprocess.DEVNULL, timeout=60,
                              capture_output=True, text=True, check=False)
        if done.returncode != 0:
            raise AssertionError(f"{' '.join(map(str, command))}: {done.stderr or done.stdout}")
        return done.stdout

    def log(self, name):
        return self.folder / f"{name}.log"

    def show_logs(self, lines=60):
        """Writes the end of every log to standard error, for the reader of a failed run."""
        for log in sorted(self.folder.glob("*.log")):
            tail = log.read_text(errors="replace").splitlines()[-lines:]
            if tail:
                print(f"--- {log.stem}", *tail, sep="\n", file=sys.stderr)

    # The screen

    def screen_bytes(self, x=0, y=0, pixels=None):
        """Raw pixels, four bytes each (blue, green, red, unused), from x, y on, row after row."""
        start = self._pixels_at + 4 * (y * self.width + x)
        end = None if pixels is None else start + 4 * pixels
        return self._screen_file[start:end]

    def picture(self, path, x=0, y=0, width=None, height=None):
        """Writes that part of the screen as a PNG file."""
        area = f"{width or self.width}x{height or self.height}+{x}+{y}"
        Path(path).parent.mkdir(parents=True, exist_ok=True)
        self.run("convert", f"xwd:{self._screen_path}", "-crop", area, "+repage", str(path))

    # Setting up

    def _scratch_environment(self):
        """What the host's session says about itself is taken out, so nothing can leak in."""
        host = {name: value for name, value in os.environ.items()
                if name in ("PATH", "LANG", "ASAN_OPTIONS", "UBSAN_OPTIONS", "LSAN_OPTIONS")}
        folders = {}
        for variable, name in (("HOME", "home"), ("XDG_CONFIG_HOME", "home/.config"),
                               ("XDG_DATA_HOME", "home/.local/share"), ("XDG_CACHE_HOME", "home/.cache"),
                               ("XDG_RUNTIME_DIR", "runtime"), ("TMPDIR", "tmp")):
            path = self.folder / name
            path.mkdir(mode=0o700, parents=True)
            folders[variable] = str(path)
        return {"LANG": "C.UTF-8", **host, **folders}

    def _start_screen(self):
        """Xvfb keeps its pixels in a file, so a test reads them without asking anyone."""
        reading, writing = os.pipe()
        self.start("Xvfb", ["Xvfb", "-displayfd", str(writing), "-nolisten", "tcp", "-noreset",
                            "-nocursor", "-screen", "0", f"{self.width}x{self.height}x24",
                            "-fbdir", str(self.folder)], pass_fds=[writing])
        os.close(writing)
        with os.fdopen(reading) as answer:
            number = answer.readline().strip()
        if not number:
            raise AssertionError("Xvfb did not start")
        self.environment["DISPLAY"] = f":{number}"
        self._screen_path = self.folder / "Xvfb_screen0"
        with open(self._screen_path, "rb") as file:
            self._screen_file = mmap.mmap(file.fileno(), 0, access=mmap.ACCESS_READ)
        # X Window Dump, XWDFile.h: the header's own size, then 12 bytes for each of the colours
        # counted by its nineteenth word. All words are big-endian.
        def word(index):
            return int.from_bytes(self._screen_file[4 * index:4 * index + 4], "big")
        self._pixels_at = word(0) + 12 * word(19)

    def _start_buses(self):
        socket = self.folder / "runtime" / "bus"
        self.environment["DBUS_SESSION_BUS_ADDRESS"] = f"unix:path={socket}"
        self.start("dbus", ["dbus-daemon", "--session", "--nofork", "--nopidfile",
                            f"--address=unix:path={socket}"])
        processes.wait_until(socket.exists, "the session bus")
        # The accessibility library reads these once, when a test program first uses it.
        for name in ("DBUS_SESSION_BUS_ADDRESS", "DISPLAY", "XDG_RUNTIME_DIR"):
            os.environ[name] = self.environment[name]
        processes.wait_until(self._accessibility_bus_answers, "the accessibility bus")

    def _accessibility_bus_answers(self):
        return subprocess.run(
            ["dbus-send", "--session", "--print-reply", "--dest=org.a11y.Bus", "/org/a11y/bus",
             "org.a11y.Bus.GetAddress"], env=self.environment, stdout=subprocess.DEVNULL,
            stderr=subprocess.DEVNULL, timeout=60, check=False).returncode == 0
