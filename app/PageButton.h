// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QToolButton>

/// A page's button in the column, with the number of its settings that differ from their defaults.
class PageButton : public QToolButton
{
    Q_OBJECT

public:
    using QToolButton::QToolButton;

    /// Nothing is painted for 0.
    void setCount(int count);
    int count() const { return m_count; }

    /// Leaves room for the number, so that the column does not move when it comes.
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    int m_count = 0;
};
