// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tests/app/WindowDriver.h"

#include <QList>
#include <QPointer>
#include <QTimer>

#include <functional>

class QDialog;

/// The modal dialogs of one flow and their answers in turn, for flows that must show these and no other. A
/// dialog without an answer is closed and fails the test, and so does an answer that is left at the end.
class DialogScript
{
public:
    using Answer = std::function<void(QDialog *)>;

    explicit DialogScript(const QList<Answer> &answers);
    ~DialogScript();
    DialogScript(const DialogScript &) = delete;
    DialogScript &operator=(const DialogScript &) = delete;

private:
    void look();

    QList<Answer> m_answers;
    QPointer<QDialog> m_answered;
    QTimer m_timer;
};

/// Answers to give.
namespace Answers {

/// Types a path into a file dialog and accepts it.
DialogScript::Answer choose(const QString &path);
/// Presses the button with this label.
DialogScript::Answer press(const QString &label);
/// Closes the dialog with its window's control.
DialogScript::Answer closeWindow();
/// Presses the Escape key.
DialogScript::Answer escape();
/// Accepts a message box and notes what it said.
DialogScript::Answer read(ShownMessage *shown);

} // namespace Answers
