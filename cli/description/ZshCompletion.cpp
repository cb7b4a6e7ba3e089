// SPDX-License-Identifier: Apache-2.0
#include "cli/description/Descriptions.h"

#include "cli/HelpText.h"

namespace {

const QString nextLine = QStringLiteral(" \\\n                ");

/// A text between brackets or colons, where these mean something.
QString escaped(QString text)
{
    for (const auto *special : {"\\", "[", "]", ":"})
        text.replace(QLatin1String(special), QLatin1Char('\\') + QLatin1String(special));
    return text;
}

QString extensionPattern(const QStringList &extensions)
{
    return extensions.size() == 1 ? extensions.first()
                                  : QStringLiteral("(%1)").arg(extensions.join(QLatin1Char('|')));
}

/// The command that offers the value.
QString offer(const Value &value)
{
    switch (value.kind) {
    case Value::Kind::Choice:
        return QStringLiteral("(%1)").arg(value.words.join(QLatin1Char(' ')));
    case Value::Kind::File:
        return QStringLiteral("_files -g \"*.%1(-.)\"").arg(extensionPattern(value.words));
    case Value::Kind::Identity:
        return QStringLiteral("_pct_identities");
    case Value::Kind::Text:
        break;
    }
    return {};
}

/// What a value is called where it is offered, and the offer.
QString described(const Value &value)
{
    const QString title = value.kind == Value::Kind::Choice ? QStringLiteral("value") : value.name.toLower();
    return QStringLiteral(":%1:%2").arg(escaped(title), offer(value));
}

/// The forms of an option, and of those that cannot stand beside it.
QString excluded(const Option &option, const QList<Option> &options)
{
    if (option.isRepeatable)
        return {};
    QStringList forms;
    for (const Option &member : groupOf(option, options)) {
        if (!member.letter.isEmpty())
            forms << QLatin1Char('-') + member.letter;
        forms << member.longForm();
    }
    return QStringLiteral("(%1)").arg(forms.join(QLatin1Char(' ')));
}

QString optionSpec(const Option &option, const QList<Option> &options)
{
    const QString before = option.isRepeatable ? QStringLiteral("*") : excluded(option, options);
    const QString names = option.letter.isEmpty()
                              ? option.longForm()
                              : QStringLiteral("{-%1,%2}").arg(QString(option.letter), option.longForm());
    const QString value = option.takesValue() ? described(option.value) : QString();
    return quoted(before) + names + quoted(QStringLiteral("[%1]").arg(escaped(option.meaning)) + value);
}

QString operandSpec(const Operand &operand)
{
    const QString number = operand.isRepeatable ? QStringLiteral("*") : QString();
    const QString optional = operand.isOptional ? QStringLiteral(":") : QString();
    return quoted(number + optional + described(operand.value));
}

QString arguments(const Verb &verb)
{
    QStringList specs{QStringLiteral("_arguments -S $help")};
    for (const Option &option : verb.options)
        specs << optionSpec(option, verb.options);
    for (const Operand &operand : verb.operands)
        specs << operandSpec(operand);
    return specs.join(nextLine);
}

QStringList argumentBranches(const VerbTable &table)
{
    QStringList lines;
    for (const Verb &verb : table) {
        const QString command =
            verb.run ? arguments(verb) : QStringLiteral("_pct_below ") + quoted(verb.name);
        lines << QStringLiteral("        %1)").arg(quoted(verb.name))
              << QStringLiteral("            ") + command << QStringLiteral("            ;;");
    }
    return lines;
}

QStringList verbList(const VerbTable &table, const QString &name)
{
    QStringList lines{QStringLiteral("        %1)").arg(quoted(name)), QStringLiteral("            verbs=(")};
    for (const Verb &verb : verbsBelow(table, name))
        lines << QStringLiteral("                ") +
                     quoted(lastWord(verb) + QLatin1Char(':') + escaped(verb.summary));
    return lines << QStringLiteral("            )") << QStringLiteral("            ;;");
}

QStringList verbBranches(const VerbTable &table)
{
    QStringList lines = verbList(table, {});
    for (const Verb &verb : table) {
        if (!verb.run)
            lines += verbList(table, verb.name);
    }
    return lines;
}

} // namespace

QString zshCompletion(const VerbTable &table, const QString &form)
{
    return filledForm(form, {{QStringLiteral("VERBS"), verbBranches(table)},
                             {QStringLiteral("ARGUMENTS"), argumentBranches(table)}});
}
