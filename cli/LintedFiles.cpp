// SPDX-License-Identifier: Apache-2.0
#include "cli/LintedFiles.h"

#include "cli/InputFile.h"
#include "cli/ProjectFile.h"
#include "cli/SettingsFile.h"
#include "cli/SettingValue.h"
#include "config/Product.h"
#include "config/SettingText.h"
#include "core/PrintableText.h"

#include <QDir>
#include <QFileInfo>
#include <QHash>
#include <QRegularExpression>

#include <algorithm>

namespace {

using Lint::FileFindings;
using Lint::Finding;
using Lint::Form;

/// Readers name the place in their problems; what they call the file may have it at its end.
TextPlace placeIn(const Problem &problem)
{
    static const QRegularExpression inText(QStringLiteral("\\bline ([0-9]{1,9})(?:, column ([0-9]{1,9}))?"));
    static const QRegularExpression inName(QStringLiteral(":([0-9]{1,9}):([0-9]{1,9})\\z"));
    QRegularExpressionMatch match = inName.match(problem.file);
    if (!match.hasMatch())
        match = inText.match(problem.text);
    if (!match.hasMatch())
        return {};
    return {match.captured(1).toInt(), std::max(1, match.captured(2).toInt())};
}

Finding unreadable(const Problem &problem)
{
    return {&Lint::unreadableFile(), {placeIn(problem), problem.text}};
}

Form formOf(const QString &path, const SettingsFile &file)
{
    if (kindOfFile(path) == FileKind::Json)
        return Form::Json;
    return file.kind == QLatin1String("profile") ? Form::Profile : Form::Document;
}

QVector<Finding> findingsIn(const QString &path, const SettingsFile &file)
{
    const Result<Lint::Subject> subject =
        Lint::subjectOf(formOf(path, file), file.contents, *file.product, file.settings);
    return subject ? Lint::findingsIn(*subject) : QVector<Finding>{unreadable(subject.problem())};
}

QString saidText(const QJsonValue &value)
{
    if (value.isBool())
        return value.toBool() ? QStringLiteral("1") : QStringLiteral("0");
    return value.isDouble() ? QString::number(value.toInt()) : value.toString();
}

/// What a variant says itself; what its document says has the place where the document is named.
Lint::Subject subjectOf(const ProjectVariant &variant, const Product &product, const EditorXmlData &settings)
{
    Lint::Subject subject = Lint::subjectOf(Form::Json, product, settings);
    for (const ProjectChange &change : variant.changes) {
        const Result<const Setting *> setting = SettingText::named(change.name);
        if (setting && !change.isDefault)
            subject.said.append(
                {*setting, saidText(settingValue(**setting, settings)), true, change.value.place});
    }
    return subject;
}

Result<EditorXmlData> settingsOf(const ProjectVariant &variant, const Product &product)
{
    if (variant.config.isEmpty())
        return variant.settings(EditorXmlData(), product);
    const Result<SettingsFile> start = readDocument(product, variant.config.text);
    if (!start)
        return start.problem();
    return variant.settings(start->settings, product);
}

QVector<Finding> findingsIn(const ProjectVariant &variant, const Product &product)
{
    const PlacedText &origin = variant.config.isEmpty() ? variant.name : variant.config;
    const Result<EditorXmlData> settings = settingsOf(variant, product);
    if (!settings)
        return {{&Lint::unreadableFile(), {origin.place, settings.problem().line()}}};
    QVector<Finding> findings = Lint::findingsIn(subjectOf(variant, product, *settings));
    for (Finding &finding : findings) {
        if (!finding.remark.place.isKnown())
            finding.remark.place = origin.place;
        finding.remark.text =
            QStringLiteral("variant \"%1\": %2").arg(printableText(variant.name.text), finding.remark.text);
    }
    return findings;
}

QVector<Finding> findingsInProject(const QString &path)
{
    const Result<Project> project = Project::read(path);
    if (!project)
        return {unreadable(project.problem())};
    QVector<Finding> findings;
    for (const ProjectVariant &variant : project->variants) {
        if (!variant.isAbstract)
            findings += findingsIn(variant, *project->product);
    }
    return findings;
}

class Run
{
public:
    LintOutcome outcome;

    void add(const QString &name, const Product *product)
    {
        const QString path = QDir::current().absoluteFilePath(name);
        const QString wanted = QStringLiteral(
            "a configuration document, a profile, a customized package, JSON or a project file");
        if (const Result<> readable = checkReadable(path, wanted); !readable)
            outcome.problems.append(readable.problem());
        else if (isProjectFile(path))
            outcome.files.append({name, {}, findingsInProject(path)});
        else
            addSettings(name, path, product);
    }

private:
    void addSettings(const QString &name, const QString &path, const Product *product)
    {
        const Result<SettingsFile> file = readSettings(path, product, Contents::Kept);
        if (!file) {
            outcome.files.append({name, {}, {unreadable({{}, file.problem().text})}});
            return;
        }
        FileFindings findings{name, {}, findingsIn(path, *file)};
        if (kindOfFile(path) == FileKind::Package)
            findings.member = QStringLiteral("ProfStore.xml");
        if (formOf(path, *file) == Form::Profile)
            addSharedIdentifier(file->settings.payloadInfo.PayloadIdentifier, findings);
        outcome.files.append(findings);
    }

    /// One file can be named twice and is then no other profile.
    void addSharedIdentifier(const QString &identifier, FileFindings &findings)
    {
        const QString first = m_firstWith.value(identifier, findings.file);
        m_firstWith.insert(identifier, first);
        const bool isSame =
            QFileInfo(first).canonicalFilePath() == QFileInfo(findings.file).canonicalFilePath();
        if (isSame || identifier.isEmpty())
            return;
        findings.findings.append(
            {&Lint::sharedIdentifier(),
             {{},
              QStringLiteral(
                  "has the identifier \"%1\" of %2, so a system keeps only the last of the two; give "
                  "each its own --identifier, unless no computer gets both")
                  .arg(printableText(identifier), first)}});
    }

    QHash<QString, QString> m_firstWith; ///< the file that has an identifier
};

} // namespace

LintOutcome lintedFiles(const QStringList &names, const Product *product)
{
    Run run;
    for (const QString &name : names)
        run.add(name, product);
    return run.outcome;
}
