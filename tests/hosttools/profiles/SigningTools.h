// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>
#include <QStringList>

/// Identities and signed messages that other programs than ours make.
namespace SigningTools {

/// Makes an identity with tests/support/make-identity; `output` ends with .pem, .crt (the key beside it),
/// .p12 or .pfx. Options are those of the script.
void makeIdentity(const QString &name, const QString &output, const QStringList &options = {});

/// Signs a file with `openssl cms`, content included, DER unless the options say more.
void signWithOpenSsl(const QString &input, const QString &identity, const QString &output,
                     const QStringList &options = {});

/// The content of a signed message when `openssl cms` finds the signature good.
QByteArray contentByOpenSsl(const QString &path);

} // namespace SigningTools
