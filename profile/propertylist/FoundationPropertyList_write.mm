// SPDX-License-Identifier: Apache-2.0
#include "profile/propertylist/FoundationText.h"

#include "profile/propertylist/FoundationPropertyList.h"

#include "profile/propertylist/FoundationEscapes.h"
#include "profile/propertylist/PropertyListFoundation.h"

using namespace FoundationEscapes;

namespace
{

using Change = QString (*)(const QString &text);

/// A copy of a property list in which every text, keys included, went through the function, which must keep
/// different texts different. Autoreleased; nil gives nil.
NSDictionary *changedTexts(NSDictionary *list, Change change);

id changed(id value, Change change);

NSArray *changedItems(NSArray *items, Change change)
{
    NSMutableArray *result = [NSMutableArray arrayWithCapacity:[items count]];
    for (NSUInteger i = 0; i < [items count]; ++i)
        [result addObject:changed([items objectAtIndex:i], change)];
    return result;
}

id changed(id value, Change change)
{
    if ([value isKindOfClass:[NSString class]])
        return toNSString(change(toQString(value)));
    if ([value isKindOfClass:[NSDictionary class]])
        return changedTexts(value, change);
    return [value isKindOfClass:[NSArray class]] ? changedItems(value, change) : value;
}

NSDictionary *changedTexts(NSDictionary *list, Change change)
{
    if (list == nil)
        return nil;
    NSMutableDictionary *result = [NSMutableDictionary dictionaryWithCapacity:[list count]];
    NSEnumerator *keys = [list keyEnumerator];
    for (id key = [keys nextObject]; key != nil; key = [keys nextObject])
        [result setObject:changed([list objectForKey:key], change) forKey:changed(key, change)];
    return result;
}

/// XML readers take a bare carriage return for a line feed.
QString withoutEscapes(QString xml)
{
    xml.replace(escaped(QStringLiteral("\r")), QStringLiteral("&#13;"));
    return unescaped(xml);
}

} // namespace

Result<NSString *> writePropertyList(NSDictionary *list)
{
    NSError *error = nil;
    NSData *xml = xmlFromPropertyList(changedTexts(list, escaped), &error);
    if (xml == nil)
        return Problem{{}, toQString([error localizedDescription])};
    const auto *bytes = static_cast<const char *>([xml bytes]);
    return toNSString(withoutEscapes(QString::fromUtf8(bytes, static_cast<int>([xml length]))));
}
