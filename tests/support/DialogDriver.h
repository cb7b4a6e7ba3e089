// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

#include <functional>

class QDialog;
class QObject;

/// Answers modal dialogs as a user would. Called before the code that shows the dialog. A dialog that does
/// not appear in time, or that the answer leaves open, fails the test; the latter is closed, so that nothing
/// hangs. What was announced is forgotten with its `context`.
namespace DialogDriver {

/// Hands the next modal dialog to `answer`, once it is on the screen.
void onNextModal(QObject *context, const std::function<void(QDialog *)> &answer);

/// Types a path into the next file dialog and accepts it.
void chooseFile(QObject *context, const QString &path);

/// Cancels the next modal dialog.
void cancel(QObject *context);

} // namespace DialogDriver
