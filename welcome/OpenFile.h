// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

class QWidget;

/// Asks for an existing file, starting in the folder where the last file dialog of this user ended, and
/// remembers the folder of the choice. Empty when the dialog is cancelled. Blocks while the dialog is shown.
QString chooseFileToOpen(QWidget *parent, const QString &filter);
