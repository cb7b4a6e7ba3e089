// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "core/Result.h"
#include "profile/ProfileForm.h"

#include <QLatin1String>
#include <QString>
#include <QStringList>

#include <array>
#include <vector>

/// A profile that is to be uploaded.
struct Upload
{
    ProfileForm form;
    bool isSigned = false;
    bool hasToken = false; ///< whether a text in it looks like one that a service replaces: "{{name}}"
};

/// A device management and what it makes of a profile that is uploaded to it. There are only the objects that
/// are given out here. Any thread.
struct ManagementService
{
    /// When something is known not to work there.
    enum class Case { Always, UnsignedPayload, Payload, Signed, WithScope, WithToken };

    enum Trait {
        NeedsPayloadVersion = 1, ///< in the payload
        TakesSigned = 2,
        NeedsName = 4
    };
    Q_DECLARE_FLAGS(Traits, Trait)

    struct Caution
    {
        Case when;
        QLatin1String text; ///< what happens and what to do, as the end of a message
    };

    QLatin1String word; ///< on a command line: "jamf"
    QLatin1String name; ///< for people
    ProfileForm::Style style;
    Traits traits;
    qint64 maximumBytes; ///< of a file; 0 when no limit is known
    std::vector<Caution> cautions;

    /// What it would refuse, whatever the settings: a signature, a name that is missing. The problem names no
    /// file.
    Result<> takes(const Upload &upload) const;

    /// The same for the size of the file.
    Result<> takesSize(qint64 bytes) const;

    /// Whether to sign for it, as a sentence without a full stop.
    QString signingAdvice() const;

    /// What is known not to work there, one text for each.
    QStringList warnings(const Upload &upload) const;

    static const std::array<ManagementService, 6> &all();
    static QStringList words();

    /// The one of this word, or null.
    static const ManagementService *find(const QString &word);
};

/// The style of a word; without one that of the service, or else the payload. The service may be null.
ProfileForm::Style styleFor(const QString &word, const ManagementService *service);
