#!/bin/sh
# SPDX-License-Identifier: Apache-2.0
# try-container.sh PCT.deb SAMPLE.pkg: takes the steps of packaging/container/Containerfile in a new bare root of its
# Debian, because no registry of images is needed for that, and runs pct there as a container would: check, build, show.
# Must be run as root and needs debootstrap and the mirror of this machine; exits with 77 where it cannot work.
set -eu
if [ $# -ne 2 ]; then
    echo "usage, as root: try-container.sh PCT.deb SAMPLE.pkg" >&2
    exit 2
fi
package=$1 sample=$2
here=$(cd "$(dirname "$0")" && pwd)
steps=$here/../packaging/container/Containerfile
sources=/etc/apt/sources.list.d/debian.sources

if [ "$(id -u)" -ne 0 ] || ! command -v debootstrap >/dev/null 2>&1 || [ ! -f "$sources" ]; then
    echo "try-container.sh: needs root, debootstrap and a Debian with a mirror" >&2
    exit 77
fi
mirror=$(sed -n 's/^URIs: *//p' "$sources" | head -n 1)
root=$(mktemp -d)
user=root folder=/ environment='' entry=''

clean_up() {
    ! mountpoint -q "$root/proc" || umount "$root/proc"
    rm -rf --one-file-system "$root"
}

fail() {
    echo "try-container.sh: $1" >&2
    exit 1
}

# from IMAGE: a bare root of the Debian that the image is of; "-slim" leaves out manuals, which a bare root may have
from() {
    suite=${1#debian:}
    debootstrap --variant=minbase "${suite%-slim}" "$root" "$mirror" >"$root.log" 2>&1 || {
        cat "$root.log" >&2
        fail "debootstrap cannot make $suite"
    }
    rm -f "$root.log" "$root/etc/apt/sources.list"
    chmod 755 "$root"
    echo force-unsafe-io >"$root/etc/dpkg/dpkg.cfg.d/trial"
    cp "$sources" "$root/etc/apt/sources.list.d/"
    cp /etc/apt/apt.conf.d/* "$root/etc/apt/apt.conf.d/"
    cp /etc/resolv.conf /etc/hosts "$root/etc/"
    mount -t proc proc "$root/proc" 2>/dev/null || {
        echo "try-container.sh: nothing can be mounted here" >&2
        exit 77
    }
}

# inside COMMAND...: as the user, in the folder and with the environment of the steps so far
inside() {
    # The variables are words, and the inner shell expands its own.
    # shellcheck disable=SC2086,SC2016
    chroot --userspec="$user" "$root" env -i PATH=/usr/local/sbin:/usr/local/bin:/usr/sbin:/usr/bin:/sbin:/bin \
        DEBIAN_FRONTEND=noninteractive $environment \
        sh -c 'cd "$1" && shift && exec "$@"' sh "$folder" "$@"
}

# step WORD REST: one line of the file
step() {
    case $1 in
        FROM) from "$2" ;;
        COPY) mkdir -p "$root${2#* }" && cp "$package" "$root${2#* }" ;;
        RUN) inside sh -c "$2" >"$root/step.log" 2>&1 || {
            cat "$root/step.log" >&2
            fail "this step fails: $2"
        } ;;
        ENV) environment="$environment $2" ;;
        USER) user=$2 ;;
        WORKDIR) folder=$2 ;;
        ENTRYPOINT) entry=$(echo "$2" | tr -d '[]",') ;;
        *) fail "the step $1 is not known here" ;;
    esac
}

trap clean_up EXIT
while read -r word rest <&3; do
    case $word in
        '' | '#'*) ;;
        *) step "$word" "$rest" ;;
    esac
done 3<"$steps"

[ "$user" != root ] || fail "the container's user is root"
cp "$sample" "$root$folder/sample.pkg"
chmod a+r "$root$folder/sample.pkg"
inside "$entry" check --product editor sample.pkg
inside "$entry" build --product editor --input sample.pkg --output customized.pkg
inside "$entry" show customized.pkg
owner=$(stat -c %U "$root$folder/customized.pkg")
[ "$owner" != root ] || fail "the package belongs to root"
echo "the container's steps work"
