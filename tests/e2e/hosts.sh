#!/bin/sh
# hosts.sh COUNT COMMAND...: runs COMMAND beside COUNT computers on one switch, each with a network,
# a name (computer1, computer2, ...), a message bus and a DNS-SD responder of its own. COMMAND runs
# programs on one of them with "$TESSIVO_ON" NUMBER PROGRAM..., and pulls its cable with
# "ip link set cableNUMBER down". Everything is gone when COMMAND has ended; the machine's own
# network, buses and responder are never touched. Needs the right to make namespaces.
set -u

if [ -z "${TESSIVO_HOSTS:-}" ]; then
    export TESSIVO_HOSTS=inside
    # The end of a process namespace takes all its processes along.
    separate="-m -n -p -f --mount-proc --kill-child"
    for unshare in "unshare $separate" "unshare -r $separate"; do
        $unshare true 2>/dev/null && exec $unshare "$0" "$@"
    done
    echo "This system doesn't let us make networks of our own." >&2
    exit 77
fi

count=$1
shift
scratch=$(mktemp -d "${TMPDIR:-/tmp}/tessivo-hosts.XXXXXX") || exit 1
trap 'rm -rf "$scratch"' EXIT
trap 'exit 129' HUP
trap 'exit 130' INT
trap 'exit 143' TERM

cat >"$scratch/bus.conf" <<CONFIG
<busconfig>
  <type>system</type>
  <listen>unix:path=/run/avahi-daemon/bus</listen>
  <auth>EXTERNAL</auth>
  <policy context="default">
    <allow send_destination="*"/>
    <allow receive_sender="*"/>
    <allow own="*"/>
    <allow user="*"/>
  </policy>
</busconfig>
CONFIG
printf '[server]\nuse-ipv4=yes\nuse-ipv6=yes\n' >"$scratch/avahi.conf"

# What one computer does from its start on, in namespaces of its own.
cat >"$scratch/computer" <<COMPUTER
#!/bin/sh
echo \$\$ >"$scratch/pid\$1"
hostname "computer\$1"
mount -t tmpfs computer /run/avahi-daemon
ip link set lo up
ip address add "10.77.0.\$1/24" dev eth0
ip link set eth0 up
dbus-daemon --config-file="$scratch/bus.conf" --nofork --nopidfile &
until [ -S /run/avahi-daemon/bus ]; do sleep 0.05; done
avahi-daemon --no-drop-root --no-chroot --no-rlimits -f "$scratch/avahi.conf" &
wait
COMPUTER

export TESSIVO_ON="$scratch/on"
cat >"$TESSIVO_ON" <<ON
#!/bin/sh
number=\$1
shift
exec nsenter -t "\$(cat "$scratch/pid\$number")" -m -n -u -- "\$@"
ON
chmod 700 "$scratch/computer" "$TESSIVO_ON"
export DBUS_SYSTEM_BUS_ADDRESS=unix:path=/run/avahi-daemon/bus

mount -t tmpfs run /run && mkdir /run/avahi-daemon || exit 1
ip link add switch type bridge && ip link set switch up || exit 1
for number in $(seq "$count"); do
    ip netns add "computer$number" &&
        ip link add "cable$number" type veth peer name eth0 netns "computer$number" &&
        ip link set "cable$number" master switch up || exit 1
    ip netns exec "computer$number" unshare -m -u "$scratch/computer" "$number" \
        >"$scratch/log$number" 2>&1 &
done

# A responder is ready in its state 2, AVAHI_SERVER_RUNNING.
is_ready() {
    [ -s "$scratch/pid$1" ] && "$TESSIVO_ON" "$1" dbus-send --system --print-reply=literal \
        --reply-timeout=1000 --dest=org.freedesktop.Avahi / \
        org.freedesktop.Avahi.Server.GetState 2>/dev/null | grep -q 'int32 2'
}
for number in $(seq "$count"); do
    for _ in $(seq 200); do
        is_ready "$number" && continue 2
        sleep 0.1
    done
    cat "$scratch/log$number" >&2
    exit 1
done

# In the background, so that a signal to this script takes effect at once.
"$@" &
wait $!
