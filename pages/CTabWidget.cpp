// SPDX-License-Identifier: Apache-2.0
#include "pages/CTabWidget.h"

#include <QSplitter>
#include <QVBoxLayout>

namespace {

/// A widget that has taken over the page's layout and, with it, everything the page shows.
QWidget *movedContents(QWidget *page)
{
    auto *contents = new QWidget(page);
    if (page->layout())
        contents->setLayout(page->layout());
    return contents;
}

} // namespace

CTabWidget::CTabWidget(QWidget *parent)
    : QWidget(parent)
{
    // Without it a subclass of QWidget ignores the background of its style sheet.
    setAttribute(Qt::WA_StyledBackground);
}

QSplitter *CTabWidget::Splitter()
{
    if (m_splitter)
        return m_splitter;
    QWidget *contents = movedContents(this);
    m_splitter = new QSplitter(Qt::Horizontal);
    m_splitter->addWidget(contents);
    m_splitter->setCollapsible(0, false);
    m_splitter->setStretchFactor(0, 1);
    auto *frame = new QVBoxLayout(this);
    frame->setContentsMargins(0, 0, 0, 0);
    frame->addWidget(m_splitter);
    return m_splitter;
}
