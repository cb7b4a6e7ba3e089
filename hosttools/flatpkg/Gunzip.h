// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtGlobal>

#include <memory>

struct gzFile_s;

namespace FlatPkg {

/// Reads a file from its start and unpacks it on the way when it is packed with gzip, once: an archive that
/// is packed in another one is not looked into. The checksum and the length at the end of what is packed are
/// verified.
class Gunzip
{
public:
    /// The descriptor stays the caller's.
    explicit Gunzip(int fd);

    /// Reads that many bytes, fewer only at the end. Throws Error for what is damaged or cut.
    qint64 read(char *bytes, qint64 count);

private:
    std::unique_ptr<gzFile_s, int (*)(gzFile_s *)> m_file;
};

} // namespace FlatPkg
