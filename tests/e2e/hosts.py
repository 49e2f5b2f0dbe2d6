"""Computers on one local network, each in namespaces of its own, joined by a switch.

Each has a network interface, a host name, a system bus and a DNS-SD responder (Avahi). They share
the stage's screen and folders with the test, and nothing with the network of the machine.
"""

import subprocess
import tempfile
from pathlib import Path

import processes

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
use-ipv4=yes
use-ipv6=yes
[publish]
publish-workstation=no
"""


class _Namespaces:
    """A process that does nothing but hold namespaces open."""

    def __init__(self, stage, name):
        self._stage = stage
        self.keeper = stage.start(name, ["unshare", "--net", "--mount", "--uts",
                                         "sleep", "infinity"])
        own = self._namespace("self")
        processes.wait_until(lambda: self._namespace(self.keeper.pid) != own, f"{name}'s network")
        self.run("ip", "link", "set", "lo", "up")

    def command(self, *command):
        return ["nsenter", f"--target={self.keeper.pid}", "--net", "--mount", "--uts", "--",
                *map(str, command)]

    def run(self, *command):
        return self._stage.run(*self.command(*command))

    @staticmethod
    def _namespace(pid):
        return subprocess.run(["readlink", f"/proc/{pid}/ns/net"], capture_output=True,
                              text=True, check=False).stdout


class Switch:
    def __init__(self, stage):
        self.stage = stage
        self.namespaces = _Namespaces(stage, "switch")
        self.namespaces.run("ip", "link", "add", "switch", "type", "bridge")
        self.namespaces.run("ip", "link", "set", "switch", "up")
        self.hosts = []

    def add_host(self, name):
        host = Host(self, name, len(self.hosts) + 1)
        self.hosts.append(host)
        return host

    def remove(self):
        """Ends all that runs on the computers, and with it their network."""
        for host in self.hosts:
            host.remove()
        processes.stop(self.namespaces.keeper)


class Host:
    """`name` is its host name, under which its services are advertised."""

    def __init__(self, switch, name, number):
        stage = self._stage = switch.stage
        self.name = name
        self._port = f"port{number}"
        self._switch = switch.namespaces
        self._namespaces = _Namespaces(stage, name)
        self._processes = []
        self.folder = Path(tempfile.mkdtemp(prefix=f"{name}-", dir=stage.folder))
        self._socket = self.folder / "system-bus"
        self.environment = {
            **stage.environment, "HOME": str(self.folder),
            "XDG_CONFIG_HOME": str(self.folder / "config"),
            "DBUS_SYSTEM_BUS_ADDRESS": f"unix:path={self._socket}"}
        self.run("hostname", name)
        self._switch.run("ip", "link", "add", self._port, "type", "veth", "peer", "name", "eth0",
                         "netns", str(self._namespaces.keeper.pid))
        self._switch.run("ip", "link", "set", self._port, "master", "switch", "up")
        self.run("ip", "address", "add", f"10.77.0.{number}/24", "dev", "eth0")
        self.run("ip", "link", "set", "eth0", "up")
        self._start_bus()
        self.start_responder()

    def command(self, *command):
        return self._namespaces.command(*command)

    def run(self, *command):
        """Runs a command on this computer to its end and returns what it printed."""
        done = subprocess.run(self.command(*command), env=self.environment, timeout=60,
                              stdin=subprocess.DEVNULL, capture_output=True, text=True,
                              check=False)
        if done.returncode != 0:
            raise AssertionError(f"{' '.join(map(str, command))}: {done.stderr or done.stdout}")
        return done.stdout

    def start(self, name, *command, **options):
        process = processes.start(self.command(*command),
                                  self._stage.log(f"{self.name}-{name}"), self.environment,
                                  **options)
        self._processes.append(process)
        return process

    def remove(self):
        for process in reversed(self._processes):
            processes.stop(process)
        processes.stop(self._namespaces.keeper)

    def plug(self, plugged):
        """Pulls the network cable, or puts it back."""
        self._switch.run("ip", "link", "set", self._port, "up" if plugged else "down")

    def start_responder(self):
        configuration = self.folder / "avahi.conf"
        configuration.write_text(_RESPONDER)
        self._responder = self.start("avahi", "avahi-daemon", "--no-chroot", "--no-drop-root",
                                     "--no-rlimits", "-f", configuration)
        processes.wait_until(self._responder_answers, f"the responder of {self.name}")

    def stop_responder(self):
        processes.stop(self._responder)

    def services(self):
        """The services of this program that Avahi's own browser sees: name, address and port."""
        lines = self.run("avahi-browse", "-rpt", "_tessivo._tcp").splitlines()
        fields = [line.split(";") for line in lines if line.startswith("=")]
        return {(field[3], field[7], int(field[8])) for field in fields}

    def _start_bus(self):
        policy = self.folder / "bus.conf"
        policy.write_text(_BUS_POLICY.format(socket=self._socket))
        self.start("bus", "dbus-daemon", f"--config-file={policy}", "--nofork", "--nopidfile")
        processes.wait_until(self._socket.exists, f"the system bus of {self.name}")
        # The responder keeps its state in one folder of the system: here each has its own.
        subprocess.run(["mkdir", "-p", "/run/avahi-daemon"], check=True)
        self.run("mount", "-t", "tmpfs", "tmpfs", "/run/avahi-daemon")

    def _responder_answers(self):
        return subprocess.run(self.command("avahi-browse", "-t", "_tessivo._tcp"),
                              env=self.environment, capture_output=True, timeout=60,
                              check=False).returncode == 0
