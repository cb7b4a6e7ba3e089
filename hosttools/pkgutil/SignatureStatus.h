// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>

/// Prints what the Mac's command says of the signature of a package: its status, the time of a trusted
/// timestamp and the certificates. False when there is none or it does not hold; a signer whom nobody knows
/// has only the status for it. That a package is notarized is never said, because only Apple's service knows.
/// Throws FlatPkg::Error for what is no package.
bool printSignatureStatus(const QByteArray &package);
