// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "core/Result.h"

#include <QString>
#include <QStringList>

class OutputFile;

/// With what a package is to be signed.
struct PackageSigning
{
    QString identity;            ///< empty when it is not to be signed
    bool anyCertificate = false; ///< also one that is not for installer packages
    bool isTimestamped = false;
    QString timestampService; ///< an URL; empty on a Mac, which has its own
    bool strictKeys = false;  ///< not with a key that others can read
};

/// The command that signs packages.
QString packageSigningCommand();

/// What it is told besides identity and files.
QStringList productSignOptions(const PackageSigning &signing);

/// What it has said on its standard error of keys that others can read, a line each.
QStringList remarksOnKeys(const QByteArray &standardError);

/// Whether an identity that `security` lists under its policy "basic" is for installer packages.
bool isForPackages(const QString &identity);

/// Those of a list.
QStringList identitiesForPackages(const QStringList &identities);

/// Signs the package beside the output, judges the signature apart from who has made it, and only then puts
/// the package in the output's place, which may be the package itself. Gives what is to be remarked on the
/// key. After a failure both files are as they were.
Result<QStringList> signPackage(const QString &package, const PackageSigning &signing, OutputFile *output);
