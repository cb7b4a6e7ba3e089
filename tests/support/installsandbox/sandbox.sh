# SPDX-License-Identifier: Apache-2.0
# shellcheck shell=sh
# What the stand-in commands share.

# logCall NAME ARGUMENT...: one line for each call in $SANDBOX_LOG
logCall() {
    [ -z "${SANDBOX_LOG:-}" ] || printf '%s\n' "$*" >> "$SANDBOX_LOG"
}

consoleOwner() {
    printf '%s\n' "${SANDBOX_STAT_USER:-root}"
}

# The accounts of the machine: root and whoever the test says is at the console.
isAccount() {
    [ -n "$1" ] || return 1
    [ "$1" = root ] || [ "$1" = "${SANDBOX_CONSOLE_USER:-}" ] || [ "$1" = "${SANDBOX_STAT_USER:-}" ]
}
