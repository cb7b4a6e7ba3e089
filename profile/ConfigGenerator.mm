// SPDX-License-Identifier: Apache-2.0
#include "profile/propertylist/FoundationText.h"

#include "profile/ConfigGenerator.h"

#include "core/PrintableText.h"
#include "profile/propertylist/CocoaLog.h"
#include "profile/InstalledProfile.h"
#include "profile/PelixPDFConfigGenerator.h"
#include "profile/ProfileProduct.h"
#include "profile/propertylist/PropertyListInput.h"
#include "profile/propertylist/FoundationPropertyList.h"

namespace
{

using ConfigGenerator::Import;

Import filledWhen(BOOL found) { return found ? Import::Filled : Import::NoMatch; }

QString descriptionOf(NSError *error) { return printableText(toQString([error localizedDescription])); }

/// Empty when the profile is for one of the products.
QString productProblem(NSDictionary *profile, bool &editor)
{
    NSArray *payloads = arrayIn(profile, @"PayloadContent");
    if ([payloads count] == 0)
        return QStringLiteral("holds no PayloadContent");
    const QString identifier = textIn([payloads objectAtIndex:0], @"PayloadIdentifier");
    if (identifier.isEmpty())
        return QStringLiteral("its payload has no PayloadIdentifier");
    editor = identifier == ProfileProduct::bundleIdentifier(true);
    if (editor || identifier == ProfileProduct::bundleIdentifier(false))
        return {};
    return QStringLiteral("is a profile of another application (\"%1\")")
        .arg(printableStart(identifier, 100));
}

} // namespace

QString ConfigGenerator::generate(const EditorXmlData *data, bool editor, QString *problem)
{
    const AutoreleaseScope scope;
    QString reason;
    NSString *profile = [PelixPDFConfigGenerator generateProfile:data bIsEditor:editor problem:&reason];
    if (problem)
        *problem = printableText(reason);
    return toQString(profile);
}

Import ConfigGenerator::importText(const QString &text, EditorXmlData &data, bool editor, QString &error)
{
    const AutoreleaseScope scope;
    NSError *problem = nil;
    const QByteArray bytes = text.toUtf8();
    if (PropertyListInput::formatOf(bytes) == PropertyListInput::Format::Binary) {
        error = QStringLiteral("it is a binary property list; \"plutil -convert xml1\" makes it text");
        return Import::Unreadable;
    }
    NSDictionary *profile = readPropertyList(bytes, &problem);
    if (profile == nil) {
        error = descriptionOf(problem);
        return Import::Unreadable;
    }
    cocoaLog(@"profile : %@ ", profile);
    return filledWhen([PelixPDFConfigGenerator ImportProfile:&data profile:profile bIsEditor:editor]);
}

bool ConfigGenerator::importAny(const QByteArray &bytes, EditorXmlData &data, bool &editor, QString &error)
{
    const AutoreleaseScope scope;
    NSError *problem = nil;
    NSDictionary *profile = readPropertyList(bytes, &problem);
    if (profile == nil)
        error = QStringLiteral("is no property list (%1)").arg(descriptionOf(problem));
    else
        error = productProblem(profile, editor);
    return error.isEmpty() && [PelixPDFConfigGenerator ImportProfile:&data
                                                             profile:profile
                                                           bIsEditor:editor
                                                         emptyPolicy:EmptyPolicy::NotSet];
}

Import ConfigGenerator::importInstalled(EditorXmlData &data, bool editor, EmptyPolicy emptyPolicy,
                                        QString &problem)
{
    const AutoreleaseScope scope;
    NSArray *profiles = [PelixPDFConfigGenerator loadSystemProfilesWithProblem:&problem];
    if (profiles == nil)
        return Import::Unreadable;
    return filledWhen([PelixPDFConfigGenerator ImportProfiles:&data
                                                     profiles:profiles
                                                    bIsEditor:editor
                                                  emptyPolicy:emptyPolicy]);
}

Import ConfigGenerator::installedIdentity(bool editor, QString &identifier, QString &uuid)
{
    const AutoreleaseScope scope;
    NSArray *profiles = [PelixPDFConfigGenerator loadSystemProfiles];
    if (profiles == nil)
        return Import::Unreadable;
    NSString *wanted = toNSString(ProfileProduct::bundleIdentifier(editor));
    identifier = installedIdentifier(profiles, wanted, uuid);
    return filledWhen(!identifier.isEmpty());
}
