// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "cli/Verb.h"

#include <QCommandLineParser>
#include <QString>
#include <QStringList>

struct Product;

/// One verb's part of the command line, read by its description. A long option may have a single dash.
class VerbLine
{
public:
    /// `arguments` are the words after the verb, which must outlive the line.
    VerbLine(const Verb &verb, const QStringList &arguments);

    bool wantsHelp() const;

    /// That the command line is what the description says.
    Result<> check() const;

    bool isSet(QLatin1String option) const;
    QString value(QLatin1String option) const;
    QStringList values(QLatin1String option) const; ///< of a repeatable option

    /// An option's file as an absolute path, or empty when the option is not given.
    QString path(QLatin1String option) const;
    /// An operand as it was given; empty when it was left out.
    QString operand(int index) const;
    /// An operand as an absolute path.
    QString operandPath(int index = 0) const;
    /// All operands as they were given.
    QStringList operands() const;
    /// The product that --product names; only when check() holds.
    const Product &product() const;

private:
    Result<> checkParsed() const;
    Result<> checkOptions() const;
    Result<> checkOption(const Option &option) const;
    Result<> checkValue(const Option &option) const;
    Result<> checkOperands() const;

    const Verb &m_verb;
    QCommandLineParser m_parser;
    bool m_parsed = false;
};
