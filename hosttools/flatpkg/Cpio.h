// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>

namespace FlatPkg {

/// Unpacks a cpio archive of the portable ("odc") form, gzip'd or plain, into an open folder. Owners,
/// modes and times are kept (see Attributes.h); AppleDouble neighbours ("._name") are files like any
/// other. Throws Error for a damaged archive and for absolute names, "..", names that come twice, paths
/// through links, links that lead outside the folder, devices and pipes; what was made until then stays,
/// so callers unpack into a folder that they remove.
void unpackCpio(int archive, int folder);

/// Packs an open folder as a gzip'd cpio archive of that form into an empty file: "." and
/// then everything in it in byte order. Level 1 is enough, speed counts. Throws Error for what such an
/// archive cannot hold and for links that lead outside the folder.
void packCpio(int folder, int archive);

/// The time of the newest thing in a folder, itself included; seconds since 1970.
qint64 newestIn(int folder);

} // namespace FlatPkg
