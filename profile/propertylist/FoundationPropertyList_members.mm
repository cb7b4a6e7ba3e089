// SPDX-License-Identifier: Apache-2.0
#include "profile/propertylist/FoundationPropertyList.h"

#include "profile/propertylist/FoundationText.h"

#include <algorithm>
#include <limits>

namespace
{

id ofClass(Class wanted, id value) { return [value isKindOfClass:wanted] ? value : nil; }

bool hasIntegerValue(id value)
{
    return [value isKindOfClass:[NSString class]] || [value isKindOfClass:[NSNumber class]];
}

} // namespace

id memberOf(id container, NSString *key)
{
    return [ofClass([NSDictionary class], container) objectForKey:key];
}

NSDictionary *dictionaryIn(id container, NSString *key)
{
    return ofClass([NSDictionary class], memberOf(container, key));
}

NSArray *arrayIn(id container, NSString *key) { return ofClass([NSArray class], memberOf(container, key)); }

int integerIn(id container, NSString *key)
{
    id value = memberOf(container, key);
    if (!hasIntegerValue(value))
        return 0;
    const NSInteger integer = [value integerValue];
    return static_cast<int>(
        std::clamp<NSInteger>(integer, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()));
}

QString textIn(id container, NSString *key) { return textOf(memberOf(container, key)); }

QString textOf(id value)
{
    NSString *string =
        [value isKindOfClass:[NSNumber class]] ? [value stringValue] : ofClass([NSString class], value);
    return toQString(string);
}
