// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QDomDocument>
#include <QSet>
#include <QStringList>

class QTreeWidgetItem;

/// Finding one's way in ribbon trees. A path is the names of an item and of those above it, from the top.

/// Makes the Editor or the Reader the product that is configured.
void configureProduct(bool editor);

/// The item at a path; null when there is none.
QTreeWidgetItem *itemAt(QTreeWidgetItem *root, const QStringList &path);

/// Every item below the root, from top to bottom.
QVector<QTreeWidgetItem *> itemsBelow(QTreeWidgetItem *root);

/// The first item with that name in the top-level item of that name; null when there is none.
QTreeWidgetItem *itemIn(QTreeWidgetItem *root, const QString &category, const QString &name);

/// The paths of the items that are checked, each joined with "/".
QSet<QString> hiddenPaths(QTreeWidgetItem *root);

/// The root element of XML text, null when it does not parse; the document must outlive its use.
QDomElement parsed(QDomDocument &document, const QString &xml);
