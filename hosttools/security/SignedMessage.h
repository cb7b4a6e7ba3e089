// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "hosttools/security/Identity.h"

#include <vector>

/// CMS signed messages (RFC 5652) that carry their content. All of it throws FlatPkg::Error.
namespace SignedMessage {

struct Contents
{
    QByteArray bytes;
    std::vector<OpenSsl::Certificate> signers; ///< whose signatures are good; they may be anybody's
    std::vector<OpenSsl::Certificate> others;  ///< certificates that came along
};

/// Takes a BER or DER message apart and checks every signature in it.
Contents decoded(const QByteArray &message);

/// Whether a signer's certificate is valid today and known: it, or who issued it by way of the others, is one
/// of the user's identities or of the authorities that the system trusts.
bool isTrusted(X509 *signer, const Contents &contents);

/// Whether the bytes begin as a message does and not as any text.
bool looksSigned(const QByteArray &bytes);

/// Content, signature, signing time and certificates of the identity as a DER message.
QByteArray made(const QByteArray &content, const Identity &identity, const EVP_MD *digest);

} // namespace SignedMessage
