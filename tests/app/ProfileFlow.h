// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "app/DlgCustomizationTool_v2.h"
#include "config/EditorXmlData.h"
#include "tests/app/DialogScript.h"
#include "tests/app/PrivatePlace.h"

#include <memory>

/// How saving a profile ends, as the user reads it.
namespace ProfileMessages {
const QString made = QStringLiteral("\nThe configure profile has been created successfully.");
const QString failed = QStringLiteral("\nFailed to create configure profile. Please try again.");
const QString isSigned = QStringLiteral("\nFile signed successfully!");
const QString notSigned = QStringLiteral("\nFailed to sign the file, please try again.");
const QString noneInstalled =
    QStringLiteral("\nNo configuration profiles found, please try another option to continue.");
} // namespace ProfileMessages

/// Profiles through the real window with the real commands, whose installed profiles and identities lie in a
/// place of their own.
class ProfileFlow : public PrivatePlace
{
public:
    ProfileFlow();

    /// A shown window with the real pages.
    std::unique_ptr<DlgCustomizationTool_v2> openWindow(bool editor = true) const;

    /// A profile file with an identity of its own that turns off the plug-ins.
    QString makeProfile(const char *name, bool editor = true, const QString &plugins = QString()) const;
    /// Installs a profile as an administrator does.
    void install(const QString &profile) const;
    /// Makes an identity that can sign.
    void addIdentity(const QString &name) const;

    /// Presses save; the flow must show exactly the dialogs that are answered.
    static void save(DlgCustomizationTool_v2 &window, const QList<DialogScript::Answer> &answers);

    QString output(const char *name = "out/saved.mobileconfig") const { return path(name); }
};

/// The string of a key in a profile file's outer dictionary, as xmllint reads it.
QString valueIn(const QString &profile, const char *key);

/// The library path of a plug-in that the page offers.
QString offeredPlugin(const DlgCustomizationTool_v2 &window, int row);
/// Whether its tick is set.
bool isPluginTicked(const DlgCustomizationTool_v2 &window, int row);
