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
#include "core/SafeFile.h"
#include "package/BuildRehearsal.h"
#include "package/contents/Digest.h"

#include <QJsonArray>

namespace {

/// A file that a build would add to the install scripts.
struct AddedFile
{
    QString name;
    QString mode;
    qint64 size = 0;
    QString sha256;
};

/// All that is told of a build that is not made.
struct Preview
{
    Result<> verdict;
    QString version;
    QList<FileDiff> diffs;
    QString document;
    QList<AddedFile> added;
    QList<FileWarning> warnings;
};

AddedFile addedFile(const char *name, const char *mode, const QByteArray &bytes)
{
    Digest digest("sha256");
    digest.add(bytes.constData(), bytes.size());
    return {QString::fromLatin1(name), QString::fromLatin1(mode), bytes.size(),
            QString::fromLatin1(digest.checksum().digits)};
}

void take(const BuildRehearsal &build, const QString &input, Preview *preview)
{
    preview->version = build.scripts.version;
    for (const ScriptChange &change : build.changes)
        preview->diffs.append(
            {change.name, QString::fromUtf8(change.before), QString::fromUtf8(change.after)});
    preview->document = QString::fromUtf8(build.document);
    preview->diffs.append({QStringLiteral("ProfStore.xml"), {}, preview->document});
    preview->added.append(addedFile("ProfStore.xml", "0644", build.document));
    const Result<QByteArray> tool = SafeFile::readContents(QStringLiteral(":/duti"));
    if (build.addsViewerTool && tool)
        preview->added.append(addedFile("duti", "0755", *tool));
    for (const BuildWarning &warning : build.warnings)
        preview->warnings.append({input, warning});
}

Result<EditorXmlData> settingsOf(const VerbLine &line, Preview *preview)
{
    EditorXmlData settings;
    if (line.isSet(OptionName::config)) {
        const Result<SettingsFile> file = readDocument(line.product(), line.path(OptionName::config));
        if (!file)
            return file.problem();
        preview->warnings += file->warnings;
        settings = file->settings;
    }
    return settingsForProduct(settings, line.product());
}

Result<> fill(const VerbLine &line, Preview *preview)
{
    const QString input = line.path(OptionName::input);
    const Result<EditorXmlData> settings = settingsOf(line, preview);
    if (!settings)
        return settings.problem();
    const PrivateFolder folder;
    if (Result<> usable = folder.check(); !usable)
        return usable;
    const InstallerCheck check =
        checkInstaller(input, line.product(), folder.makeSubfolder(QStringLiteral("inspect")),
                       settings->bSetAsDefaultViewer);
    if (!check.verdict)
        return check.verdict;
    const Result<SignatureReport> signature = signatureOf(input, {});
    if (!signature)
        return signature.problem();
    for (const BuildWarning &warning : signatureWarnings(*signature))
        preview->warnings.append({input, warning});
    const PackageSettings wanted{*settings, settings->bSetAsDefaultViewer,
                                 line.product().isEditor() && settings->bUseOAuth2};
    const Result<BuildRehearsal> build =
        rehearseBuild(input, line.product(), wanted, folder.makeSubfolder(QStringLiteral("rehearsal")));
    if (!build)
        return Problem{input, QStringLiteral("no build would work: ") + build.problem().line()};
    take(*build, input, preview);
    return {};
}

QJsonArray filesArray(const QList<AddedFile> &files)
{
    QJsonArray array;
    for (const AddedFile &file : files)
        array.append(QJsonObject{{QStringLiteral("name"), file.name},
                                 {QStringLiteral("mode"), file.mode},
                                 {QStringLiteral("size"), file.size},
                                 {QStringLiteral("sha256"), file.sha256}});
    return array;
}

QJsonObject previewObject(const VerbLine &line, const Preview &preview)
{
    return {
        {QStringLiteral("succeeded"), bool(preview.verdict)},
        {QStringLiteral("problem"), problemOrNull(preview.verdict)},
        {QStringLiteral("product"), line.product().word},
        {QStringLiteral("version"), textOrNull(preview.version)},
        {QStringLiteral("input"), line.path(OptionName::input)},
        {QStringLiteral("config"), textOrNull(line.path(OptionName::config))},
        {QStringLiteral("changes"), diffsArray(preview.diffs)},
        {QStringLiteral("document"), textOrNull(preview.document)},
        {QStringLiteral("added"), filesArray(preview.added)},
        {QStringLiteral("warnings"), warningsArray(preview.warnings)},
    };
}

QList<Console::Row> addedRows(const QList<AddedFile> &files)
{
    QList<Console::Row> rows;
    for (const AddedFile &file : files)
        rows.append({file.name, QStringLiteral("mode %1, %2 bytes, SHA-256 %3")
                                    .arg(file.mode, QString::number(file.size), file.sha256)});
    return rows;
}

/// A page of its own, for a browser or a ticket.
QString htmlPage(const VerbLine &line, const Preview &preview)
{
    QStringList lines;
    for (const Console::Row &row : addedRows(preview.added))
        lines.append(QStringLiteral("added: %1, %2").arg(row.name, row.value));
    for (const FileWarning &warning : preview.warnings)
        lines.append(QStringLiteral("warning: ") + warning.warning.text);
    const QString title = QStringLiteral("%1: what a build would change")
                              .arg(line.path(OptionName::input).section(QLatin1Char('/'), -1));
    return diffPage(title, lines, preview.diffs);
}

void writePreview(const VerbLine &line, const Preview &preview, Console &console)
{
    if (line.isSet(OptionName::json)) {
        console.writeJson(previewObject(line, preview));
    } else if (preview.verdict && line.isSet(OptionName::html)) {
        console.out() << htmlPage(line, preview);
    } else if (preview.verdict) {
        writeDiffs(preview.diffs, console);
        console.writeTable(QStringLiteral("Added to the scripts"), addedRows(preview.added));
    }
}

QJsonObject previewRefusal(const VerbLine &line, const Problem &problem)
{
    Preview preview;
    preview.verdict = problem;
    return previewObject(line, preview);
}

int runPreview(const VerbLine &line, Console &console)
{
    console.setQuiet(line.isSet(OptionName::quiet));
    Preview preview;
    preview.verdict = console.told(fill(line, &preview));
    writePreview(line, preview, console);
    console.warn(preview.warnings);
    if (preview.verdict)
        return ExitCode::done;
    console.error(preview.verdict.problem());
    return ExitCode::refused;
}

} // namespace

Verb previewVerb()
{
    Verb verb{QLatin1String("preview"),
              QLatin1String("show what a build would change, without making a package"), runPreview};
    verb.description = QStringLiteral(
        "Tries a build on a copy of the install scripts and prints what it would change: both scripts and "
        "the "
        "document as unified diffs, and the files that are added. Nothing is written anywhere else.");
    verb.options = {
        required(productOption(QStringLiteral("the product whose installer the input is"))),
        required({OptionName::input, QStringLiteral("the vendor's installer package"), Value::package()}),
        configOption(),
    };
    verb.options += alternatives(
        {jsonOption(), {OptionName::html, QStringLiteral("write the result as a page of HTML")}});
    verb.options.append(quietOption());
    verb.refusal = previewRefusal;
    return verb;
}
