// SPDX-License-Identifier: Apache-2.0
#include "profile/FoundationText.h"

#include "profile/LastOpenDirectory.h"

namespace {

NSString *const lastOpenDirectory = @"LastOpenDirectory";

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
