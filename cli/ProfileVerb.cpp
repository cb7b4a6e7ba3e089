// SPDX-License-Identifier: Apache-2.0
#include "cli/Console.h"
#include "cli/Json.h"
#include "cli/ProfileJob.h"
#include "cli/VerbLine.h"
#include "config/Product.h"

#include <QRegularExpression>

namespace {

/// How the making of a profile ended.
struct Outcome
{
    Result<> result;
    QList<FileWarning> warnings;
    ProfilePayloadInfo identity;
};

ProfileRequest requestOf(const VerbLine &line)
{
    ProfileRequest request;
    request.product = &line.product();
    request.config = line.path(OptionName::config);
    request.source = line.path(OptionName::from);
    request.installed = line.isSet(OptionName::installed);
    request.output = line.path(OptionName::output);
    request.signer = line.value(OptionName::sign);
    request.identifier = line.value(OptionName::identifier);
    request.uuid = line.value(OptionName::uuid);
    request.force = line.isSet(OptionName::force);
    return request;
}

Outcome outcomeOf(const ProfileRequest &request)
{
    ProfileJob job(request);
    const Result<> result = job.run();
    return {result, job.warnings(), job.identity()};
}

QJsonObject outcomeObject(const ProfileRequest &request, const Outcome &outcome)
{
    return {
        {QStringLiteral("succeeded"), bool(outcome.result)},
        {QStringLiteral("problem"), problemOrNull(outcome.result)},
        {QStringLiteral("product"), request.product->word},
        {QStringLiteral("config"), textOrNull(request.config)},
        {QStringLiteral("from"), textOrNull(request.source)},
        {QStringLiteral("installed"), request.installed},
        {QStringLiteral("output"), request.output},
        {QStringLiteral("signer"), textOrNull(request.signer)},
        {QStringLiteral("identity"),
         outcome.result ? QJsonValue(identityObject(outcome.identity)) : QJsonValue()},
        {QStringLiteral("warnings"), warningsArray(outcome.warnings)},
    };
}

bool matches(const QString &value, const QString &pattern)
{
    return QRegularExpression(QRegularExpression::anchoredPattern(pattern)).match(value).hasMatch();
}

Result<> checkIdentity(const VerbLine &line)
{
    const QString uuid = line.value(OptionName::uuid);
    const QString uuidForm = QStringLiteral("[0-9A-Fa-f]{8}(-[0-9A-Fa-f]{4}){3}-[0-9A-Fa-f]{12}");
    if (!uuid.isEmpty() && !matches(uuid, uuidForm))
        return Problem{{}, QStringLiteral("\"%1\" is no UUID; give one such as uuidgen prints").arg(uuid)};
    if (!matches(line.value(OptionName::identifier), QStringLiteral("[^\\s\\p{C}]*")))
        return Problem{{}, QStringLiteral("an identifier holds neither white space nor control characters")};
    return {};
}

QList<Option> sourceOptions()
{
    return alternatives({
        configOption(),
        withRemark(
            {OptionName::from, QStringLiteral("profile with the settings and the identity to keep"),
             Value::profile("PROFILE")},
            QStringLiteral(", signed or not. A profile of the other product or of another application is "
                           "refused")),
        withRemark(
            {OptionName::installed, QStringLiteral("take them from the profile installed on this machine")},
            QStringLiteral("; more about it below")),
    });
}

QList<Option> resultOptions()
{
    return {
        required(
            withRemark({OptionName::output, QStringLiteral("the profile to make"), Value::profile("FILE")},
                       QStringLiteral("; its usual extension is `.mobileconfig`"))),
        withRemark({OptionName::sign, QStringLiteral("sign it with this identity; see \"pct identities\""),
                    Value::identity()},
                   QStringLiteral(". The signature is made with SHA-256")),
        withRemark({OptionName::identifier,
                    QStringLiteral("identifier of the profile, which replaces an installed one of the same"),
                    Value::text("ID")},
                   QStringLiteral("; wins over that of a source")),
        withRemark({OptionName::uuid, QStringLiteral("UUID of the profile"), Value::text("UUID")},
                   QStringLiteral(" in its usual form with four hyphens; wins over that of a source")),
        {OptionName::force, QStringLiteral("replace an output that exists already")},
    };
}

QJsonObject profileRefusal(const VerbLine &line, const Problem &problem)
{
    return outcomeObject(requestOf(line), {problem, {}, {}});
}

int runProfile(const VerbLine &line, Console &console)
{
    console.setQuiet(line.isSet(OptionName::quiet));
    const ProfileRequest request = requestOf(line);
    Outcome outcome = outcomeOf(request);
    outcome.result = console.told(outcome.result);
    return console.writeOutcome(request.output, outcome.result, outcome.warnings,
                                line.isSet(OptionName::json), [&] { return outcomeObject(request, outcome); });
}

} // namespace

Verb profileVerb()
{
    Verb verb{QLatin1String("profile"), QLatin1String("make a configuration profile"), runProfile};
    verb.description =
        QStringLiteral("Makes a configuration profile, and signs it when an identity is given. The "
                       "output appears only when it is complete.");
    verb.options =
        QList<Option>{required(productOption(QStringLiteral("the product that the profile is for")))} +
        sourceOptions() + resultOptions() +
        QList<Option>{withRemark(jsonOption(), QStringLiteral(", also when it fails")), quietOption()};
    verb.furtherCheck = checkIdentity;
    verb.refusal = profileRefusal;
    return verb;
}
