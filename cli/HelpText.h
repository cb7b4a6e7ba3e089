// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "cli/Verb.h"

#include <QString>

// What `pct` says about itself, made from the description of its verbs.

constexpr int terminalWidth = 79;

/// All verbs, and what can stand in place of one.
QString generalHelp(const VerbTable &table);

/// What a verb takes, or which verbs follow it.
QString verbHelp(const VerbTable &table, const Verb &verb);

/// The command line of a verb behind `start`.
QString synopsis(const Verb &verb, const QString &start);

/// An option's names and its value.
QString optionForm(const Option &option);

/// The options that need no verb.
QList<Option> generalOptions();

/// What a verb takes, with the option that all take.
QList<Option> allOptions(const Verb &verb);

/// `start` and the text behind it, in lines of this width that begin in one column. Longer words stay whole.
QString wrapped(const QString &start, const QString &text, int width);
