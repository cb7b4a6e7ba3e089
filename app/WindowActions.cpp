// SPDX-License-Identifier: Apache-2.0
#include "app/WindowActions.h"

#include <QAction>
#include <QApplication>
#include <QMenu>
#include <QWidget>

WindowActions::WindowActions(const Deeds &deeds, QWidget &window)
    : QObject(&window)
    , m_deeds(deeds)
    , m_window(window)
    , m_open(make(tr("Open…"), {QKeySequence::Open}, deeds.open))
    , m_save(make(tr("Save…"), {QKeySequence::Save}, deeds.save))
    , m_close(make(tr("Close"), {QKeySequence(Qt::CTRL | Qt::Key_W)}, [&window] { window.close(); }))
    , m_find(make(tr("Find"), {QKeySequence::Find}, deeds.find))
    , m_next(make(tr("Next Page"), {QKeySequence(Qt::CTRL | Qt::Key_PageDown), QKeySequence::NextChild},
                  [deeds] { deeds.turnPage(1); }))
    , m_previous(make(tr("Previous Page"),
                      {QKeySequence(Qt::CTRL | Qt::Key_PageUp), QKeySequence::PreviousChild},
                      [deeds] { deeds.turnPage(-1); }))
    , m_help(make(tr("Help for This Page"), {QKeySequence(Qt::Key_F1)}, deeds.showHelp))
{
    window.addActions({m_open, m_save, m_close, m_find, m_next, m_previous, m_help});
}

QAction *WindowActions::make(const QString &text, const QList<QKeySequence> &keys,
                             const std::function<void()> &deed)
{
    auto *action = new QAction(text, &m_window);
    action->setShortcuts(keys);
    connect(action, &QAction::triggered, &m_window, deed);
    return action;
}

/// For whichever field has the focus.
QAction *WindowActions::makeForFocus(const QString &text, QKeySequence::StandardKey key, const char *slot)
{
    return make(text, {key}, [slot] {
        if (QWidget *focus = QApplication::focusWidget())
            QMetaObject::invokeMethod(focus, slot);
    });
}

QList<QMenu *> WindowActions::menus()
{
    if (m_menus.isEmpty())
        m_menus = {fileMenu(), editMenu(), windowMenu(), helpMenu()};
    return m_menus;
}

QMenu *WindowActions::fileMenu()
{
    auto *menu = new QMenu(tr("File"), &m_window);
    menu->addActions({m_open, m_save});
    menu->addSeparator();
    menu->addAction(m_close);
    return menu;
}

QMenu *WindowActions::editMenu()
{
    auto *menu = new QMenu(tr("Edit"), &m_window);
    menu->addAction(makeForFocus(tr("Undo"), QKeySequence::Undo, "undo"));
    menu->addAction(makeForFocus(tr("Redo"), QKeySequence::Redo, "redo"));
    menu->addSeparator();
    menu->addAction(makeForFocus(tr("Cut"), QKeySequence::Cut, "cut"));
    menu->addAction(makeForFocus(tr("Copy"), QKeySequence::Copy, "copy"));
    menu->addAction(makeForFocus(tr("Paste"), QKeySequence::Paste, "paste"));
    menu->addAction(makeForFocus(tr("Select All"), QKeySequence::SelectAll, "selectAll"));
    menu->addSeparator();
    menu->addAction(m_find);
    return menu;
}

QMenu *WindowActions::windowMenu()
{
    auto *menu = new QMenu(tr("Window"), &m_window);
    menu->addAction(
        make(tr("Minimize"), {QKeySequence(Qt::CTRL | Qt::Key_M)}, [this] { m_window.showMinimized(); }));
    menu->addSeparator();
    menu->addActions({m_next, m_previous});
    menu->addSeparator();
    menu->addAction(make(tr("Messages"), {}, m_deeds.showMessages));
    return menu;
}

QMenu *WindowActions::helpMenu()
{
    auto *menu = new QMenu(tr("Help"), &m_window);
    menu->addAction(m_help);
    menu->addAction(make(tr("User Guide"), {}, m_deeds.showGuide));
    QAction *about = make(tr("About PCT"), {}, m_deeds.showAbout);
    about->setMenuRole(QAction::AboutRole);
    menu->addAction(about);
    return menu;
}
