// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "cli/Verb.h"
#include "core/Result.h"

#include <QHash>
#include <QString>
#include <QStringList>

// What is made of the description of the verbs when `pct` is built. Each takes a template and puts into it
// what depends on the verbs.

QString bashCompletion(const VerbTable &table, const QString &form);
QString zshCompletion(const VerbTable &table, const QString &form);
QString fishCompletion(const VerbTable &table, const QString &form);

/// The reference page with the parts between its marks made anew. What is between them now does not matter,
/// so the page is its own template. A problem when a verb has no such part, or a part no verb.
Result<QString> manualPage(const VerbTable &table, const QString &page);

/// The template with each line "@WORD@" replaced by the lines of that word.
QString filledForm(QString form, const QHash<QString, QStringList> &parts);

/// In single quotes for a POSIX shell and zsh.
QString quoted(const QString &text);

/// The last words of the verbs below `name`.
QStringList wordsBelow(const VerbTable &table, const QString &name);
