// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "hosttools/flatpkg/ByteRange.h"

#include <cstddef>

namespace FlatPkg {

/// A part of a file in memory as the kernel has it, so that nothing is copied. A file that becomes shorter
/// meanwhile, or a disk that fails, does not end the process: what cannot be read is zeros then. At most one
/// in each thread.
class MappedRange
{
public:
    explicit MappedRange(const ByteRange &range);
    ~MappedRange();
    MappedRange(const MappedRange &) = delete;
    MappedRange &operator=(const MappedRange &) = delete;

    /// Not every file system can show its files in memory.
    bool isThere() const;
    const char *bytes() const;

    /// Whether all that has been read so far was the file's.
    bool isSound() const { return !m_isBroken; }

    /// Puts zeros in the place of all of it when the address is in it.
    bool mend(const void *address);

private:
    qint64 m_shift;
    std::size_t m_length;
    void *m_start;
    volatile bool m_isBroken = false;
};

} // namespace FlatPkg
