// SPDX-License-Identifier: Apache-2.0
#include "profile/PropertyListReader.h"

#include "profile/FoundationText.h"
#include "profile/PropertyListBuilder.h"
#include "profile/PropertyListFoundation.h"
#include "profile/PropertyListInput.h"

#include <QByteArray>

namespace
{

NSDictionary *refused(NSString *problem, NSError **error)
{
    if (error)
        *error = profileError(problem);
    return nil;
}

} // namespace

NSDictionary *readPropertyList(const QByteArray &bytes, NSError **error)
{
    PropertyListBuilder builder;
    if (const Result<> read = PropertyListInput::read(bytes, builder); !read)
        return refused(toNSString(read.problem().text), error);
    id list = builder.result();
    return [list isKindOfClass:[NSDictionary class]] ? list : refused(@"it is no dictionary", error);
}

NSDictionary *readPropertyListText(NSString *text, NSError **error)
{
    NSData *data = [text dataUsingEncoding:NSUTF8StringEncoding];
    return readPropertyList(
        QByteArray(static_cast<const char *>([data bytes]), static_cast<int>([data length])), error);
}
