// SPDX-License-Identifier: Apache-2.0
#include "profile/propertylist/FoundationText.h"

#include "profile/ManagedProfile.h"

#include "config/EditorXmlData.h"
#include "core/Command.h"
#include "core/HostPaths.h"
#include "core/PrintableText.h"
#include "profile/ManagedPreferences.h"
#include "profile/ProfileProduct.h"
#include "profile/ProfileReport.h"
#include "profile/ProfileSettings.h"
#include "profile/propertylist/PropertyListInput.h"
#include "profile/propertylist/FoundationPropertyList.h"

namespace
{

using ManagedProfile::Outcome;

QByteArray reportOf(QString &problem)
{
    const CommandResult report =
        Command::run(QStringLiteral("/usr/sbin/system_profiler"),
                     {QStringLiteral("SPConfigurationProfileDataType"), QStringLiteral("-xml")}, -1,
                     PropertyListInput::maximumBytes);
    problem = report.outputProblem();
    return report.standardOutput;
}

/// The payloads with settings of the product, whichever way a management has wrapped them.
QList<ProfileReport::Payload> reportedPayloads(bool editor, QString &problem)
{
    QList<ProfileReport::Payload> found;
    const QByteArray report = reportOf(problem);
    if (!problem.isEmpty())
        return found;
    const QString domain = ProfileProduct::settingsType(editor);
    const Result<QList<ProfileReport::Payload>> reported = ProfileReport::payloads(report);
    if (!reported) {
        problem = QStringLiteral("the report of system_profiler cannot be read: ") + reported.problem().text;
        return found;
    }
    for (const ProfileReport::Payload &payload : *reported) {
        if (payload.type == domain || payload.identifier == ProfileProduct::bundleIdentifier(editor) ||
            payload.settings.contains(domain))
            found.append(payload);
    }
    return found;
}

/// The one profile that the values can come from; null when there are several or none.
const ProfilePayloadInfo *sourceOf(const QList<ProfileReport::Payload> &payloads, const QString &payloadUuid)
{
    for (const ProfileReport::Payload &payload : payloads) {
        if (!payloadUuid.isEmpty() && payload.uuid.compare(payloadUuid, Qt::CaseInsensitive) == 0)
            return &payload.profile;
    }
    return payloads.size() == 1 ? &payloads.first().profile : nullptr;
}

Outcome identified(EditorXmlData &data, const QList<ProfileReport::Payload> &payloads, const QString &uuid,
                   QString &problem)
{
    const ProfilePayloadInfo *source = sourceOf(payloads, uuid);
    if (source != nullptr) {
        data.payloadInfo = *source;
        problem.clear();
        return Outcome::Filled;
    }
    if (problem.isEmpty())
        problem = payloads.isEmpty()
                      ? QStringLiteral("system_profiler tells of no profile with them")
                      : QStringLiteral("system_profiler tells of %1 profiles with such settings")
                            .arg(payloads.size());
    return Outcome::WithoutIdentity;
}

/// A profile is known without its values.
Outcome withoutValues(const QList<ProfileReport::Payload> &payloads, QString &problem)
{
    if (payloads.isEmpty()) {
        problem.clear();
        return Outcome::Nothing;
    }
    problem = QStringLiteral(
                  "the profile \"%1\" is installed, but its settings are not among the managed preferences")
                  .arg(printableText(payloads.first().profile.PayloadIdentifier));
    return Outcome::CannotTell;
}

} // namespace

Outcome ManagedProfile::read(EditorXmlData &data, bool editor, QString &problem)
{
    const AutoreleaseScope scope;
    const QList<ProfileReport::Payload> payloads = reportedPayloads(editor, problem);
    const ManagedPreferences::File file =
        ManagedPreferences::fileOf(HostPaths::managedPreferences(), ProfileProduct::settingsType(editor));
    if (file.path.isEmpty())
        return withoutValues(payloads, problem);
    NSError *error = nil;
    NSDictionary *settings = file.problem.isEmpty() ? readPropertyList(file.bytes, &error) : nil;
    if (settings == nil) {
        const QString why = file.problem.isEmpty() ? toQString([error localizedDescription]) : file.problem;
        problem = QStringLiteral("%1 cannot be read (%2)").arg(file.path, printableText(why));
        return Outcome::CannotTell;
    }
    fillFromSettings(data, settings, ConfigGenerator::EmptyPolicy::NotSet);
    return identified(data, payloads, textIn(settings, @"PayloadUUID"), problem);
}
