// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "cli/FileWarning.h"
#include "cli/Option.h"
#include "package/signature/PackageSigning.h"

class VerbLine;

/// How packages are signed, as the command line says it: --timestamp as this system knows it,
/// --allow-any-certificate and --strict-keys.
QList<Option> signingOptions();
Option timestampOption();

PackageSigning signingFrom(const VerbLine &line, QLatin1String identityOption);

/// That the command that signs is there.
Result<> canSignPackages();

/// For what it said of keys.
QList<FileWarning> signingWarnings(const QStringList &remarks);
