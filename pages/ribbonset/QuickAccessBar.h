// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QDomElement>

class QDomDocument;
class QTreeWidgetItem;

/// The fragment of a configuration document that lists what is hidden from the quick access bar: below
/// the root "QuickAccessBar" elements "control" with action (an item's name), page (the name of the
/// item above it) and group. Items keep the name of their group under RibbonTree::ownRole.

/// The fragment for the items below the root of a tree.
QDomDocument quickAccessFragment(QTreeWidgetItem *root);

/// Makes a tree show what the fragment says and expands what leads to a checked item. A null element or
/// one that is not "QuickAccessBar" hides nothing.
void applyQuickAccessFragment(QTreeWidgetItem *root, const QDomElement &fragment);
