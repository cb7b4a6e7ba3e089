// SPDX-License-Identifier: Apache-2.0
#include "cli/Console.h"
#include "cli/Json.h"
#include "cli/ProfileJob.h"
#include "cli/VerbLine.h"
#include "config/Product.h"
#include "config/XmlText.h"
#include "profile/ManagementService.h"

namespace {

/// How the making of a profile ended.
struct Outcome
{
    Result<> result;
    QList<FileWarning> warnings;
    ProfilePayloadInfo identity;
};

const ManagementService *serviceOf(const VerbLine &line)
{
    return ManagementService::find(line.value(OptionName::forUse));
}

ProfileForm formOf(const VerbLine &line)
{
    const ManagementService *service = serviceOf(line);
    ProfileForm form;
    form.style = styleFor(line.value(OptionName::style), serviceOf(line));
    form.scope = ProfileForm::scopeOf(line.value(OptionName::scope));
    form.displayName = line.value(OptionName::displayName);
    form.organization = line.value(OptionName::organization);
    form.description = line.value(OptionName::description);
    form.isRemovalDisallowed = line.isSet(OptionName::removalDisallowed);
    form.hasPayloadVersion = service && service->traits.testFlag(ManagementService::NeedsPayloadVersion);
    return form;
}

ProfileRequest requestOf(const VerbLine &line)
{
    ProfileRequest request;
    request.product = &line.product();
    request.source = SettingsSource::of(line);
    request.output = line.path(OptionName::output);
    request.signer = line.value(OptionName::sign);
    request.identity = IdentityChoice::of(line);
    request.form = formOf(line);
    request.service = serviceOf(line);
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
        {QStringLiteral("config"), textOrNull(request.source.config)},
        {QStringLiteral("from"), textOrNull(request.source.profile)},
        {QStringLiteral("installed"), request.source.installed},
        {QStringLiteral("style"), ProfileForm::wordOf(request.form.style)},
        {QStringLiteral("for"), textOrNull(request.service ? QString(request.service->word) : QString())},
        {QStringLiteral("output"), request.output},
        {QStringLiteral("signer"), textOrNull(request.signer)},
        {QStringLiteral("identity"),
         outcome.result ? QJsonValue(identityObject(outcome.identity)) : QJsonValue()},
        {QStringLiteral("warnings"), warningsArray(outcome.warnings)},
    };
}

Result<> checkLine(const VerbLine &line)
{
    for (const QLatin1String option :
         {OptionName::displayName, OptionName::organization, OptionName::description}) {
        if (!isXmlText(line.value(option)))
            return Problem{{}, QStringLiteral("--%1 holds characters that no profile can hold").arg(option)};
    }
    const SettingsSource source = SettingsSource::of(line);
    return IdentityChoice::of(line).check(source.installed || !source.profile.isEmpty());
}

/// So many words would make a line of the synopsis too long.
Option serviceOption()
{
    const QStringList words = ManagementService::words();
    Value service = Value::choice(words);
    service.name = QStringLiteral("SERVICE");
    const QString meaning = QStringLiteral("the device management that the profile is for: %1 or %2");
    return {OptionName::forUse,
            meaning.arg(words.mid(0, words.size() - 1).join(QStringLiteral(", ")), words.last()), service};
}

QList<Option> formOptions()
{
    return {
        withRemark(serviceOption(), QStringLiteral("; more about it below")),
        withRemark({OptionName::style,
                    QStringLiteral("a payload of the product's own type, or preferences that are forced"),
                    Value::choice(ProfileForm::styleWords())},
                   QStringLiteral("; without it what `--for` needs, or else the payload")),
        {OptionName::scope, QStringLiteral("install it for the device or for a user"),
         Value::choice({QStringLiteral("system"), QStringLiteral("user")})},
        {OptionName::displayName, QStringLiteral("name of the profile for people"), Value::text("NAME")},
        {OptionName::organization, QStringLiteral("who has made the profile"), Value::text("NAME")},
        {OptionName::description, QStringLiteral("what the profile is for"), Value::text("TEXT")},
        {OptionName::removalDisallowed, QStringLiteral("keep users from removing the profile")},
    };
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
        {OptionName::force, QStringLiteral("replace an output that exists already")},
    };
}

QJsonObject profileRefusal(const VerbLine &line, const Problem &problem)
{
    return outcomeObject(requestOf(line), {problem, {}, {}});
}

void noteSigning(const ProfileRequest &request, Console &console)
{
    if (request.service && request.signer.isEmpty())
        console.note(request.output, request.service->signingAdvice());
}

int runProfile(const VerbLine &line, Console &console)
{
    console.setQuiet(line.isSet(OptionName::quiet));
    const ProfileRequest request = requestOf(line);
    Outcome outcome = outcomeOf(request);
    outcome.result = console.told(outcome.result);
    if (outcome.result)
        noteSigning(request, console);
    return console.writeOutcome(request.output, outcome.result, outcome.warnings,
                                line.isSet(OptionName::json),
                                [&] { return outcomeObject(request, outcome); });
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
        SettingsSource::options() + resultOptions() + IdentityChoice::options() + formOptions() +
        QList<Option>{withRemark(jsonOption(), QStringLiteral(", also when it fails")), quietOption()};
    verb.furtherCheck = checkLine;
    verb.refusal = profileRefusal;
    return verb;
}
