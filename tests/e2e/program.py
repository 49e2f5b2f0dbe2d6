"""The built program under test, with its output and its use of the machine."""

import os
import subprocess
import threading

import processes


class Program:
    """Started on one of several computers, or on the stage itself, which holds their screens.

    `environment` is added to what that computer gives to every program.
    """

    def __init__(self, stage, executable, host=None, **environment):
        self._lines = []
        own = {**(host or stage).environment, "QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1",
               "QT_QUICK_BACKEND": "software", **environment}
        command = host.command(executable) if host else [str(executable)]
        self._process = processes.start(command, stage.log("program"), own,
                                        stdout=subprocess.PIPE, text=True, encoding="utf-8",
                                        errors="replace")
        self._reader = threading.Thread(target=self._read, daemon=True)
        self._reader.start()

    @property
    def pid(self):
        return self._process.pid

    def ended(self):
        return self._process.poll() is not None

    def lines(self):
        """What it has written to standard output so far."""
        return list(self._lines)

    def resident_bytes(self):
        return int(self._proc("statm").split()[1]) * os.sysconf("SC_PAGE_SIZE")

    def cpu_seconds(self):
        """User and system time of all its threads since its start."""
        fields = self._proc("stat").rpartition(")")[2].split()
        return (int(fields[11]) + int(fields[12])) / os.sysconf("SC_CLK_TCK")

    def threads(self):
        return len(os.listdir(f"/proc/{self.pid}/task"))

    def descriptors(self):
        return len(os.listdir(f"/proc/{self.pid}/fd"))

    def stop(self):
        """Asks it to end and returns its exit status (negative: the signal that ended it)."""
        processes.stop(self._process)
        self._reader.join(10)
        self._process.stdout.close()
        return self._process.returncode

    def kill(self):
        """Ends it as a power cut would."""
        self._process.kill()
        return self.stop()

    def signal(self, number):
        self._process.send_signal(number)

    def _read(self):
        for line in self._process.stdout:
            self._lines.append(line.rstrip("\n"))

    def _proc(self, name):
        with open(f"/proc/{self.pid}/{name}", encoding="utf-8", errors="replace") as file:
            return file.read()
