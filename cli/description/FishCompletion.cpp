// SPDX-License-Identifier: Apache-2.0
#include "cli/description/Descriptions.h"

#include "cli/HelpText.h"

namespace {

/// In quotes for fish, where a backslash escapes.
QString fishQuoted(QString text)
{
    text.replace(QLatin1Char('\\'), QStringLiteral("\\\\")).replace(QLatin1Char('\''), QStringLiteral("\\'"));
    return QLatin1Char('\'') + text + QLatin1Char('\'');
}

/// As fish writes its descriptions: with a capital letter.
QString description(const QString &text)
{
    return QStringLiteral(" -d ") + fishQuoted(text.left(1).toUpper() + text.mid(1));
}

/// A line that counts behind exactly these words, or when they are the verb.
QString behind(const char *condition, const QString &words)
{
    return QStringLiteral("complete -c pct -n %1")
        .arg(fishQuoted(QLatin1String(condition) + QLatin1Char(' ') + fishQuoted(words)));
}

QString offer(const Value &value)
{
    switch (value.kind) {
    case Value::Kind::Choice:
        return QStringLiteral(" -a ") + fishQuoted(value.words.join(QLatin1Char(' ')));
    case Value::Kind::File:
        return QStringLiteral(" -a '(__fish_pct_files %1)'").arg(value.words.join(QLatin1Char(' ')));
    case Value::Kind::Identity:
        return QStringLiteral(" -a '(pct identities 2>/dev/null)'");
    case Value::Kind::Text:
        break;
    }
    return {};
}

QString optionForms(const Option &option)
{
    const QString letter = option.letter.isEmpty() ? QString() : QStringLiteral(" -s ") + option.letter;
    return letter + QStringLiteral(" -l ") + option.name;
}

QString optionLine(const Verb &verb, const Option &option)
{
    const QString value = option.takesValue() ? QStringLiteral(" -x") + offer(option.value) : QString();
    return behind("__fish_pct_verb_is", verb.name) + optionForms(option) + value +
           description(option.meaning);
}

QStringList verbLines(const Verb &verb)
{
    QStringList lines;
    for (const Option &option : allOptions(verb))
        lines << optionLine(verb, option);
    // All operands of a verb are alike; the first one speaks for them.
    if (!verb.operands.isEmpty())
        lines << behind("__fish_pct_verb_is", verb.name) + offer(verb.operands.first().value);
    return lines;
}

QStringList linesBehind(const QString &words, const VerbTable &below)
{
    QStringList lines;
    for (const Verb &verb : below)
        lines << behind("__fish_pct_stands_behind", words) + QStringLiteral(" -a ") + lastWord(verb) +
                     description(verb.summary);
    return lines;
}

} // namespace

QString fishCompletion(const VerbTable &table, const QString &form)
{
    const VerbTable first = verbsBelow(table, {});
    QStringList lines = linesBehind({}, first) + linesBehind(OptionName::help, first);
    for (const Option &option : generalOptions())
        lines << behind("__fish_pct_stands_behind", {}) + optionForms(option) + description(option.meaning);
    for (const Verb &verb : table) {
        const VerbTable below = verbsBelow(table, verb.name);
        lines += linesBehind(verb.name, below) +
                 linesBehind(OptionName::help + QLatin1Char(' ') + verb.name, below) + verbLines(verb);
    }
    return filledForm(form, {{QStringLiteral("LINES"), lines}});
}
