// SPDX-License-Identifier: Apache-2.0
#include "cli/Console.h"
#include "cli/InputFile.h"
#include "cli/Json.h"
#include "cli/SettingChanges.h"
#include "cli/SettingsFile.h"
#include "cli/VerbLine.h"
#include "config/ConfigDocument.h"
#include "config/Product.h"
#include "config/ProductSettings.h"
#include "core/OutputFile.h"
#include "core/PathRules.h"

#include <QDomDocument>

namespace {

/// How the making of a document ended.
struct Outcome
{
    Result<> result;
    QList<FileWarning> warnings;
};

SettingChanges changesOf(const VerbLine &line)
{
    SettingChanges changes;
    changes.values = line.values(OptionName::set);
    takeRibbonOptions(changes, line);
    return changes;
}

Result<> checkNewLine(const VerbLine &line)
{
    return changesOf(line).check();
}

Result<> checkPaths(const VerbLine &line)
{
    const QString output = line.path(OptionName::output);
    Result<> different =
        PathRules::allDiffer({{QStringLiteral("configuration"), line.path(OptionName::config)},
                              {QStringLiteral("output"), output}});
    return different ? checkWritable(output, line.isSet(OptionName::force)) : different;
}

Result<SettingsFile> baseOf(const VerbLine &line)
{
    if (line.isSet(OptionName::config))
        return readDocument(line.product(), line.path(OptionName::config));
    return SettingsFile();
}

Result<> writeDocument(const EditorXmlData &settings, const VerbLine &line)
{
    const Product &product = line.product();
    const QString path = line.path(OptionName::output);
    const Result<QByteArray> bytes =
        ConfigDocument::toXml(ConfigDocument::fromSettings(settings, product, QString()));
    if (!bytes)
        return Problem{path, bytes.problem().text};
    OutputFile output(path, line.isSet(OptionName::force) ? OutputFile::Existing::Replace
                                                          : OutputFile::Existing::Keep);
    Result<> written = output.write(*bytes);
    if (written)
        return written;
    const QString advice = output.isTaken() ? forceAdvice() : QStringLiteral("; use another place");
    return Problem{path, QStringLiteral("cannot be written (%1)%2").arg(written.problem().text, advice)};
}

Outcome make(const VerbLine &line)
{
    if (const Result<> usable = checkPaths(line); !usable)
        return {usable, {}};
    Result<SettingsFile> base = baseOf(line);
    if (!base)
        return {base.problem(), {}};
    const Product &product = line.product();
    const auto changed = changesOf(line).applyTo(base->settings, product);
    if (!changed)
        return {Problem{QStringLiteral("config new"), changed.problem().text}, base->warnings};
    return {writeDocument(settingsForProduct(base->settings, product), line), base->warnings};
}

QJsonObject outcomeObject(const VerbLine &line, const Outcome &outcome)
{
    return {{QStringLiteral("succeeded"), bool(outcome.result)},
            {QStringLiteral("problem"), problemOrNull(outcome.result)},
            {QStringLiteral("product"), line.product().word},
            {QStringLiteral("config"), textOrNull(line.path(OptionName::config))},
            {QStringLiteral("output"), line.path(OptionName::output)},
            {QStringLiteral("warnings"), warningsArray(outcome.warnings)}};
}

QJsonObject newRefusal(const VerbLine &line, const Problem &problem)
{
    return outcomeObject(line, {problem, {}});
}

int runNew(const VerbLine &line, Console &console)
{
    console.setQuiet(line.isSet(OptionName::quiet));
    Outcome outcome = make(line);
    outcome.result = console.told(outcome.result);
    return console.writeOutcome(line.path(OptionName::output), outcome.result, outcome.warnings,
                                line.isSet(OptionName::json), [&] { return outcomeObject(line, outcome); });
}

} // namespace

Verb configVerb()
{
    Verb verb{QLatin1String("config"), QLatin1String("make, change and explain configuration documents")};
    verb.description = QStringLiteral("Makes and changes configuration documents, and says what settings and "
                                      "ribbon commands there are.");
    return verb;
}

Verb configNewVerb()
{
    Verb verb{QLatin1String("config new"), QLatin1String("make a configuration document"), runNew};
    verb.description =
        QStringLiteral("Makes a configuration document: the defaults of a product, or the settings "
                       "of another document, with the changes that are given.");
    verb.options =
        QList<Option>{
            required(productOption(QStringLiteral("the product that the document is for"))),
            repeatable(withRemark({OptionName::set,
                                   QStringLiteral("a setting and its value, as in "
                                                  "nAuthLibrary=ADAL"),
                                   Value::text("NAME=VALUE")},
                                  QStringLiteral("; see `pct config names`"))),
        } +
        ribbonOptions(QStringLiteral("hide this from the ribbon, with all that is in it"),
                      QStringLiteral("hide this from the quick-access bar")) +
        QList<Option>{
            configOption(),
            required({OptionName::output, QStringLiteral("the document to make"), Value::document("DOC")}),
            {OptionName::force, QStringLiteral("replace an output that exists already")},
            withRemark(jsonOption(), QStringLiteral(", also when it fails")),
            quietOption(),
        };
    verb.furtherCheck = checkNewLine;
    verb.refusal = newRefusal;
    return verb;
}
