// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "cli/Problem.h"

#include <QTemporaryDir>

/// A folder below the temporary folder that only this run knows and only this user can enter (random
/// name, mode 0700). It goes away with the object, whatever has been put into it.
class PrivateFolder
{
public:
    PrivateFolder();
    ~PrivateFolder();
    PrivateFolder(const PrivateFolder &) = delete;
    PrivateFolder &operator=(const PrivateFolder &) = delete;

    /// Why there is no folder, or nothing when there is one.
    Verdict problem() const;

    /// Path of a new empty folder inside; empty when it cannot be made.
    QString makeSubfolder(const QString &name) const;

private:
    QTemporaryDir m_folder;
};
