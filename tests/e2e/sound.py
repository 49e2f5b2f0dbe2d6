"""Sound inputs without a sound card: a private sound server whose outputs are heard as inputs."""

import processes


class Sound:
    """A PulseAudio server with one output per given name, each an ALSA input of that name.

    What is played on an output arrives at the input in real time, in blocks, as from a card.
    Programs started on the stage after this one see the inputs, beside whatever ALSA devices the
    machine has.
    """

    def __init__(self, stage, inputs):
        self._stage = stage
        self._sinks = {name: f"out{index}" for index, name in enumerate(inputs)}
        self._socket = stage.folder / "runtime" / "sound"
        stage.environment["PULSE_SERVER"] = f"unix:{self._socket}"
        stage.environment["ALSA_CONFIG_PATH"] = str(self._write_alsa_configuration())
        # No server of another kind may be started on the side.
        stage.environment["JACK_NO_START_SERVER"] = "1"
        self.start_server()

    def start_server(self):
        modules = [f"module-native-protocol-unix auth-anonymous=1 socket={self._socket}"]
        modules += [f"module-null-sink sink_name={sink} rate=48000 channels=2"
                    for sink in self._sinks.values()]
        command = ["pulseaudio", "-n", "--exit-idle-time=-1", "--daemonize=no", "--use-pid-file=no"]
        for module in modules:
            command += ["-L", module]
        self.server = self._stage.start("pulseaudio", command)
        processes.wait_until(self._socket.exists, "the sound server")

    def kill_server(self):
        self.server.kill()
        self.server.wait()
        self._socket.unlink()

    def play(self, wav, output):
        """Starts playing a file on the output of that name; gives back the player's process."""
        return self._stage.start("paplay", ["paplay", f"--device={self._sinks[output]}", str(wav)])

    def _write_alsa_configuration(self):
        entries = ["</usr/share/alsa/alsa.conf>"]
        for name, sink in self._sinks.items():
            entries.append(f'pcm."{name}" {{ type pulse  device "{sink}.monitor"\n'
                           f'    hint {{ show on  description "{name}" }} }}')
        path = self._stage.folder / "asound.conf"
        path.write_text("\n".join(entries) + "\n", encoding="utf-8")
        return path
