// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "pages/PageHandler.h"
#include "pages/ribbonset/CommonActions.h"
#include "pages/ribbonset/RibbonTreePage.h"

#include <QCoreApplication>
#include <QDomDocument>

/// The categories of the ribbon with their panels, controls and menu items.
class tab_ribbonset_ribcate : public RibbonTreePage
{
    Q_OBJECT

public:
    explicit tab_ribbonset_ribcate(QWidget *parent = nullptr);

    /// The names of the actions that several categories offer and that are hidden together.
    static QStringList InitCommonActions();

    /// What is hidden, as a configuration document says it.
    QDomDocument SaveToXml() const;

    void keepIn(EditorXmlData &record) const override;

private:
    void parseXml(const QDomNode &node, QTreeWidgetItem *parent) override;
    void treeBuilt() override;
    void spreadState(QTreeWidgetItem *item) override;
    void applyFragment(const QDomElement &fragment) override;

    const CommonActions m_commonActions{InitCommonActions()};
};

/// The Ribbon Category sub-page.
class CHandler_RibbonSet_RibCate : public SubPageHandler<IRibbonSetHandler, tab_ribbonset_ribcate>
{
    Q_DECLARE_TR_FUNCTIONS(CHandler_RibbonSet_RibCate)

public:
    explicit CHandler_RibbonSet_RibCate(bool editor);

    void OnBeforeSave() override;

protected:
    void fillPage(tab_ribbonset_ribcate &page, const EditorXmlData &data) override;
};
