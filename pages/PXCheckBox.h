// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QWidget>

class QLabel;
class QToolButton;

/// A check box in the look of the tool: the text, then a tick that is green when checked and grey when not.
/// Reached with Tab, toggled with Space or by a click anywhere on it.
class PXCheckBox : public QWidget
{
    Q_OBJECT

public:
    explicit PXCheckBox(QWidget *parent = nullptr);
    explicit PXCheckBox(const QString &text, QWidget *parent = nullptr);

    void setText(const QString &text);
    QString text() const;

    /// Only Qt::Checked checks it; there is no third state.
    void setCheckState(Qt::CheckState state);
    Qt::CheckState checkState() const;

signals:
    void toggled(bool checked);

public:
    /// The tick shows the focus through the box around it.
    bool eventFilter(QObject *watched, QEvent *event) override;

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    QLabel *m_label;
    QToolButton *m_toolButton;
};
