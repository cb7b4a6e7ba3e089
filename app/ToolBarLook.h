// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QIcon>
#include <QString>

/// The look of the main window's buttons, as texts for Qt.
namespace ToolBarLook {

/// A tool tip: a bold title above a line of text. Both are plain text.
QString toolTipText(const QString &title, const QString &text);

/// Style sheet of a tool button that shows the images ":/img/<image>-normal.png", "-hover" and "-disable".
QString toolButtonSheet(const QString &image);

/// The same for a button that can be checked, with the image "-checked".
QString checkableToolButtonSheet(const QString &image);

/// Style sheet of a page button in the dark column.
QString pageButtonSheet();

/// The icon of a page button, as faint as the button's text while the button is disabled.
QIcon pageButtonIcon(const QString &image);

} // namespace ToolBarLook
