// SPDX-License-Identifier: Apache-2.0
#include "profile/PropertyListWriter.h"

#include "profile/FoundationEscapes.h"
#include "profile/FoundationText.h"
#include "profile/PropertyListFoundation.h"
#include "profile/PropertyListTexts.h"

using namespace FoundationEscapes;

namespace {

/// XML readers take a bare carriage return for a line feed.
QString withoutEscapes(QString xml)
{
    xml.replace(escaped(QStringLiteral("\r")), QStringLiteral("&#13;"));
    return unescaped(xml);
}

} // namespace

NSString *writePropertyList(NSDictionary *list, NSError **error)
{
    NSData *xml = xmlFromPropertyList(changedTexts(list, escaped), error);
    if (xml == nil)
        return nil;
    const auto *bytes = static_cast<const char *>([xml bytes]);
    return toNSString(withoutEscapes(QString::fromUtf8(bytes, static_cast<int>([xml length]))));
}
