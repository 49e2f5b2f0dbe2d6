#!/bin/sh
# with-avahi.sh COMMAND...: runs COMMAND beside a message bus and a DNS-SD responder of its own, in
# a network of its own where that is allowed: the loopback and a cable from the machine to itself,
# so that each service is seen several times. The responder's computer is called "tessivo-test".
# Everything lives in one scratch folder and is gone afterwards. COMMAND may rule either server:
# TESSIVO_SERVERS names a script that takes "start", "stop", "hang" or "resume", and "bus" or "avahi".
set -u

if [ "${TESSIVO_OWN_NETWORK:-}" = "" ]; then
    export TESSIVO_OWN_NETWORK=yes
    unshare -m -n sh -c 'mount -t tmpfs tessivo-run /run && ip link set lo up' 2>/dev/null &&
        exec unshare -m -n "$0" "$@"
    TESSIVO_OWN_NETWORK=no
fi

scratch=$(mktemp -d "${TMPDIR:-/tmp}/tessivo-avahi.XXXXXX") || exit 1
export TESSIVO_SERVERS="$scratch/servers" DBUS_SYSTEM_BUS_ADDRESS="unix:path=$scratch/bus"
printf '[server]\nhost-name=tessivo-test\nuse-ipv6=yes\n' >"$scratch/avahi.conf"

if [ "$TESSIVO_OWN_NETWORK" = yes ]; then
    mount -t tmpfs tessivo-run /run  # the responder's place is fixed
    ip link set lo up
    if ip link add cable0 type veth peer name cable1 2>/dev/null; then
        ip address add 10.77.0.1/24 dev cable0
        ip link set cable0 up
        ip link set cable1 up
    fi
else
    echo "allow-interfaces=lo" >>"$scratch/avahi.conf"
fi
ip link show cable0 >/dev/null 2>&1 ||
    echo "no network of its own is allowed here: the ways over a cable, those with a scope, are left out"
mkdir -p /run/avahi-daemon

cat >"$scratch/bus.conf" <<CONFIG
<busconfig>
  <type>session</type>
  <listen>unix:path=$scratch/bus</listen>
  <auth>EXTERNAL</auth>
  <policy context="default">
    <allow send_destination="*" eavesdrop="true"/>
    <allow eavesdrop="true"/>
    <allow own="*"/>
  </policy>
</busconfig>
CONFIG

# "start" answers once the server takes calls, or fails after ten seconds; "stop" once it has gone.
cat >"$TESSIVO_SERVERS" <<SERVERS
#!/bin/sh
run_bus() { exec dbus-daemon --config-file="$scratch/bus.conf" --nofork --nopidfile; }
run_avahi() { exec avahi-daemon --no-drop-root --no-chroot --no-rlimits -f "$scratch/avahi.conf"; }
call() { dbus-send --system --print-reply=literal --reply-timeout=1000 --dest="\$@"; }
bus_answers() { call org.freedesktop.DBus / org.freedesktop.DBus.GetId; }
avahi_answers() { call org.freedesktop.Avahi / org.freedesktop.Avahi.Server.GetState | grep -q ' 2\$'; }
pid=\$(cat "$scratch/\$2.pid" 2>/dev/null)
case \$1 in
start)
    "run_\$2" >"$scratch/\$2.log" 2>&1 &
    echo \$! >"$scratch/\$2.pid"
    for _ in \$(seq 100); do
        "\$2_answers" >/dev/null 2>&1 && exit 0
        sleep 0.1
    done
    cat "$scratch/\$2.log" >&2
    exit 1
    ;;
hang) kill -STOP "\$pid" ;;
resume) kill -CONT "\$pid" ;;
stop)
    rm -f "$scratch/\$2.pid"
    [ -n "\$pid" ] && kill "\$pid" 2>/dev/null && kill -CONT "\$pid"
    # A responder whose bus goes at the wrong moment turns in its loop for ever, and hears nothing.
    for _ in \$(seq 100); do
        grep -qs "^State:.[^Z]" "/proc/\$pid/status" || exit 0
        sleep 0.1
    done
    kill -9 "\$pid"
    while grep -qs "^State:.[^Z]" "/proc/\$pid/status"; do sleep 0.1; done
    ;;
esac
SERVERS
chmod 700 "$TESSIVO_SERVERS"

trap '[ -z "${command:-}" ] || kill "$command" 2>/dev/null
    "$TESSIVO_SERVERS" stop avahi
    "$TESSIVO_SERVERS" stop bus
    rm -rf "$scratch"' EXIT
trap 'exit 143' HUP INT TERM
"$TESSIVO_SERVERS" start bus && "$TESSIVO_SERVERS" start avahi || exit 1

# In the background, so that a signal to this script takes effect at once.
"$@" &
command=$!
wait "$command"
