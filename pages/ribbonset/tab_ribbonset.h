// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "pages/PageHandler.h"
#include "pages/SubPages.h"

#include <QCoreApplication>

#include <memory>

namespace Ui {
class tab_ribbonset;
}
class QButtonGroup;
class QStackedLayout;
class QToolButton;

/// What to hide from the ribbon: two sub-pages, one of which is shown, and a button for each.
class tab_ribbonset : public CTabWidget
{
    Q_OBJECT

public:
    /// Has no sub-pages yet. `editor` is true for the Editor, false for the Reader.
    explicit tab_ribbonset(bool editor, QWidget *parent = nullptr);
    ~tab_ribbonset() override;

    /// Adds a sub-page and its button; the first one is shown. False when there is no handler or no
    /// sub-page, when the product does not have it, when its id is neither 0 nor 1, and when it is taken.
    bool Register(const std::shared_ptr<IRibbonSetHandler> &handler);

    /// Makes the button of a sub-page and puts it into the row.
    QToolButton *CreateTabButton(const std::shared_ptr<IRibbonSetHandler> &handler);

    /// Shows the sub-page whose button is checked.
    void RefreshStackLayoutWidget();

    /// The handler of the sub-page that is shown, or null.
    std::shared_ptr<IRibbonSetHandler> GetCurrentHandler() const;

    /// Fills the sub-pages from the record, in the order of their ids.
    void ImportProperty(const EditorXmlData &record);

    /// Has the sub-pages write themselves into the record, in the order of their ids.
    void OnBeforeSave();

private:
    const std::unique_ptr<Ui::tab_ribbonset> m_ui;
    SubPages<IRibbonSetHandler> m_subPages;
    QButtonGroup *const m_tabButtons;
    QStackedLayout *const m_stack;
};

/// The Ribbon Set page: which parts of the product's ribbon are hidden.
class CHandler_RibbonSet : public MainPageHandler<tab_ribbonset>
{
    Q_DECLARE_TR_FUNCTIONS(CHandler_RibbonSet)

public:
    explicit CHandler_RibbonSet(bool editor);

    void OnBeforeSave() override;

protected:
    tab_ribbonset *makePage() const override;
    void fillPage(tab_ribbonset &page, const EditorXmlData &data) override;
};
