// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QScrollArea>

#include <functional>

/// Scrolls a page up and down only: the area never gets narrower than the page in it, so that nothing of the
/// page is ever out of sight to the side. The scroll bar stands in the page's margin, and the page is as wide
/// with it as without.
class PageScrollArea : public QScrollArea
{
    Q_OBJECT

public:
    explicit PageScrollArea(QWidget *parent = nullptr);

    /// Asks this for the least width of a page that can lay itself out in more than one way, rather than the
    /// page's layout, which knows of the present one only.
    void setLeastWidth(const std::function<int()> &leastWidth);

    QSize minimumSizeHint() const override;

    bool eventFilter(QObject *watched, QEvent *event) override;

protected:
    bool event(QEvent *event) override;

private:
    std::function<int()> m_leastWidth;
};
