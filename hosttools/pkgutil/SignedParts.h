// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "hosttools/security/OpenSsl.h"

#include <QByteArray>

#include <optional>
#include <vector>

namespace FlatPkg {
class XarReader;
}

/// A signature as the table of contents describes it.
struct SignedPart
{
    qint64 offset = -1; ///< of the bytes in the heap
    QByteArray bytes;
    std::vector<OpenSsl::Certificate> certificates; ///< the signer's first
};

/// The signatures of a package.
struct SignedParts
{
    std::optional<SignedPart> rsa;
    std::optional<SignedPart> cms;

    bool areThere() const { return rsa || cms; }

    /// Throws FlatPkg::Error for places outside the package, or where something else lies, and for
    /// certificates that are none.
    static SignedParts read(const FlatPkg::XarReader &package);
};
