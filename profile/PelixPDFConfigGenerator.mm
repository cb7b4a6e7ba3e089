// SPDX-License-Identifier: Apache-2.0
#include "profile/propertylist/FoundationText.h"

#include "profile/PelixPDFConfigGenerator.h"

#include "config/EditorXmlData.h"
#include "config/Product.h"
#include "config/Settings.h"
#include "core/Command.h"
#include "core/PrintableText.h"
#include "profile/InstalledProfile.h"
#include "profile/ProfileDictionary.h"
#include "profile/ProfileSettings.h"
#include "profile/SettingsPayload.h"
#include "profile/propertylist/CocoaLog.h"
#include "profile/propertylist/FoundationPropertyList.h"
#include "profile/propertylist/PropertyListFoundation.h"
#include "profile/propertylist/PropertyListInput.h"

using ConfigGenerator::EmptyPolicy;

namespace
{

const QString noProfileInfo = QStringLiteral("no profile info");

/// The system groups profiles by user and by computer.
NSArray *ungrouped(NSDictionary *groups)
{
    NSMutableArray *profiles = [NSMutableArray array];
    NSEnumerator *values = [groups objectEnumerator];
    for (id value = [values nextObject]; value != nil; value = [values nextObject]) {
        if ([value isKindOfClass:[NSArray class]])
            [profiles addObjectsFromArray:value];
        else if ([value isKindOfClass:[NSDictionary class]])
            [profiles addObject:value];
    }
    return profiles;
}

NSDictionary *firstMatch(NSArray *profiles, NSString *bundleIdentifier)
{
    for (NSUInteger i = 0; i < [profiles count]; ++i) {
        id profile = [profiles objectAtIndex:i];
        cocoaLog(@"profile in profiles : %@", profile);
        if (hasItemOf(profile, bundleIdentifier))
            return profile;
    }
    return nil;
}

/// A profile that this program would refuse, or understand otherwise, is not worth writing.
Result<> readsBack(NSString *xml, NSDictionary *written)
{
    const Result<NSDictionary *> read = readPropertyListText(xml);
    if (!read)
        return read.problem();
    return [*read isEqual:written] ? Result<>()
                                   : Problem{{}, QStringLiteral("it does not read back as it was written")};
}

Result<> isWritable(const EditorXmlData &data)
{
    const QString unwritable = unwritableSetting(data);
    if (unwritable.isEmpty())
        return {};
    return Problem{{}, unwritable + QStringLiteral(" holds characters that no profile can hold")};
}

/// The list as text that reads back as the same list.
Result<NSString *> checkedText(NSDictionary *list)
{
    const Result<NSString *> xml = writePropertyList(list);
    if (!xml)
        return xml;
    const Result<> isReadable = readsBack(*xml, list);
    return isReadable ? xml : isReadable.problem();
}

Result<NSString *> checkedProfile(const EditorXmlData &data, const Product &product, const ProfileForm &form)
{
    const Result<> writable = isWritable(data);
    return writable ? checkedText(profileDictionary(data, product, form)) : writable.problem();
}

/// What stands between the tags of the outermost dictionary, or the dictionary with them.
NSString *withinList(NSString *xml, bool withTags)
{
    NSRange start = [xml rangeOfString:@"<dict>"];
    NSRange end = [xml rangeOfString:@"</dict>" options:NSBackwardsSearch];
    const NSUInteger from = withTags ? start.location : NSMaxRange(start);
    const NSUInteger to = withTags ? NSMaxRange(end) : end.location;
    return [xml substringWithRange:NSMakeRange(from, to - from)];
}

Result<NSString *> checkedSettings(const EditorXmlData &data, const Product &product, const ProfileForm &form,
                                   SettingsForm wanted)
{
    const bool isPayload = wanted == SettingsForm::Payload;
    const Result<NSString *> xml =
        checkedText(isPayload ? payloadDictionary(data, product, form) : settingsDictionary(data));
    if (!xml || wanted == SettingsForm::WholeList)
        return xml;
    NSString *inner = withinList(*xml, isPayload);
    return isPayload ? [inner stringByAppendingString:@"\n"] : inner;
}

Result<NSArray *> parseProfiles(NSString *text)
{
    const Result<NSDictionary *> groups = readPropertyListText(text);
    if (!groups) {
        cocoaLog(@"parsePlistXML failure: %@", toNSString(groups.problem().text));
        return groups.problem();
    }
    NSArray *profiles = ungrouped(*groups);
    if ([profiles count] > 0)
        return profiles;
    cocoaLog(@"%@", toNSString(noProfileInfo));
    return Problem{{}, noProfileInfo};
}

CommandResult listing()
{
    return Command::run(QStringLiteral("/usr/bin/profiles"),
                        {QStringLiteral("show"), QStringLiteral("-output"), QStringLiteral("stdout-xml"),
                         QStringLiteral("-type"), QStringLiteral("configuration")},
                        -1, PropertyListInput::maximumBytes);
}

/// What the command said of its failure, when it said anything.
NSString *failureOf(const CommandResult &result)
{
    const bool said = !result.succeeded() && !result.standardError.isEmpty();
    return toNSString(said ? QString::fromUtf8(result.standardError) : result.outputProblem());
}

/// On standard output, too, and with success, the command says that there is nothing or that it may not tell.
bool saysThatNoneIsInstalled(const QString &output)
{
    return !output.startsWith(QLatin1Char('<')) &&
           output.contains(QLatin1String("no configuration profiles"), Qt::CaseInsensitive);
}

/// Why output that came without a failure is no list; nil when it says that none is installed.
Result<NSArray *> withoutList(const CommandResult &result, const QString &cause)
{
    const QString output = QString::fromUtf8(result.standardOutput).trimmed();
    if (saysThatNoneIsInstalled(output) || cause == noProfileInfo)
        return static_cast<NSArray *>(nil);
    const QString lastLine = output.section(QLatin1Char('\n'), -1);
    const bool isSentence = !output.isEmpty() && !output.startsWith(QLatin1Char('<'));
    return Problem{{},
                   QStringLiteral("the list that %1 printed cannot be read: %2")
                       .arg(result.program,
                            isSentence ? printableStart(lastLine, 200) : printableText(cause))};
}

NSString *standardOutputOf(const CommandResult &result)
{
    return toNSString(QString::fromUtf8(result.standardOutput));
}

/// The output without the sentence that may stand behind an empty list to say that it is one.
NSString *listIn(const CommandResult &result)
{
    const QString output = QString::fromUtf8(result.standardOutput);
    const QString list = output.left(output.lastIndexOf(QLatin1Char('>')) + 1);
    return toNSString(saysThatNoneIsInstalled(output.mid(list.size()).trimmed()) ? list : output);
}

} // namespace

Result<NSString *> generateSettings(const EditorXmlData &data, const Product &product,
                                    const ProfileForm &form, SettingsForm wanted)
{
    const Result<> writable = isWritable(data);
    return writable ? checkedSettings(data, product, form, wanted) : writable.problem();
}

Result<NSString *> generateProfile(const EditorXmlData *data, const Product &product, const ProfileForm &form)
{
    if (data == nullptr)
        return static_cast<NSString *>(@"");
    const Result<NSString *> xml = checkedProfile(*data, product, form);
    if (!xml)
        cocoaLog(@"Error generating mobileconfig: %@", toNSString(xml.problem().text));
    return xml;
}

Result<NSArray *> loadSystemProfiles()
{
    const CommandResult result = listing();
    if (const QString problem = result.outputProblem(); !problem.isEmpty()) {
        cocoaLog(@"Command failed with error: %@", failureOf(result));
        return Problem{{}, problem};
    }
    cocoaLog(@"profiles content:\n%@", standardOutputOf(result));
    const Result<NSArray *> profiles = parseProfiles(listIn(result));
    if (profiles)
        return profiles;
    const QString cause = profiles.problem().text;
    cocoaLog(@"Error parsing system profiles: %@", toNSString(cause));
    return withoutList(result, cause);
}

bool importProfiles(EditorXmlData *data, NSArray *profiles, const Product &product)
{
    if (data == nullptr || [profiles count] == 0) {
        cocoaLog(@"Invalid input data or profiles.");
        return false;
    }
    NSString *wanted = toNSString(product.bundleIdentifier);
    NSDictionary *profile = firstMatch(profiles, wanted);
    if (profile == nil) {
        cocoaLog(@"No matching profile found for bundle ID: %@", wanted);
        return false;
    }
    readIdentity(data->payloadInfo, profile, @"Profile");
    NSArray *items = arrayIn(profile, @"ProfileItems");
    for (NSUInteger i = 0; i < [items count]; ++i) {
        NSDictionary *content = dictionaryIn([items objectAtIndex:i], @"PayloadContent");
        if (content != nil)
            fillFromSettings(*data, content, EmptyPolicy::Off);
    }
    return true;
}

bool importProfile(EditorXmlData *data, NSDictionary *profile, const Product &product)
{
    if (data == nullptr || profile == nil) {
        cocoaLog(@"Invalid input data or profiles.");
        return false;
    }
    NSString *wanted = toNSString(product.bundleIdentifier);
    NSArray *payloads = arrayIn(profile, @"PayloadContent");
    id settings = [payloads count] > 0 ? [payloads objectAtIndex:0] : nil;
    if (![wanted isEqual:memberOf(settings, @"PayloadIdentifier")]) {
        cocoaLog(@"No matching profile found for bundle ID: %@", wanted);
        return false;
    }
    readIdentity(data->payloadInfo, profile, @"Payload");
    fillFromSettings(*data, settings, EmptyPolicy::Off);
    return true;
}

@implementation PelixPDFConfigGenerator

+ (NSString *)generateProfile:(const EditorXmlData *)data bIsEditor:(BOOL)bIsEditor
{
    const Result<NSString *> profile = generateProfile(data, Product::of(bIsEditor));
    return profile ? *profile : nil;
}

+ (NSArray *)parsePlistXML:(NSString *)text error:(NSError **)error
{
    const Result<NSArray *> profiles = parseProfiles(text);
    if (!profiles && error)
        *error = profileError(toNSString(profiles.problem().text));
    return profiles ? *profiles : nil;
}

+ (NSArray *)loadSystemProfiles
{
    const Result<NSArray *> profiles = ::loadSystemProfiles();
    return profiles ? *profiles : nil;
}

+ (BOOL)ImportProfiles:(EditorXmlData *)data profiles:(NSArray *)profiles bIsEditor:(BOOL)bIsEditor
{
    return importProfiles(data, profiles, Product::of(bIsEditor));
}

+ (BOOL)ImportProfile:(EditorXmlData *)data profile:(NSDictionary *)profile bIsEditor:(BOOL)bIsEditor
{
    return importProfile(data, profile, Product::of(bIsEditor));
}

+ (void)FillContent:(EditorXmlData *)data content:(NSDictionary *)content
{
    if (data != nullptr)
        fillFromSettings(*data, content, EmptyPolicy::Off);
}

@end
