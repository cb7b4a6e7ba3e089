// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "core/Result.h"

#include <QString>
#include <QStringList>

struct EditorXmlData;

/// What can sign a profile.
struct SigningIdentities
{
    Result<QStringList> names; ///< in the system's order
    QStringList remarks;       ///< lines that the command had to say of identities, also when it failed
};

/// Configuration profiles from the Qt side: files, the installed profile, identifiers and signing. Operations
/// report success by their result, never throw and show nothing; why one failed goes to the log.
/// `bEditor` is true for the Editor, false for the Reader. Each command that is run blocks its caller.
/// User-interface thread only, but for GenPayloadIdentifier, which any thread may call.
class CProfileGenerator
{
public:
    /// Writes the record as a profile (XML property list, UTF-8). The old file stays when that fails.
    static bool CreateProfile(const EditorXmlData *data, const QString &path, bool bEditor);

    /// Fills the record from an unsigned profile file. False, with the record as it was, when the file is
    /// no profile of the product or, because the window waits for it, larger than
    /// ConfigDocument::maximumImportBytes.
    static bool ImportProfile(const QString &path, EditorXmlData *data, bool bEditor);

    /// Fills the record from the product's profile that is installed on this machine.
    static bool ImportProfile(EditorXmlData *data, bool bEditor);

    /// Names of the code-signing identities in the user's keychains; empty when they cannot be listed.
    static QStringList GetSignIDs();

    /// The same with what there is to say of it, also under another policy of the system's, such as "basic".
    static SigningIdentities FindSignIDs(const QString &policy = QStringLiteral("codesigning"));

    /// Replaces a profile by its signed form: a message that verifies and whose content is the profile.
    /// False, with the profile as it was, when that fails.
    static bool SignProfile(const QString &path, const QString &identity);

    /// Makes the signed form with SHA-256, where the system's command by itself still takes SHA-1, as another
    /// file. False when that fails; there may be anything at `output` then.
    static bool SignProfileInto(const QString &path, const QString &identity, const QString &output);

    /// Whether the file is a valid signed message.
    static bool CheckProfileSign(const QString &path);

    /// Makes a new profile identifier: the machine's local host name, a dot and a new UUID (RFC 4122
    /// version 4, upper case, 8-4-4-4-12). The UUID alone goes to `uuid`, which may be null.
    static QString GenPayloadIdentifier(QString *uuid);

    /// Identifier and UUID of the product's installed profile; empty when there is none.
    static QString GetSysProfileIdentifier(QString *uuid, bool bEditor);

    /// The folder where the last file dialog of this user ended, or the home folder. Kept in the user
    /// defaults under "LastOpenDirectory".
    static QString GetLastOpenDirectory();

    /// Remembers the folder of a file that was chosen in a dialog.
    static void SyncLastOpenDirectory(const QString &filePath);
};
