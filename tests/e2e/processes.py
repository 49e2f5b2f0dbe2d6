"""Child processes that can't outlive the test, however it ends."""

import ctypes
import os
import signal
import subprocess
import time

_PR_SET_PDEATHSIG = 1
_PR_SET_CHILD_SUBREAPER = 36
_libc = ctypes.CDLL(None, use_errno=True)


def wait_until(condition, what, seconds=30.0, interval=None):
    """Polls `condition` and returns its first true value; fails, naming `what`, after `seconds`.

    Polls each `interval` seconds; without one a long wait is polled less and less often, for asking
    costs the program that is waited for as much as it does us. An exception from `condition` ends
    the wait at once: a condition that can't be met is a fault.
    """
    deadline = time.monotonic() + seconds
    pause = interval or 0.05
    while True:
        value = condition()
        if value:
            return value
        if time.monotonic() > deadline:
            raise AssertionError(f"waited {seconds:.0f} s in vain for {what}")
        time.sleep(pause)
        if interval is None:
            pause = min(1.2 * pause, 1.0)


def adopt_orphans():
    """Makes the orphans of our children ours.

    The accessibility bus starts helpers of its own. With this they can be found and ended when
    the process that started them is gone.
    """
    _libc.prctl(_PR_SET_CHILD_SUBREAPER, 1, 0, 0, 0)


def start(command, log, environment, **options):
    """Starts `command` with its output going to the file `log`, unless `options` says otherwise."""
    parent = os.getpid()

    def die_with_parent():
        # Signals sent to the test's own group stay away from the children: they are ended in order.
        os.setsid()
        _libc.prctl(_PR_SET_PDEATHSIG, signal.SIGTERM, 0, 0, 0)
        if os.getppid() != parent:
            os._exit(1)

    with open(log, "ab") as output:
        settings = {"stdin": subprocess.DEVNULL, "stdout": output, "stderr": output, **options}
        return subprocess.Popen(command, env=environment, preexec_fn=die_with_parent, **settings)


def stop(process, seconds=5.0):
    """Asks `process` to end, and ends it if it doesn't."""
    if process.poll() is None:
        process.terminate()
        try:
            process.wait(seconds)
        except subprocess.TimeoutExpired:
            kill(process)


def kill(process):
    """Ends `process` without asking, until nothing is left of it."""
    process.kill()
    process.wait()


def stop_all_children():
    """Ends every process below this one; orphans come up to us as their parents go."""
    deadline = time.monotonic() + 5.0
    while children := _children(os.getpid()):
        ending = signal.SIGTERM if time.monotonic() < deadline else signal.SIGKILL
        for child in children:
            try:
                os.kill(child, ending)
                os.waitpid(child, os.WNOHANG)
            except (ProcessLookupError, ChildProcessError):
                pass
        time.sleep(0.02)


def _children(parent):
    found = []
    for entry in filter(str.isdigit, os.listdir("/proc")):
        try:
            with open(f"/proc/{entry}/stat", encoding="utf-8", errors="replace") as file:
                fields = file.read().rpartition(")")[2].split()
        except OSError:
            continue
        if int(fields[1]) == parent:
            found.append(int(entry))
    return found
