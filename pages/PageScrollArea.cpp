// SPDX-License-Identifier: Apache-2.0
#include "pages/PageScrollArea.h"

#include <QEvent>
#include <QScrollBar>

PageScrollArea::PageScrollArea(QWidget *parent)
    : QScrollArea(parent)
{
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    verticalScrollBar()->installEventFilter(this);
}

void PageScrollArea::setLeastWidth(const std::function<int()> &leastWidth)
{
    m_leastWidth = leastWidth;
    updateGeometry();
}

QSize PageScrollArea::minimumSizeHint() const
{
    const int page = m_leastWidth ? m_leastWidth() : widget() ? widget()->minimumSizeHint().width() : 0;
    return {page, QScrollArea::minimumSizeHint().height()};
}

bool PageScrollArea::eventFilter(QObject *watched, QEvent *event)
{
    QScrollBar *bar = verticalScrollBar();
    if (watched == bar && (event->type() == QEvent::Show || event->type() == QEvent::Hide)) {
        const bool isShown = event->type() == QEvent::Show;
        setViewportMargins(0, 0, isShown ? -bar->sizeHint().width() : 0, 0);
        bar->parentWidget()->raise();
    }
    return QScrollArea::eventFilter(watched, event);
}

bool PageScrollArea::event(QEvent *event)
{
    if (event->type() == QEvent::LayoutRequest)
        updateGeometry();
    return QScrollArea::event(event);
}
