// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "core/Command.h"

#include <QByteArray>
#include <QList>
#include <QString>

/// One who signed a profile.
struct ProfileSigner
{
    QString name;        ///< as the certificate has it, control characters included; can be empty
    QString status;      ///< the system's word for the signature, see SignedMessage
    bool isKnown = true; ///< false when the certificate has expired or the system does not know it
};

/// Files with a signed message (RFC 5652) around their content, as /usr/bin/security reads them. Each call
/// but the first runs the command and blocks until it ends.
namespace SignedMessage {

/// Whether the bytes, or the first of them, begin as a message does. No property list starts like that.
bool isOne(const QByteArray &bytes);

/// Decodes the file; the content is the result's standard output, as far as it fits into the limit. Fails
/// when a signature does not fit the content; whose it is does not matter.
CommandResult decoded(const QString &path, int outputLimit);

/// Who signed a message that decodes, in the message's order. Empty when the system does not tell.
QList<ProfileSigner> signersOf(const QString &path);

} // namespace SignedMessage
