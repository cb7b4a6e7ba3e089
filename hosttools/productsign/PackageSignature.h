// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "hosttools/security/Identity.h"

#include <vector>

/// The two signatures of a flat package over the digest of its table of contents. All of it throws
/// FlatPkg::Error.
class PackageSignature
{
public:
    /// `timestampService` is an URL, or empty for none.
    PackageSignature(const Identity &identity, const QByteArray &timestampService);

    /// What the table of contents says of digest and signatures, as XML.
    QByteArray elements() const;

    /// The bytes at the start of the heap, whose length is known before: the digest and both signatures.
    qint64 size() const { return m_digestSize + m_rsaSize + m_cmsSize; }
    QByteArray over(const QByteArray &digest) const;

    /// The names of the certificates that go into the package, the signer's first.
    std::vector<QByteArray> names() const;

private:
    QByteArray keyInfo() const;
    QByteArray rsa(const QByteArray &digest) const;
    QByteArray cms(const QByteArray &digest) const;
    void addTimestamp(CMS_ContentInfo *message) const;

    const Identity &m_identity;
    QByteArray m_timestampService;
    std::vector<OpenSsl::Certificate> m_issuers;
    qint64 m_digestSize;
    qint64 m_rsaSize;
    qint64 m_cmsSize; ///< reserved, before anything is signed
};
