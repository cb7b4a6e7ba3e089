// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

// Text from a file or its name, made harmless for a terminal or a log. What cannot be seen is written out:
// control characters, line breaks, half surrogate pairs and the characters that reorder text, as \n, \t,
// \xHH, \uHHHH or \UHHHHHHHH. Any thread.

/// One line from which the text can be told again: a backslash appears as two.
QString printableText(const QString &text);

/// The same of a text's start: of a longer one `length` UTF-16 units and an ellipsis.
QString printableStart(const QString &text, int length);

/// One line that can be read; a backslash stays one. For paths, and for messages that hold printable texts.
QString visibleText(const QString &text);

/// The same with its line breaks and tabs as they are.
QString visibleLines(const QString &text);

/// A JSON document that says the same: what cannot be seen in its strings is written as `\uHHHH`.
QString visibleJson(const QString &json);
