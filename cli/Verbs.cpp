// SPDX-License-Identifier: Apache-2.0
#include "cli/Verbs.h"

#include "cli/Console.h"
#include "cli/ExitCode.h"
#include "cli/HelpText.h"
#include "cli/Startup.h"
#include "cli/VerbLine.h"
#include "core/NearestWord.h"
#include "core/PrintableText.h"

#include <QCoreApplication>

namespace {

/// Of the verb that this word names below another one, or on the first level.
QString fullName(const QString &parent, const QString &word)
{
    return parent.isEmpty() ? word : parent + QLatin1Char(' ') + word;
}

int wrongUsage(const QString &subject, const QString &problem, const QString &help, Console &console)
{
    console.error({subject, QStringLiteral("%1; see \"%2\"").arg(printableText(problem), help)});
    return ExitCode::usage;
}

QString helpFor(const QString &name)
{
    return name.isEmpty() ? QStringLiteral("pct help") : QStringLiteral("pct help ") + name;
}

/// `parent` is the verb that it should be below, or empty.
int unknownVerb(const VerbTable &table, const QString &parent, const QString &word, Console &console)
{
    QStringList known;
    for (const Verb &verb : verbsBelow(table, parent))
        known.append(lastWord(verb));
    if (parent.isEmpty())
        known += QStringList{QStringLiteral("help"), QStringLiteral("--help"), QStringLiteral("--version")};
    const QString problem = QStringLiteral("there is no such verb") + nearestHint(word, known);
    return wrongUsage(fullName(parent, word), problem, helpFor(parent), console);
}

int print(const QString &text, Console &console)
{
    console.out() << text;
    return console.finish() ? ExitCode::done : ExitCode::refused;
}

int refuse(const Verb &verb, const VerbLine &line, const Problem &problem, Console &console)
{
    if (verb.refusal && line.isSet(OptionName::json))
        console.writeJson(verb.refusal(line, problem));
    console.error(problem);
    console.finish();
    return verb.trouble;
}

int runVerb(const Verb &verb, const QStringList &arguments, const VerbTable &table, Console &console)
{
    const VerbLine line(verb, arguments);
    if (line.wantsHelp())
        return print(verbHelp(table, verb), console);
    if (const Result<> usable = line.check(); !usable)
        return wrongUsage(verb.name, usable.problem().text, helpFor(verb.name), console);
    if (const Result<> enoughFiles = Startup::checkFileLimit(); !enoughFiles)
        return refuse(verb, line, enoughFiles.problem(), console);
    const int exitCode = verb.run(line, console);
    return console.finish() ? exitCode : verb.trouble;
}

int runHelp(const VerbTable &table, const QStringList &topic, Console &console)
{
    if (topic.isEmpty() || topic == QStringList(OptionName::help))
        return print(generalHelp(table), console);
    QString name;
    for (const QString &word : topic) {
        if (!name.isEmpty() && verbsBelow(table, name).empty())
            return wrongUsage(QStringLiteral("help"), QStringLiteral("it takes one verb"), helpFor({}),
                              console);
        const QString longer = fullName(name, word);
        if (!findVerb(table, longer))
            return unknownVerb(table, name, word, console);
        name = longer;
    }
    return print(verbHelp(table, *findVerb(table, name)), console);
}

/// With one dash or two, or by its first letter.
bool isOption(const QString &argument, const Option &option)
{
    return argument == QLatin1Char('-') + option.letter || argument == QLatin1Char('-') + option.name ||
           argument == option.longForm();
}

QString versionText()
{
    return QStringLiteral("pct %1\n").arg(QCoreApplication::applicationVersion());
}

/// A verb with others below it goes on with the next word.
int runFrom(const VerbTable &table, const QString &parent, const QStringList &words, Console &console)
{
    const QString word = words.value(0);
    if (word.isEmpty())
        return wrongUsage(parent.isEmpty() ? QStringLiteral("usage") : parent,
                          QStringLiteral("a verb is missing"), helpFor(parent), console);
    if (isOption(word, helpOption()))
        return print(parent.isEmpty() ? generalHelp(table) : verbHelp(table, *findVerb(table, parent)),
                     console);
    const Verb *verb = findVerb(table, fullName(parent, word));
    if (!verb)
        return unknownVerb(table, parent, word, console);
    return verb->run ? runVerb(*verb, words.mid(1), table, console)
                     : runFrom(table, verb->name, words.mid(1), console);
}

} // namespace

int runPct(const VerbTable &table, const QStringList &arguments, Console &console)
{
    const QString first = arguments.value(0);
    if (isOption(first, versionOption()))
        return print(versionText(), console);
    if (first == OptionName::help)
        return runHelp(table, arguments.mid(1), console);
    return runFrom(table, {}, arguments, console);
}
