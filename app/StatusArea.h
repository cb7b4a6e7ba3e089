// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QWidget>

class QLabel;
class QToolButton;

/// What stands below the page buttons: what is being made, from which file, and a button for what the tool
/// has said.
class StatusArea : public QWidget
{
    Q_OBJECT

public:
    /// `output` names product and kind of output.
    StatusArea(const QString &output, QWidget *parent);

    /// The file that is open; empty for none. Its name is shown as far as there is room, its path as the tool
    /// tip.
    void setFile(const QString &path);

    /// How many messages nobody has seen.
    void setUnseen(int count);

signals:
    void messagesWanted();

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    void showName();

    QLabel *const m_output;
    QLabel *const m_file;
    QToolButton *const m_messages;
    QString m_name;
};
