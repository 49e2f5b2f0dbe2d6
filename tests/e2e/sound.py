"""Sound inputs without a sound card: a private sound server whose outputs are heard as inputs."""

import sys
import wave
from array import array

import processes

RATE = 48_000
#: In the order in which ALSA numbers the channels of PulseAudio, which goes by their names.
_PLACES = ["front-left", "front-right", "rear-left", "rear-right", "front-center", "lfe",
           "side-left", "side-right"]


def read_wav(path):
    """The 16-bit samples of a mono file."""
    with wave.open(str(path)) as file:
        samples = array("h", file.readframes(file.getnframes()))
    if sys.byteorder == "big":
        samples.byteswap()
    return samples


def write_wav(path, channels):
    """Channels of equal length, with 16-bit samples, as a file of RATE samples per second."""
    samples = array("h", bytes(2 * len(channels) * len(channels[0])))
    for number, channel in enumerate(channels):
        samples[number::len(channels)] = channel
    if sys.byteorder == "big":
        samples.byteswap()
    with wave.open(str(path), "wb") as file:
        file.setnchannels(len(channels))
        file.setsampwidth(2)
        file.setframerate(RATE)
        file.writeframes(samples)


class Sound:
    """A PulseAudio server with one output per given name, each an ALSA input of that name.

    What is played on an output arrives at the input in real time, in blocks, as from a card.
    Programs started on the stage after this one see the inputs, beside whatever ALSA devices the
    machine has.
    """

    def __init__(self, stage, inputs, channels=2):
        self._stage = stage
        self._places = ",".join(_PLACES[:channels])
        self._sinks = {name: f"out{index}" for index, name in enumerate(inputs)}
        self._socket = stage.folder / "runtime" / "sound"
        stage.environment["PULSE_SERVER"] = f"unix:{self._socket}"
        stage.environment["ALSA_CONFIG_PATH"] = str(self._write_alsa_configuration())
        # No server of another kind may be started on the side.
        stage.environment["JACK_NO_START_SERVER"] = "1"
        self.start_server()

    def start_server(self):
        modules = [f"module-native-protocol-unix auth-anonymous=1 socket={self._socket}"]
        modules += [" ".join(self._sink_module(name)) for name in self._sinks]
        command = ["pulseaudio", "-n", "--exit-idle-time=-1", "--daemonize=no", "--use-pid-file=no"]
        for module in modules:
            command += ["-L", module]
        self.server = self._stage.start("pulseaudio", command)
        processes.wait_until(self._socket.exists, "the sound server")

    def kill_server(self):
        processes.kill(self.server)
        self._socket.unlink()

    def remove_output(self, name):
        """As when an interface is unplugged; those who listened are given another input."""
        for line in self._stage.run("pactl", "list", "short", "modules").splitlines():
            if f"sink_name={self._sinks[name]} " in line:
                self._stage.run("pactl", "unload-module", line.split()[0])

    def add_output(self, name):
        self._stage.run("pactl", "load-module", *self._sink_module(name))

    def _sink_module(self, name):
        return ["module-null-sink", f"sink_name={self._sinks[name]}", f"rate={RATE}",
                f"channel_map={self._places}"]

    def play(self, wav, output):
        """Starts playing a file on the output of that name, on all its channels or, if the file has
        as many, on its own; gives back the player's process."""
        with wave.open(str(wav)) as file:
            places = "mono" if file.getnchannels() == 1 else self._places
        return self._stage.start("paplay", ["paplay", f"--device={self._sinks[output]}",
                                            f"--channel-map={places}", str(wav)])

    def _write_alsa_configuration(self):
        entries = ["</usr/share/alsa/alsa.conf>"]
        for name, sink in self._sinks.items():
            entries.append(f'pcm."{name}" {{ type pulse  device "{sink}.monitor"\n'
                           f'    hint {{ show on  description "{name}" }} }}')
        path = self._stage.folder / "asound.conf"
        path.write_text("\n".join(entries) + "\n", encoding="utf-8")
        return path
