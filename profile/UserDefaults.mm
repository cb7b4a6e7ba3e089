// SPDX-License-Identifier: Apache-2.0
#include "profile/propertylist/FoundationText.h"

#include "profile/UserDefaults.h"

namespace {

NSString *const lastOpenDirectory = @"LastOpenDirectory";
NSString *const language = @"Language";

} // namespace

QString readLastOpenDirectory()
{
    const AutoreleaseScope scope;
    NSString *path = [[NSUserDefaults standardUserDefaults] stringForKey:lastOpenDirectory];
    NSLog(@"lastPath : %@", path);
    if (path == nil)
        path = NSHomeDirectory();
    return toQString([[NSURL fileURLWithPath:path] path]);
}

void storeLastOpenDirectory(const QString &folder)
{
    const AutoreleaseScope scope;
    NSLog(@"selectedDir : %@", toNSString(folder));
    NSUserDefaults *defaults = [NSUserDefaults standardUserDefaults];
    [defaults setObject:toNSString(folder) forKey:lastOpenDirectory];
    [defaults synchronize];
}

QString readLanguageChoice()
{
    const AutoreleaseScope scope;
    NSString *choice = [[NSUserDefaults standardUserDefaults] stringForKey:language];
    return choice == nil ? QString() : toQString(choice);
}
