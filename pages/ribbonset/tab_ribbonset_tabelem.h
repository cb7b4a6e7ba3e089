// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "pages/ribbonset/RibbonTreePage.h"

#include <QDomDocument>

/// The controls of the quick access bar, and those of each category that may be placed on it.
class tab_ribbonset_tabelem : public RibbonTreePage
{
    Q_OBJECT

public:
    explicit tab_ribbonset_tabelem(QWidget *parent = nullptr);

    /// What is hidden, as a configuration document says it.
    QDomDocument SaveToXml() const;

    void keepIn(EditorXmlData &record) const override;

private:
    void parseXml(const QDomNode &node, QTreeWidgetItem *parent) override;
    void spreadState(QTreeWidgetItem *item) override;
    void applyFragment(const QDomElement &fragment) override;
};
