// SPDX-License-Identifier: Apache-2.0
#include "config/RibbonDefinition.h"

#include "config/CCommon.h"
#include "config/Product.h"
#include "config/XmlTree.h"

#include <QFile>

namespace {

QDomDocument readDefinition()
{
    QFile file(QStringLiteral(":/EditorXml/EditorXml/RibbonQuintorUI_Init.xml"));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    const Result<QDomDocument> definition = XmlTree::read(file.readAll());
    if (!definition || definition->documentElement().tagName() != QLatin1String("RibbonUI"))
        return {};
    return *definition;
}

} // namespace

QDomDocument ribbonDefinition()
{
    // Reading takes longer than building a tree from it, and there are two trees.
    static const QDomDocument definition = readDefinition();
    return definition;
}

bool existsInProduct(const QDomElement &element, const Product &product)
{
    return element.attribute(product.other().onlyMark).toInt() != 1;
}

bool existsInProduct(const QDomElement &element)
{
    return existsInProduct(element, Product::of(CCommon::GetPCWAppType()));
}
