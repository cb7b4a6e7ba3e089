// SPDX-License-Identifier: Apache-2.0
#include "pages/ribbonset/RibbonFragment.h"

#include "pages/ribbonset/RibbonTree.h"

#include <QDomDocument>

namespace {

const QString rootTag = QStringLiteral("RibbonUI");
const QString tabElementsTag = QStringLiteral("TabElements");
const QString categoryTag = QStringLiteral("Category");
const QString panelTag = QStringLiteral("Panel");
const QString controlTag = QStringLiteral("Control");
const QString textAttribute = QStringLiteral("Text");
const QString hiddenAttribute = QStringLiteral("Hidden");

/// The products expect the tag to follow from the text that people read, not from the name.
QString topLevelTag(const QTreeWidgetItem *item)
{
    return item->text(0) == tabElementsTag ? tabElementsTag : categoryTag;
}

QString childTag(const QString &tag)
{
    if (tag == categoryTag)
        return panelTag;
    if (tag == panelTag || tag == tabElementsTag)
        return controlTag;
    return QStringLiteral("SubItem");
}

void appendIfAny(QDomElement &parent, const QDomElement &child)
{
    if (!child.isNull())
        parent.appendChild(child);
}

} // namespace

QDomDocument ribbonFragment(const QTreeWidgetItem *root)
{
    QDomDocument document;
    QDomElement ribbon = document.createElement(rootTag);
    document.appendChild(ribbon);
    for (int i = 0; i < root->childCount(); ++i)
        appendIfAny(ribbon, saveTreeStateToXml(root->child(i), document, topLevelTag(root->child(i))));
    return document;
}

QDomElement saveTreeStateToXml(const QTreeWidgetItem *item, QDomDocument &document, const QString &tag)
{
    const bool hidden = RibbonTree::isChecked(item);
    if (!hidden && !RibbonTree::hasAnyCheckedChild(item))
        return {};
    QDomElement element = document.createElement(tag);
    element.setAttribute(textAttribute, RibbonTree::nameOf(item));
    element.setAttribute(hiddenAttribute, hidden ? QStringLiteral("1") : QStringLiteral("0"));
    for (int i = 0; i < item->childCount(); ++i)
        appendIfAny(element, saveTreeStateToXml(item->child(i), document, childTag(tag)));
    return element;
}

void updateTreeWidgetItemFromXml(QTreeWidgetItem *parent, const QDomElement &element)
{
    for (QDomElement child = element.firstChildElement(); !child.isNull();
         child = child.nextSiblingElement()) {
        QTreeWidgetItem *item = RibbonTree::childNamed(parent, child.attribute(textAttribute));
        if (!item)
            continue;
        const bool hidden = child.attribute(hiddenAttribute) == QLatin1String("1");
        item->setCheckState(0, hidden ? Qt::Checked : Qt::Unchecked);
        updateTreeWidgetItemFromXml(item, child);
    }
}

void applyRibbonFragment(QTreeWidgetItem *root, const QDomElement &fragment)
{
    RibbonTree::updateChildItems(root, Qt::Unchecked);
    if (fragment.tagName() != rootTag)
        return;
    updateTreeWidgetItemFromXml(root, fragment);
    RibbonTree::showPartlyHidden(root);
}
