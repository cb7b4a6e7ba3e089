#!/bin/sh
# SPDX-License-Identifier: Apache-2.0
# tidy.sh [FILE...]: runs clang-tidy, as .clang-tidy has it, over all C++ that is no test, or over these files, and fails
# when it has something to say. It needs the packages clang and clang-tidy. The preset "tidy" builds what Qt generates and
# the precompiled headers, with the libraries that CMake wants for that.
set -eu
cd "$(dirname "$0")/.."

folders='app|cli|config|core|hosttools|package|pages|profile|welcome'
[ $# -gt 0 ] || set -- "^$PWD/($folders|benchmarks)/"

cmake --preset tidy >/dev/null
cmake --build --preset tidy
exec run-clang-tidy -quiet -p build/tidy -header-filter="^$PWD/($folders)/" "$@"
