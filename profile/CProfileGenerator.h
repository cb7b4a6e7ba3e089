// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

/// Configuration profiles from the Qt side. User-interface thread only, but for GenPayloadIdentifier,
/// which any thread may call.
class CProfileGenerator
{
public:
    /// Makes a new profile identifier: the machine's local host name, a dot and a new UUID (RFC 4122
    /// version 4, upper case, 8-4-4-4-12). The UUID alone goes to `uuid`, which may be null.
    static QString GenPayloadIdentifier(QString *uuid);

    /// The folder where the last file dialog of this user ended, or the home folder. Kept in the user
    /// defaults under "LastOpenDirectory".
    static QString GetLastOpenDirectory();

    /// Remembers the folder of a file that was chosen in a dialog.
    static void SyncLastOpenDirectory(const QString &filePath);
};
