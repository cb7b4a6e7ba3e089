// SPDX-License-Identifier: Apache-2.0
#include "config/RibbonDefinition.h"

#include "config/CCommon.h"
#include "config/XmlTree.h"

#include <QFile>

namespace {

QDomDocument readDefinition()
{
    QFile file(QStringLiteral(":/EditorXml/EditorXml/RibbonQuintorUI_Init.xml"));
    QDomDocument definition;
    if (!file.open(QIODevice::ReadOnly) || !XmlTree::read(file.readAll(), definition))
        return {};
    const bool isRibbon = definition.documentElement().tagName() == QLatin1String("RibbonUI");
    return isRibbon ? definition : QDomDocument();
}

} // namespace

QDomDocument ribbonDefinition()
{
    // Reading takes longer than building a tree from it, and there are two trees.
    static const QDomDocument definition = readDefinition();
    return definition;
}

bool existsInProduct(const QDomElement &element, bool editor)
{
    const QString onlyForTheOther = editor ? QStringLiteral("OnlyReader") : QStringLiteral("OnlyEditor");
    return element.attribute(onlyForTheOther).toInt() != 1;
}

bool existsInProduct(const QDomElement &element)
{
    return existsInProduct(element, CCommon::GetPCWAppType() != PCW_APP_READER);
}
