// SPDX-License-Identifier: Apache-2.0
#include "cli/Console.h"
#include "cli/ExitCode.h"
#include "cli/InputFile.h"
#include "cli/Json.h"
#include "cli/SettingChanges.h"
#include "cli/SettingsFile.h"
#include "cli/SettingsJson.h"
#include "cli/SettingValue.h"
#include "cli/VerbLine.h"
#include "config/ConfigDocument.h"
#include "config/DocumentEdit.h"
#include "config/Product.h"
#include "config/SettingText.h"
#include "core/OutputFile.h"
#include "core/PathRules.h"
#include "core/PrintableText.h"
#include "core/SafeFile.h"

#include <QDomDocument>

namespace {

/// A document as it stands and what it says. One in JSON has no tree.
struct Document
{
    QDomDocument tree;
    QByteArray json;
    SettingsFile file;
};

/// How a change ended.
struct Outcome
{
    Result<> result;
    Document document;
};

Result<Document> withJson(const QString &path, Document document)
{
    const Result<QByteArray> bytes = SafeFile::readContents(path);
    if (!bytes)
        return bytes.problem();
    document.json = *bytes;
    return document;
}

Result<Document> readTree(const QString &path)
{
    if (const Result<> usable = PathRules::writable(path); !usable)
        return usable.problem();
    const Result<SettingsFile> file = readDocumentFile(path);
    if (!file)
        return file.problem();
    Document document{{}, {}, *file};
    if (kindOfFile(path) == FileKind::Json)
        return withJson(path, document);
    const Result<QDomDocument> tree = ConfigDocument::load(path);
    if (!tree)
        return Problem{path, tree.problem().text};
    document.tree = *tree;
    return document;
}

/// The declaration is written anew, because the encoding can be another one.
void dropDeclaration(QDomDocument &tree)
{
    const QDomNode first = tree.firstChild();
    if (first.isProcessingInstruction() && first.nodeName() == QLatin1String("xml"))
        tree.removeChild(first);
}

Result<QByteArray> xmlOf(QDomDocument &tree)
{
    dropDeclaration(tree);
    return ConfigDocument::toXml(tree);
}

/// The settings that were named, and those that changed with them.
std::vector<const Setting *> changedSettings(const DocumentChange &change)
{
    std::vector<const Setting *> changed = change.named;
    for (const Setting &setting : settings()) {
        if (!sameValue(setting, change.before, change.after))
            changed.push_back(&setting);
    }
    return changed;
}

Result<QByteArray> changedBytes(Document &document, const DocumentChange &wanted)
{
    if (!document.json.isEmpty())
        return changedSettingsJson(document.json, changedSettings(wanted), wanted.after);
    change(document.tree, wanted);
    return xmlOf(document.tree);
}

Result<> changeDocument(Document &document, const QString &path, const SettingChanges &changes)
{
    EditorXmlData after = document.file.settings;
    const auto named = changes.applyTo(after, *document.file.product);
    if (!named)
        return Problem{path, named.problem().text};
    const Result<QByteArray> bytes =
        changedBytes(document, {*document.file.product, document.file.settings, after, *named});
    const Result<> written =
        bytes ? OutputFile(path, OutputFile::Existing::Replace).write(*bytes) : bytes.problem();
    if (written)
        return {};
    return Problem{path,
                   QStringLiteral("cannot be written (%1); it is as it was").arg(written.problem().text)};
}

Outcome run(const VerbLine &line, const SettingChanges &changes)
{
    Result<Document> document = readTree(line.operandPath());
    if (!document)
        return {document.problem(), {}};
    Outcome outcome{{}, *document};
    outcome.result = changeDocument(outcome.document, line.operandPath(), changes);
    return outcome;
}

QJsonObject outcomeObject(const VerbLine &line, const Outcome &outcome)
{
    const Product *product = outcome.document.file.product;
    return {{QStringLiteral("succeeded"), bool(outcome.result)},
            {QStringLiteral("problem"), problemOrNull(outcome.result)},
            {QStringLiteral("document"), line.operandPath()},
            {QStringLiteral("product"), product ? QJsonValue(product->word) : QJsonValue()},
            {QStringLiteral("warnings"), warningsArray(outcome.document.file.warnings)}};
}

QJsonObject editRefusal(const VerbLine &line, const Problem &problem)
{
    return outcomeObject(line, {problem, {}});
}

int finish(const VerbLine &line, Outcome outcome, Console &console)
{
    console.setQuiet(line.isSet(OptionName::quiet));
    outcome.result = console.told(outcome.result);
    return console.writeOutcome(line.operandPath(), outcome.result, outcome.document.file.warnings,
                                line.isSet(OptionName::json), [&] { return outcomeObject(line, outcome); });
}

SettingChanges settingsToSet(const VerbLine &line)
{
    SettingChanges changes;
    changes.values = line.operands().mid(1);
    takeRibbonOptions(changes, line);
    return changes;
}

SettingChanges settingsToUnset(const VerbLine &line)
{
    SettingChanges changes;
    changes.defaults = line.operands().mid(1);
    changes.hides = false;
    takeRibbonOptions(changes, line);
    return changes;
}

Result<> checkChanges(const SettingChanges &changes)
{
    if (changes.isEmpty())
        return Problem{{}, QStringLiteral("nothing is to be changed; name a setting or a ribbon command")};
    return changes.check();
}

Result<> checkSetLine(const VerbLine &line)
{
    return checkChanges(settingsToSet(line));
}

Result<> checkUnsetLine(const VerbLine &line)
{
    return checkChanges(settingsToUnset(line));
}

int runSet(const VerbLine &line, Console &console)
{
    return finish(line, run(line, settingsToSet(line)), console);
}

int runUnset(const VerbLine &line, Console &console)
{
    return finish(line, run(line, settingsToUnset(line)), console);
}

std::vector<const Setting *> wantedSettings(const VerbLine &line)
{
    std::vector<const Setting *> wanted;
    for (const QString &name : line.operands().mid(1))
        wanted.push_back(*SettingText::named(name));
    if (wanted.empty()) {
        for (const Setting &setting : settings())
            wanted.push_back(&setting);
    }
    return wanted;
}

Result<> checkGetLine(const VerbLine &line)
{
    SettingChanges changes;
    changes.defaults = line.operands().mid(1);
    return changes.check();
}

QJsonObject gotObject(const VerbLine &line, const SettingsFile &file)
{
    QJsonObject values;
    for (const Setting *setting : wantedSettings(line))
        values.insert(setting->name, settingValue(*setting, file.settings));
    QJsonObject object{{QStringLiteral("kind"), file.kind},
                       {QStringLiteral("product"), file.product->word},
                       {QStringLiteral("settings"), values}};
    insertWarnings(object, file.warnings);
    return object;
}

void writeValues(const VerbLine &line, const SettingsFile &file, Console &console)
{
    const std::vector<const Setting *> wanted = wantedSettings(line);
    for (const Setting *setting : wanted) {
        const QString value = SettingText::valueOf(*setting, file.settings, *file.product);
        if (wanted.size() > 1)
            console.out() << setting->name << '=';
        console.out() << visibleText(value) << '\n';
    }
}

int runGet(const VerbLine &line, Console &console)
{
    const Result<SettingsFile> file = readSettings(line.operandPath());
    if (!file) {
        console.error(file.problem());
        return ExitCode::refused;
    }
    if (line.isSet(OptionName::json))
        console.writeJson(gotObject(line, *file));
    else
        writeValues(line, *file, console);
    console.warn(file->warnings);
    return ExitCode::done;
}

QList<Option> outcomeOptions()
{
    return {withRemark(jsonOption(), QStringLiteral(", also when it fails")), quietOption()};
}

Operand documentOperand()
{
    return {Value::writtenSettings("DOC"),
            QStringLiteral("the document, which is replaced when the new one is complete")};
}

} // namespace

Verb configSetVerb()
{
    Verb verb{QLatin1String("config set"), QLatin1String("change settings in a document"), runSet};
    verb.description = QStringLiteral("Changes settings in a document and keeps everything else in it.");
    verb.options = ribbonOptions(QStringLiteral("hide this from the ribbon, with all that is in it"),
                                 QStringLiteral("hide this from the quick-access bar")) +
                   outcomeOptions();
    verb.operands = {documentOperand(),
                     {Value::text("NAME=VALUE"),
                      QStringLiteral("a setting and its value, as in nAuthLibrary=ADAL"), true, true}};
    verb.furtherCheck = checkSetLine;
    verb.refusal = editRefusal;
    return verb;
}

Verb configUnsetVerb()
{
    Verb verb{QLatin1String("config unset"), QLatin1String("give settings in a document their defaults"),
              runUnset};
    verb.description =
        QStringLiteral("Gives settings in a document their defaults and keeps everything else in it.");
    verb.options = ribbonOptions(QStringLiteral("show this in the ribbon again, with all that is in it"),
                                 QStringLiteral("show this in the quick-access bar again")) +
                   outcomeOptions();
    verb.operands = {
        documentOperand(),
        {Value::text("NAME"), QStringLiteral("a setting; see \"pct config names\""), true, true}};
    verb.furtherCheck = checkUnsetLine;
    verb.refusal = editRefusal;
    return verb;
}

Verb configGetVerb()
{
    Verb verb{QLatin1String("config get"), QLatin1String("print settings as \"config set\" takes them"),
              runGet};
    verb.description =
        QStringLiteral("Prints settings as \"pct config set\" takes them, one a line; of a single "
                       "setting the value only.");
    verb.options = {jsonOption()};
    verb.operands = {{Value::settings("DOC"),
                      QStringLiteral("a configuration document, a profile or a customized package")},
                     {Value::text("NAME"), QStringLiteral("a setting; without any all"), true, true}};
    verb.furtherCheck = checkGetLine;
    return verb;
}
