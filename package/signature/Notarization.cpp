// SPDX-License-Identifier: Apache-2.0
#include "package/signature/Notarization.h"

#include "core/Command.h"
#include "core/HostPaths.h"
#include "core/OutputFile.h"
#include "core/SafeFile.h"
#include "package/signature/SignatureReport.h"

#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace {

const QString xcrun = QStringLiteral("/usr/bin/xcrun");

/// One package and the credentials for the service.
struct Submission
{
    QString package;
    QString keychainProfile;
};

Problem failed(const QString &package, const QString &why)
{
    return {package, QStringLiteral("cannot be notarized: ") + why};
}

CommandResult runNotaryTool(const QStringList &arguments, const Submission &submission)
{
    return Command::run(xcrun,
                        QStringList{QStringLiteral("notarytool")} + arguments +
                            QStringList{QStringLiteral("--keychain-profile"), submission.keychainProfile});
}

QJsonObject objectIn(const QByteArray &json)
{
    return QJsonDocument::fromJson(json).object();
}

/// What the service found, as far as a line can hold it.
QString findings(const QString &id, const Submission &submission)
{
    constexpr int told = 3;
    const CommandResult log = runNotaryTool({QStringLiteral("log"), id}, submission);
    QStringList messages;
    for (const QJsonValue &issue : objectIn(log.standardOutput).value(QLatin1String("issues")).toArray())
        messages.append(issue.toObject().value(QLatin1String("message")).toString());
    if (messages.isEmpty())
        return QStringLiteral("\"xcrun notarytool log %1\" may tell why").arg(id);
    return QStringList(messages.mid(0, told)).join(QStringLiteral("; "));
}

/// The command succeeds with every verdict, so only its answer tells which.
Result<> submit(const Submission &submission)
{
    const CommandResult result =
        runNotaryTool({QStringLiteral("submit"), submission.package, QStringLiteral("--wait"),
                       QStringLiteral("--output-format"), QStringLiteral("json")},
                      submission);
    if (!result.succeeded())
        return failed(submission.package, result.problem());
    const QJsonObject answer = objectIn(result.standardOutput);
    const QString verdict = answer.value(QLatin1String("status")).toString();
    if (verdict == QLatin1String("Accepted"))
        return {};
    if (verdict.isEmpty())
        return failed(submission.package, QStringLiteral("the notary service has given no verdict"));
    const QString id = answer.value(QLatin1String("id")).toString();
    return failed(submission.package, QStringLiteral("the verdict of the notary service is \"%1\" (%2)")
                                          .arg(verdict, findings(id, submission)));
}

Result<> requireSignature(const QString &package)
{
    const Result<SignatureReport> report = reportSignature(package, {});
    if (!report)
        return report.problem();
    if (!report->isSigned)
        return failed(package, QStringLiteral("it is not signed; sign it first with \"pct sign\""));
    if (!report->holds())
        return failed(package, QStringLiteral("its signature does not hold (%1); sign it again")
                                   .arg(report->breaks.join(QStringLiteral("; "))));
    return {};
}

Result<> staple(const QString &package, const QString &copy)
{
    const CommandResult result =
        Command::run(xcrun, {QStringLiteral("stapler"), QStringLiteral("staple"), copy});
    if (!result.succeeded())
        return failed(package, result.problem());
    const Result<SignatureReport> report = reportSignature(copy, {});
    if (!report || !report->holds() || !report->hasTicket)
        return failed(package, QStringLiteral("no ticket has been stapled to it; run it again"));
    return {};
}

} // namespace

bool canNotarize()
{
    return QFileInfo(HostPaths::command(xcrun)).isExecutable();
}

Result<> notarizePackage(const QString &package, const QString &keychainProfile, OutputFile *output)
{
    if (Result<> isSigned = requireSignature(package); !isSigned)
        return isSigned;
    if (Result<> accepted = submit({package, keychainProfile}); !accepted)
        return accepted;
    if (Result<> staged = output->stage(); !staged)
        return staged;
    if (Result<> copied = SafeFile::copyNew(package, output->stagedPath(), SafeFile::Lasting::No); !copied)
        return copied;
    if (Result<> stapled = staple(package, output->stagedPath()); !stapled)
        return stapled;
    return output->place();
}
