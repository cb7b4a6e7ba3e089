// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QObject>
#include <QPointer>
#include <QString>

#include <memory>

class CWebViewHandler;
class HelpPanel;
class QSplitter;
class QStackedLayout;
class QToolButton;
class QWidget;
class tab_userguide;

/// What the main window shows of help: a panel beside the current page, which follows from page to page, and
/// the user guide in place of the page. The button is pressed as long as one of them is there.
class HelpSide : public QObject
{
    Q_OBJECT

public:
    /// For the window's pages in the stack. Nothing is owned, and all live longer.
    HelpSide(QWidget &window, QStackedLayout &pages, QToolButton &button);
    ~HelpSide() override;

    /// The current page's splitter, or null when no page is shown.
    QSplitter *splitter() const;

    /// Opens or closes the panel beside the current page, with a help page in it, whose name is URL-encoded.
    /// Closing also brings back the page in whose place the guide stands.
    void showPanel(bool open, const QString &pageName);

    /// Shows the user guide in place of the page. Pressing the button again, or choosing a page, closes it.
    void showGuide();

private:
    void placePanel(QSplitter *splitter);
    bool panelHasFocus() const;
    void releaseButton();

    QWidget &m_window;
    QStackedLayout &m_pages;
    QToolButton &m_button;
    const std::unique_ptr<CWebViewHandler> m_handler;
    QPointer<HelpPanel> m_panel;
    QPointer<tab_userguide> m_guide;
    QPointer<QWidget> m_pageBelowGuide;
    QPointer<QWidget> m_focusBeforePanel;
    bool m_panelOpenBelowGuide = false;
};
