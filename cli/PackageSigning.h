// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "cli/Option.h"
#include "core/Result.h"

#include <QString>
#include <QStringList>

class OutputFile;
class VerbLine;

/// With what a package is to be signed.
struct PackageSigning
{
    QString identity;            ///< empty when it is not to be signed
    bool anyCertificate = false; ///< also one that is not for installer packages
    bool isTimestamped = false;
    QString timestampService; ///< an URL; empty on a Mac, which has its own

    static PackageSigning from(const VerbLine &line, QLatin1String identityOption);
};

/// --timestamp as this system knows it, and --allow-any-certificate.
Option timestampOption();
Option anyCertificateOption();

/// What `productsign` of this system is told besides identity and files.
QStringList productSignOptions(const PackageSigning &signing);

/// Whether an identity that `security` lists under its policy "basic" is for installer packages.
bool isForPackages(const QString &identity);

/// Signs the package beside the output, judges the signature apart from who has made it, and only then puts
/// the package in the output's place. The package stays as it is.
Result<> signPackage(const QString &package, const PackageSigning &signing, OutputFile *output);
