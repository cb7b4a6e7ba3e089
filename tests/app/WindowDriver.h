// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QMessageBox>
#include <QPointer>
#include <QString>
#include <QStringList>

#include <functional>

class QDialog;
class QWidget;

/// A message box as it stood on the screen.
struct ShownMessage
{
    QString title;
    QString text;
    QMessageBox::Icon icon = QMessageBox::NoIcon;
    QMessageBox::StandardButtons buttons;
    QPointer<QWidget> parent;
    int count = 0; ///< how many were shown
};

/// What a user does with the main window that no single widget offers.
namespace WindowDriver {

/// Notes what a dialog says, which must be a message box, and presses its OK button.
void readAndAccept(QDialog *dialog, ShownMessage *shown);

/// Presses the OK button of the next modal dialog, which must be a message box, and notes what it said.
void acceptMessage(QObject *context, ShownMessage *shown);

/// Answers the next save dialog: types the path, ticks the box when wanted and accepts. `next` is called
/// just before, to announce the answer to whatever comes after.
void saveAs(QObject *context, const QString &path, bool keepDocument, const std::function<void()> &next);

/// Drags files over a widget and lets go. False when the widget refuses them.
bool dropFiles(QWidget *target, const QStringList &paths);

} // namespace WindowDriver
