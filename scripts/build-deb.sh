#!/bin/sh
# SPDX-License-Identifier: Apache-2.0
# build-deb.sh FOLDER [CMAKE-OPTION...]: builds the Debian packages with Debian's compiler settings and puts
# them into FOLDER. The build happens in build/deb. "-D PCT_QT_MAJOR=5" builds them with Qt 5.15.
set -eu
if [ $# -eq 0 ]; then
    echo "usage: build-deb.sh FOLDER [CMAKE-OPTION...]" >&2
    exit 2
fi
mkdir -p "$1"
packages=$(cd "$1" && pwd)
shift
cd "$(dirname "$0")/.."

# CPack notes it for a part of the package that nobody installs.
umask 022

# All that makes a program harder to attack, nothing for a debugger, and no path of this folder.
export DEB_BUILD_MAINT_OPTIONS='hardening=+all reproducible=+all' DEB_CXXFLAGS_STRIP=-g DEB_OBJCXXFLAGS_STRIP=-g

flags() {
    dpkg-buildflags --get "$1"
}

cmake -S . -B build/deb -G Ninja "$@" -DCMAKE_BUILD_TYPE=Release -DCMAKE_INSTALL_PREFIX=/usr -DBUILD_TESTING=OFF \
    -DCMAKE_CXX_FLAGS="$(flags CXXFLAGS) $(flags CPPFLAGS)" \
    -DCMAKE_OBJCXX_FLAGS="$(flags OBJCXXFLAGS) $(flags CPPFLAGS)" \
    -DCMAKE_EXE_LINKER_FLAGS="$(flags LDFLAGS)" -DCMAKE_SHARED_LINKER_FLAGS="$(flags LDFLAGS)" \
    -DCMAKE_MODULE_LINKER_FLAGS="$(flags LDFLAGS)"
cmake --build build/deb
cd build/deb
rm -rf packages
cpack -G DEB -B packages
cp packages/*.deb "$packages"
