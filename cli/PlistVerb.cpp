// SPDX-License-Identifier: Apache-2.0
#include "cli/Console.h"
#include "cli/HostCommands.h"
#include "cli/IdentityChoice.h"
#include "cli/InputFile.h"
#include "cli/Json.h"
#include "cli/SettingsSource.h"
#include "cli/VerbLine.h"
#include "config/Product.h"
#include "core/OutputFile.h"
#include "core/PathRules.h"
#include "profile/ConfigGenerator.h"

namespace {

/// How the making of a property list ended.
struct Outcome
{
    Result<> result;
    QList<FileWarning> warnings;
};

SettingsForm formOf(const VerbLine &line)
{
    return settingsFormOf(line.value(OptionName::form));
}

Result<> checkLine(const VerbLine &line)
{
    const SettingsSource source = SettingsSource::of(line);
    const bool hasIdentity =
        line.isSet(OptionName::identifier) || line.isSet(OptionName::uuid) || line.isSet(OptionName::stable);
    if (hasIdentity && formOf(line) != SettingsForm::Payload)
        return Problem{{},
                       QStringLiteral("only --form %1 has UUIDs; leave out --identifier, --uuid and --stable")
                           .arg(wordOf(SettingsForm::Payload))};
    return IdentityChoice::of(line).check(source.installed || !source.profile.isEmpty());
}

Result<> checkPaths(const VerbLine &line, const SettingsSource &source)
{
    const QString output = line.path(OptionName::output);
    if (Result<> different = PathRules::allDiffer({{QStringLiteral("configuration"), source.config},
                                                   {QStringLiteral("source profile"), source.profile},
                                                   {QStringLiteral("output"), output}});
        !different)
        return different;
    const Result<> writable = checkWritable(output, line.isSet(OptionName::force));
    return writable ? haveCommands(source.commands()) : writable;
}

Result<QString> textOf(EditorXmlData &settings, const VerbLine &line)
{
    const QString output = line.path(OptionName::output);
    const IdentityChoice identity = IdentityChoice::of(line);
    if (const Result<> settled = identity.settle(settings.payloadInfo); !settled)
        return Problem{output, settled.problem().text};
    ProfileForm form;
    form.hasStableUuid = identity.isStable;
    const Result<QString> text =
        ConfigGenerator::generateSettings(settings, line.product(), form, formOf(line));
    if (text)
        return text;
    return Problem{output,
                   QStringLiteral("no property list can hold these settings (%1); give fewer, shorter "
                                  "or less nested ones")
                       .arg(text.problem().text)};
}

Result<> write(const QString &text, const VerbLine &line)
{
    const QString path = line.path(OptionName::output);
    OutputFile output(path, line.isSet(OptionName::force) ? OutputFile::Existing::Replace
                                                          : OutputFile::Existing::Keep);
    Result<> written = output.write(text.toUtf8());
    if (written)
        return written;
    const QString advice = output.isTaken() ? forceAdvice() : QStringLiteral("; use another place");
    return Problem{path, QStringLiteral("cannot be written (%1)%2").arg(written.problem().text, advice)};
}

Outcome make(const VerbLine &line)
{
    const SettingsSource source = SettingsSource::of(line);
    if (const Result<> usable = checkPaths(line, source); !usable)
        return {usable, {}};
    QList<FileWarning> warnings;
    // The identity of an installed profile is not written, so it need not be known.
    Result<EditorXmlData> settings = source.read(line.product(), true, warnings);
    if (!settings)
        return {settings.problem(), warnings};
    const Result<QString> text = textOf(*settings, line);
    return {text ? write(*text, line) : text.problem(), warnings};
}

QJsonObject outcomeObject(const VerbLine &line, const Outcome &outcome)
{
    const SettingsSource source = SettingsSource::of(line);
    return {{QStringLiteral("succeeded"), bool(outcome.result)},
            {QStringLiteral("problem"), problemOrNull(outcome.result)},
            {QStringLiteral("product"), line.product().word},
            {QStringLiteral("form"), line.value(OptionName::form)},
            {QStringLiteral("domain"), line.product().settingsType()},
            {QStringLiteral("config"), textOrNull(source.config)},
            {QStringLiteral("from"), textOrNull(source.profile)},
            {QStringLiteral("installed"), source.installed},
            {QStringLiteral("output"), line.path(OptionName::output)},
            {QStringLiteral("warnings"), warningsArray(outcome.warnings)}};
}

QJsonObject plistRefusal(const VerbLine &line, const Problem &problem)
{
    return outcomeObject(line, {problem, {}});
}

/// A service that takes settings without a payload asks for the domain beside them.
void noteDomain(const VerbLine &line, Console &console)
{
    if (formOf(line) != SettingsForm::Payload)
        console.note(line.path(OptionName::output),
                     QStringLiteral("is for the preference domain %1").arg(line.product().settingsType()));
}

int runPlist(const VerbLine &line, Console &console)
{
    console.setQuiet(line.isSet(OptionName::quiet));
    Outcome outcome = make(line);
    outcome.result = console.told(outcome.result);
    if (outcome.result)
        noteDomain(line, console);
    return console.writeOutcome(line.path(OptionName::output), outcome.result, outcome.warnings,
                                line.isSet(OptionName::json), [&] { return outcomeObject(line, outcome); });
}

QList<Option> resultOptions()
{
    return {
        required(withRemark({OptionName::form, QStringLiteral("the service whose form it takes"),
                             Value::choice(settingsFormWords())},
                            QStringLiteral(": a whole property list, its keys and values alone, or the "
                                           "dictionary of a payload"))),
        required({OptionName::output, QStringLiteral("the file to make"), Value::propertyList("FILE")}),
        {OptionName::force, QStringLiteral("replace an output that exists already")},
    };
}

} // namespace

Verb plistVerb()
{
    Verb verb{QLatin1String("plist"), QLatin1String("make what a service takes instead of a profile"),
              runPlist};
    verb.description = QStringLiteral(
        "Writes settings as a device management takes them without a profile, for a form of its own. The "
        "output appears only when it is complete.");
    verb.options =
        QList<Option>{required(productOption(QStringLiteral("the product that the settings are for")))} +
        SettingsSource::options() + resultOptions() + IdentityChoice::options() +
        QList<Option>{withRemark(jsonOption(), QStringLiteral(", also when it fails")), quietOption()};
    verb.furtherCheck = checkLine;
    verb.refusal = plistRefusal;
    return verb;
}
