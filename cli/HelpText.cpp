// SPDX-License-Identifier: Apache-2.0
#include "cli/HelpText.h"

#include <QStringList>

#include <algorithm>

namespace {

/// A word or more, and the meaning.
struct Term
{
    QString words;
    QString meaning;
};

/// As wrapped(), of pieces that are not broken.
QString filled(const QString &start, const QStringList &pieces, int width)
{
    const int indent = static_cast<int>(start.size());
    QString text;
    QString line = start;
    for (const QString &piece : pieces) {
        if (line.size() > indent && line.size() + 1 + piece.size() > width) {
            text += line + QLatin1Char('\n');
            line = QString(indent, QLatin1Char(' '));
        }
        if (line.size() > indent)
            line += QLatin1Char(' ');
        line += piece;
    }
    return text + line;
}

QString section(const QString &title, const QList<Term> &terms)
{
    int longest = 0;
    for (const Term &term : terms)
        longest = std::max(longest, static_cast<int>(term.words.size()));
    QString text = QLatin1Char('\n') + title + QStringLiteral(":\n");
    for (const Term &term : terms) {
        const QString start = QStringLiteral("  %1  ").arg(term.words, -longest);
        text += wrapped(start, term.meaning, terminalWidth) + QLatin1Char('\n');
    }
    return text;
}

QString verbsSection(const VerbTable &table)
{
    QList<Term> terms;
    for (const Verb &verb : table)
        terms.append({lastWord(verb), verb.summary});
    return section(QStringLiteral("Verbs"), terms);
}

QString optionsSection(const QList<Option> &options)
{
    QList<Term> terms;
    for (const Option &option : options)
        terms.append({optionForm(option), option.meaning});
    return section(QStringLiteral("Options"), terms);
}

QString operandsSection(const QList<Operand> &operands)
{
    if (operands.isEmpty())
        return {};
    QList<Term> terms;
    for (const Operand &operand : operands)
        terms.append({operand.value.name, operand.meaning});
    return section(QStringLiteral("Arguments"), terms);
}

QString withValue(const QString &name, const Option &option)
{
    return option.takesValue() ? name + QLatin1Char(' ') + option.value.name : name;
}

QString shortestForm(const Option &option)
{
    const QString name = option.letter.isEmpty() ? option.longForm() : QLatin1Char('-') + option.letter;
    return withValue(name, option);
}

/// The option with those that it excludes; nothing when the first of them stands for it.
QString optionPiece(const Option &option, const QList<Option> &options)
{
    const QList<Option> group = groupOf(option, options);
    if (group.first().name != option.name)
        return {};
    QStringList forms;
    for (const Option &member : group)
        forms.append(shortestForm(member));
    const QString choice = forms.join(QStringLiteral(" | "));
    const QString bracketed = forms.size() > 1 ? QStringLiteral("(%1)").arg(choice) : choice;
    const QString piece = option.isRequired ? bracketed : QStringLiteral("[%1]").arg(choice);
    return option.isRepeatable ? piece + QStringLiteral("...") : piece;
}

QString operandPiece(const Operand &operand)
{
    const QString word =
        operand.isRepeatable ? operand.value.name + QStringLiteral("...") : operand.value.name;
    return operand.isOptional ? QStringLiteral("[%1]").arg(word) : word;
}

QString usage(const QString &synopsis, const QString &description)
{
    return synopsis + QStringLiteral("\n\n") + wrapped({}, description, terminalWidth) + QLatin1Char('\n');
}

QString groupHelp(const VerbTable &table, const Verb &verb)
{
    return usage(QStringLiteral("Usage: pct %1 VERB [options]").arg(verb.name), verb.description) +
           verbsSection(verbsBelow(table, verb.name)) + optionsSection({helpOption()}) +
           QStringLiteral("\n\"pct help %1 VERB\" says more about a verb.\n").arg(verb.name);
}

} // namespace

QString generalHelp(const VerbTable &table)
{
    return QStringLiteral("Usage: pct VERB [options]\n"
                          "Prepares deployments of the Pelix PDF Editor and the Pelix PDF Reader.\n") +
           verbsSection(verbsBelow(table, {})) + optionsSection(generalOptions()) +
           QStringLiteral("\n\"pct help VERB\" says more about a verb.\n");
}

QString verbHelp(const VerbTable &table, const Verb &verb)
{
    if (!verb.run)
        return groupHelp(table, verb);
    return usage(synopsis(verb, QStringLiteral("Usage: pct ")), verb.description) +
           optionsSection(allOptions(verb)) + operandsSection(verb.operands);
}

QString synopsis(const Verb &verb, const QString &start)
{
    QStringList pieces;
    for (const Option &option : verb.options)
        pieces.append(optionPiece(option, verb.options));
    for (const Operand &operand : verb.operands)
        pieces.append(operandPiece(operand));
    pieces.removeAll(QString());
    return filled(start + verb.name + QLatin1Char(' '), pieces, terminalWidth);
}

QString optionForm(const Option &option)
{
    const QString names = option.letter.isEmpty()
                              ? option.longForm()
                              : QStringLiteral("-%1, %2").arg(QString(option.letter), option.longForm());
    return withValue(names, option);
}

QList<Option> generalOptions()
{
    return {helpOption(), versionOption()};
}

QList<Option> allOptions(const Verb &verb)
{
    return verb.options + QList<Option>{helpOption()};
}

QString wrapped(const QString &start, const QString &text, int width)
{
    return filled(start, text.split(QLatin1Char(' ')), width);
}
