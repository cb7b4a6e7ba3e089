// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QStringList>

// Texts that look like others to people and are others to programs. Any thread.

/// The text in the letters that it looks like: those of other scripts that have the shape of a Latin one are
/// this one, compatible forms are the plain ones; without characters that are not seen, and without white
/// space at its ends.
QString plainForm(const QString &text);

/// The known word that the text is not but looks like; empty when there is none.
QString lookAlike(const QString &text, const QStringList &known);

/// What sets the text apart from its plain form: "U+0430 in place 3", or white space at an end. Empty for a
/// text that is its plain form.
QString oddityOf(const QString &text);
