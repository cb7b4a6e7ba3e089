// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "package/contents/ByteStream.h"

/// How bytes are packed.
enum class Packing {
    None,
    Deflate, ///< zlib or gzip
    Bzip2,
    Lzma, ///< xz or the older form
};

/// The bytes without their packing. What follows the end of the packed ones may only be zeros; anything else
/// is a failure, as wrong checksums are. Takes at most 128 MiB of memory.
Bytes unpacked(Bytes packed, Packing packing);

/// What packages have as payload and scripts: packed with gzip, bzip2 or xz, in chunks of those ("pbzx"), or
/// not at all, as the first bytes tell.
Bytes unpackedArchive(Bytes archive);
