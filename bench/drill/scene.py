"""Where a drill is played: a stage with the screens of all computers, and a watcher of them."""

import contextlib
import json
import subprocess
import sys
import threading
from pathlib import Path

from case import BUILD
from hosts import Switch
from stage import Stage
from verdict import Look

HERE = Path(__file__).resolve().parent


class Scene(contextlib.ExitStack):
    programs = BUILD / "bin"
    addCleanup = contextlib.ExitStack.callback  # noqa: N815  by which people tidy up after a test

    def __enter__(self):
        super().__enter__()
        self.stage = self.enter_context(Stage())
        from screen import Screen  # connects to the bus of the stage, so only now
        self.screen = Screen(self.stage)
        self.watcher = Watcher(self.stage)
        return self

    def add_switch(self):
        if not Switch.has_cables:
            sys.exit("computers with cables take network namespaces, and those take root")
        switch = Switch(self.stage)
        self.callback(switch.remove)
        return switch


class Watcher:
    """The process that looks at the screens, and what it has seen."""

    def __init__(self, stage):
        self._process = stage.start("watcher", ["/usr/bin/python3", "-B", HERE / "watcher.py"],
                                    stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True)
        self._lock = threading.Lock()
        self._looks = []
        threading.Thread(target=self._read, daemon=True).start()

    def watch(self, name, pid):
        self._tell(f"watch {name} {pid}")

    def forget(self, name):
        self._tell(f"forget {name}")

    def take(self):
        """What was seen since the last time: pairs of a name and a look."""
        with self._lock:
            looks, self._looks = self._looks, []
        return looks

    def _tell(self, line):
        self._process.stdin.write(line + "\n")
        self._process.stdin.flush()

    def _read(self):
        for line in self._process.stdout:
            seen = json.loads(line)
            with self._lock:
                self._looks.append((seen["name"], Look.of(seen)))
