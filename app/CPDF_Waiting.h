// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QWidget>

class QLayout;
class QMovie;

/// A turning wheel over the middle of its parent: something takes a while. Hidden until started. It stands
/// still for who asks the system for less motion.
class CPDF_Waiting : public QWidget
{
    Q_OBJECT

public:
    explicit CPDF_Waiting(QWidget *parent);
    ~CPDF_Waiting() override;

    /// Shows the wheel on top of its siblings and turns it.
    void start();
    /// Moves to the middle of the parent; to be called when the parent's size changes.
    void setpos();
    /// Hides the wheel.
    void stop();

private:
    QMovie *m_movie;
};

/// Lies over a part of its parent as long as that is disabled, so that all there looks as faint as it is
/// dead, whatever colours style sheets have given it.
class PageVeil : public QWidget
{
    Q_OBJECT

public:
    /// Covers what the layout has, which belongs to the parent.
    PageVeil(const QLayout &covered, QWidget *parent);

    /// Moves to where the layout is now; to be called when the parent's size changes.
    void follow();

protected:
    void changeEvent(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    const QLayout &m_covered;
};
