// SPDX-License-Identifier: Apache-2.0
#include "cli/Verbs.h"

#include "cli/Console.h"
#include "cli/ExitCode.h"
#include "cli/NearestWord.h"
#include "cli/Startup.h"
#include "cli/Verb.h"
#include "core/PrintableText.h"

#include <QCoreApplication>
#include <QVector>

#include <algorithm>

namespace {

const QVector<Verb> &verbs()
{
    static const QVector<Verb> all{checkVerb(), buildVerb(), profileVerb(),
                                   showVerb(),  diffVerb(),  identitiesVerb()};
    return all;
}

const Verb *findVerb(const QString &name)
{
    const auto found =
        std::find_if(verbs().begin(), verbs().end(), [&](const Verb &verb) { return verb.name == name; });
    return found == verbs().end() ? nullptr : &*found;
}

QString generalHelp()
{
    QString text = QStringLiteral("Usage: pct VERB [options]\n"
                                  "Prepares deployments of the Pelix PDF Editor and the Pelix PDF Reader.\n\n"
                                  "Verbs:\n");
    for (const Verb &verb : verbs())
        text += QStringLiteral("  %1%2\n").arg(QString(verb.name), -12).arg(QString(verb.summary));
    return text + QStringLiteral("\nOptions:\n"
                                 "  -h, --help     Show this help and exit.\n"
                                 "  -v, --version  Show the version and exit.\n\n"
                                 "\"pct help VERB\" says more about a verb.\n");
}

int wrongUsage(const QString &subject, const QString &problem, const QString &help, Console &console)
{
    console.error({subject, QStringLiteral("%1; see \"%2\"").arg(printableText(problem), help)});
    return ExitCode::usage;
}

QString nearestVerb(const QString &name)
{
    QStringList known{QStringLiteral("help"), QStringLiteral("--help"), QStringLiteral("--version")};
    for (const Verb &verb : verbs())
        known.append(verb.name);
    return nearestWord(name, known);
}

int unknownVerb(const QString &name, Console &console)
{
    const QString nearest = nearestVerb(name);
    QString problem = QStringLiteral("there is no such verb");
    if (!nearest.isEmpty())
        problem += QStringLiteral(", the nearest is \"%1\"").arg(nearest);
    return wrongUsage(name, problem, QStringLiteral("pct help"), console);
}

int print(const QString &text, Console &console)
{
    console.out() << text;
    return console.finish() ? ExitCode::done : ExitCode::refused;
}

int runVerb(const Verb &verb, const QStringList &arguments, Console &console)
{
    const VerbLine line(verb.syntax(), arguments);
    if (line.wantsHelp())
        return print(line.helpText(), console);
    const QString problem = line.problem();
    if (!problem.isEmpty())
        return wrongUsage(verb.name, problem, QStringLiteral("pct help %1").arg(verb.name), console);
    if (const Verdict tooFewFiles = Startup::fileLimitProblem()) {
        console.error(*tooFewFiles);
        return verb.trouble;
    }
    const int exitCode = verb.run(line, console);
    return console.finish() ? exitCode : verb.trouble;
}

int runHelp(const QStringList &topics, Console &console)
{
    if (topics.isEmpty())
        return print(generalHelp(), console);
    if (topics.size() > 1)
        return wrongUsage(QStringLiteral("help"), QStringLiteral("it takes one verb"),
                          QStringLiteral("pct help"), console);
    const Verb *verb = findVerb(topics.first());
    return verb ? print(VerbLine(verb->syntax(), {}).helpText(), console)
                : unknownVerb(topics.first(), console);
}

/// With one dash or two, or by its first letter.
bool isOption(const QString &argument, QLatin1String name)
{
    const QString letter = QString(name).left(1);
    return argument == QLatin1Char('-') + letter || argument == QLatin1Char('-') + name ||
           argument == QLatin1String("--") + name;
}

QString versionText()
{
    return QStringLiteral("pct %1\n").arg(QCoreApplication::applicationVersion());
}

} // namespace

int runPct(const QStringList &arguments, QTextStream &out, QTextStream &err)
{
    Console console(out, err);
    const QString first = arguments.value(0);
    if (first.isEmpty())
        return wrongUsage(QStringLiteral("usage"), QStringLiteral("a verb is missing"),
                          QStringLiteral("pct help"), console);
    if (isOption(first, QLatin1String("help")))
        return print(generalHelp(), console);
    if (isOption(first, QLatin1String("version")))
        return print(versionText(), console);
    if (first == QLatin1String("help"))
        return runHelp(arguments.mid(1), console);
    const Verb *verb = findVerb(first);
    return verb ? runVerb(*verb, arguments.mid(1), console) : unknownVerb(first, console);
}
