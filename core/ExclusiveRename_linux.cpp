// SPDX-License-Identifier: Apache-2.0
#include "core/ExclusiveRename.h"

#include <cstdio>

int renameWithoutReplacing(int fromFolder, const char *from, int toFolder, const char *to)
{
    return ::renameat2(fromFolder, from, toFolder, to, RENAME_NOREPLACE);
}
