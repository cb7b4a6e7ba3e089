// SPDX-License-Identifier: Apache-2.0
#include "cli/ProjectProgress.h"

#include "cli/Console.h"
#include "cli/Json.h"
#include "core/PrintableText.h"

#include <algorithm>
#include <cstdio>
#include <unistd.h>

namespace {

bool takesControlCodes(int descriptor)
{
    const QByteArray terminal = qgetenv("TERM");
    return ::isatty(descriptor) == 1 && !terminal.isEmpty() && terminal != "dumb" &&
           qEnvironmentVariableIsEmpty("NO_COLOR");
}

QString secondsText(double seconds)
{
    return QStringLiteral("%1 s").arg(seconds, 0, 'f', 1);
}

QString resultWord(const VariantOutcome &outcome)
{
    if (!outcome.result)
        return QStringLiteral("failed");
    return outcome.isMade ? QStringLiteral("made") : QStringLiteral("current");
}

QJsonObject outcomeObject(const VariantOutcome &outcome)
{
    return {{QStringLiteral("event"), QStringLiteral("variant")},
            {QStringLiteral("variant"), outcome.variant},
            {QStringLiteral("result"), resultWord(outcome)},
            {QStringLiteral("problem"), problemOrNull(outcome.result)},
            {QStringLiteral("seconds"), outcome.seconds},
            {QStringLiteral("files"), jsonOf(outcome.files)},
            {QStringLiteral("warnings"), warningsArray(outcome.warnings)}};
}

QString filesText(qint64 count)
{
    return count == 1 ? QStringLiteral("1 file") : QStringLiteral("%1 files").arg(count);
}

} // namespace

ProjectProgress::ProjectProgress(Console &console, bool asJson)
    : m_console(console)
    , m_asJson(asJson)
    , m_isLive(!asJson && takesControlCodes(STDERR_FILENO))
{
}

void ProjectProgress::began(const QString &variant, const QString &step)
{
    QElapsedTimer &timer = m_timers[variant];
    if (!timer.isValid())
        timer.start();
    const double seconds = static_cast<double>(timer.elapsed()) / 1000;
    if (m_asJson)
        m_console.writeJsonLine({{QStringLiteral("event"), QStringLiteral("step")},
                                 {QStringLiteral("variant"), variant},
                                 {QStringLiteral("step"), step},
                                 {QStringLiteral("seconds"), seconds}});
    if (!m_isLive)
        return;
    clearLine();
    std::fputs(QStringLiteral("%1: %2, %3").arg(variant, step, secondsText(seconds)).toUtf8().constData(),
               stderr);
    std::fflush(stderr);
}

void ProjectProgress::ended(const VariantOutcome &outcome)
{
    clearLine();
    if (m_asJson)
        m_console.writeJsonLine(outcomeObject(outcome));
    else if (outcome.isMade)
        m_console.confirm(
            QStringLiteral("%1: made %2 in %3")
                .arg(outcome.variant, filesText(outcome.files.size()), secondsText(outcome.seconds)));
    else if (outcome.result)
        m_console.confirm(QStringLiteral("%1: is as it should be").arg(outcome.variant));
    m_console.out().flush();
    if (outcome.result)
        m_console.warn(outcome.warnings);
    else
        m_console.error(
            {outcome.result.problem().file, QStringLiteral("%1 (variant \"%2\", which stays as it was)")
                                                .arg(outcome.result.problem().text, outcome.variant)});
}

void ProjectProgress::finish(const QList<VariantOutcome> &outcomes, const QStringList &stale)
{
    const auto count = [&](const char *word) {
        return static_cast<int>(
            std::count_if(outcomes.begin(), outcomes.end(), [&](const VariantOutcome &outcome) {
                return resultWord(outcome) == QLatin1String(word);
            }));
    };
    if (m_asJson)
        m_console.writeJsonLine({{QStringLiteral("event"), QStringLiteral("end")},
                                 {QStringLiteral("succeeded"), count("failed") == 0},
                                 {QStringLiteral("made"), count("made")},
                                 {QStringLiteral("current"), count("current")},
                                 {QStringLiteral("failed"), count("failed")},
                                 {QStringLiteral("stale"), QJsonArray::fromStringList(stale)}});
    for (const QString &path : stale)
        m_console.note(
            path, QStringLiteral("is no output of the project any more; remove it when nobody needs it"));
}

void ProjectProgress::clearLine()
{
    if (!m_isLive)
        return;
    std::fputs("\r\x1b[K", stderr);
    std::fflush(stderr);
}
