// SPDX-License-Identifier: Apache-2.0
#include "app/PageButton.h"

#include <QPainter>
#include <QStyle>

namespace {

constexpr int badgeHeight = 18;
constexpr int padding = 6;
constexpr int margin = 14;
const QColor badge(0xC9, 0xB8, 0xFF);
const QColor ink(0x13, 0x13, 0x13);

} // namespace

void PageButton::setCount(int count)
{
    m_count = count;
    setAccessibleDescription(count > 0 ? tr("%n setting(s) differ from the defaults", nullptr, count)
                                       : QString());
    update();
}

QSize PageButton::sizeHint() const
{
    return QToolButton::sizeHint() + QSize(margin + 2 * padding, 0);
}

void PageButton::paintEvent(QPaintEvent *event)
{
    QToolButton::paintEvent(event);
    if (m_count == 0)
        return;
    const QString text = locale().toString(m_count);
    const int length = std::max(badgeHeight, fontMetrics().horizontalAdvance(text) + 2 * padding);
    const QRect right(width() - margin - length, (height() - badgeHeight) / 2, length, badgeHeight);
    const QRect badgeRect = QStyle::visualRect(layoutDirection(), rect(), right);
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setOpacity(isEnabled() ? 1 : 0.6);
    painter.setPen(Qt::NoPen);
    painter.setBrush(badge);
    painter.drawRoundedRect(badgeRect, badgeHeight / 2.0, badgeHeight / 2.0);
    painter.setPen(ink);
    painter.drawText(badgeRect, Qt::AlignCenter, text);
}
