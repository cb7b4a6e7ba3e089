// SPDX-License-Identifier: Apache-2.0
#include "profile/ManagementService.h"

#include <QLocale>

#include <algorithm>

using Case = ManagementService::Case;
using Style = ProfileForm::Style;

namespace {

bool applies(Case when, const Upload &upload)
{
    const bool isPayload = upload.form.style == Style::Payload;
    switch (when) {
    case Case::UnsignedPayload:
        return isPayload && !upload.isSigned;
    case Case::Payload:
        return isPayload;
    case Case::Signed:
        return upload.isSigned;
    case Case::WithScope:
        return upload.form.scope != ProfileForm::Scope::Unsaid;
    case Case::WithToken:
        return upload.hasToken;
    case Case::Always:
        break;
    }
    return true;
}

bool isBlank(const QString &text)
{
    return !text.isEmpty() && text.trimmed().isEmpty();
}

} // namespace

const std::array<ManagementService, 6> &ManagementService::all()
{
    static const std::array<ManagementService, 6> services{{
        // Payloads without a form of its own are lost from unsigned profiles, signed ones are read-only:
        // github.com/ProfileCreator/ProfileCreator issues 62, 113, 123; the API:
        // github.com/grahampugh/jamf-upload 157
        {QLatin1String("jamf"),
         QLatin1String("Jamf Pro"),
         Style::ManagedPreferences,
         TakesSigned,
         0,
         {{Case::UnsignedPayload,
           QLatin1String("loses payloads of a type that it has no form for from an unsigned profile; use "
                         "--style mcx, or sign the profile")},
          {Case::Signed,
           QLatin1String(
               "shows a signed profile without letting anybody edit it, and its Classic API is "
               "reported not to take one; leave the profile unsigned, or upload it in the browser")}}},
        // github.com/MicrosoftDocs/memdocs, custom-settings-macos.md
        {QLatin1String("intune"),
         QLatin1String("Intune"),
         Style::Payload,
         TakesSigned,
         1000000,
         {{Case::WithScope, QLatin1String("goes by the channel of its policy; choose the same one there")},
          {Case::WithToken,
           QLatin1String("replaces {{...}} by what it knows of the device and does not check it; "
                         "spell the text otherwise unless that is meant")}}},
        // github.com/fleetdm/fleet, server/mdm/apple/mobileconfig; signed ones: issues 25831, 49976
        {QLatin1String("fleet"), QLatin1String("Fleet"), Style::Payload, NeedsName, 0, {}},
        // github.com/kandji-inc/iructl, Custom-Profiles in its wiki; own types:
        // github.com/rancher-sandbox/rancher-desktop/issues/9044
        {QLatin1String("kandji"),
         QLatin1String("Kandji"),
         Style::Payload,
         TakesSigned,
         0,
         {{Case::Always, QLatin1String("puts an identifier of its own in the place of the profile's, so it "
                                       "replaces no profile that came in another way; remove such a one")}}},
        // github.com/vmware-samples/euc-samples, Custom Settings of macOS
        {QLatin1String("workspace-one"),
         QLatin1String("Workspace ONE"),
         Style::Payload,
         NeedsPayloadVersion,
         0,
         {{Case::Always, QLatin1String("takes a payload alone as its custom settings, not a whole profile; "
                                       "\"pct plist --form workspace-one\" makes that")}}},
        // developer.apple.com/documentation/applebusinessapi; what it validates:
        // github.com/microsoft/mdatp-xplat/issues/257
        {QLatin1String("apple-business"),
         QLatin1String("Apple Business"),
         Style::ManagedPreferences,
         NeedsPayloadVersion,
         0,
         {{Case::Payload, QLatin1String("checks profiles against the payload types that Apple describes, and "
                                        "this is none of them; use --style mcx")}}},
    }};
    return services;
}

QStringList ManagementService::words()
{
    QStringList words;
    for (const ManagementService &service : all())
        words.append(service.word);
    return words;
}

const ManagementService *ManagementService::find(const QString &word)
{
    const auto *const found = std::find_if(
        all().begin(), all().end(), [&](const ManagementService &service) { return service.word == word; });
    return found == all().end() ? nullptr : &*found;
}

Result<> ManagementService::takes(const Upload &upload) const
{
    if (upload.isSigned && !traits.testFlag(TakesSigned))
        return Problem{{}, QStringLiteral("%1 takes no signed profile; leave out the signature").arg(name)};
    if (traits.testFlag(NeedsName) && isBlank(upload.form.displayName))
        return Problem{
            {}, QStringLiteral("%1 takes no profile without a name; give one that is not blank").arg(name)};
    return {};
}

Result<> ManagementService::takesSize(qint64 bytes) const
{
    if (maximumBytes == 0 || bytes <= maximumBytes)
        return {};
    const QLocale english(QLocale::English, QLocale::UnitedStates);
    return Problem{{},
                   QStringLiteral("%1 takes no more than %2 bytes, and the profile has %3; give fewer or "
                                  "shorter settings")
                       .arg(name, english.toString(maximumBytes), english.toString(bytes))};
}

QString ManagementService::signingAdvice() const
{
    const QString advice =
        traits.testFlag(TakesSigned)
            ? QStringLiteral("%1 takes it unsigned; sign it only where nobody may change it there")
            : QStringLiteral("%1 takes it unsigned only");
    return advice.arg(name);
}

QStringList ManagementService::warnings(const Upload &upload) const
{
    QStringList texts;
    for (const Caution &caution : cautions) {
        if (applies(caution.when, upload))
            texts.append(name + QLatin1Char(' ') + caution.text);
    }
    return texts;
}

ProfileForm::Style styleFor(const QString &word, const ManagementService *service)
{
    if (!word.isEmpty() || !service)
        return ProfileForm::styleOf(word);
    return service->style;
}
