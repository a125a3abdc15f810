# shellcheck shell=bash disable=SC2016 # What is in single quotes is for others to expand.
# Throw-away Debian systems. To be sourced; needs root.

# make_root RELEASE FOLDER LOG: makes a bare Debian, from where this machine gets its packages.
make_root() {
    local site script=/usr/share/debootstrap/scripts/$1
    site=$(apt-get indextargets --format '$(SITE)' "Created-By: Packages" \
        "Codename: $(. /etc/os-release && echo "$VERSION_CODENAME")" | head -n 1)
    # A release that this machine's debootstrap is too old to know.
    if [ ! -e "$script" ]; then
        script=${script%/*}/sid
    fi
    debootstrap --variant=minbase "$1" "$2" "$site" "$script" >"$3" || { tail "$3" >&2; return 1; }
    cp /etc/resolv.conf "$2/etc/"
    apt-config dump | grep '^Acquire::' >"$2/etc/apt/apt.conf.d/host"
}

# in_root FOLDER COMMAND...: runs the command with its own processes and mounts, which end with it.
in_root() {
    unshare --mount --pid --fork --kill-child bash -euc '
        mount -t proc proc "$1/proc"
        mount -t tmpfs -o mode=1777 tmpfs "$1/dev/shm"
        exec env -i HOME=/root TERM=dumb PATH=/usr/sbin:/usr/bin:/sbin:/bin chroot "$@"' - "$@"
}
