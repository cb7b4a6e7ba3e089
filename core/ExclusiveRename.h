// SPDX-License-Identifier: Apache-2.0
#pragma once

/// Gives a file its final name in another folder of the same file system, or the same folder, and refuses
/// to replace what has that name: not even what appears there in the last moment. The folders are open
/// descriptors. Returns 0, or -1 with the reason in errno: EEXIST when the name is taken, EINVAL, ENOSYS or
/// ENOTSUP when the file system cannot refuse. Any thread.
int renameWithoutReplacing(int fromFolder, const char *from, int toFolder, const char *to);
