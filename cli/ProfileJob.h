// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "cli/FileWarning.h"
#include "config/EditorXmlData.h"
#include "core/OutputFile.h"
#include "core/Result.h"
#include "profile/ManagedProfile.h"

#include <QList>
#include <QString>

#include <optional>

struct Product;
struct SettingsFile;

/// What `pct profile` was asked for. All paths are absolute; what was not given is empty. At most one of
/// `config`, `source` and `installed` is given; without one the settings are the defaults.
struct ProfileRequest
{
    const Product *product = nullptr;
    QString config;         ///< document to take the settings from
    std::optional<EditorXmlData> settings; ///< instead of a document
    QString source;         ///< profile to take settings and identity from
    bool installed = false; ///< take them from the profile that is installed on this machine
    QString output;
    QString signer;     ///< name of the identity to sign with
    QString identifier; ///< PayloadIdentifier, whatever the source has
    QString uuid;       ///< PayloadUUID, whatever the source has
    bool force = false; ///< replace an existing output
};

/// The making of one configuration profile. Whatever happens, the output is complete, and signed when that
/// was asked for, or as it was; nothing else is left behind.
class ProfileJob
{
public:
    explicit ProfileJob(const ProfileRequest &request);

    /// Blocks until the profile is made; nothing when it is. Called once.
    Result<> run();

    const QList<FileWarning> &warnings() const;
    const ProfilePayloadInfo &identity() const; ///< of the profile, after a successful run

private:
    // The stages of a run, in their order.
    Result<> checkPaths();
    Result<> takeSettings();
    Result<> write();

    Result<EditorXmlData> readGivenSettings();
    Result<EditorXmlData> readConfig();
    Result<EditorXmlData> readSource();
    Result<EditorXmlData> readInstalled();
    Problem cannotTell(const Problem &cause) const;
    Result<> checkManaged(const ManagedProfile::Reading &managed);
    void settleIdentity();
    Result<> checkSettings() const;
    Result<> writeTo(const QString &path);
    Problem notCreated() const;
    Result<> sign(const QString &path);
    Result<> readBack(const QString &path);

    ProfileRequest m_request;
    OutputFile m_output;
    EditorXmlData m_settings;
    QList<FileWarning> m_warnings;
};
