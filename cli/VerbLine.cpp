// SPDX-License-Identifier: Apache-2.0
#include "cli/VerbLine.h"

#include "cli/HelpText.h"
#include "config/Product.h"
#include "core/NearestWord.h"

#include <QDir>

#include <algorithm>

namespace {

/// Absolute without being cleaned: "link/../file" must mean to us what it means to the system.
QString absolutePath(const QString &path)
{
    return QDir::isAbsolutePath(path) ? path : QDir::currentPath() + QLatin1Char('/') + path;
}

QString withoutFullStop(QString text)
{
    if (text.endsWith(QLatin1Char('.')))
        text.chop(1);
    return text;
}

QCommandLineOption parserOption(const Option &option)
{
    QStringList names{option.name};
    if (!option.letter.isEmpty())
        names.prepend(option.letter);
    return {names, option.meaning, option.value.name};
}

/// "a, b and c", or with another word before the last.
QString listed(const QStringList &words, const QString &conjunction)
{
    if (words.size() < 2)
        return words.join(QString());
    return words.mid(0, words.size() - 1).join(QStringLiteral(", ")) + QLatin1Char(' ') + conjunction +
           QLatin1Char(' ') + words.last();
}

QStringList longForms(const QList<Option> &options)
{
    QStringList forms;
    for (const Option &option : options)
        forms.append(option.longForm());
    return forms;
}

Problem problem(const QString &text)
{
    return {{}, text};
}

Result<> checkChoice(const Option &option, const QStringList &given)
{
    const QStringList &allowed = option.value.words;
    for (const QString &value : given) {
        if (!allowed.contains(value))
            return problem(QStringLiteral("%1 is %2, not \"%3\"")
                               .arg(option.longForm(), listed(allowed, QStringLiteral("or")), value));
    }
    return {};
}

} // namespace

VerbLine::VerbLine(const Verb &verb, const QStringList &arguments)
    : m_verb(verb)
{
    m_parser.setSingleDashWordOptionMode(QCommandLineParser::ParseAsLongOptions);
    for (const Option &option : allOptions(verb))
        m_parser.addOption(parserOption(option));
    m_parsed = m_parser.parse(QStringList{verb.name} + arguments);
}

bool VerbLine::wantsHelp() const
{
    return isSet(OptionName::help);
}

Result<> VerbLine::check() const
{
    for (const auto check : {&VerbLine::checkParsed, &VerbLine::checkOptions, &VerbLine::checkOperands}) {
        if (Result<> checked = (this->*check)(); !checked)
            return checked;
    }
    return m_verb.furtherCheck ? m_verb.furtherCheck(*this) : Result<>();
}

Result<> VerbLine::checkParsed() const
{
    if (m_parsed)
        return {};
    const QString unknown = m_parser.unknownOptionNames().value(0);
    if (unknown.isEmpty())
        return problem(withoutFullStop(m_parser.errorText()));
    QStringList known;
    for (const Option &option : allOptions(m_verb))
        known.append(option.name);
    const QString nearest = nearestWord(unknown, known);
    const QString text = QStringLiteral("Unknown option '%1'").arg(unknown);
    return problem(nearest.isEmpty() ? text : text + QStringLiteral(", the nearest is --%1").arg(nearest));
}

Result<> VerbLine::checkOptions() const
{
    for (const Option &option : m_verb.options) {
        if (Result<> checked = checkOption(option); !checked)
            return checked;
    }
    return {};
}

Result<> VerbLine::checkOption(const Option &option) const
{
    const QList<Option> group = groupOf(option, m_verb.options);
    const auto given = std::count_if(group.begin(), group.end(),
                                     [this](const Option &member) { return isSet(member.name); });
    if (given > 1)
        return problem(listed(longForms(group), QStringLiteral("and")) +
                       QStringLiteral(" exclude each other"));
    if (given == 0 && option.isRequired)
        return problem(listed(longForms(group), QStringLiteral("or")) + QStringLiteral(" is missing"));
    return isSet(option.name) && option.takesValue() ? checkValue(option) : Result<>();
}

Result<> VerbLine::checkValue(const Option &option) const
{
    const QStringList given = values(option.name);
    if (given.contains(QString()))
        return problem(QStringLiteral("%1 has an empty value").arg(option.longForm()));
    if (given.size() > 1 && !option.isRepeatable)
        return problem(QStringLiteral("%1 is given more than once").arg(option.longForm()));
    return option.value.kind == Value::Kind::Choice ? checkChoice(option, given) : Result<>();
}

Result<> VerbLine::checkOperands() const
{
    const QList<Operand> &expected = m_verb.operands;
    const QStringList given = operands();
    const int unexpected = static_cast<int>(expected.size());
    const bool takesMore = !expected.isEmpty() && expected.last().isRepeatable;
    if (given.size() > unexpected && !takesMore)
        return problem(QStringLiteral("unexpected argument \"%1\"").arg(given.at(unexpected)));
    for (int i = 0; i < expected.size(); ++i) {
        if (operand(i).isEmpty() && !expected.at(i).isOptional)
            return problem(QStringLiteral("%1 is missing").arg(expected.at(i).value.name));
    }
    return {};
}

bool VerbLine::isSet(QLatin1String option) const
{
    return m_parser.isSet(option);
}

QString VerbLine::value(QLatin1String option) const
{
    return m_parser.value(option);
}

QStringList VerbLine::values(QLatin1String option) const
{
    return m_parser.values(option);
}

QString VerbLine::path(QLatin1String option) const
{
    return isSet(option) ? absolutePath(value(option)) : QString();
}

QStringList VerbLine::operands() const
{
    return m_parser.positionalArguments();
}

QString VerbLine::operand(int index) const
{
    return operands().value(index);
}

QString VerbLine::operandPath(int index) const
{
    return absolutePath(operand(index));
}

const Product &VerbLine::product() const
{
    return *Product::find(&Product::word, value(OptionName::product));
}
