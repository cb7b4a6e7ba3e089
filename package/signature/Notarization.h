// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "core/Result.h"

#include <QString>

class OutputFile;

/// Whether this system has what notarizes packages: a Mac with Xcode's command-line tools.
bool canNotarize();

/// Submits a signed package to Apple's notary service, waits for its verdict, and makes a copy to which the
/// service's ticket is stapled. The credentials are those that `notarytool store-credentials` has put into
/// the keychain under this name, so they pass through no command line of ours. Blocks for minutes. After a
/// failure both files are as they were.
Result<> notarizePackage(const QString &package, const QString &keychainProfile, OutputFile *output);
