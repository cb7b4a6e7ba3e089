// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QCommandLineParser>
#include <QList>
#include <QString>
#include <QStringList>

struct Product;

class VerbLine;

/// A file that is no option.
struct Operand
{
    QString name;
    QString description;
};

/// What a verb takes, for reading a command line and for its help.
struct VerbSyntax
{
    QString name;
    QString synopsis;    ///< what follows "pct NAME" in the help's first line
    QString description; ///< paragraph of the help
    QList<QCommandLineOption> options;
    QStringList requiredOptions; ///< names of the options that must be given
    QList<Operand> operands;

    /// What is wrong with the line beyond all this, or empty; null when there is nothing to look at.
    QString (*furtherProblem)(const VerbLine &line) = nullptr;
};

/// The options that several verbs share.
namespace CommonOption {
QCommandLineOption product();
QCommandLineOption json();
QCommandLineOption quiet();
} // namespace CommonOption

/// One verb's part of the command line, read by its syntax. -h and --help are part of every syntax. A long
/// option may have a single dash.
class VerbLine
{
public:
    /// `arguments` are the words after the verb.
    VerbLine(const VerbSyntax &syntax, const QStringList &arguments);

    bool wantsHelp() const;
    QString helpText() const;

    /// What is wrong with the command line, or empty.
    QString problem() const;

    bool isSet(const QString &option) const;
    QString value(const QString &option) const;

    /// An option's file as an absolute path, or empty when the option is not given.
    QString path(const QString &option) const;
    /// An operand as an absolute path.
    QString operandPath(int index = 0) const;
    /// The product that --product names; only when there is no problem().
    const Product &product() const;

private:
    QString parseProblem() const;
    QString valueProblem() const;
    QString operandProblem() const;

    VerbSyntax m_syntax;
    QCommandLineParser m_parser;
    bool m_parsed = false;
};
