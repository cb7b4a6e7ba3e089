// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "package/contents/TableOfContents.h"
#include "package/verification/Deviation.h"

/// Which bytes are read. Those of the result always are: what its table says of them proves nothing.
enum class Depth {
    Shallow, ///< what the vendor's table says of its bytes is believed
    Deep     ///< the vendor's are read as well
};

/// Where the result has something else than the vendor's package in what no build changes: all entries but
/// the archives of install scripts, which must only be there. Owners may all be one and the same other: that
/// is what is left when somebody who is not root has put a package together. Codes: "entry-added",
/// "entry-removed", "entry-twice", "entry-type", "entry-size", "entry-mode", "entry-owner", "entry-target",
/// "entry-bytes", "entry-unreadable", "entries-overlap".
Deviations compareEntries(const TableOfContents &vendor, const TableOfContents &result, Depth depth);
