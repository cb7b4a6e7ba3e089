// SPDX-License-Identifier: Apache-2.0
#include "profile/InstalledSettings.h"

#include "config/Product.h"
#include "core/HostPaths.h"
#include "core/PrintableText.h"
#include "profile/ConfigGenerator.h"
#include "profile/ManagedProfile.h"

#include <algorithm>

namespace {

using Payload = ProfileReport::Payload;

/// A file of managed preferences that could be read.
struct ManagedFile
{
    QString path;
    ManagedProfile::Values values;
};

QString quoted(const QString &identifier)
{
    return QStringLiteral("profile \"%1\"").arg(printableText(identifier));
}

QList<EditorXmlData> findListed(const Product &product, InstalledSettings &found)
{
    const Result<QList<EditorXmlData>> listed = ConfigGenerator::installedProfiles(product);
    if (!listed) {
        found.unread.append(
            QStringLiteral("the installed profiles cannot be listed (%1)").arg(listed.problem().text));
        return {};
    }
    for (const EditorXmlData &profile : *listed)
        found.copies.append({quoted(profile.payloadInfo.PayloadIdentifier), profile});
    return *listed;
}

QList<ManagedFile> findManaged(const Product &product, InstalledSettings &found)
{
    QList<ManagedFile> managed;
    for (const ManagedPreferences::File &file :
         ManagedPreferences::filesOf(HostPaths::managedPreferences(), product.settingsType())) {
        const Result<ManagedProfile::Values> values = ManagedProfile::valuesIn(file);
        if (!values) {
            found.unread.append(values.problem().text);
            continue;
        }
        found.copies.append({file.path, values->settings});
        managed.append({file.path, *values});
    }
    return managed;
}

bool isListed(const Payload &payload, const QList<EditorXmlData> &listed)
{
    return std::any_of(listed.begin(), listed.end(), [&](const EditorXmlData &profile) {
        return profile.payloadInfo.PayloadIdentifier == payload.profile.PayloadIdentifier;
    });
}

bool comeFrom(const ManagedFile &file, const Payload &payload)
{
    return file.values.payloadUuid.compare(payload.uuid, Qt::CaseInsensitive) == 0;
}

/// Without the payload's UUID in the file there must be but one of each.
bool belongTogether(const ManagedFile &file, const Payload &payload, bool areTheOnlyOnes)
{
    return file.values.payloadUuid.isEmpty() ? areTheOnlyOnes : comeFrom(file, payload);
}

/// Whatever the report tells of must have been read, and what was read must be in the report: otherwise the
/// system keeps something from this user.
void compare(const QList<Payload> &reported, const QList<EditorXmlData> &listed,
             const QList<ManagedFile> &managed, InstalledSettings &found)
{
    const bool areTheOnlyOnes = reported.size() == 1 && managed.size() == 1;
    for (const Payload &payload : reported) {
        const bool isManaged = std::any_of(managed.begin(), managed.end(), [&](const ManagedFile &file) {
            return belongTogether(file, payload, areTheOnlyOnes);
        });
        if (!isManaged && !isListed(payload, listed))
            found.unread.append(QStringLiteral("the settings of the %1 cannot be read")
                                    .arg(quoted(payload.profile.PayloadIdentifier)));
    }
    for (const ManagedFile &file : managed) {
        const bool isReported = std::any_of(reported.begin(), reported.end(), [&](const Payload &payload) {
            return belongTogether(file, payload, areTheOnlyOnes);
        });
        if (!isReported)
            found.unread.append(QStringLiteral("no profile that %1 comes from is shown").arg(file.path));
    }
}

} // namespace

InstalledSettings InstalledSettings::find(const Product &product)
{
    InstalledSettings found;
    const QList<EditorXmlData> listed = findListed(product, found);
    const QList<ManagedFile> managed = findManaged(product, found);
    const Result<QList<Payload>> reported = ManagedProfile::reported(product);
    if (reported)
        compare(*reported, listed, managed, found);
    else
        found.unread.append(reported.problem().text);
    return found;
}
