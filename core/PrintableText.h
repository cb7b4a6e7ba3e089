// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

/// Text from a file or its name as one harmless line for a terminal or a log: control characters,
/// line breaks and the invisible characters that reorder text appear as \n, \t, \xHH or \uHHHH, and a
/// backslash as two.
QString printableText(const QString &text);
