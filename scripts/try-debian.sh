#!/bin/sh
# SPDX-License-Identifier: Apache-2.0
# try-debian.sh SUITE [PRESET]: builds and tests the last commit in another Debian: "bookworm", "trixie", "sid".
# Runs `./test --quick` there, or `./test PRESET`. Must be run as root; takes this machine's mirror, or PCT_DEBIAN_MIRROR.
#
# The first run makes a bare root of the suite, which takes minutes, and installs debootstrap for it when that is
# missing. The root is kept with what was installed and compiled in it: in ~/.cache/pct/debian-SUITE, or in the
# folder PCT_DEBIAN_ROOTS. Remove it whenever you like. What is mounted is so for this run only.
set -eu
if [ $# -lt 1 ] || [ $# -gt 2 ]; then
    echo "usage, as root: try-debian.sh SUITE [PRESET]" >&2
    exit 2
fi
if [ "$(id -u)" -ne 0 ]; then
    echo "try-debian: only root can make a root of another Debian and work in it; use sudo" >&2
    exit 2
fi
suite=$1
tests=${2:---quick}
sources=$(cd "$(dirname "$0")/.." && pwd)
root=${PCT_DEBIAN_ROOTS:-${XDG_CACHE_HOME:-$HOME/.cache}/pct}/debian-$suite

# The first mirror that apt knows here for all of Debian; a security mirror has not all packages.
mirror() {
    [ -z "${PCT_DEBIAN_MIRROR:-}" ] || {
        echo "$PCT_DEBIAN_MIRROR"
        return
    }
    # apt expands them.
    # shellcheck disable=SC2016
    apt-get indextargets --format '$(SITE) $(LABEL)' 'Created-By: Packages' | sed -n 's/ Debian$//p' | head -n 1
}

# A root that was not finished has another name, so that no later run takes it for a whole one.
make_root() {
    command -v debootstrap >/dev/null 2>&1 ||
        DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends debootstrap >&2
    mkdir -p "$(dirname "$root")"
    unfinished=$(mktemp -d "$root.XXXXXX")
    chmod 755 "$unfinished"
    debootstrap --variant=minbase --include=ca-certificates "$suite" "$unfinished" "$(mirror)" >"$unfinished.log" || {
        tail -n 20 "$unfinished.log" >&2
        return 1
    }
    rm "$unfinished.log"
    mv "$unfinished" "$root"
}

# The way out is this machine's.
bring_settings() {
    cp /etc/resolv.conf /etc/hosts "$root/etc/"
    for settings in /etc/apt/apt.conf.d/*; do
        grep -L 'docker\|/usr/' "$settings" | xargs -r cp -t "$root/etc/apt/apt.conf.d/"
    done
}

# Results of earlier builds stay for the next.
bring_sources() {
    if [ ! -d "$root/pct/.git" ]; then
        git clone --quiet "$sources" "$root/pct"
    fi
    git -C "$root/pct" fetch --quiet "$sources" HEAD
    git -C "$root/pct" reset --quiet --hard FETCH_HEAD
    git -C "$root/pct" clean --quiet -d --force
}

# In name spaces of its own, nothing stays mounted and no process stays behind, however this ends.
inside() {
    # The inner shells expand the variables.
    # shellcheck disable=SC2016
    unshare --mount --pid --fork --kill-child --propagation private sh -c '
        root=$1
        shift
        mount -t proc proc "$root/proc"
        mount --rbind /dev "$root/dev"
        mount -t tmpfs tmpfs "$root/run"
        exec chroot "$root" env -i HOME=/root TERM=dumb PATH=/usr/local/sbin:/usr/local/bin:/usr/sbin:/usr/bin:/sbin:/bin \
            LC_ALL=C.UTF-8 sh -c "cd /pct && exec \"\$@\"" sh "$@"' sh "$root" "$@"
}

[ -d "$root" ] || make_root
bring_settings
bring_sources
inside ./test "$tests"
