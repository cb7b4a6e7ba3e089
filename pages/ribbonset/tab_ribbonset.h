// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "pages/CTabWidget.h"

#include <map>
#include <memory>

namespace Ui {
class tab_ribbonset;
}
class IRibbonSetHandler;
class QButtonGroup;
class QStackedLayout;
class QToolButton;
struct EditorXmlData;

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
    bool isWanted(IRibbonSetHandler &handler) const;

    const std::unique_ptr<Ui::tab_ribbonset> m_ui;
    const bool m_editor;
    QButtonGroup *const m_tabButtons;
    QStackedLayout *const m_stack;
    std::map<int, std::shared_ptr<IRibbonSetHandler>> m_handlers;
};
