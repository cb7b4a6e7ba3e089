// SPDX-License-Identifier: Apache-2.0
#include "profile/propertylist/FoundationText.h"

#include "profile/ConfigGenerator.h"

#include "config/EditorXmlData.h"
#include "config/Product.h"
#include "core/PrintableText.h"
#include "profile/InstalledProfile.h"
#include "profile/PelixPDFConfigGenerator.h"
#include "profile/ProfileSettings.h"
#include "profile/SettingsPayload.h"
#include "profile/propertylist/CocoaLog.h"
#include "profile/propertylist/FoundationPropertyList.h"
#include "profile/propertylist/PropertyListInput.h"

using ConfigGenerator::EmptyPolicy;
using ConfigGenerator::Installed;
using ConfigGenerator::InstalledIdentity;

namespace
{

Problem printable(const Problem &problem) { return {{}, printableText(problem.text)}; }

Result<QString> textOrProblem(const Result<NSString *> &xml)
{
    if (!xml)
        return printable(xml.problem());
    return toQString(*xml);
}

/// Why a profile, which has payloads, has no settings of ours.
Problem foreignProfile(NSArray *payloads)
{
    id first = [payloads objectAtIndex:0];
    const QString identifier = textIn(first, @"PayloadIdentifier");
    if (textIn(first, @"PayloadType") == managedPreferencesType())
        return {{}, QStringLiteral("forces no preferences of the domain of either product")};
    if (identifier.isEmpty())
        return {{}, QStringLiteral("its payload has no PayloadIdentifier")};
    return {{},
            QStringLiteral("is a profile of another application (\"%1\")")
                .arg(printableStart(identifier, 100))};
}

void overlay(EditorXmlData &data, const FoundSettings &found)
{
    for (NSUInteger i = 0; i < [found.layers count]; ++i)
        fillFromSettings(data, [found.layers objectAtIndex:i], EmptyPolicy::NotSet);
}

Result<const Product *> importFound(NSDictionary *profile, EditorXmlData &data, const Product *wanted)
{
    NSArray *payloads = arrayIn(profile, @"PayloadContent");
    if ([payloads count] == 0)
        return Problem{{}, QStringLiteral("holds no PayloadContent")};
    const FoundSettings found = findSettings(payloads, wanted);
    if (!found.product)
        return foreignProfile(payloads);
    readIdentity(data.payloadInfo, profile, @"Payload");
    overlay(data, found);
    return found.product;
}

} // namespace

Result<QString> ConfigGenerator::generate(const EditorXmlData *data, const Product &product,
                                          const ProfileForm &form)
{
    const AutoreleaseScope scope;
    return textOrProblem(generateProfile(data, product, form));
}

Result<QString> ConfigGenerator::generateSettings(const EditorXmlData &data, const Product &product,
                                                  const ProfileForm &form, SettingsForm wanted)
{
    const AutoreleaseScope scope;
    return textOrProblem(::generateSettings(data, product, form, wanted));
}

Result<bool> ConfigGenerator::importText(const QString &text, EditorXmlData &data, const Product &product)
{
    const AutoreleaseScope scope;
    const QByteArray bytes = text.toUtf8();
    if (PropertyListInput::formatOf(bytes) == PropertyListInput::Format::Binary)
        return Problem{
            {},
            QStringLiteral("it is a binary property list; \"plutil -convert xml1\" makes it text")};
    const Result<NSDictionary *> profile = readPropertyList(bytes);
    if (!profile)
        return printable(profile.problem());
    cocoaLog(@"profile : %@ ", *profile);
    return importProfile(&data, *profile, product);
}

Result<const Product *> ConfigGenerator::importAny(const QByteArray &bytes, EditorXmlData &data,
                                                   const Product *wanted)
{
    const AutoreleaseScope scope;
    const Result<NSDictionary *> profile = readPropertyList(bytes);
    if (!profile)
        return Problem{
            {}, QStringLiteral("is no property list (%1)").arg(printable(profile.problem()).text)};
    return importFound(*profile, data, wanted);
}

Result<Installed> ConfigGenerator::importInstalled(EditorXmlData &data, const Product &product)
{
    const AutoreleaseScope scope;
    const Result<NSArray *> profiles = loadSystemProfiles();
    if (!profiles)
        return profiles.problem();
    if (*profiles == nil)
        return Installed::Nothing;
    return importProfiles(&data, *profiles, product) ? Installed::Filled : Installed::NoMatch;
}

Result<QList<EditorXmlData>> ConfigGenerator::installedProfiles(const Product &product)
{
    const AutoreleaseScope scope;
    const Result<NSArray *> profiles = loadSystemProfiles();
    if (!profiles)
        return profiles.problem();
    QList<EditorXmlData> installed;
    for (NSUInteger i = 0; i < [*profiles count]; ++i) {
        id profile = [*profiles objectAtIndex:i];
        const FoundSettings found = findSettings(arrayIn(profile, @"ProfileItems"), &product);
        if (found.product != &product)
            continue;
        EditorXmlData data;
        readIdentity(data.payloadInfo, profile, @"Profile");
        overlay(data, found);
        installed.append(data);
    }
    return installed;
}

Result<std::optional<InstalledIdentity>> ConfigGenerator::installedIdentity(const Product &product)
{
    const AutoreleaseScope scope;
    const Result<NSArray *> profiles = loadSystemProfiles();
    if (!profiles)
        return profiles.problem();
    if (*profiles == nil)
        return std::optional<InstalledIdentity>();
    return std::optional<InstalledIdentity>(
        ::installedIdentity(*profiles, toNSString(product.bundleIdentifier)));
}
