// SPDX-License-Identifier: Apache-2.0
#include "cli/VerbLine.h"

#include "cli/NearestWord.h"
#include "cli/Product.h"

#include <QDir>

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

QCommandLineOption helpOption()
{
    return {{QStringLiteral("h"), QStringLiteral("help")}, QStringLiteral("Show this help and exit.")};
}

QStringList longNames(const QList<QCommandLineOption> &options)
{
    QStringList names{QStringLiteral("help")};
    for (const QCommandLineOption &option : options)
        names.append(option.names().last());
    return names;
}

} // namespace

QCommandLineOption CommonOption::product()
{
    return {QStringLiteral("product"), QStringLiteral("The product: editor or reader."),
            QStringLiteral("editor|reader")};
}

QCommandLineOption CommonOption::json()
{
    return {QStringLiteral("json"), QStringLiteral("Write the result to standard output as JSON.")};
}

QCommandLineOption CommonOption::quiet()
{
    return {{QStringLiteral("q"), QStringLiteral("quiet")},
            QStringLiteral("No warnings and no confirmation.")};
}

VerbLine::VerbLine(const VerbSyntax &syntax, const QStringList &arguments)
    : m_syntax(syntax)
{
    m_parser.setApplicationDescription(syntax.description);
    m_parser.setSingleDashWordOptionMode(QCommandLineParser::ParseAsLongOptions);
    m_parser.addOptions(syntax.options);
    m_parser.addOption(helpOption());
    for (const Operand &operand : syntax.operands)
        m_parser.addPositionalArgument(operand.name, operand.description);
    m_parsed = m_parser.parse(QStringList{syntax.name} + arguments);
}

bool VerbLine::wantsHelp() const
{
    return m_parser.isSet(QStringLiteral("help"));
}

QString VerbLine::helpText() const
{
    // The parser's own first line names the executable's path instead of the verb.
    const QString generated = m_parser.helpText();
    return QStringLiteral("Usage: pct %1 %2").arg(m_syntax.name, m_syntax.synopsis) +
           generated.mid(generated.indexOf(QLatin1Char('\n')));
}

QString VerbLine::problem() const
{
    QString problem = parseProblem();
    if (problem.isEmpty())
        problem = valueProblem();
    if (problem.isEmpty())
        problem = operandProblem();
    if (problem.isEmpty() && m_syntax.furtherProblem)
        problem = m_syntax.furtherProblem(*this);
    return problem;
}

QString VerbLine::parseProblem() const
{
    if (m_parsed)
        return {};
    const QString unknown = m_parser.unknownOptionNames().value(0);
    if (unknown.isEmpty())
        return withoutFullStop(m_parser.errorText());
    const QString nearest = nearestWord(unknown, longNames(m_syntax.options));
    const QString problem = QStringLiteral("Unknown option '%1'").arg(unknown);
    return nearest.isEmpty() ? problem : problem + QStringLiteral(", the nearest is --%1").arg(nearest);
}

QString VerbLine::valueProblem() const
{
    for (const QString &option : m_syntax.requiredOptions) {
        if (!isSet(option))
            return QStringLiteral("--%1 is missing").arg(option);
    }
    for (const QCommandLineOption &option : m_syntax.options) {
        const QString name = option.names().last();
        if (isSet(name) && !option.valueName().isEmpty() && value(name).isEmpty())
            return QStringLiteral("--%1 has an empty value").arg(name);
    }
    const QString product = QStringLiteral("product");
    if (m_syntax.requiredOptions.contains(product) && !findProduct(&Product::word, value(product)))
        return QStringLiteral("the product is editor or reader, not \"%1\"").arg(value(product));
    return {};
}

QString VerbLine::operandProblem() const
{
    const QStringList given = m_parser.positionalArguments();
    const int expected = m_syntax.operands.size();
    if (given.size() > expected)
        return QStringLiteral("unexpected argument \"%1\"").arg(given.at(expected));
    for (int i = 0; i < expected; ++i) {
        if (given.value(i).isEmpty())
            return QStringLiteral("%1 is missing").arg(m_syntax.operands.at(i).name);
    }
    return {};
}

bool VerbLine::isSet(const QString &option) const
{
    return m_parser.isSet(option);
}

QString VerbLine::value(const QString &option) const
{
    return m_parser.value(option);
}

QString VerbLine::path(const QString &option) const
{
    return isSet(option) ? absolutePath(value(option)) : QString();
}

QString VerbLine::operandPath(int index) const
{
    return absolutePath(m_parser.positionalArguments().at(index));
}

const Product &VerbLine::product() const
{
    return *findProduct(&Product::word, value(QStringLiteral("product")));
}
