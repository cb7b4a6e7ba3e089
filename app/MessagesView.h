// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QDialog>

class QTextBrowser;
struct Message;

/// What the tool has said in this run, as text to read and to copy; stays open beside the main window. Below
/// what was saved there is a link that shows the file.
class MessagesView : public QDialog
{
    Q_OBJECT

public:
    explicit MessagesView(QWidget *parent);

signals:
    /// A link was followed to a file.
    void fileWanted(const QString &file);

private:
    void append(const Message &message);
    void copyAll();

    QTextBrowser *const m_text;
};
