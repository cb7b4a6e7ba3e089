// SPDX-License-Identifier: Apache-2.0
#include "profile/CProfileGenerator.h"

#include "core/Command.h"
#include "core/Logging.h"
#include "core/SafeFile.h"
#include "profile/KeptFile.h"
#include "profile/SignedMessage.h"

#include <QFileInfo>
#include <QTemporaryDir>

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

CommandResult sign(const QString &identity, const QString &input, const QString &output,
                   const QStringList &options = {})
{
    const CommandResult result =
        runSecurity(QStringList{QStringLiteral("cms"), QStringLiteral("-S"), QStringLiteral("-N"), identity,
                                QStringLiteral("-i"), input, QStringLiteral("-o"), output} +
                    options);
    if (!result.succeeded())
        warn(QStringLiteral("Failed to sign profile: ") + saidOnError(result));
    return result;
}

/// A signature can be good and belong to something else, to nothing for example.
bool isSignedForm(const QString &path, const KeptFile &profile)
{
    const CommandResult decoded = SignedMessage::decoded(path, static_cast<int>(profile.bytes().size() + 1));
    return (decoded.succeeded() && decoded.standardOutput == profile.bytes()) ||
           warn(QStringLiteral("Profile signing failed: what was signed is not the profile."));
}

enum class InPlace {
    Signed,
    Refused, ///< the profile lies there unsigned, or the command was ended
    Lost     ///< something else lies there
};

/// The command may open its output before it reads its input, which is the same file.
InPlace signInPlace(const KeptFile &profile, const QString &path, const QString &identity)
{
    const CommandResult result = sign(identity, path, path);
    if (!result.succeeded()) {
        const bool ended = result.outcome != CommandResult::Outcome::Finished;
        return ended || profile.isAt(path) ? InPlace::Refused : InPlace::Lost;
    }
    if (CProfileGenerator::CheckProfileSign(path))
        return isSignedForm(path, profile) ? InPlace::Signed : InPlace::Lost;
    warn(QStringLiteral("Profile signing failed."));
    return InPlace::Lost;
}

/// Signs into another file, which takes the profile's place once it is known to be its signed form.
bool signAside(const KeptFile &profile, const QString &path, const QString &identity)
{
    const QTemporaryDir folder;
    const QString aside = folder.filePath(QFileInfo(path).fileName());
    if (!folder.isValid() || !sign(identity, QFileInfo(path).absoluteFilePath(), aside).succeeded() ||
        !isSignedForm(aside, profile))
        return false;
    const KeptFile signedForm(aside);
    if (!signedForm.isValid())
        return warn(QStringLiteral("Profile signing failed: %1 cannot be read").arg(aside));
    const Result<> written = SafeFile::replaceContents(path, signedForm.bytes());
    return written || warn(QStringLiteral("Profile signing failed: %1 cannot be written (%2)")
                               .arg(path, written.problem().text));
}

bool putBack(const KeptFile &profile, const QString &path)
{
    const Result<> put = profile.putAt(path);
    return put || warn(QStringLiteral("%1 cannot be put back (%2)").arg(path, put.problem().text));
}

/// The tool ends each identity line with the closing quote.
QStringList quotedNames(const QString &listing)
{
    QStringList names;
    const QStringList lines = listing.split(QLatin1Char('\n'));
    for (const QString &line : lines) {
        const auto quote = line.indexOf(QLatin1Char('"'));
        if (quote >= 0)
            names << line.mid(quote + 1, qMax(0, line.size() - quote - 2));
    }
    return names;
}

} // namespace

QStringList CProfileGenerator::GetSignIDs()
{
    const Result<QStringList> names = FindSignIDs().names;
    return names ? *names : QStringList();
}

SigningIdentities CProfileGenerator::FindSignIDs(const QString &policy)
{
    const CommandResult result =
        runSecurity({QStringLiteral("find-identity"), QStringLiteral("-v"), QStringLiteral("-p"), policy});
    const QStringList remarks = saidOnError(result).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    const QString failure = result.outputProblem();
    if (failure.isEmpty())
        return {quotedNames(QString::fromUtf8(result.standardOutput)), remarks};
    warn(QStringLiteral("Failed to retrieve sign IDs."));
    return {Problem{{}, failure}, remarks};
}

bool CProfileGenerator::SignProfile(const QString &path, const QString &identity)
{
    if (path.isEmpty() || identity.isEmpty())
        return warn(QStringLiteral("Invalid filepath or signID."));
    const KeptFile profile(path);
    if (!profile.isValid())
        return warn(QStringLiteral("Failed to sign profile: %1 cannot be read").arg(path));
    InPlace outcome = signInPlace(profile, path, identity);
    if (outcome == InPlace::Lost && putBack(profile, path) && signAside(profile, path, identity))
        outcome = InPlace::Signed;
    if (outcome != InPlace::Signed) {
        putBack(profile, path);
        return false;
    }
    qCDebug(logProfile, "Profile signed successfully.");
    return true;
}

bool CProfileGenerator::SignProfileInto(const QString &path, const QString &identity, const QString &output)
{
    const KeptFile profile(path);
    if (!profile.isValid())
        return warn(QStringLiteral("Failed to sign profile: %1 cannot be read").arg(path));
    const CommandResult result = sign(identity, QFileInfo(path).absoluteFilePath(), output,
                                      {QStringLiteral("-H"), QStringLiteral("SHA256")});
    return result.succeeded() && isSignedForm(output, profile);
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
