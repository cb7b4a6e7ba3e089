// SPDX-License-Identifier: Apache-2.0
#include "cli/Console.h"
#include "cli/ExitCode.h"
#include "cli/Json.h"
#include "cli/Product.h"
#include "cli/ProfileJob.h"
#include "cli/Verb.h"

#include <QRegularExpression>

namespace {

/// How the making of a profile ended.
struct Outcome
{
    Verdict problem;
    QList<FileWarning> warnings;
    ProfilePayloadInfo identity;
};

ProfileRequest requestOf(const VerbLine &line)
{
    ProfileRequest request;
    request.product = &line.product();
    request.config = line.path(QStringLiteral("config"));
    request.source = line.path(QStringLiteral("from"));
    request.installed = line.isSet(QStringLiteral("installed"));
    request.output = line.path(QStringLiteral("output"));
    request.signer = line.value(QStringLiteral("sign"));
    request.identifier = line.value(QStringLiteral("identifier"));
    request.uuid = line.value(QStringLiteral("uuid"));
    request.force = line.isSet(QStringLiteral("force"));
    return request;
}

Outcome outcomeOf(const ProfileRequest &request)
{
    ProfileJob job(request);
    const Verdict problem = job.run();
    return {problem, job.warnings(), job.identity()};
}

QJsonObject outcomeObject(const ProfileRequest &request, const Outcome &outcome)
{
    return {
        {QStringLiteral("succeeded"), !outcome.problem},
        {QStringLiteral("problem"), outcome.problem ? problemObject(*outcome.problem) : QJsonValue()},
        {QStringLiteral("product"), request.product->word},
        {QStringLiteral("config"), textOrNull(request.config)},
        {QStringLiteral("from"), textOrNull(request.source)},
        {QStringLiteral("installed"), request.installed},
        {QStringLiteral("output"), request.output},
        {QStringLiteral("signer"), textOrNull(request.signer)},
        {QStringLiteral("identity"), outcome.problem ? QJsonValue() : identityObject(outcome.identity)},
        {QStringLiteral("warnings"), warningsArray(outcome.warnings)},
    };
}

void writeOutcome(const ProfileRequest &request, const Outcome &outcome, bool asJson, Console &console)
{
    if (!outcome.problem)
        console.setMade(request.output);
    if (asJson)
        console.writeJson(outcomeObject(request, outcome));
    else if (!outcome.problem)
        console.confirm(request.output);
    console.warn(outcome.warnings);
    if (outcome.problem)
        console.error(*outcome.problem);
}

int sourceCount(const VerbLine &line)
{
    int count = 0;
    for (const auto *option : {"config", "from", "installed"})
        count += line.isSet(QString::fromLatin1(option)) ? 1 : 0;
    return count;
}

bool matches(const QString &value, const QString &pattern)
{
    return QRegularExpression(QRegularExpression::anchoredPattern(pattern)).match(value).hasMatch();
}

QString profileLineProblem(const VerbLine &line)
{
    const QString uuid = line.value(QStringLiteral("uuid"));
    const QString uuidForm = QStringLiteral("[0-9A-Fa-f]{8}(-[0-9A-Fa-f]{4}){3}-[0-9A-Fa-f]{12}");
    if (sourceCount(line) > 1)
        return QStringLiteral("--config, --from and --installed exclude each other");
    if (!uuid.isEmpty() && !matches(uuid, uuidForm))
        return QStringLiteral("\"%1\" is no UUID; give one such as uuidgen prints").arg(uuid);
    if (!matches(line.value(QStringLiteral("identifier")), QStringLiteral("[^\\s\\p{C}]*")))
        return QStringLiteral("an identifier holds neither white space nor control characters");
    return {};
}

QList<QCommandLineOption> sourceOptions()
{
    return {
        {QStringLiteral("config"),
         QStringLiteral("Configuration document with the settings; without any source the defaults."),
         QStringLiteral("DOC")},
        {QStringLiteral("from"), QStringLiteral("Profile with the settings and the identity to keep."),
         QStringLiteral("PROFILE")},
        {QStringLiteral("installed"),
         QStringLiteral("Take them from the profile installed on this machine.")},
    };
}

QList<QCommandLineOption> resultOptions()
{
    return {
        {QStringLiteral("output"), QStringLiteral("The profile to make."), QStringLiteral("FILE")},
        {QStringLiteral("sign"), QStringLiteral("Sign it with this identity; see \"pct identities\"."),
         QStringLiteral("IDENTITY")},
        {QStringLiteral("identifier"),
         QStringLiteral("Identifier of the profile; a profile replaces an installed one of the same."),
         QStringLiteral("ID")},
        {QStringLiteral("uuid"), QStringLiteral("UUID of the profile."), QStringLiteral("UUID")},
        {QStringLiteral("force"), QStringLiteral("Replace an existing output.")},
    };
}

VerbSyntax profileSyntax()
{
    VerbSyntax syntax;
    syntax.name = QStringLiteral("profile");
    syntax.synopsis = QStringLiteral("--product editor|reader [--config DOC | --from PROFILE | --installed] "
                                     "--output FILE [--sign IDENTITY] [--identifier ID] [--uuid UUID] "
                                     "[--force] [--json] [-q]");
    syntax.description = QStringLiteral("Makes a configuration profile. The output appears only when it is "
                                        "complete, and signed when that was asked for.");
    syntax.options = QList<QCommandLineOption>{CommonOption::product()} + sourceOptions() + resultOptions() +
                     QList<QCommandLineOption>{CommonOption::json(), CommonOption::quiet()};
    syntax.requiredOptions = QStringList{QStringLiteral("product"), QStringLiteral("output")};
    syntax.furtherProblem = profileLineProblem;
    return syntax;
}

int runProfile(const VerbLine &line, Console &console)
{
    console.setQuiet(line.isSet(QStringLiteral("quiet")));
    const ProfileRequest request = requestOf(line);
    const Outcome outcome = outcomeOf(request);
    writeOutcome(request, outcome, line.isSet(QStringLiteral("json")), console);
    return outcome.problem ? ExitCode::refused : ExitCode::done;
}

} // namespace

Verb profileVerb()
{
    return {QLatin1String("profile"), QLatin1String("make a configuration profile"), profileSyntax,
            runProfile};
}
