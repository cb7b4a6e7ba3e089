// SPDX-License-Identifier: Apache-2.0
#include "profile/CProfileGenerator.h"

#include "core/Command.h"
#include "profile/Logging.h"

namespace {

CommandResult runSecurity(const QStringList &arguments)
{
    return Command::run(QStringLiteral("/usr/bin/security"), arguments);
}

bool warn(const QString &text)
{
    qCWarning(logProfile).noquote() << text;
    return false;
}

QString saidOnError(const CommandResult &result)
{
    return QString::fromUtf8(result.standardError);
}

/// The tool ends each identity line with the closing quote.
QStringList quotedNames(const QString &listing)
{
    QStringList names;
    const QStringList lines = listing.split(QLatin1Char('\n'));
    for (const QString &line : lines) {
        const int quote = line.indexOf(QLatin1Char('"'));
        if (quote >= 0)
            names << line.mid(quote + 1, qMax(0, line.size() - quote - 2));
    }
    return names;
}

} // namespace

QStringList CProfileGenerator::GetSignIDs(QString *problem, QStringList *remarks)
{
    const CommandResult result = runSecurity({QStringLiteral("find-identity"), QStringLiteral("-v"),
                                              QStringLiteral("-p"), QStringLiteral("codesigning")});
    const QString failure = result.outputProblem();
    if (problem)
        *problem = failure;
    if (remarks)
        *remarks = saidOnError(result).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    if (failure.isEmpty())
        return quotedNames(QString::fromUtf8(result.standardOutput));
    warn(QStringLiteral("Failed to retrieve sign IDs."));
    return {};
}

bool CProfileGenerator::SignProfile(const QString &path, const QString &identity)
{
    if (path.isEmpty() || identity.isEmpty())
        return warn(QStringLiteral("Invalid filepath or signID."));
    const CommandResult result =
        runSecurity({QStringLiteral("cms"), QStringLiteral("-S"), QStringLiteral("-N"), identity,
                     QStringLiteral("-i"), path, QStringLiteral("-o"), path});
    if (!result.succeeded())
        return warn(QStringLiteral("Failed to sign profile: ") + saidOnError(result));
    if (!CheckProfileSign(path))
        return warn(QStringLiteral("Profile signing failed."));
    qCDebug(logProfile, "Profile signed successfully.");
    return true;
}

bool CProfileGenerator::CheckProfileSign(const QString &path)
{
    if (path.isEmpty())
        return warn(QStringLiteral("Invalid filepath."));
    const CommandResult result =
        runSecurity({QStringLiteral("cms"), QStringLiteral("-D"), QStringLiteral("-i"), path});
    return result.succeeded() ||
           warn(QStringLiteral("Profile is not signed or invalid: ") + saidOnError(result));
}
