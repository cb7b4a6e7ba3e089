// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "cli/FileWarning.h"
#include "cli/IdentityChoice.h"
#include "cli/SettingsSource.h"
#include "config/EditorXmlData.h"
#include "core/OutputFile.h"
#include "core/Result.h"
#include "profile/ProfileForm.h"

#include <QByteArray>
#include <QList>
#include <QString>

struct ManagementService;
struct Product;
struct Upload;

/// What `pct profile` was asked for. All paths are absolute; what was not given is empty.
struct ProfileRequest
{
    const Product *product = nullptr;
    SettingsSource source;
    QString output;
    QString signer; ///< name of the identity to sign with
    IdentityChoice identity;
    ProfileForm form;
    const ManagementService *service = nullptr; ///< what the profile is for, when that was said
    bool force = false;                         ///< replace an existing output
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
    Result<> checkRequest();
    Result<> takeSettings();
    Result<> write();

    Upload upload() const;
    Result<> checkService() const;
    void warnOfService();
    Result<> checkSize(const QByteArray &profile) const;
    Result<> place(const Result<QByteArray> &profile);
    Result<> writeTo(const QString &path);
    Result<> create(const QString &path);
    Result<> sign(const QString &path);
    Result<> readBack(const QString &path);

    ProfileRequest m_request;
    OutputFile m_output;
    EditorXmlData m_settings;
    QList<FileWarning> m_warnings;
    bool m_hasToken = false; ///< whether a text in the profile looks like one that a service replaces
};
