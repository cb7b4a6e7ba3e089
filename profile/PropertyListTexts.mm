// SPDX-License-Identifier: Apache-2.0
#include "profile/PropertyListTexts.h"

#include "profile/FoundationText.h"

namespace {

using Change = QString (*)(const QString &text);

id changed(id value, Change change);

bool isText(id value)
{
    return [value isKindOfClass:[NSString class]];
}

NSArray *changedItems(NSArray *items, Change change)
{
    NSMutableArray *result = [NSMutableArray arrayWithCapacity:[items count]];
    for (NSUInteger i = 0; i < [items count]; ++i)
        [result addObject:changed([items objectAtIndex:i], change)];
    return result;
}

id changed(id value, Change change)
{
    if (isText(value))
        return toNSString(change(toQString(value)));
    if ([value isKindOfClass:[NSDictionary class]])
        return changedTexts(value, change);
    return [value isKindOfClass:[NSArray class]] ? changedItems(value, change) : value;
}

} // namespace

NSDictionary *changedTexts(NSDictionary *list, QString (*change)(const QString &text))
{
    if (list == nil)
        return nil;
    NSMutableDictionary *result = [NSMutableDictionary dictionaryWithCapacity:[list count]];
    NSEnumerator *keys = [list keyEnumerator];
    for (id key = [keys nextObject]; key != nil; key = [keys nextObject])
        [result setObject:changed([list objectForKey:key], change) forKey:changed(key, change)];
    return result;
}
