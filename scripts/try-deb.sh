#!/bin/sh
# SPDX-License-Identifier: Apache-2.0
# try-deb.sh ROOT SAMPLE.pkg PACKAGE.deb...: installs the Debian packages of pct and of the window into a
# new Debian 12 below ROOT, which must not exist, and runs both programs there on the Editor's sample
# installer. Removes ROOT at the end. Must be run as root; takes the mirror of this machine.
set -eu
if [ $# -lt 3 ] || [ -e "$1" ] || [ "$(id -u)" -ne 0 ]; then
    echo "usage, as root: try-deb.sh NEW-FOLDER SAMPLE.pkg PACKAGE.deb..." >&2
    exit 2
fi
root=$1 sample=$2
shift 2
sources=/etc/apt/sources.list.d/debian.sources
mirror=$(sed -n 's/^URIs: *//p' "$sources" | head -n 1)
export DEBIAN_FRONTEND=noninteractive LC_ALL=C.UTF-8

inside() {
    chroot "$root" "$@"
}

# As a user without rights, as on a build server.
as_user() {
    chroot --userspec=nobody:nogroup "$root" env HOME=/trial "$@"
}

# The path inside of the package file NAME_VERSION_ARCHITECTURE.deb.
package_file() {
    for file in "$root/packages/$1"_*.deb; do
        echo "/packages/$(basename "$file")"
    done
}

apt_install() {
    inside apt-get install -y -qq --no-install-recommends "$@" >"$root/apt.log" 2>&1 || {
        cat "$root/apt.log" >&2
        return 1
    }
}

# A tree in which something is mounted must not be removed.
clean_up() {
    ! mountpoint -q "$root/proc" || umount "$root/proc"
    rm -rf --one-file-system "$root"
}

make_root() {
    debootstrap --variant=minbase bookworm "$root" "$mirror" >/dev/null
    rm "$root/etc/apt/sources.list"
    cp "$sources" "$root/etc/apt/sources.list.d/"
    cp /etc/apt/apt.conf.d/* "$root/etc/apt/apt.conf.d/"
    cp /etc/resolv.conf /etc/hosts "$root/etc/"
    mount -t proc proc "$root/proc"
    inside apt-get update -qq
}

bring_files() {
    mkdir "$root/packages" "$root/trial"
    cp "$@" "$root/packages/"
    cp "$sample" "$root/trial/sample.pkg"
    inside chown -R nobody:nogroup /trial
}

try_pct() {
    apt_install "$(package_file pelix-pct)"
    if inside dpkg-query --show 'libqt?widgets*' 2>/dev/null; then
        echo "pelix-pct brings libraries of windows" >&2
        return 1
    fi
    as_user pct --version
    as_user pct check --product editor /trial/sample.pkg
    as_user pct build --product editor --input /trial/sample.pkg --output /trial/customized.pkg
    as_user pct show /trial/customized.pkg
    as_user pct profile --product reader --output /trial/Reader.mobileconfig
    as_user pct diff /trial/customized.pkg /trial/customized.pkg
}

# The first question appears; when it is cancelled, the program ends with status 1.
try_window() {
    apt_install "$(package_file pelix-customization-tool)" fonts-dejavu-core xvfb xauth xdotool
    # The inner shell expands the variables.
    # shellcheck disable=SC2016
    as_user xvfb-run --auto-servernum sh -c '
        timeout 240 pelix-customization-tool &
        window=$(timeout 60 xdotool search --sync --onlyvisible --name "^Pelix Customization Tool$" | head -n 1)
        echo "the window is open: $(xdotool getwindowname "$window")"
        xdotool keydown --window "$window" Escape
        status=0
        wait $! || status=$?
        echo "the window is closed: status $status"
        test "$status" -eq 1'
}

trap clean_up EXIT
make_root
bring_files "$@"
try_pct
try_window
echo "both programs run"
