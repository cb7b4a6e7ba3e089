// SPDX-License-Identifier: Apache-2.0
#include "profile/PropertyListReader.h"

#include "profile/FoundationText.h"
#include "profile/FoundationWarnings.h"
#include "profile/PropertyListBuilder.h"
#include "profile/PropertyListFoundation.h"
#include "profile/PropertyListInput.h"
#include "profile/PropertyListTexts.h"

#include <QByteArray>

namespace
{

NSDictionary *refused(NSString *problem, NSError **error)
{
    if (error)
        *error = profileError(problem);
    return nil;
}

NSDictionary *readVetted(const QByteArray &bytes, NSError **error)
{
    silenceFoundationWarnings();
    return dictionaryFromPropertyList(
        [NSData dataWithBytes:bytes.constData() length:static_cast<NSUInteger>(bytes.size())], error);
}

NSDictionary *readOldStyle(const QByteArray &bytes, NSError **error)
{
    const Result<QByteArray> vetted = PropertyListInput::vettedOldStyle(bytes);
    if (!vetted)
        return refused(toNSString(vetted.problem().text), error);
    NSDictionary *list = readVetted(*vetted, error);
    if (hasOnlyTextKeys(list))
        return list;
    return refused(@"a key in it is no text", error);
}

} // namespace

NSDictionary *readPropertyList(const QByteArray &bytes, NSError **error)
{
    if (PropertyListInput::formatOf(bytes) == PropertyListInput::Format::OldStyle)
        return readOldStyle(bytes, error);
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
