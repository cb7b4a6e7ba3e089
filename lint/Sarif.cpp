// SPDX-License-Identifier: Apache-2.0
#include "lint/Sarif.h"

#include "core/Version.h"

#include <QDir>
#include <QJsonArray>
#include <QUrl>

namespace {

using namespace Lint;

QJsonObject message(const QString &text)
{
    return {{QStringLiteral("text"), text}};
}

QString levelOf(Severity severity)
{
    return wordOf(severity);
}

QJsonObject ruleObject(const Rule &rule)
{
    return {{QStringLiteral("id"), rule.code},
            {QStringLiteral("shortDescription"), message(rule.summary)},
            {QStringLiteral("help"), message(rule.advice)},
            {QStringLiteral("defaultConfiguration"),
             QJsonObject{{QStringLiteral("level"), levelOf(rule.severity)}}}};
}

QJsonObject driver()
{
    QJsonArray array;
    for (const Rule &rule : rules())
        array.append(ruleObject(rule));
    return {{QStringLiteral("name"), QStringLiteral("pct lint")},
            {QStringLiteral("version"), QString::fromLatin1(toolVersion)},
            {QStringLiteral("rules"), array}};
}

QString addressOf(const QString &file)
{
    const QString path = QDir::cleanPath(file);
    const bool isBelow =
        QDir::isRelativePath(path) && path != QLatin1String("..") && !path.startsWith(QLatin1String("../"));
    if (isBelow)
        return QString::fromLatin1(QUrl::toPercentEncoding(path, "/"));
    return QUrl::fromLocalFile(QDir::current().absoluteFilePath(path)).toString(QUrl::FullyEncoded);
}

/// A package has no lines.
QJsonObject placeObject(const FileFindings &file, const TextPlace &place)
{
    QJsonObject physical{
        {QStringLiteral("artifactLocation"), QJsonObject{{QStringLiteral("uri"), addressOf(file.file)}}}};
    if (place.isKnown() && file.member.isEmpty())
        physical.insert(QStringLiteral("region"), QJsonObject{{QStringLiteral("startLine"), place.line},
                                                              {QStringLiteral("startColumn"), place.column}});
    return {{QStringLiteral("physicalLocation"), physical}};
}

QString textOf(const FileFindings &file, const Remark &remark)
{
    if (file.member.isEmpty() || !remark.place.isKnown())
        return remark.text;
    return QStringLiteral("%1 (%2, %3)").arg(remark.text, file.member, remark.place.text());
}

QJsonObject resultObject(const FileFindings &file, const Finding &finding)
{
    const auto index = static_cast<int>(finding.rule - rules().data());
    return {{QStringLiteral("ruleId"), finding.rule->code},
            {QStringLiteral("ruleIndex"), index},
            {QStringLiteral("level"), levelOf(finding.rule->severity)},
            {QStringLiteral("message"), message(textOf(file, finding.remark))},
            {QStringLiteral("locations"), QJsonArray{placeObject(file, finding.remark.place)}}};
}

QJsonObject invocation(const QVector<Problem> &problems)
{
    QJsonArray notifications;
    for (const Problem &problem : problems)
        notifications.append(QJsonObject{{QStringLiteral("level"), QStringLiteral("error")},
                                         {QStringLiteral("message"), message(problem.line())}});
    return {{QStringLiteral("executionSuccessful"), problems.isEmpty()},
            {QStringLiteral("toolExecutionNotifications"), notifications}};
}

} // namespace

QJsonObject Lint::sarifLog(const QVector<FileFindings> &files, const QVector<Problem> &problems)
{
    QJsonArray results;
    for (const FileFindings &file : files) {
        for (const Finding &finding : file.findings)
            results.append(resultObject(file, finding));
    }
    const QJsonObject run{{QStringLiteral("tool"), QJsonObject{{QStringLiteral("driver"), driver()}}},
                          {QStringLiteral("columnKind"), QStringLiteral("unicodeCodePoints")},
                          {QStringLiteral("invocations"), QJsonArray{invocation(problems)}},
                          {QStringLiteral("results"), results}};
    return {
        {QStringLiteral("$schema"),
         QStringLiteral("https://docs.oasis-open.org/sarif/sarif/v2.1.0/os/schemas/sarif-schema-2.1.0.json")},
        {QStringLiteral("version"), QStringLiteral("2.1.0")},
        {QStringLiteral("runs"), QJsonArray{run}}};
}
