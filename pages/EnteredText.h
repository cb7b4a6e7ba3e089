// SPDX-License-Identifier: Apache-2.0
#pragma once

class QLineEdit;
class QTextEdit;

// Fields that take no characters that neither document nor profile can hold (see isXmlText), however they are
// entered: typed, composed, pasted or dropped. The rest of what is entered at once stays. Dropped files are
// refused.

/// What a program sets loses such characters as well.
void takeXmlTextOnly(QLineEdit *field);

/// What a program sets while the field's signals are blocked stays as it is.
void takeXmlTextOnly(QTextEdit *field);
