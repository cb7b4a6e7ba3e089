// SPDX-License-Identifier: Apache-2.0
#include "cli/Console.h"
#include "cli/DiffText.h"
#include "cli/ExitCode.h"
#include "cli/Installer.h"
#include "cli/Json.h"
#include "cli/PrivateFolder.h"
#include "cli/SettingsFile.h"
#include "cli/SignatureCheck.h"
#include "cli/VerbLine.h"
#include "config/Product.h"
#include "config/ProductSettings.h"
#include "core/PrintableText.h"
#include "package/verification/ReleaseComparison.h"

namespace {

/// A release and who has signed it.
struct SignedRelease
{
    Release release;
    QString signer;
    QString team;
};

/// A fact about both releases.
struct Fact
{
    QString code; ///< for programs
    QString name; ///< for people
    QString older;
    QString newer;
};

struct Comparison
{
    const Product *product = nullptr;
    QList<Fact> facts;
    QList<FileDiff> scripts;
    ReleaseChanges changes;
    QList<LostSetting> lost;
    bool knowsSettings = false;
    bool judgesPlugins = false;
    QList<FileWarning> warnings;
};

Result<const Product *> commonProduct(const VerbLine &line)
{
    const Result<const Product *> older = productOfInstaller(line.operandPath(0));
    if (!older)
        return older;
    const Result<const Product *> newer = productOfInstaller(line.operandPath(1));
    if (newer && *newer != *older)
        return Problem{line.operandPath(1),
                       QStringLiteral("is the installer of the %1, and %2 is that of the %3; give two "
                                      "releases of one product")
                           .arg(QString((*newer)->title), line.operandPath(0), QString((*older)->title))};
    return newer;
}

Result<SignedRelease> readRelease(const QString &package, const Product &product, bool readsPayload)
{
    const PrivateFolder folder;
    if (const Result<> usable = folder.check(); !usable)
        return usable.problem();
    const Result<Release> release =
        Release::read(package, product, readsPayload, folder.makeSubfolder(QStringLiteral("release")));
    if (!release)
        return release.problem();
    const Result<SignatureReport> signature = signatureOf(package, {});
    if (!signature)
        return signature.problem();
    SignedRelease result{*release, QStringLiteral("nobody"), signature->team};
    if (signature->isSigned)
        result.signer =
            signature->chain.isEmpty() ? QStringLiteral("somebody unknown") : signature->chain.first().name;
    if (signature->isSigned && !signature->holds())
        result.signer += QStringLiteral(", by a signature that does not hold");
    return result;
}

QString orUnknown(const QString &text)
{
    return text.isEmpty() ? QStringLiteral("unknown") : text;
}

QString patchability(const QString &problem)
{
    return problem.isEmpty() ? QStringLiteral("can be patched")
                             : QStringLiteral("cannot be patched: ") + problem;
}

QList<Fact> factsOf(const SignedRelease &older, const SignedRelease &newer)
{
    QList<Fact> facts;
    const auto add = [&](const char *code, const char *name, const auto &of) {
        facts.append({QString::fromLatin1(code), QString::fromLatin1(name), of(older), of(newer)});
    };
    const auto lines = [](int ScriptsInspection::*count) {
        return [count](const SignedRelease &one) { return QString::number(one.release.inspection.*count); };
    };
    add("version", "version",
        [](const SignedRelease &one) { return orUnknown(one.release.inspection.version); });
    add("signer", "signed by", [](const SignedRelease &one) { return one.signer; });
    add("team", "team", [](const SignedRelease &one) { return orUnknown(one.team); });
    add("minimumSystem", "minimum macOS",
        [](const SignedRelease &one) { return orUnknown(one.release.minimumSystem); });
    add("architectures", "architectures", [](const SignedRelease &one) {
        return orUnknown(one.release.architectures.join(QStringLiteral(", ")));
    });
    add("editorXmlFileCopy", "lines with editorXmlFileCopy", lines(&ScriptsInspection::documentSwitches));
    add("setdefaultpdf", "lines with setdefaultpdf", lines(&ScriptsInspection::viewerSwitches));
    add("plistValue", "lines with plistValue", lines(&ScriptsInspection::preferenceLists));
    add("preinstall", "preinstall",
        [](const SignedRelease &one) { return patchability(one.release.inspection.preinstallProblem); });
    add("postinstall", "postinstall",
        [](const SignedRelease &one) { return patchability(one.release.inspection.postinstallProblem); });
    return facts;
}

QList<FileDiff> scriptDiffs(const Release &older, const Release &newer)
{
    QList<FileDiff> diffs;
    for (const char *name : {"preinstall", "postinstall"}) {
        const QString script = QString::fromLatin1(name);
        diffs.append({script, QString::fromUtf8(older.scripts.value(script).content),
                      QString::fromUtf8(newer.scripts.value(script).content), QStringLiteral("old"),
                      QStringLiteral("new")});
    }
    return diffs;
}

Result<> judgeSettings(const VerbLine &line, const Release &older, const Release &newer,
                       Comparison *comparison)
{
    comparison->knowsSettings = line.isSet(OptionName::config);
    if (!comparison->knowsSettings)
        return {};
    const Result<SettingsFile> file = readDocument(*comparison->product, line.path(OptionName::config));
    if (!file)
        return file.problem();
    comparison->warnings = file->warnings;
    comparison->judgesPlugins = line.isSet(OptionName::deep);
    comparison->lost = settingsLost(older, newer, settingsForProduct(file->settings, *comparison->product));
    return {};
}

Result<Comparison> compare(const VerbLine &line)
{
    const Result<const Product *> product = commonProduct(line);
    if (!product)
        return product.problem();
    const bool isDeep = line.isSet(OptionName::deep);
    const Result<SignedRelease> older = readRelease(line.operandPath(0), **product, isDeep);
    if (!older)
        return older.problem();
    const Result<SignedRelease> newer = readRelease(line.operandPath(1), **product, isDeep);
    if (!newer)
        return newer.problem();
    Comparison comparison;
    comparison.product = *product;
    comparison.facts = factsOf(*older, *newer);
    comparison.scripts = scriptDiffs(older->release, newer->release);
    comparison.changes = changesBetween(older->release, newer->release, **product);
    if (const Result<> judged = judgeSettings(line, older->release, newer->release, &comparison); !judged)
        return judged.problem();
    return comparison;
}

QJsonObject factsObject(const QList<Fact> &facts)
{
    QJsonObject object;
    for (const Fact &fact : facts)
        object.insert(fact.code, QJsonObject{{QStringLiteral("old"), fact.older},
                                             {QStringLiteral("new"), fact.newer},
                                             {QStringLiteral("changed"), fact.older != fact.newer}});
    return object;
}

QJsonValue lostValue(const Comparison &comparison)
{
    if (!comparison.knowsSettings)
        return {};
    QJsonArray lost;
    for (const LostSetting &setting : comparison.lost)
        lost.append(
            QJsonObject{{QStringLiteral("name"), setting.name}, {QStringLiteral("text"), setting.text}});
    return lost;
}

QJsonObject comparisonObject(const VerbLine &line, const Comparison &comparison)
{
    const ReleaseChanges &changes = comparison.changes;
    return {
        {QStringLiteral("old"), line.operandPath(0)},
        {QStringLiteral("new"), line.operandPath(1)},
        {QStringLiteral("product"), comparison.product->word},
        {QStringLiteral("facts"), factsObject(comparison.facts)},
        {QStringLiteral("scripts"), diffsArray(comparison.scripts)},
        {QStringLiteral("added"), QJsonArray::fromStringList(changes.added)},
        {QStringLiteral("removed"), QJsonArray::fromStringList(changes.removed)},
        {QStringLiteral("changed"), QJsonArray::fromStringList(changes.changed)},
        {QStringLiteral("lostSettings"), lostValue(comparison)},
        {QStringLiteral("pluginsJudged"), comparison.judgesPlugins},
        {QStringLiteral("warnings"), warningsArray(comparison.warnings)},
    };
}

/// What is said of the settings, as lines.
QStringList settingLines(const Comparison &comparison)
{
    if (!comparison.knowsSettings)
        return {
            QStringLiteral("not judged; --%1 names the document that is to be used").arg(OptionName::config)};
    QStringList lines;
    for (const LostSetting &setting : comparison.lost)
        lines.append(QStringLiteral("%1 would lose its effect: %2").arg(setting.name, setting.text));
    if (lines.isEmpty())
        lines.append(QStringLiteral("none would lose its effect"));
    if (!comparison.judgesPlugins)
        lines.append(QStringLiteral("whether the payload still holds the plug-ins was not judged; --%1 does")
                         .arg(OptionName::deep));
    return lines;
}

QList<Console::Row> factRows(const Comparison &comparison)
{
    QList<Console::Row> rows;
    for (const Fact &fact : comparison.facts) {
        const QString both = fact.older + QStringLiteral(" -> ") + fact.newer;
        rows.append({fact.name, fact.older == fact.newer ? fact.older : both});
    }
    for (const QString &line : settingLines(comparison))
        rows.append({QStringLiteral("settings"), line});
    const ReleaseChanges &changes = comparison.changes;
    for (const auto &[name, paths] : {qMakePair(QStringLiteral("added"), changes.added),
                                      qMakePair(QStringLiteral("removed"), changes.removed),
                                      qMakePair(QStringLiteral("changed"), changes.changed)}) {
        for (const QString &path : paths)
            rows.append({name, path});
    }
    return rows;
}

/// A cell of a table, or a line of a list.
QString inMarkdown(const QString &text)
{
    QString safe = printableText(text).toHtmlEscaped();
    for (const char special : {'\\', '|', '*', '_', '`', '[', ']'})
        safe.replace(QLatin1Char(special), QString(QStringLiteral("\\") + QLatin1Char(special)));
    return safe;
}

QString markdownList(const QString &heading, const QStringList &lines)
{
    QString text = QStringLiteral("\n## %1\n\n").arg(heading);
    for (const QString &line : lines)
        text += QStringLiteral("- %1\n").arg(inMarkdown(line));
    return lines.isEmpty() ? text + QStringLiteral("None.\n") : text;
}

/// A fence that no line of the text can end.
QString markdownCode(const QString &text)
{
    QString fence = QStringLiteral("```");
    while (text.contains(fence))
        fence += QLatin1Char('`');
    return QStringLiteral("\n%1diff\n%2%1\n").arg(fence, text);
}

QString markdownPage(const VerbLine &line, const Comparison &comparison)
{
    const auto nameOf = [&line](int index) {
        return inMarkdown(line.operandPath(index).section(QLatin1Char('/'), -1));
    };
    QString page = QStringLiteral("# %1: %2 and %3\n\n| | old | new | changed |\n| --- | --- | --- | --- |\n")
                       .arg(QString(comparison.product->title), nameOf(0), nameOf(1));
    for (const Fact &fact : comparison.facts)
        page += QStringLiteral("| %1 | %2 | %3 | %4 |\n")
                    .arg(fact.name, inMarkdown(fact.older), inMarkdown(fact.newer),
                         fact.older == fact.newer ? QString() : QStringLiteral("yes"));
    page += markdownList(QStringLiteral("Settings"), settingLines(comparison));
    page += markdownList(QStringLiteral("Entries added"), comparison.changes.added);
    page += markdownList(QStringLiteral("Entries removed"), comparison.changes.removed);
    page += markdownList(QStringLiteral("Entries changed"), comparison.changes.changed);
    page += QStringLiteral("\n## Scripts\n");
    QString diffs;
    for (const FileDiff &diff : comparison.scripts)
        diffs += diff.unified();
    return page + (diffs.isEmpty() ? QStringLiteral("\nUnchanged.\n") : markdownCode(diffs));
}

void writeComparison(const VerbLine &line, const Comparison &comparison, Console &console)
{
    if (line.isSet(OptionName::json))
        return console.writeJson(comparisonObject(line, comparison));
    if (line.isSet(OptionName::markdown)) {
        console.out() << markdownPage(line, comparison);
        return;
    }
    console.writeTable(QStringLiteral("%1 releases").arg(QString(comparison.product->title)),
                       factRows(comparison));
    writeDiffs(comparison.scripts, console);
}

Value named(const char *name)
{
    Value package = Value::package();
    package.name = QString::fromLatin1(name);
    return package;
}

int runCompare(const VerbLine &line, Console &console)
{
    const Result<Comparison> comparison = compare(line);
    if (!comparison) {
        console.error(comparison.problem());
        return ExitCode::trouble;
    }
    writeComparison(line, *comparison, console);
    console.warn(comparison->warnings);
    return comparison->lost.isEmpty() ? ExitCode::done : ExitCode::different;
}

} // namespace

Verb compareVerb()
{
    Verb verb{QLatin1String("compare"),
              QLatin1String("say what a vendor's new release changes for a deployment"), runCompare};
    verb.description =
        QStringLiteral("Compares two releases of a vendor's package: version, signer, the systems they run "
                       "on, what their scripts "
                       "offer to a build, and which entries differ. Exit code 0 when no setting of the "
                       "document would lose its "
                       "effect with the new one, 1 when one would, 2 when that cannot be said.");
    verb.options = {
        withRemark({OptionName::config,
                    QStringLiteral("configuration document that is to be used with the new release"),
                    Value::writtenSettings("DOC")},
                   QStringLiteral("; without one no setting is judged")),
        withRemark(
            {OptionName::deep, QStringLiteral("look for the plug-ins of the document in the payloads, too")},
            QStringLiteral(", which are unpacked for this: gzip, xz, and xz in chunks (pbzx)")),
    };
    verb.options += alternatives(
        {jsonOption(), {OptionName::markdown, QStringLiteral("write the result as a page of Markdown")}});
    verb.operands = {{named("OLD"), QStringLiteral("the vendor's package that is in use")},
                     {named("NEW"), QStringLiteral("the vendor's new package")}};
    verb.trouble = ExitCode::trouble;
    return verb;
}
