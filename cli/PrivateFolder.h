// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "core/Result.h"
#include "core/TransientFolder.h"

/// A folder below the temporary folder that only this run knows and only this user can enter (random
/// name, mode 0700). It goes away with the object, whatever has been put into it.
class PrivateFolder
{
public:
    /// That there is a folder and something can be written into it.
    Result<> check() const;

    /// Path of a file inside that need not exist.
    QString filePath(const QString &name) const { return m_folder.filePath(name); }

    /// Path of a new empty folder inside; empty when it cannot be made.
    QString makeSubfolder(const QString &name) const;

private:
    TransientFolder m_folder{QStringLiteral("pct-")};
};
