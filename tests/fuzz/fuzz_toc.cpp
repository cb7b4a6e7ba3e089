// SPDX-License-Identifier: Apache-2.0
// Whatever a table of contents holds: it is refused, or all in it is safe to act on.
#include "hosttools/base/Error.h"
#include "hosttools/flatpkg/EntryPath.h"
#include "hosttools/flatpkg/Toc.h"

#include <cstdlib>

using namespace FlatPkg;

namespace {

constexpr qint64 heapLength = 1024 * 1024;

void require(bool holds)
{
    if (!holds)
        std::abort();
}

void requireSafe(const std::vector<TocEntry> &entries, int depth)
{
    require(depth <= deepestNesting);
    for (const TocEntry &entry : entries) {
        require(!entry.name.isEmpty() && entry.name != "." && entry.name != "..");
        require(!entry.name.contains('/') && !entry.name.contains('\0'));
        if (entry.type == EntryType::Link)
            require(!entry.target.startsWith('/') && entry.target.count("..") <= depth);
        if (entry.data)
            require(entry.data->offset >= 0 && entry.data->length >= 0 && entry.data->size >= 0 &&
                    entry.data->offset + entry.data->length <= heapLength);
        requireSafe(entry.children, depth + 1);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char *bytes, std::size_t count)
{
    const QByteArray xml(reinterpret_cast<const char *>(bytes), static_cast<int>(count));
    try {
        requireSafe(readToc(xml, heapLength).entries, 0);
    } catch (const Error &) {
        return 0; // refused
    }
    return 0;
}
