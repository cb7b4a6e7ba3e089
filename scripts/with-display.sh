#!/bin/sh
# SPDX-License-Identifier: Apache-2.0
# with-display.sh PROGRAM [ARGUMENT...]: runs a program in a virtual X display of its own,
# so that a test never touches the screen of whoever runs it.
unset WAYLAND_DISPLAY
QT_QPA_PLATFORM=xcb
export QT_QPA_PLATFORM
exec xvfb-run --auto-servernum --server-args="-screen 0 1600x1200x24 -dpi 96" "$@"
