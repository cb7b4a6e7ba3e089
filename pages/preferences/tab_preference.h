// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "pages/PageHandler.h"
#include "pages/SubPages.h"

#include <QCoreApplication>

#include <memory>

namespace Ui {
class tab_preference;
}
class QItemSelection;
class QModelIndex;
class QStackedLayout;
class QStringListModel;

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

    /// Follows the room that there is: where it is too narrow for both, the list stands above the sub-page.
    bool eventFilter(QObject *watched, QEvent *event) override;

signals:
    /// Another sub-page is shown, so the help that goes with the page is another one, too. Connected to
    /// the slot `On_ReloadInformation()` of the main window.
    void sig_reloadinformation();

private:
    void appendRow(const QString &title);
    void showSelected(const QItemSelection &selected);
    void showRow(int row);
    void followInMainWindow();
    int leastWidth(bool folded) const;
    int heightOfRows() const;
    void fold();

    const std::unique_ptr<Ui::tab_preference> m_ui;
    SubPages<IPreferenceHandler> m_subPages;
    QStringListModel *const m_titles;
    /// The sub-pages in the order of the list's rows.
    QStackedLayout *const m_stack;
};

/// The Preferences page: how the product behaves, in one sub-page for each subject.
class CHandler_Preference : public MainPageHandler<tab_preference>
{
    Q_DECLARE_TR_FUNCTIONS(CHandler_Preference)

public:
    explicit CHandler_Preference(bool editor);

    /// Looks through the page's controls first, then asks the sub-pages in the order of their ids.
    QVariant GetProperty(const QString &objectName) override;
    /// The page's help, at the anchor of the sub-page that is shown if that has one.
    QString GetInfoName() override;

protected:
    tab_preference *makePage() const override;
    void fillPage(tab_preference &page, const EditorXmlData &data) override;
};
