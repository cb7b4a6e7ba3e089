// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QWidget>

class QMovie;

/// A turning wheel over the middle of its parent: something takes a while. Hidden until started.
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
