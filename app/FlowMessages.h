// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

class QWidget;

/// How the flows of the main window tell how they went: boxes without a title, with an OK button, whose text
/// begins on the second line. Each blocks until it is closed.
namespace FlowMessages {

void information(QWidget *parent, const QString &text);
void warning(QWidget *parent, const QString &text);
void critical(QWidget *parent, const QString &text);

} // namespace FlowMessages
