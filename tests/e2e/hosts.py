"""Computers on one local network, joined by a switch.

Each has namespaces of its own, with a network interface, a system bus and a DNS-SD responder
(Avahi). Where none can be made, as in a plain container, all are this computer: their programs meet
on its loopback, by one bus and one responder, and there is no cable to pull. All share the stage's
screen and folders with the test, and nothing with the network of the machine.
"""

import fcntl
import os
import subprocess
import tempfile
from pathlib import Path

import processes

_NAMESPACES = ["--net", "--mount"]
_RESPONDERS_FOLDER = Path("/run/avahi-daemon")  # fixed when it was built
_BUS_POLICY = """<busconfig>
  <type>system</type>
  <listen>unix:path={socket}</listen>
  <auth>EXTERNAL</auth>
  <policy context="default">
    <allow send_destination="*"/>
    <allow receive_sender="*"/>
    <allow own="*"/>
    <allow user="*"/>
  </policy>
</busconfig>
"""
_RESPONDER = """[server]
host-name={name}
allow-interfaces={interface}
use-ipv4=yes
use-ipv6=yes
[publish]
publish-workstation=no
"""


class _Namespaces:
    """A process that does nothing but hold namespaces open."""

    def __init__(self, stage, name):
        self._stage = stage
        self.keeper = stage.start(name, ["unshare", *_NAMESPACES, "sleep", "infinity"])
        own = self._network("self")
        processes.wait_until(lambda: self._network(self.keeper.pid) != own, f"{name}'s network")
        self.run("ip", "link", "set", "lo", "up")

    def command(self, *command):
        # The keeper's root and folder: whoever runs this below a changed root stays there.
        return ["nsenter", f"--target={self.keeper.pid}", *_NAMESPACES, "--root", "--wd", "--",
                *map(str, command)]

    def run(self, *command):
        return self._stage.run(*self.command(*command))

    @staticmethod
    def _network(pid):
        return subprocess.run(["readlink", f"/proc/{pid}/ns/net"], capture_output=True,
                              text=True, check=False).stdout


class Switch:
    #: Whether the computers have cables: whoever may not lay any can't make the namespaces either.
    has_cables = subprocess.run(
        ["unshare", *_NAMESPACES, "sh", "-c", "ip link set lo up && mount -t tmpfs tmpfs /run"],
        capture_output=True, check=False).returncode == 0

    def __init__(self, stage):
        self.stage = stage
        self.hosts = []
        if not self.has_cables:
            return
        self.namespaces = _Namespaces(stage, "switch")
        self.namespaces.run("ip", "link", "add", "switch", "type", "bridge")
        self.namespaces.run("ip", "link", "set", "switch", "up")

    def add_host(self, name):
        host = Host(self, name)
        self.hosts.append(host)
        return host

    def power(self, on):
        """Cuts the switch's power, or gives it back; the cables stay in."""
        self.namespaces.run("ip", "link", "set", "switch", "up" if on else "down")

    def remove(self):
        """Ends all that runs on the computers, and with it their network."""
        for host in reversed(self.hosts):
            host.remove()
        if self.has_cables:
            processes.stop(self.namespaces.keeper)


class Host:
    """`name` is its host name, under which its services are advertised."""

    def __init__(self, switch, name):
        stage = self._stage = switch.stage
        self.name = name
        self.folder = Path(tempfile.mkdtemp(prefix=f"{name}-", dir=stage.folder))
        self.environment = {**stage.environment, "HOME": str(self.folder),
                            "XDG_CONFIG_HOME": str(self.folder / "config")}
        self._processes = []
        self._namespaces = None
        self._turn = None
        if switch.has_cables:
            self._lay_cable(switch.namespaces, len(switch.hosts) + 1)
        if switch.has_cables or not switch.hosts:
            self._start_bus()
            self.start_responder()
        else:
            self._use_bus(switch.hosts[0])

    @property
    def inside(self):
        """Its folder with what only this computer has mounted there."""
        return Path(f"/proc/{self._namespaces.keeper.pid}/root{self.folder}")

    def command(self, *command):
        return self._namespaces.command(*command) if self._namespaces else [*map(str, command)]

    def run(self, *command):
        """Runs a command on this computer to its end and returns what it printed."""
        return self._stage.run(*self.command(*command), environment=self.environment)

    def start(self, name, *command, **options):
        process = processes.start(self.command(*command),
                                  self._stage.log(f"{self.name}-{name}"), self.environment,
                                  **options)
        self._processes.append(process)
        return process

    def remove(self):
        for process in reversed(self._processes):
            processes.stop(process)
        self._processes.clear()
        if self._namespaces:
            processes.stop(self._namespaces.keeper)
        elif self._turn is not None:
            os.close(self._turn)

    def plug(self, plugged):
        """Pulls the network cable, or puts it back."""
        self._switch.run("ip", "link", "set", self._port, "up" if plugged else "down")

    def cut_power(self):
        """Ends all that runs on this computer, and nobody hears of it."""
        self.plug(False)
        for process in self._processes:
            processes.kill(process)
        self._processes.clear()

    def boot(self):
        """Starts the computer again after its power was cut."""
        self.plug(True)
        self._start_bus()
        self.start_responder()

    def start_responder(self):
        configuration = self.folder / "avahi.conf"
        configuration.write_text(_RESPONDER.format(
            name=self.name, interface="eth0" if self._namespaces else "lo"))
        self.responder = self.start("avahi", "avahi-daemon", "--no-chroot", "--no-drop-root",
                                     "--no-rlimits", "-f", configuration)
        processes.wait_until(self._responder_answers, f"the responder of {self.name}")

    def stop_responder(self):
        processes.stop(self.responder)

    def services(self):
        """The services of this program that Avahi's own browser sees: name, address and port."""
        # The browser ends of itself, except when a service goes while it is being resolved.
        browse = self.command("timeout", "10", "avahi-browse", "-rpt", "_tessivo._tcp")
        seen = processes.wait_until(lambda: self._output_of(browse), "the browser to end", 60)
        fields = [line.split(";") for line in seen.splitlines() if line.startswith("=")]
        return {(field[3], field[7], int(field[8])) for field in fields}

    def _output_of(self, command):
        """What it printed, at least an empty line; None when it had to be stopped."""
        done = subprocess.run(command, env=self.environment, stdin=subprocess.DEVNULL,
                              capture_output=True, text=True, timeout=60, check=False)
        return done.stdout + "\n" if done.returncode == 0 else None

    def _lay_cable(self, switch, number):
        self._switch = switch
        self._port = f"port{number}"
        self._namespaces = _Namespaces(self._stage, self.name)
        switch.run("ip", "link", "add", self._port, "type", "veth", "peer", "name", "eth0",
                   "netns", str(self._namespaces.keeper.pid))
        switch.run("ip", "link", "set", self._port, "master", "switch", "up")
        self.run("ip", "address", "add", f"10.77.0.{number}/24", "dev", "eth0")
        self.run("ip", "link", "set", "eth0", "up")

    def _use_bus(self, host):
        self._socket = host.folder / "system-bus"
        self.environment["DBUS_SYSTEM_BUS_ADDRESS"] = f"unix:path={self._socket}"

    def _start_bus(self):
        self._use_bus(self)
        policy = self.folder / "bus.conf"
        policy.write_text(_BUS_POLICY.format(socket=self._socket))
        self._socket.unlink(missing_ok=True)
        self.bus = self.start("bus", "dbus-daemon", f"--config-file={policy}", "--nofork", "--nopidfile")
        processes.wait_until(self._socket.exists, f"the system bus of {self.name}")
        # The responder keeps its state in one folder of the system: here each has its own, or its
        # turn, since several stories may run at once.
        _RESPONDERS_FOLDER.mkdir(exist_ok=True)
        if self._namespaces:
            self.run("mount", "-t", "tmpfs", "tmpfs", _RESPONDERS_FOLDER)
        else:
            self._turn = os.open(_RESPONDERS_FOLDER, os.O_RDONLY)
            fcntl.flock(self._turn, fcntl.LOCK_EX)

    def _responder_answers(self):
        return subprocess.run(self.command("avahi-browse", "-t", "_tessivo._tcp"),
                              env=self.environment, capture_output=True, timeout=60,
                              check=False).returncode == 0
