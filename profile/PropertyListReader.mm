// SPDX-License-Identifier: Apache-2.0
#include "profile/PropertyListReader.h"

#include "profile/FoundationText.h"
#include "profile/PropertyListFoundation.h"
#include "profile/PropertyListInput.h"

#include <QByteArray>

NSDictionary *readPropertyList(const QByteArray &bytes, NSError **error)
{
    QString problem;
    const QByteArray vetted = PropertyListInput::vetted(bytes, &problem);
    if (problem.isEmpty())
        return dictionaryFromPropertyList([NSData dataWithBytes:vetted.constData()
                                                         length:static_cast<NSUInteger>(vetted.size())],
                                          error);
    if (error)
        *error = profileError(toNSString(problem));
    return nil;
}

NSDictionary *readPropertyListText(NSString *text, NSError **error)
{
    NSData *data = [text dataUsingEncoding:NSUTF8StringEncoding];
    return readPropertyList(
        QByteArray(static_cast<const char *>([data bytes]), static_cast<int>([data length])), error);
}
