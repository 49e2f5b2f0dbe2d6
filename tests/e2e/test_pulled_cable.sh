#!/bin/sh
# test_pulled_cable.sh NETWORK_PEER: a pulled cable ends a connection on both sides, whether
# something is being sent or not. The system alone would take a quarter of an hour, or for ever.
set -eu

# CTest takes 77 for skipped.
unshare -m -u -n true 2>/dev/null || exit 77

hosts=$(dirname "$(realpath "$0")")/hosts.sh
scratch=$(mktemp -d "${TMPDIR:-/tmp}/tessivo-cable.XXXXXX")
tear_down() {
    kill ${peers:-} 2>/dev/null || true
    "$hosts" stop "$scratch/hosts"
    rm -rf "$scratch"
}
trap tear_down EXIT
trap 'exit 143' TERM INT

# both_say WORD SECONDS
both_say() {
    for _ in $(seq $(($2 * 10))); do
        grep -q "$1" "$scratch/admin" && grep -q "$1" "$scratch/station" && return 0
        sleep 0.1
    done
    echo "not both sides are $1 after $2 seconds" >&2
    return 1
}

"$hosts" start "$scratch/hosts" 2
for role in listen talk; do
    "$hosts" in "$scratch/hosts" 1 "$1" "_$role._tcp" $role >"$scratch/admin" &
    peers=$!
    "$hosts" in "$scratch/hosts" 2 "$1" "_$role._tcp" follow >"$scratch/station" &
    peers="$peers $!"
    both_say ready 30
    sleep 3
    "$hosts" cable "$scratch/hosts" 2 down
    start=$(date +%s)
    both_say failed 20
    echo "$role: noticed on both sides after $(($(date +%s) - start)) s"
    "$hosts" cable "$scratch/hosts" 2 up
    kill $peers
done
