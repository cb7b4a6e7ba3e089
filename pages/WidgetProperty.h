// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>
#include <QVariant>

class QWidget;

/// The value of the page's first control with that object name, at any depth: the index of a combo box,
/// whether a check box or a radio button is checked (partially is not), the trimmed text of a line or text
/// edit. Invalid without a page, without such a control and for every other kind of control.
QVariant GetWidgetProperty(QWidget *page, const QString &objectName);
