// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <Declare.h>

#define RENAME_EXCL 0x00000004

/// Like renameat(2), with flags; refuses with EEXIST when RENAME_EXCL is given and the new name is taken.
PCT_DECLARE int renameatx_np(int fromFolder, const char *from, int toFolder, const char *to,
                             unsigned int flags);
