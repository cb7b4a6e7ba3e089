// SPDX-License-Identifier: Apache-2.0
#include "cli/description/Descriptions.h"

#include "cli/HelpText.h"

namespace {

QStringList names(const QList<Option> &options)
{
    QStringList names;
    for (const Option &option : options) {
        if (!option.letter.isEmpty())
            names.append(QLatin1Char('-') + option.letter);
        names.append(option.longForm());
    }
    return names;
}

/// One branch of a case, for the pattern in quotes.
QString branch(const QString &pattern, const QString &command)
{
    return QStringLiteral("        %1) %2 ;;").arg(quoted(pattern), command);
}

QString echo(const QStringList &words)
{
    return QStringLiteral("echo ") + words.join(QLatin1Char(' '));
}

QString extensionPattern(const QStringList &extensions)
{
    return QStringLiteral("*.@(%1)").arg(extensions.join(QLatin1Char('|')));
}

/// The command that offers the value.
QString offer(const Value &value)
{
    switch (value.kind) {
    case Value::Kind::Choice:
        return QStringLiteral("_pct_words ") + quoted(value.words.join(QLatin1Char(' ')));
    case Value::Kind::File:
        return QStringLiteral("_pct_files ") + quoted(extensionPattern(value.words));
    case Value::Kind::Identity:
        return QStringLiteral("_pct_identities");
    case Value::Kind::Text:
        break;
    }
    return QStringLiteral("true");
}

QStringList verbBranches(const VerbTable &table)
{
    const QStringList first = wordsBelow(table, {});
    QStringList lines{branch({}, echo(first + QStringList{OptionName::help})),
                      branch(OptionName::help, echo(first))};
    for (const Verb &verb : table) {
        if (verb.run)
            continue;
        const QStringList below = wordsBelow(table, verb.name);
        lines << branch(verb.name, echo(below))
              << branch(OptionName::help + QLatin1Char(' ') + verb.name, echo(below));
    }
    return lines;
}

QStringList optionBranches(const VerbTable &table)
{
    QStringList lines{branch({}, echo(names(generalOptions())))};
    for (const Verb &verb : table)
        lines << branch(verb.name, echo(names(allOptions(verb))));
    return lines;
}

QStringList valueBranches(const VerbTable &table)
{
    QStringList lines;
    for (const Verb &verb : table) {
        for (const Option &option : verb.options) {
            if (option.takesValue())
                lines << branch(verb.name + QLatin1Char(' ') + option.longForm(), offer(option.value));
        }
    }
    return lines;
}

/// All operands of a verb are alike; the first one speaks for them.
QStringList operandBranches(const VerbTable &table)
{
    QStringList lines;
    for (const Verb &verb : table) {
        if (!verb.operands.isEmpty())
            lines << branch(verb.name, offer(verb.operands.first().value));
    }
    return lines;
}

} // namespace

QString bashCompletion(const VerbTable &table, const QString &form)
{
    return filledForm(form, {{QStringLiteral("VERBS"), verbBranches(table)},
                             {QStringLiteral("OPTIONS"), optionBranches(table)},
                             {QStringLiteral("VALUES"), valueBranches(table)},
                             {QStringLiteral("OPERANDS"), operandBranches(table)}});
}
