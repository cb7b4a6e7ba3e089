// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QWidget>

class QSplitter;

/// Base of every page and sub-page widget. Paints the background that the page's form asks for.
class CTabWidget : public QWidget
{
    Q_OBJECT

public:
    explicit CTabWidget(QWidget *parent = nullptr);

    /// The splitter that shows the page's own contents on the left and leaves room for a help panel on
    /// the right. Made around the contents on first use and owned by the page.
    QSplitter *Splitter();

private:
    QSplitter *m_splitter = nullptr;
};
