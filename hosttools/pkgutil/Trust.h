// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "hosttools/security/OpenSsl.h"

#include <QByteArray>

#include <ctime>
#include <vector>

/// Which certificates a Mac would trust: those below Apple's root, known by its fingerprint, and those below
/// the authorities of the user, which are the files NAME.cer in the folder of the identities.
class Trust
{
public:
    enum class Anchor { None, OfTheUser, Apple };

    Trust();

    /// Where the chain of a certificate ends, whatever time it is.
    Anchor anchorOf(X509 *signer, const std::vector<OpenSsl::Certificate> &others) const;

    /// The certificate and its issuers, as far as they are among the others.
    static std::vector<X509 *> chainOf(X509 *signer, const std::vector<OpenSsl::Certificate> &others);

private:
    std::vector<OpenSsl::Certificate> m_ofTheUser;
};

/// The SHA-256 digest of a certificate.
QByteArray fingerprintOf(const X509 *certificate);
