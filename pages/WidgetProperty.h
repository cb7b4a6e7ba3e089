// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>
#include <QVariant>

class QWidget;
struct EditorXmlData;

/// The value of the page's first control with that object name, at any depth: the index of a combo box,
/// whether a check box or a radio button is checked (partially is not), the trimmed text of a line or text
/// edit. Invalid without a page, without such a control and for every other kind of control.
QVariant GetWidgetProperty(QWidget *page, const QString &objectName);

/// The way back: gives the control the value that GetWidgetProperty would read; a text is set as it stands,
/// without signals of a text edit. A radio button that is not to be checked has the one beside it checked.
/// False where GetWidgetProperty finds no value.
bool SetWidgetProperty(QWidget *page, const QString &objectName, const QVariant &value);

/// Gives every control of the page that shows a setting the record's value.
void fillControls(QWidget *page, const EditorXmlData &data);
