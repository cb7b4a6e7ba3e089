// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "core/Result.h"
#include "package/signature/OpenSslOwners.h"

#include <QByteArray>
#include <QDateTime>
#include <QList>
#include <QString>

#include <vector>

/// What people want to know of a certificate.
struct CertificateInfo
{
    QString name;               ///< common name
    QString team;               ///< organizational unit
    QDateTime validFrom;        ///< UTC
    QDateTime validUntil;       ///< UTC
    QByteArray sha256;          ///< fingerprint, 32 bytes
    QString keyProblem;         ///< why the key is too weak; empty when it is not
    bool isForPackages = false; ///< has the use that Apple gives a Developer ID Installer
};

enum class TrustAnchor { None, Apple, File };

/// The certificates below which signers are trusted: Apple's root, which is known by its fingerprint, and
/// those of a file.
class TrustAnchors
{
public:
    /// Apple's root alone.
    TrustAnchors() = default;

    /// Those of a file in PEM form, too. It has at least one and at most a hundred.
    static Result<TrustAnchors> fromFile(const QString &path);

    /// Where the signer's chain ends, by way of the others, whatever time it is.
    TrustAnchor anchorOf(X509 *signer, const std::vector<OpenSslOwners::Certificate> &others) const;

private:
    std::vector<OpenSslOwners::Certificate> m_certificates;
};

CertificateInfo infoOf(const X509 *certificate);

/// Certificates in DER form; those that cannot be read are left out.
std::vector<OpenSslOwners::Certificate> certificatesFrom(const QList<QByteArray> &der);

/// The signer and its issuers, each once, as far as they are among the others.
std::vector<X509 *> chainOf(X509 *signer, const std::vector<OpenSslOwners::Certificate> &others);
