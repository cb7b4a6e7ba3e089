// SPDX-License-Identifier: Apache-2.0
#include "profile/propertylist/FoundationText.h"

#include "profile/PelixPDFConfigGenerator.h"

#include "config/EditorXmlData.h"
#include "config/Settings.h"
#include "core/Command.h"
#include "core/PrintableText.h"
#include "profile/propertylist/CocoaLog.h"
#include "profile/InstalledProfile.h"
#include "profile/ProfileDictionary.h"
#include "profile/ProfileProduct.h"
#include "profile/ProfileSettings.h"
#include "profile/propertylist/PropertyListFoundation.h"
#include "profile/propertylist/PropertyListInput.h"
#include "profile/propertylist/FoundationPropertyList.h"

using ConfigGenerator::EmptyPolicy;

namespace
{

NSString *const noProfileInfo = @"no profile info";

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

/// Reads the five members of a profile whose keys start with the prefix.
void readIdentity(ProfilePayloadInfo &info, NSDictionary *profile, NSString *prefix)
{
    const auto text = [&](NSString *key) { return textIn(profile, [prefix stringByAppendingString:key]); };
    info.PayloadDisplayName = text(@"DisplayName");
    info.PayloadIdentifier = text(@"Identifier");
    info.PayloadUUID = text(@"UUID");
    info.PayloadOrganization = text(@"Organization");
    info.PayloadDescription = text(@"Description");
    cocoaLog(@"Profile Name: %@", toNSString(info.PayloadDisplayName));
    cocoaLog(@"Profile Identifier: %@", toNSString(info.PayloadIdentifier));
    cocoaLog(@"Profile UUID: %@", toNSString(info.PayloadUUID));
    cocoaLog(@"Profile Organization: %@", toNSString(info.PayloadOrganization));
    cocoaLog(@"Profile Description: %@", toNSString(info.PayloadDescription));
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
bool readsBack(NSString *xml, NSDictionary *written, NSError **error)
{
    NSDictionary *read = readPropertyListText(xml, error);
    if (read != nil && ![read isEqual:written])
        *error = profileError(@"it does not read back as it was written");
    return [read isEqual:written];
}

/// The profile's text, or nil and the error.
NSString *checkedProfile(const EditorXmlData &data, BOOL isEditor, NSError **error)
{
    const QString unwritable = unwritableSetting(data);
    if (!unwritable.isEmpty()) {
        *error = profileError(
            [toNSString(unwritable) stringByAppendingString:@" holds characters that no profile can hold"]);
        return nil;
    }
    NSDictionary *profile = profileDictionary(data, isEditor);
    NSString *xml = writePropertyList(profile, error);
    return xml != nil && readsBack(xml, profile, error) ? xml : nil;
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

/// Why output that came without a failure is no list; empty when it says that none is installed.
QString problemOfOutput(const CommandResult &result, NSError *error)
{
    const QString output = QString::fromUtf8(result.standardOutput).trimmed();
    if (saysThatNoneIsInstalled(output) || [noProfileInfo isEqual:[error localizedDescription]])
        return {};
    const QString lastLine = output.section(QLatin1Char('\n'), -1);
    const bool isSentence = !output.isEmpty() && !output.startsWith(QLatin1Char('<'));
    return QStringLiteral("the list that %1 printed cannot be read: %2")
        .arg(result.program, isSentence ? printableStart(lastLine, 200)
                                        : printableText(toQString([error localizedDescription])));
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

@implementation PelixPDFConfigGenerator

+ (NSString *)generateProfile:(const EditorXmlData *)data bIsEditor:(BOOL)bIsEditor
{
    QString problem;
    return [self generateProfile:data bIsEditor:bIsEditor problem:&problem];
}

+ (NSString *)generateProfile:(const EditorXmlData *)data bIsEditor:(BOOL)bIsEditor problem:(QString *)problem
{
    if (data == nullptr)
        return @"";
    NSError *error = nil;
    NSString *xml = checkedProfile(*data, bIsEditor, &error);
    if (xml == nil) {
        *problem = toQString([error localizedDescription]);
        cocoaLog(@"Error generating mobileconfig: %@", [error localizedDescription]);
    }
    return xml;
}

+ (NSArray *)parsePlistXML:(NSString *)text error:(NSError **)error
{
    NSError *problem = nil;
    NSArray *profiles = nil;
    NSDictionary *groups = readPropertyListText(text, &problem);
    if (groups == nil) {
        cocoaLog(@"parsePlistXML failure: %@", [problem localizedDescription]);
    } else {
        profiles = ungrouped(groups);
        if ([profiles count] > 0)
            return profiles;
        problem = profileError(noProfileInfo);
        cocoaLog(@"%@", noProfileInfo);
    }
    if (error)
        *error = problem;
    return nil;
}

+ (NSArray *)loadSystemProfiles
{
    QString problem;
    return [self loadSystemProfilesWithProblem:&problem];
}

+ (NSArray *)loadSystemProfilesWithProblem:(QString *)problem
{
    const CommandResult result = listing();
    *problem = result.outputProblem();
    if (!problem->isEmpty()) {
        cocoaLog(@"Command failed with error: %@", failureOf(result));
        return nil;
    }
    cocoaLog(@"profiles content:\n%@", standardOutputOf(result));
    NSError *error = nil;
    NSArray *profiles = [self parsePlistXML:listIn(result) error:&error];
    if (profiles == nil) {
        *problem = problemOfOutput(result, error);
        cocoaLog(@"Error parsing system profiles: %@", [error localizedDescription]);
    }
    return profiles;
}

+ (BOOL)ImportProfiles:(EditorXmlData *)data profiles:(NSArray *)profiles bIsEditor:(BOOL)bIsEditor
{
    return [self ImportProfiles:data profiles:profiles bIsEditor:bIsEditor emptyPolicy:EmptyPolicy::Off];
}

+ (BOOL)ImportProfiles:(EditorXmlData *)data
              profiles:(NSArray *)profiles
             bIsEditor:(BOOL)bIsEditor
           emptyPolicy:(ConfigGenerator::EmptyPolicy)emptyPolicy
{
    if (data == nullptr || [profiles count] == 0) {
        cocoaLog(@"Invalid input data or profiles.");
        return NO;
    }
    NSString *wanted = toNSString(ProfileProduct::bundleIdentifier(bIsEditor));
    NSDictionary *profile = firstMatch(profiles, wanted);
    if (profile == nil) {
        cocoaLog(@"No matching profile found for bundle ID: %@", wanted);
        return NO;
    }
    readIdentity(data->payloadInfo, profile, @"Profile");
    NSArray *items = arrayIn(profile, @"ProfileItems");
    for (NSUInteger i = 0; i < [items count]; ++i) {
        NSDictionary *content = dictionaryIn([items objectAtIndex:i], @"PayloadContent");
        if (content != nil)
            fillFromSettings(*data, content, emptyPolicy);
    }
    return YES;
}

+ (BOOL)ImportProfile:(EditorXmlData *)data profile:(NSDictionary *)profile bIsEditor:(BOOL)bIsEditor
{
    return [self ImportProfile:data profile:profile bIsEditor:bIsEditor emptyPolicy:EmptyPolicy::Off];
}

+ (BOOL)ImportProfile:(EditorXmlData *)data
              profile:(NSDictionary *)profile
            bIsEditor:(BOOL)bIsEditor
          emptyPolicy:(ConfigGenerator::EmptyPolicy)emptyPolicy
{
    if (data == nullptr || profile == nil) {
        cocoaLog(@"Invalid input data or profiles.");
        return NO;
    }
    NSString *wanted = toNSString(ProfileProduct::bundleIdentifier(bIsEditor));
    NSArray *payloads = arrayIn(profile, @"PayloadContent");
    id settings = [payloads count] > 0 ? [payloads objectAtIndex:0] : nil;
    if (![wanted isEqual:memberOf(settings, @"PayloadIdentifier")]) {
        cocoaLog(@"No matching profile found for bundle ID: %@", wanted);
        return NO;
    }
    readIdentity(data->payloadInfo, profile, @"Payload");
    fillFromSettings(*data, settings, emptyPolicy);
    return YES;
}

+ (void)FillContent:(EditorXmlData *)data content:(NSDictionary *)content
{
    if (data != nullptr)
        fillFromSettings(*data, content, EmptyPolicy::Off);
}

@end
