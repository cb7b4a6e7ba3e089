// SPDX-License-Identifier: Apache-2.0
#include "profile/propertylist/FoundationText.h"

#include "tests/profile/CocoaCalls.h"

#include "profile/PelixPDFConfigGenerator.h"
#include "profile/propertylist/PropertyListBridge.h"
#include "profile/propertylist/FoundationPropertyList.h"

namespace
{

id fromXml(const QByteArray &xml)
{
    if (xml.isNull())
        return nil;
    NSData *data = [NSData dataWithBytes:xml.constData() length:static_cast<NSUInteger>(xml.size())];
    return [NSPropertyListSerialization propertyListWithData:data
                                                     options:NSPropertyListImmutable
                                                      format:NULL
                                                       error:NULL];
}

} // namespace

QString CocoaCalls::generateProfile(const EditorXmlData *data, bool editor)
{
    const AutoreleaseScope scope;
    return toQString([PelixPDFConfigGenerator generateProfile:data bIsEditor:editor]);
}

QString CocoaCalls::readingProblem(const QByteArray &list)
{
    const AutoreleaseScope scope;
    const Result<NSDictionary *> read = readPropertyList(list);
    return read ? QString() : read.problem().text;
}

CocoaCalls::ParsedList CocoaCalls::parsePlistXML(const QString &text)
{
    const AutoreleaseScope scope;
    NSError *error = nil;
    NSArray *profiles = [PelixPDFConfigGenerator parsePlistXML:toNSString(text) error:&error];
    ParsedList result;
    if (profiles != nil)
        result.count = static_cast<int>([profiles count]);
    result.domain = toQString([error domain]);
    result.code = static_cast<int>([error code]);
    result.description = toQString([error localizedDescription]);
    return result;
}

int CocoaCalls::loadSystemProfiles()
{
    const AutoreleaseScope scope;
    NSArray *profiles = [PelixPDFConfigGenerator loadSystemProfiles];
    return profiles == nil ? -1 : static_cast<int>([profiles count]);
}

bool CocoaCalls::importProfiles(EditorXmlData *data, const QByteArray &groups, bool editor)
{
    const AutoreleaseScope scope;
    NSArray *profiles = [PelixPDFConfigGenerator parsePlistXML:toNSString(QString::fromUtf8(groups))
                                                         error:NULL];
    return [PelixPDFConfigGenerator ImportProfiles:data profiles:profiles bIsEditor:editor];
}

bool CocoaCalls::importProfile(EditorXmlData *data, const QByteArray &profile, bool editor)
{
    const AutoreleaseScope scope;
    return [PelixPDFConfigGenerator ImportProfile:data profile:fromXml(profile) bIsEditor:editor];
}

void CocoaCalls::fillContent(EditorXmlData &data, const QByteArray &settings)
{
    const AutoreleaseScope scope;
    [PelixPDFConfigGenerator FillContent:&data content:fromXml(settings)];
}

QByteArray CocoaCalls::dictionaryOf(const QDomElement &element)
{
    const AutoreleaseScope scope;
    NSData *xml = [NSPropertyListSerialization dataWithPropertyList:QDomElementToNSDictionary(element)
                                                             format:NSPropertyListXMLFormat_v1_0
                                                            options:0
                                                              error:NULL];
    return QByteArray(static_cast<const char *>([xml bytes]), static_cast<int>([xml length]));
}

QDomElement CocoaCalls::elementOf(const QString &name, const QByteArray &dictionary)
{
    const AutoreleaseScope scope;
    return QDomElementFromNSDictionary(name, fromXml(dictionary));
}
