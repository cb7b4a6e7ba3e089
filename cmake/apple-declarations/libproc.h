// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <Declare.h>
#include <sys/types.h>

/// The child processes of a process, as many as the buffer of so many bytes takes; negative on failure.
PCT_DECLARE int proc_listchildpids(pid_t parent, void *buffer, int bytes);
