// SPDX-License-Identifier: Apache-2.0
#include "config/RecordFields.h"

#include "config/XmlMarkup.h"
#include "config/XmlText.h"

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

template <typename Value> bool same(const Value &first, const Value &second)
{
    return first == second;
}

bool same(const QDomElement &first, const QDomElement &second)
{
    return sameElement(first, second);
}

bool isWritable(bool)
{
    return true;
}

bool isWritable(int)
{
    return true;
}

bool isWritable(const QString &text)
{
    return isXmlText(text);
}

bool isWritable(const QDomElement &element)
{
    const QDomNamedNodeMap attributes = element.attributes();
    for (int i = 0; i < attributes.count(); ++i) {
        if (!isXmlText(attributes.item(i).nodeValue()))
            return false;
    }
    for (QDomNode node = element.firstChild(); !node.isNull(); node = node.nextSibling()) {
        if (!isXmlText(node.nodeValue()) || !isWritable(node.toElement()))
            return false;
    }
    return true;
}

} // namespace

const std::array<RecordField, 18> &recordFields()
{
    using Data = EditorXmlData;
    static const std::array<RecordField, 18> fields = {{
        {QLatin1String("bShowStartPage"), &Data::bShowStartPage},
        {QLatin1String("bRemoveAdvertise"), &Data::bRemoveAdvertise},
        {QLatin1String("strDisableOpenSaveFileAttach"), &Data::strDisableOpenSaveFileAttach},
        {QLatin1String("nFileAttachmentsMode"), &Data::nFileAttachmentsMode},
        {QLatin1String("strBuiltInPermList"), &Data::strBuiltInPermList},
        {QLatin1String("bDisableOpenFileAll"), &Data::bDisableOpenFileAll},
        {QLatin1String("strUnloadPluginArray"), &Data::strUnloadPluginArray},
        {QLatin1String("bMIPCheckPolicySet"), &Data::bMIPCheckPolicySet},
        {QLatin1String("nMIPCheckPolicyOnDocSave"), &Data::nMIPCheckPolicyOnDocSave},
        {QLatin1String("nAuthLibrary"), &Data::nAuthLibrary},
        {QLatin1String("bHideMyApps"), &Data::bHideMyApps},
        {QLatin1String("bSupportExtSSO"), &Data::bSupportExtSSO},
        {QLatin1String("elemRibbonCategory"), &Data::elemRibbonCategory},
        {QLatin1String("elemQuickAccessBar"), &Data::elemQuickAccessBar},
        {QLatin1String("bUseOAuth2"), &Data::bUseOAuth2},
        {QLatin1String("strLoginDomain"), &Data::strLoginDomain},
        {QLatin1String("strLoginDomainList"), &Data::strLoginDomainList},
        {QLatin1String("bSetAsDefaultViewer"), &Data::bSetAsDefaultViewer},
    }};
    return fields;
}

bool sameValue(const RecordField &field, const EditorXmlData &first, const EditorXmlData &second)
{
    return std::visit([&](auto member) { return same(first.*member, second.*member); }, field.member);
}

bool sameElement(const QDomElement &first, const QDomElement &second)
{
    if (first.isNull() || second.isNull())
        return first.isNull() && second.isNull();
    return first.tagName() == second.tagName() && sameAttributes(first, second) &&
           textsIn(first) == textsIn(second) && sameChildren(first, second);
}

QString unwritableSetting(const EditorXmlData &data)
{
    for (const RecordField &field : recordFields()) {
        if (!std::visit([&](auto member) { return isWritable(data.*member); }, field.member))
            return field.name;
    }
    if (!isXmlText(data.payloadInfo.PayloadIdentifier))
        return QStringLiteral("PayloadIdentifier");
    return isXmlText(data.payloadInfo.PayloadUUID) ? QString() : QStringLiteral("PayloadUUID");
}

QString elementText(const QDomElement &element)
{
    return QString::fromUtf8(XmlMarkup::of(element, XmlMarkup::onOneLine));
}
