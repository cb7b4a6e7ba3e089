// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "hosttools/security/OpenSsl.h"

#include <vector>

/// What one file of the identities folder holds.
struct IdentityFile
{
    std::vector<OpenSsl::Certificate> certificates;
    OpenSsl::PrivateKey key; ///< null when the file has none; the first when it has several
    bool readableByOthers = false;
    bool keyIsLocked = false; ///< there is no key because the password does not fit

    /// Reads PEM, DER or PKCS#12, or follows the line "pkcs11:..." to a key on a token; what is encrypted is
    /// tried with no password and then with that of PCT_IDENTITIES_PASSWORD. Nobody is ever asked for one.
    /// Throws FlatPkg::Error without the path.
    static IdentityFile read(const QByteArray &path);
};
