#!/bin/sh
# with-pulse.sh COMMAND...: runs COMMAND beside a sound server of its own, with two null sinks whose
# monitors ALSA names as the inputs "tessivo_stereo" and "tessivo_quad", and nothing of the machine's.
# (ALSA offers 32 channels of either, whatever the sink has: the server remixes.) Everything lives in
# one scratch folder and is gone afterwards. Servers of other programs are left alone; should this
# script be killed outright, its own ends by itself after a minute without a client. COMMAND may kill
# and restart the server: PULSE_START is the line that starts it, PULSE_PID_FILE holds the running
# one's process id.
set -u

scratch=$(mktemp -d "${TMPDIR:-/tmp}/tessivo-pulse.XXXXXX") || exit 1
mkdir -m 700 "$scratch/run" "$scratch/home"
export XDG_RUNTIME_DIR="$scratch/run" HOME="$scratch/home"
export PULSE_SERVER="unix:$scratch/run/native" PULSE_STATE_PATH="$scratch/home/pulse"
export PULSE_PID_FILE="$scratch/pid" PULSE_START="$scratch/start"
unset DISPLAY DBUS_SESSION_BUS_ADDRESS PULSE_RUNTIME_PATH PULSE_SOURCE PULSE_SINK

stop_server() {
    [ -s "$PULSE_PID_FILE" ] || return 0
    pid=$(cat "$PULSE_PID_FILE")
    kill "$pid" 2>/dev/null
    for _ in $(seq 50); do
        kill -0 "$pid" 2>/dev/null || return 0
        sleep 0.1
    done
    kill -9 "$pid" 2>/dev/null
}
tear_down() {
    [ -z "${command:-}" ] || kill "$command" 2>/dev/null
    stop_server
    rm -rf "$scratch"
}
trap tear_down EXIT
trap 'exit 129' HUP
trap 'exit 130' INT
trap 'exit 143' TERM

cat >"$scratch/asound.conf" <<CONFIG
pcm.default { type pulse device "stereo.monitor" }
pcm.tessivo_stereo { type pulse device "stereo.monitor" }
pcm.tessivo_quad { type pulse device "quad.monitor" }
CONFIG
export ALSA_CONFIG_PATH="$scratch/asound.conf"

# Answers once the server takes connections, or fails after ten seconds.
cat >"$PULSE_START" <<START
#!/bin/sh
pulseaudio -n --exit-idle-time=60 --daemonize=no --use-pid-file=no --log-target=stderr \\
    -L "module-native-protocol-unix socket=$scratch/run/native" \\
    -L "module-null-sink sink_name=stereo rate=48000 channels=2" \\
    -L "module-null-sink sink_name=quad rate=48000 channels=4" \\
    >"$scratch/server.log" 2>&1 &
echo \$! >"$PULSE_PID_FILE"
for _ in \$(seq 100); do
    pactl info >/dev/null 2>&1 && exit 0
    sleep 0.1
done
cat "$scratch/server.log" >&2
exit 1
START
chmod 700 "$PULSE_START"
"$PULSE_START" || exit 1

# In the background, so that a signal to this script takes effect at once.
"$@" &
command=$!
wait "$command"
