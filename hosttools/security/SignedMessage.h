// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "hosttools/security/Identity.h"

#include <QVector>

/// CMS signed messages (RFC 5652) that carry their content. All of it throws FlatPkg::Error.
namespace SignedMessage {

struct Contents
{
    QByteArray bytes;
    /// The common names of the signers. Their signatures are good; whether one should trust them
    /// is a question of certificates that is not asked here.
    QVector<QByteArray> signers;
};

/// Takes a BER or DER message apart and checks every signature in it.
Contents decoded(const QByteArray &message);

/// Whether the bytes begin as a message does and not as any text.
bool looksSigned(const QByteArray &bytes);

/// Content, signature, signing time and certificates of the identity as a DER message.
QByteArray made(const QByteArray &content, const Identity &identity, const EVP_MD *digest);

} // namespace SignedMessage
