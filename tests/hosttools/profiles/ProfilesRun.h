// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tests/hosttools/ToolRun.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QTemporaryDir>

/// A store of profiles of its own and the command over it. What the command prints is read by another
/// program's property-list reader.
class ProfilesRun
{
public:
    /// A path in the folder of this run; the store is "store".
    QString at(const char *name) const { return m_folder.path() + QLatin1Char('/') + QLatin1String(name); }
    QString folder() const { return m_folder.path(); }

    ToolRun::Result profiles(const QStringList &arguments) const;
    ToolRun::Result show() const;
    /// Writes the bytes into the file "profile" and installs that.
    ToolRun::Result install(const QByteArray &profile) const;

    /// The path of the one profile in the store; empty when there is another number.
    QString installedFile() const;

    QJsonObject shownLevels() const;
    /// The profiles of the one level that is shown.
    QJsonArray shownProfiles() const;

    /// A profile with one payload; `more` goes among the profile's own properties.
    static QByteArray profileText(const QByteArray &identifier, const QByteArray &more = QByteArray());

    /// The same property list written by Python in FMT_XML or FMT_BINARY.
    static QByteArray converted(const QByteArray &profile, const char *format);

private:
    QTemporaryDir m_folder;
};
