// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QKeySequence>
#include <QList>
#include <QObject>

#include <functional>

class QAction;
class QMenu;
class QMenuBar;
class QWidget;

/// What the main window can be told to do by keys, and by the menu bar where a system has one. The window's
/// own texts have no mnemonics.
class WindowActions : public QObject
{
    Q_OBJECT

public:
    /// What the window does; each may be called at any time.
    struct Deeds
    {
        std::function<void()> open;
        std::function<void()> save;
        std::function<void()> find;
        std::function<void()> showHelp;
        std::function<void()> showGuide;
        std::function<void()> showAbout;
        std::function<void()> showMessages;
        std::function<void(int)> turnPage; ///< by so many pages, back when negative
    };

    /// The keys work in the window as soon as this is made. The window owns all of it.
    WindowActions(const Deeds &deeds, QWidget &window);

    /// File, Edit, Window and Help; made on first use.
    QList<QMenu *> menus();

private:
    QMenu *fileMenu();
    QMenu *editMenu();
    QMenu *windowMenu();
    QMenu *helpMenu();
    QAction *make(const QString &text, const QList<QKeySequence> &keys, const std::function<void()> &deed);
    QAction *makeForFocus(const QString &text, QKeySequence::StandardKey key, const char *slot);

    const Deeds m_deeds;
    QWidget &m_window;
    QAction *m_open;
    QAction *m_save;
    QAction *m_close;
    QAction *m_find;
    QAction *m_next;
    QAction *m_previous;
    QAction *m_help;
    QList<QMenu *> m_menus;
};

/// Puts the menus where the system has them: on a Mac into the menu bar, elsewhere nowhere.
void placeMenus(WindowActions &actions, QWidget &window);
