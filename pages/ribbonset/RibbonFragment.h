// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QDomElement>

class QDomDocument;
class QTreeWidgetItem;

/// The fragment of a configuration document that says which parts of the ribbon are hidden: below the root
/// "RibbonUI" nested elements with Text (an item's name) and Hidden ("1" or "0").

/// The fragment for the items below the root of a tree. Branches that are shown as a whole are left out.
QDomDocument ribbonFragment(const QTreeWidgetItem *root);

/// The element of one item with those of the items below it; null when all of the branch is shown.
QDomElement saveTreeStateToXml(const QTreeWidgetItem *item, QDomDocument &document, const QString &tag);

/// Checks the items below the parent that the elements below this one hide and unchecks those that
/// they show. Items without an element stay as they are, elements without an item are ignored.
void updateTreeWidgetItemFromXml(QTreeWidgetItem *parent, const QDomElement &element);

/// Makes a tree show what the fragment says. A null element or one that is not "RibbonUI" hides nothing.
void applyRibbonFragment(QTreeWidgetItem *root, const QDomElement &fragment);
