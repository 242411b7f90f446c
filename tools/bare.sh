# Sourced, after common.sh, by the scripts that try the program on a bare Debian system in a folder. They
# need root. The systems are made once and kept in build/bare/.
# shellcheck shell=bash
bare_systems=$PWD/build/bare

# A mount of the system's own makes its devices and processes seen; it goes when the command has ended.
# in_bare <folder> <command...>
in_bare() {
    local root=$1
    shift
    unshare --mount --pid --fork bash -c '
        root=$1
        shift
        mount -t proc proc "$root/proc"
        mount --rbind /dev "$root/dev"
        mount --rbind /sys "$root/sys"
        mount --bind /etc/resolv.conf "$root/etc/resolv.conf"
        exec chroot "$root" env -i HOME=/root PATH=/usr/sbin:/usr/bin:/sbin:/bin LC_ALL=C.UTF-8 \
            DEBIAN_FRONTEND=noninteractive "$@"' bash "$root" "$@"
}

# make_bare <suite>: the smallest system of that release.
make_bare() {
    local root=$bare_systems/$1
    [[ -e $root/made ]] && return
    if [[ $(id -u) != 0 ]]; then
        echo "This needs root, for debootstrap and chroot." >&2
        exit 1
    fi
    command -v debootstrap >/dev/null || apt-get install -q -y debootstrap
    rm -rf "$root"
    mkdir -p "$root"
    debootstrap --variant=minbase "$1" "$root"
    touch "$root/etc/resolv.conf" "$root/made"
}

# copy_bare <suite> <name>: a copy to do as one likes with; prints its folder.
copy_bare() {
    local copy=$bare_systems/$2
    rm -rf "$copy"
    cp -a --reflink=auto "$bare_systems/$1" "$copy"
    echo "$copy"
}
