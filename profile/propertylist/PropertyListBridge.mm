// SPDX-License-Identifier: Apache-2.0
#include "profile/propertylist/FoundationText.h"

#include "profile/propertylist/PropertyListBridge.h"

#include "config/CCommon.h"
#include "config/KeptElement.h"
#include "config/XmlText.h"
#include "profile/propertylist/CocoaLog.h"
#include "profile/propertylist/FoundationPropertyList.h"

namespace
{

void addAttributes(const QDomElement &element, NSMutableDictionary *result)
{
    const QDomNamedNodeMap attributes = element.attributes();
    for (int i = 0; i < attributes.count(); ++i) {
        const QDomAttr attribute = attributes.item(i).toAttr();
        [result setObject:toNSString(attribute.value()) forKey:toNSString(attribute.name())];
    }
}

void addChild(const QDomElement &child, NSMutableDictionary *result)
{
    NSString *name = toNSString(child.tagName());
    NSMutableDictionary *converted = QDomElementToNSDictionary(child);
    id earlier = [result objectForKey:name];
    if ([earlier isKindOfClass:[NSMutableArray class]])
        [earlier addObject:converted];
    else if ([earlier isKindOfClass:[NSDictionary class]])
        [result setObject:[NSMutableArray arrayWithObjects:earlier, converted, nil] forKey:name];
    else
        [result setObject:converted forKey:name];
}

void addEntry(QDomDocument &document, QDomElement &element, NSString *key, id value)
{
    const QString name = toQString(key);
    // A profile may name its keys as it likes; a document with such a name could not be read again.
    if (!isXmlName(name)) {
        cocoaLog(@"[dictToQDomElement] Unsupported key %@", key);
    } else if ([value isKindOfClass:[NSString class]]) {
        element.setAttribute(name, textOf(value));
    } else if ([value isKindOfClass:[NSDictionary class]]) {
        element.appendChild(dictToQDomElement(document, name, value));
    } else if ([value isKindOfClass:[NSArray class]]) {
        for (NSUInteger i = 0; i < [value count]; ++i)
            element.appendChild(dictToQDomElement(document, name, [value objectAtIndex:i]));
    } else {
        cocoaLog(@"[dictToQDomElement] Unsupported type for key %@: %@", key, [value class]);
    }
}

} // namespace

NSMutableDictionary *QDomElementToNSDictionary(const QDomElement &element)
{
    NSMutableDictionary *result = [NSMutableDictionary dictionary];
    addAttributes(element, result);
    for (QDomNode node = element.firstChild(); !node.isNull(); node = node.nextSibling()) {
        if (node.isElement())
            addChild(node.toElement(), result);
        else if (node.isText() && !node.nodeValue().trimmed().isEmpty())
            [result setObject:toNSString(node.nodeValue()) forKey:@"text"];
    }
    return result;
}

QDomElement dictToQDomElement(QDomDocument &document, const QString &key, id value)
{
    QDomElement element = document.createElement(key);
    if ([value isKindOfClass:[NSString class]]) {
        element.appendChild(document.createTextNode(textOf(value)));
        return element;
    }
    if (![value isKindOfClass:[NSDictionary class]])
        return element;
    NSEnumerator *keys = [value keyEnumerator];
    for (NSString *name = [keys nextObject]; name != nil; name = [keys nextObject])
        addEntry(document, element, name, [value objectForKey:name]);
    return element;
}

QDomElement QDomElementFromNSDictionary(const QString &name, NSDictionary *dictionary)
{
    QDomDocument document(name);
    const QDomElement element = dictToQDomElement(document, name, dictionary);
    document.appendChild(element);
    CCommon::printDomElement(QStringLiteral("[debug] ==== QDomElementFromNSDictionary :") + name, element);
    return keptElement(element);
}
