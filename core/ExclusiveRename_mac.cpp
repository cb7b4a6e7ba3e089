// SPDX-License-Identifier: Apache-2.0
#include "core/ExclusiveRename.h"

#include <sys/stdio.h>

int renameWithoutReplacing(int fromFolder, const char *from, int toFolder, const char *to)
{
    return ::renameatx_np(fromFolder, from, toFolder, to, RENAME_EXCL);
}
