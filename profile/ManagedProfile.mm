// SPDX-License-Identifier: Apache-2.0
#include "profile/propertylist/FoundationText.h"

#include "profile/ManagedProfile.h"

#include "config/Product.h"
#include "core/Command.h"
#include "core/HostPaths.h"
#include "core/PrintableText.h"
#include "profile/ProfileSettings.h"
#include "profile/SettingsPayload.h"
#include "profile/propertylist/FoundationPropertyList.h"
#include "profile/propertylist/PropertyListInput.h"

namespace
{

using ManagedProfile::Reading;
using Payloads = QList<ProfileReport::Payload>;

bool isOf(const Product &product, const ProfileReport::Payload &payload)
{
    return payload.type == product.settingsType() || payload.identifier == product.bundleIdentifier ||
           payload.identifier == managedPreferencesIdentifier(product) ||
           payload.settings.contains(product.settingsType());
}

/// The one profile that the values can come from; null when there are several or none.
const ProfilePayloadInfo *sourceOf(const Payloads &payloads, const QString &payloadUuid)
{
    for (const ProfileReport::Payload &payload : payloads) {
        if (!payloadUuid.isEmpty() && payload.uuid.compare(payloadUuid, Qt::CaseInsensitive) == 0)
            return &payload.profile;
    }
    return payloads.size() == 1 ? &payloads.first().profile : nullptr;
}

Result<> identify(EditorXmlData &data, const Result<Payloads> &payloads, const QString &uuid)
{
    if (!payloads)
        return payloads.problem();
    if (const ProfilePayloadInfo *source = sourceOf(*payloads, uuid)) {
        data.payloadInfo = *source;
        return {};
    }
    if (payloads->isEmpty())
        return Problem{{}, QStringLiteral("system_profiler tells of no profile with them")};
    return Problem{
        {},
        QStringLiteral("system_profiler tells of %1 profiles with such settings").arg(payloads->size())};
}

/// A profile is known without its values.
Result<Reading> withoutValues(const Result<Payloads> &payloads)
{
    if (!payloads || payloads->isEmpty())
        return Reading();
    return Problem{
        {},
        QStringLiteral("the profile \"%1\" is installed, but its settings are not among the managed preferences")
            .arg(printableText(payloads->first().profile.PayloadIdentifier))};
}

Result<NSDictionary *> settingsIn(const ManagedPreferences::File &file)
{
    const Result<NSDictionary *> settings =
        file.bytes ? readPropertyList(*file.bytes) : file.bytes.problem();
    if (settings)
        return settings;
    return Problem{{},
                   QStringLiteral("%1 cannot be read (%2)")
                       .arg(file.path, printableText(settings.problem().text))};
}

} // namespace

Result<Reading> ManagedProfile::read(EditorXmlData &data, const Product &product)
{
    const AutoreleaseScope scope;
    const Result<Payloads> payloads = reported(product);
    const auto file = ManagedPreferences::fileOf(HostPaths::managedPreferences(), product.settingsType());
    if (!file)
        return withoutValues(payloads);
    const Result<NSDictionary *> settings = settingsIn(*file);
    if (!settings)
        return settings.problem();
    fillFromSettings(data, *settings, ConfigGenerator::EmptyPolicy::NotSet);
    return Reading{true, identify(data, payloads, textIn(*settings, @"PayloadUUID"))};
}

Result<Payloads> ManagedProfile::reported(const Product &product)
{
    const CommandResult report =
        Command::run(QStringLiteral("/usr/sbin/system_profiler"),
                     {QStringLiteral("SPConfigurationProfileDataType"), QStringLiteral("-xml")}, -1,
                     PropertyListInput::maximumBytes);
    if (const QString problem = report.outputProblem(); !problem.isEmpty())
        return Problem{{}, problem};
    const Result<Payloads> reported = ProfileReport::payloads(report.standardOutput);
    if (!reported)
        return Problem{{},
                       QStringLiteral("the report of system_profiler cannot be read: ") +
                           reported.problem().text};
    Payloads found;
    for (const ProfileReport::Payload &payload : *reported) {
        if (isOf(product, payload))
            found.append(payload);
    }
    return found;
}

Result<ManagedProfile::Values> ManagedProfile::valuesIn(const ManagedPreferences::File &file)
{
    const AutoreleaseScope scope;
    const Result<NSDictionary *> settings = settingsIn(file);
    if (!settings)
        return settings.problem();
    Values values;
    fillFromSettings(values.settings, *settings, ConfigGenerator::EmptyPolicy::NotSet);
    values.payloadUuid = textIn(*settings, @"PayloadUUID");
    return values;
}
