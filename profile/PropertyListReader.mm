// SPDX-License-Identifier: Apache-2.0
#include "profile/PropertyListReader.h"

#include "profile/FoundationEscapes.h"
#include "profile/FoundationText.h"
#include "profile/FoundationWarnings.h"
#include "profile/PropertyListFoundation.h"
#include "profile/PropertyListInput.h"
#include "profile/PropertyListTexts.h"

#include <QByteArray>

namespace {

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

NSDictionary *readVettedXml(const QByteArray &xml, NSError **error)
{
    const QByteArray escaped = FoundationEscapes::escaped(QString::fromUtf8(xml)).toUtf8();
    if (escaped.size() > 2 * PropertyListInput::maximumBytes)
        return refused(@"it has too many backslashes and characters beyond the first plane", error);
    NSDictionary *list = readVetted(escaped, error);
    return escaped == xml ? list : changedTexts(list, FoundationEscapes::unescaped);
}

NSDictionary *readVettedOther(const QByteArray &bytes, NSError **error)
{
    NSDictionary *list = readVetted(bytes, error);
    if (hasOnlyTextKeys(list))
        return list;
    return refused(@"a key in it is no text", error);
}

} // namespace

NSDictionary *readPropertyList(const QByteArray &bytes, NSError **error)
{
    QString problem;
    const QByteArray vetted = PropertyListInput::vetted(bytes, &problem);
    if (problem.isEmpty())
        return vetted.startsWith('<') ? readVettedXml(vetted, error) : readVettedOther(vetted, error);
    return refused(toNSString(problem), error);
}

NSDictionary *readPropertyListText(NSString *text, NSError **error)
{
    NSData *data = [text dataUsingEncoding:NSUTF8StringEncoding];
    return readPropertyList(
        QByteArray(static_cast<const char *>([data bytes]), static_cast<int>([data length])), error);
}
