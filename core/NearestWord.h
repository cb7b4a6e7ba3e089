// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>
#include <QStringList>

/// The known word that a misspelled one was probably meant to be: a few letters are missing, wrong, too many
/// or swapped, or the end is missing. Case does not count. Empty when none is near.
QString nearestWord(const QString &word, const QStringList &known);

/// The same as the end of a message, a clause with a comma in front of it; empty when none is near.
QString nearestHint(const QString &word, const QStringList &known);
