// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "pages/CTabWidget.h"

#include <map>
#include <memory>

namespace Ui {
class tab_preference;
}
class IPreferenceHandler;
class QItemSelection;
class QModelIndex;
class QStackedLayout;
class QStringListModel;
struct EditorXmlData;

/// Settings by subject: a list of sub-pages on the left and the chosen one beside it.
class tab_preference : public CTabWidget
{
    Q_OBJECT

public:
    /// Has no sub-pages yet. `editor` is true for the Editor, false for the Reader.
    explicit tab_preference(bool editor, QWidget *parent = nullptr);
    ~tab_preference() override;

    /// Adds a sub-page with a row at the end of the list and shows it. False when there is no handler or no
    /// sub-page, when the product does not have it, when its id is not one of 0 to 7, and when it is taken.
    bool Register(const std::shared_ptr<IPreferenceHandler> &handler);

    /// The handler of the sub-page that is shown, or null.
    std::shared_ptr<IPreferenceHandler> GetCurrentHandler() const;

    /// Fills the sub-pages from the record, in the order of their ids.
    void ImportProperty(const EditorXmlData &record);

    /// The first value that a sub-page has for the name, in the order of their ids; invalid when none has.
    QVariant GetProperty(const QString &objectName) const;

    /// Connects the page to the main window as soon as it lies in one.
    bool event(QEvent *event) override;

signals:
    /// Another sub-page is shown, so the help that goes with the page is another one, too. Connected to
    /// the slot `On_ReloadInformation()` of the main window.
    void sig_reloadinformation();

private:
    bool isWanted(IPreferenceHandler &handler) const;
    void appendRow(const QString &title);
    void showSelected(const QItemSelection &selected);
    void showRow(int row);
    void followInMainWindow();

    const std::unique_ptr<Ui::tab_preference> m_ui;
    const bool m_editor;
    QStringListModel *const m_titles;
    /// The sub-pages in the order of the list's rows.
    QStackedLayout *const m_stack;
    std::map<int, std::shared_ptr<IPreferenceHandler>> m_handlers;
};
