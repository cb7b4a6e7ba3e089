// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "hosttools/security/OpenSsl.h"

#include <QVector>

#include <vector>

/// A certificate with its private key.
struct Identity
{
    QByteArray name;        ///< the certificate's common name, printable, as it is shown and asked for
    QByteArray fingerprint; ///< SHA-1 of the certificate, 40 upper-case hexadecimal digits
    OpenSsl::Certificate certificate;
    OpenSsl::PrivateKey key;
    QByteArray exposedKeyPath;               ///< the key's file when others can read it, else empty
    std::vector<OpenSsl::Certificate> chain; ///< the other certificates that lie beside it
};

/// The identities of the user: PEM files with certificate and key (.pem), pairs NAME.crt and NAME.key, and
/// PKCS#12 files (.p12, .pfx) in one folder.
namespace Identities {

/// PCT_IDENTITIES_DIR, or pct/identities in the user's data folder.
QByteArray folder();

/// All identities in the order of their file names; none when the folder does not exist. `unusable` receives
/// a message for each file that should be one and is not. Throws FlatPkg::Error.
std::vector<Identity> all(QVector<QByteArray> *unusable);

/// What an identity is to sign. A package needs an RSA key that is long enough, whatever the certificate is
/// for.
enum class Use { Code, Package, PackageByAnybody };

/// Why an identity cannot sign that: expired, not yet valid, made for something else. Empty when it can.
QByteArray obstacle(const Identity &identity, Use use);

/// The first identity of this name (for packages also: with this fingerprint) that can sign that; throws
/// FlatPkg::Error when there is none.
Identity forSigning(const QByteArray &name, Use use);

/// Who issued the identity's certificate, who issued theirs and so on, as far as they lie in the identity's
/// file or in the folder, where a file NAME.cer is a certificate without a key.
std::vector<OpenSsl::Certificate> issuersOf(const Identity &identity);

} // namespace Identities
