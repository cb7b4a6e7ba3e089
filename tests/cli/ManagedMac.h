// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tests/cli/ProfileRunner.h"

/// The system's report on profiles in pieces of XML.
namespace ManagedReport {

/// Type of the Editor's settings.
extern const QByteArray domain;
/// Of the payload whose values the managed preferences of managedSettings() are.
extern const QByteArray payloadUuid;
/// The section with the profiles of the device.
extern const QByteArray device;

QByteArray reportedPayload(const QByteArray &type, const QByteArray &uuid, const QByteArray &data = "{ }");
QByteArray reportedProfile(const QByteArray &identifier, const QList<QByteArray> &payloads);
QByteArray section(const QByteArray &name, const QList<QByteArray> &profiles);

/// The whole report, with the header that the system puts in front.
QByteArray report(const QList<QByteArray> &sections);

/// A file of managed preferences: four settings, and all else as it is by default.
QByteArray managedSettings();

} // namespace ManagedReport

/// A user of a Mac that a management has set up: `profiles` shows nothing of it, the report one profile of
/// the device with settings of the Editor.
class ManagedMac : public ProfileRunner
{
public:
    ManagedMac();

    /// The file of managed preferences of everybody, or of a user.
    QString preferences(const QString &user = {}) const;

    void reportIs(const QByteArray &xml) const;
    void listsNothing() const;

private:
    QTemporaryDir m_preferences;
};
