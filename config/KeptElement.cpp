// SPDX-License-Identifier: Apache-2.0
#include "config/KeptElement.h"

#include "config/XmlMarkup.h"
#include "config/XmlText.h"

#include <QMutex>
#include <QStringList>

namespace {

bool sameAttributes(const QDomElement &first, const QDomElement &second)
{
    const QDomNamedNodeMap attributes = first.attributes();
    if (attributes.count() != second.attributes().count())
        return false;
    for (int i = 0; i < attributes.count(); ++i) {
        const QDomAttr attribute = attributes.item(i).toAttr();
        if (!second.hasAttribute(attribute.name()) || second.attribute(attribute.name()) != attribute.value())
            return false;
    }
    return true;
}

/// The texts that stand in the element itself. Writing and reading may add and take white space.
QStringList textsIn(const QDomElement &element)
{
    QStringList texts;
    for (QDomNode node = element.firstChild(); !node.isNull(); node = node.nextSibling()) {
        const QString text = node.isText() ? node.nodeValue().trimmed() : QString();
        if (!text.isEmpty())
            texts += text;
    }
    return texts;
}

bool sameChildren(const QDomElement &first, const QDomElement &second)
{
    QDomElement mine = first.firstChildElement();
    QDomElement other = second.firstChildElement();
    while (!mine.isNull() && !other.isNull()) {
        if (!sameElement(mine, other))
            return false;
        mine = mine.nextSiblingElement();
        other = other.nextSiblingElement();
    }
    return mine.isNull() && other.isNull();
}

} // namespace

QDomElement keptElement(const QDomElement &element)
{
    // Never destroyed, because records with static storage may be destroyed later.
    static auto *const owner = new QDomDocument;
    static QMutex mutex;
    const QMutexLocker locker(&mutex);
    return owner->importNode(element, true).toElement();
}

bool sameElement(const QDomElement &first, const QDomElement &second)
{
    if (first.isNull() || second.isNull())
        return first.isNull() && second.isNull();
    return first.tagName() == second.tagName() && sameAttributes(first, second) &&
           textsIn(first) == textsIn(second) && sameChildren(first, second);
}

bool isXmlElement(const QDomElement &element)
{
    const QDomNamedNodeMap attributes = element.attributes();
    for (int i = 0; i < attributes.count(); ++i) {
        if (!isXmlText(attributes.item(i).nodeValue()))
            return false;
    }
    for (QDomNode node = element.firstChild(); !node.isNull(); node = node.nextSibling()) {
        if (!isXmlText(node.nodeValue()) || !isXmlElement(node.toElement()))
            return false;
    }
    return true;
}

QString elementText(const QDomElement &element)
{
    return QString::fromUtf8(XmlMarkup::of(element, XmlMarkup::onOneLine));
}
