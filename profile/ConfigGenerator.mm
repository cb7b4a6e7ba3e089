// SPDX-License-Identifier: Apache-2.0
#include "profile/propertylist/FoundationText.h"

#include "profile/ConfigGenerator.h"

#include "config/Product.h"
#include "core/PrintableText.h"
#include "profile/InstalledProfile.h"
#include "profile/PelixPDFConfigGenerator.h"
#include "profile/propertylist/CocoaLog.h"
#include "profile/propertylist/FoundationPropertyList.h"
#include "profile/propertylist/PropertyListInput.h"

using ConfigGenerator::Installed;
using ConfigGenerator::InstalledIdentity;

namespace
{

Problem printable(const Problem &problem) { return {{}, printableText(problem.text)}; }

/// The product that the profile is for; never null.
Result<const Product *> productOf(NSDictionary *profile)
{
    NSArray *payloads = arrayIn(profile, @"PayloadContent");
    if ([payloads count] == 0)
        return Problem{{}, QStringLiteral("holds no PayloadContent")};
    const QString identifier = textIn([payloads objectAtIndex:0], @"PayloadIdentifier");
    if (identifier.isEmpty())
        return Problem{{}, QStringLiteral("its payload has no PayloadIdentifier")};
    if (const Product *product = Product::find(&Product::bundleIdentifier, identifier))
        return product;
    return Problem{{},
                   QStringLiteral("is a profile of another application (\"%1\")")
                       .arg(printableStart(identifier, 100))};
}

} // namespace

Result<QString> ConfigGenerator::generate(const EditorXmlData *data, const Product &product)
{
    const AutoreleaseScope scope;
    const Result<NSString *> profile = generateProfile(data, product);
    if (!profile)
        return printable(profile.problem());
    return toQString(*profile);
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
    return importProfile(&data, *profile, product, EmptyPolicy::Off);
}

Result<const Product *> ConfigGenerator::importAny(const QByteArray &bytes, EditorXmlData &data)
{
    const AutoreleaseScope scope;
    const Result<NSDictionary *> profile = readPropertyList(bytes);
    if (!profile)
        return Problem{
            {}, QStringLiteral("is no property list (%1)").arg(printable(profile.problem()).text)};
    const Result<const Product *> product = productOf(*profile);
    if (product)
        importProfile(&data, *profile, **product, EmptyPolicy::NotSet);
    return product;
}

Result<Installed> ConfigGenerator::importInstalled(EditorXmlData &data, const Product &product,
                                                   EmptyPolicy emptyPolicy)
{
    const AutoreleaseScope scope;
    const Result<NSArray *> profiles = loadSystemProfiles();
    if (!profiles)
        return profiles.problem();
    if (*profiles == nil)
        return Installed::Nothing;
    return importProfiles(&data, *profiles, product, emptyPolicy) ? Installed::Filled : Installed::NoMatch;
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
