// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "pages/PageHandler.h"
#include "pages/ribbonset/RibbonTreePage.h"

#include <QCoreApplication>
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

/// The Quick Access Toolbar sub-page.
class CHandler_RibbonSet_TabElem : public SubPageHandler<IRibbonSetHandler, tab_ribbonset_tabelem>
{
    Q_DECLARE_TR_FUNCTIONS(CHandler_RibbonSet_TabElem)

public:
    explicit CHandler_RibbonSet_TabElem(bool editor);

    void OnBeforeSave() override;

protected:
    void fillPage(tab_ribbonset_tabelem &page, const EditorXmlData &data) override;
};
