#!/bin/sh
# Several computers on one switch, each with a name, a network, a message bus and a DNS-SD responder
# of its own. As root:
#   hosts.sh start FOLDER COUNT      host1 to hostCOUNT; FOLDER is new and holds what belongs to them
#   hosts.sh in FOLDER N COMMAND...  runs COMMAND on host N
#   hosts.sh cable FOLDER N down|up  pulls the cable of host N out of the switch, or puts it in
#   hosts.sh stop FOLDER             ends them, with all that still runs on their buses
# They are namespaces that a sleeping process holds each: nothing of the machine's own changes.
set -eu

action=$1
folder=$2

# hold NAME FLAG...: a process in namespaces of its own.
hold() {
    name=$1
    shift
    unshare "$@" sleep infinity >/dev/null 2>&1 &
    echo $! >"$folder/$name.pid"
    for _ in $(seq 100); do
        [ "$(readlink "/proc/$!/ns/net")" = "$(readlink /proc/self/ns/net)" ] || return 0
        sleep 0.05
    done
    return 1
}
on_switch() { nsenter -t "$(cat "$folder/switch.pid")" -n "$@"; }
# Becomes the command, so that whoever ends this process ends the command and not a shell before it.
become_on_host() {
    host=$1
    shift
    export DBUS_SYSTEM_BUS_ADDRESS="unix:path=$folder/host$host.bus"
    exec nsenter -t "$(cat "$folder/host$host.pid")" -m -u -n "$@"
}
# await COMMAND...: until it succeeds, for at most ten seconds.
await() {
    for _ in $(seq 100); do
        ("$@") >/dev/null 2>&1 && return 0
        sleep 0.1
    done
    return 1
}

start_host() {
    hold "host$1" -m -u -n
    on_switch ip link add "port$1" type veth peer name cable netns "$(cat "$folder/host$1.pid")"
    on_switch ip link set "port$1" master switch up
    (become_on_host "$1" sh -eu -c "
        hostname host$1
        mount -t tmpfs tessivo-run /run
        mkdir /run/avahi-daemon
        ip link set lo up
        ip address add 10.78.0.$1/24 dev cable
        ip link set cable up")
    cat >"$folder/host$1.conf" <<CONFIG
<busconfig>
  <type>session</type>
  <listen>unix:path=$folder/host$1.bus</listen>
  <auth>EXTERNAL</auth>
  <policy context="default">
    <allow send_destination="*" eavesdrop="true"/>
    <allow eavesdrop="true"/>
    <allow own="*"/>
  </policy>
</busconfig>
CONFIG
    become_on_host "$1" dbus-daemon --config-file="$folder/host$1.conf" --nofork --nopidfile \
        >"$folder/host$1.bus.log" 2>&1 &
    echo $! >"$folder/host$1.bus.pid"
    await [ -S "$folder/host$1.bus" ]
    become_on_host "$1" avahi-daemon --no-drop-root --no-chroot --no-rlimits -f /dev/null \
        >"$folder/host$1.avahi.log" 2>&1 &
    echo $! >"$folder/host$1.avahi.pid"
    await become_on_host "$1" avahi-browse -at
}

stop() {
    for file in "$folder"/*.avahi.pid "$folder"/*.bus.pid "$folder"/*.pid; do
        kill "$(cat "$file")" 2>/dev/null || true
    done
    rm -rf "$folder"
}

case $action in
start)
    mkdir -m 755 "$folder"
    folder=$(realpath "$folder")
    trap '[ $? = 0 ] || stop' EXIT
    hold switch -n
    on_switch ip link add switch type bridge mcast_snooping 0
    on_switch ip link set switch up
    for host in $(seq "$3"); do
        start_host "$host"
    done
    ;;
in)
    folder=$(realpath "$folder")
    shift 2
    become_on_host "$@"
    ;;
cable) on_switch ip link set "port$3" "$4" ;;
stop) stop ;;
*) exit 2 ;;
esac
