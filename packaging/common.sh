# Shared by ./run and ./test: words to the reader, and packages. Sourced, not run.

say() {
    printf '== %s\n' "$*"
}

fail() {
    printf '%s: %s\n' "$(basename "$0")" "$*" >&2
    exit 1
}

# Prints the names in the given package lists, one a line.
package_names() {
    sed -e 's/#.*//' -e '/^[[:space:]]*$/d' "$@"
}

# install_missing NAME...: installs those that are not there; quick when nothing is missing.
install_missing() {
    command -v dpkg-query >/dev/null && command -v apt-get >/dev/null ||
        fail "this script installs packages on Debian 12; their names are in the folder packaging."
    local installed missing as_root=()
    # dpkg-query fails when it has never heard of one of them, and still lists the others.
    installed=$({ dpkg-query -W -f='${db:Status-Status} ${Package}\n' "$@" 2>/dev/null || true; } |
        sed -n 's/^installed //p')
    missing=$(printf '%s\n' "$@" | grep -vxF -e "$installed" || true)
    [ -n "$missing" ] || return 0
    if [ "$(id -u)" != 0 ]; then
        command -v sudo >/dev/null ||
            fail "these packages are missing and there is no sudo to install them with:" $missing
        as_root=(sudo)
    fi
    say "Installing packages:" $missing
    "${as_root[@]}" apt-get -qq update ||
        fail "the package lists can't be fetched; is there a network?"
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get -qq install -y \
        --no-install-recommends -o DPkg::Lock::Timeout=300 -o Dpkg::Use-Pty=0 $missing ||
        fail "some packages can't be installed; the lines above say why."
}
