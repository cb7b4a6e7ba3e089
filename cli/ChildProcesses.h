// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <sys/types.h>
#include <vector>

/// The direct children of a process; empty when it has none or is gone. Any thread.
std::vector<pid_t> childProcessesOf(pid_t parent);
