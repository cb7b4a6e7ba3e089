// SPDX-License-Identifier: Apache-2.0
#include "cli/Console.h"
#include "cli/ExitCode.h"
#include "cli/InputFile.h"
#include "cli/Installer.h"
#include "cli/SettingsFile.h"
#include "cli/SignatureCheck.h"
#include "cli/VerbLine.h"
#include "config/Product.h"
#include "config/SettingText.h"
#include "core/FileDigest.h"
#include "core/OutputFile.h"
#include "core/PathRules.h"
#include "project/Project.h"
#include "project/ProjectReport.h"

#include <QDir>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QRegularExpression>

namespace {

/// What a project begins with.
struct Start
{
    QString path; ///< of the file to make
    const Product *product = nullptr;
    QString vendorPackage;
    QList<QPair<QString, SettingsFile>> files; ///< by path
};

/// A text as YAML has it in quotes, which is as JSON has it.
QString quoted(const QString &text)
{
    const QByteArray list = QJsonDocument(QJsonArray{text}).toJson(QJsonDocument::Compact);
    return QString::fromUtf8(list.mid(1, list.size() - 2));
}

/// The path below the folder of the project; empty when it is not there.
QString below(const QString &folder, const QString &path)
{
    const QString relative =
        QDir(QFileInfo(folder).canonicalFilePath()).relativeFilePath(QFileInfo(path).canonicalFilePath());
    return relative.startsWith(QLatin1String("..")) || QDir::isAbsolutePath(relative) ? QString() : relative;
}

QString variantName(const QString &text)
{
    static const QRegularExpression others(QStringLiteral("[^A-Za-z0-9_-]+"));
    static const QRegularExpression start(QStringLiteral("^[_-]+"));
    const QString name = QString(text).replace(others, QStringLiteral("-")).remove(start).left(64);
    return name.isEmpty() ? QStringLiteral("standard") : name;
}

QString prefixOf(const QString &identifier)
{
    return identifier.section(QLatin1Char('.'), 0, -2);
}

/// A profile keeps its identifier when the last part of it is the variant's name.
QString nameFor(const QString &path, const SettingsFile &file)
{
    const QString last = file.settings.payloadInfo.PayloadIdentifier.section(QLatin1Char('.'), -1);
    return variantName(last.isEmpty() ? QFileInfo(path).completeBaseName() : last);
}

Result<> takeFile(const QString &path, Start &start)
{
    const Result<SettingsFile> file = readSettings(path);
    if (!file)
        return file.problem();
    if (start.product && start.product != file->product)
        return Problem{path, QStringLiteral("is of the %1, and a project has one product; leave it out")
                                 .arg(QString(file->product->title))};
    start.product = file->product;
    start.files.append({path, *file});
    return {};
}

Result<> takeVendorPackage(const QString &path, Start &start)
{
    const Result<const Product *> product = productOfInstaller(path);
    if (!product)
        return product.problem();
    start.product = *product;
    start.vendorPackage = below(QFileInfo(start.path).path(), path);
    if (!start.vendorPackage.isEmpty())
        return {};
    return Problem{path, QStringLiteral("does not lie below the project's folder; move it there")};
}

Result<Start> startOf(const VerbLine &line)
{
    Start start;
    start.path = line.isSet(OptionName::output)
                     ? line.path(OptionName::output)
                     : QDir::current().filePath(QStringLiteral("pct-project.yaml"));
    if (line.isSet(OptionName::product))
        start.product = &line.product();
    if (const Result<> usable = checkWritable(start.path, line.isSet(OptionName::force)); !usable)
        return usable.problem();
    if (line.isSet(OptionName::input)) {
        if (const Result<> taken = takeVendorPackage(line.path(OptionName::input), start); !taken)
            return taken.problem();
    }
    for (const QString &file : line.values(OptionName::from)) {
        if (const Result<> taken = takeFile(QDir::current().absoluteFilePath(file), start); !taken)
            return taken.problem();
    }
    if (!start.product)
        start.product = &Product::editor();
    return start;
}

QString vendorText(const Start &start)
{
    if (start.vendorPackage.isEmpty())
        return {};
    const QString path = QFileInfo(start.path).path() + QLatin1Char('/') + start.vendorPackage;
    QString text = QStringLiteral("vendor:\n  package: %1\n").arg(quoted(start.vendorPackage));
    if (const Result<QByteArray> digest = sha256OfFile(path))
        text += QStringLiteral("  sha256: \"%1\"\n").arg(QString::fromLatin1(*digest));
    const Result<SignatureReport> report = signatureOf(path, {});
    if (report && report->isTrusted())
        text += QStringLiteral("  signer: %1\n").arg(quoted(report->chain.first().name));
    return text;
}

/// The longest common beginning of profiles' identifiers would be a guess; the first one is what somebody
/// chose.
QString identityText(const Start &start)
{
    for (const auto &file : start.files) {
        const ProfilePayloadInfo &identity = file.second.settings.payloadInfo;
        if (prefixOf(identity.PayloadIdentifier).isEmpty())
            continue;
        const QString organization = identity.PayloadOrganization;
        return QStringLiteral("identity:\n  prefix: %1\n").arg(quoted(prefixOf(identity.PayloadIdentifier))) +
               (organization.isEmpty() ? QString()
                                       : QStringLiteral("  organization: %1\n").arg(quoted(organization)));
    }
    return {};
}

QString settingsText(const SettingsFile &file)
{
    QString text;
    const EditorXmlData usual = carriedSettings({}, *file.product);
    const EditorXmlData data = carriedSettings(file.settings, *file.product);
    for (const Setting &setting : settings()) {
        if (!sameValue(setting, data, usual))
            text += QStringLiteral("      %1: %2\n")
                        .arg(setting.name, quoted(SettingText::valueOf(setting, data, *file.product)));
    }
    return text.isEmpty() ? text : QStringLiteral("    set:\n") + text;
}

QString variantText(const Start &start, const QString &name, const QString &path, const SettingsFile &file)
{
    const QString document =
        file.kind == QLatin1String("document") ? below(QFileInfo(start.path).path(), path) : QString();
    const bool isProfile = !file.settings.payloadInfo.PayloadIdentifier.isEmpty();
    QStringList outputs{QStringLiteral("document: {}")};
    if (isProfile)
        outputs += QStringLiteral("profile: {}");
    if (!start.vendorPackage.isEmpty())
        outputs += QStringLiteral("package: {}");
    return QStringLiteral("  %1:\n").arg(quoted(name)) +
           (document.isEmpty() ? settingsText(file)
                               : QStringLiteral("    config: %1\n").arg(quoted(document))) +
           QStringLiteral("    outputs: {%1}\n").arg(outputs.join(QStringLiteral(", ")));
}

QString variantsText(const Start &start)
{
    QString text = QStringLiteral("variants:\n");
    QStringList names;
    for (const auto &file : start.files) {
        QString name = nameFor(file.first, file.second);
        for (int i = 2; names.contains(name, Qt::CaseInsensitive); ++i)
            name = nameFor(file.first, file.second).left(60) + QLatin1Char('-') + QString::number(i);
        names += name;
        text += variantText(start, name, file.first, file.second);
    }
    if (start.files.isEmpty())
        text += variantText(start, QStringLiteral("standard"), {}, {{}, start.product, {}, {}, {}});
    return text;
}

QString projectText(const Start &start)
{
    return QStringLiteral(
               "# What is made for whom; \"pct project build\" makes it.\nversion: 1\nproduct: %1\n")
               .arg(start.product->word) +
           vendorText(start) + identityText(start) + QStringLiteral("output: \"dist/${variant}\"\n") +
           variantsText(start);
}

Result<> write(const Start &start, bool force)
{
    OutputFile output(start.path, force ? OutputFile::Existing::Replace : OutputFile::Existing::Keep);
    const Result<> written = output.write(projectText(start).toUtf8());
    if (!written)
        return Problem{start.path, QStringLiteral("cannot be written (%1)").arg(written.problem().text)};
    const Result<Project> project = Project::read(start.path);
    return project ? Result<>() : project.problem();
}

int runInit(const VerbLine &line, Console &console)
{
    console.setQuiet(line.isSet(OptionName::quiet));
    const Result<Start> start = startOf(line);
    const Result<> made = start ? write(*start, line.isSet(OptionName::force)) : start.problem();
    if (!made) {
        console.error(made.problem());
        return ExitCode::refused;
    }
    console.setMade(start->path);
    console.confirm(start->path);
    return ExitCode::done;
}

} // namespace

Verb projectInitVerb()
{
    Verb verb{QLatin1String("project init"), QLatin1String("make a project file of what there is"), runInit};
    verb.description = QStringLiteral("Makes a project file: a variant of each document, profile or package "
                                      "that is given, with what differs "
                                      "from the defaults.");
    verb.options = {
        repeatable({OptionName::from,
                    QStringLiteral("a document, profile or customized package to make a variant of"),
                    Value::settings("FILE")}),
        withRemark({OptionName::input, QStringLiteral("the vendor's installer package"), Value::package()},
                   QStringLiteral(", below the project's folder; its digest and signer are taken down")),
        productOption(QStringLiteral("the product, where no file says it; otherwise the Editor")),
        withRemark({OptionName::output, QStringLiteral("the project file to make"), Value::project("FILE")},
                   QStringLiteral("; otherwise `pct-project.yaml`")),
        {OptionName::force, QStringLiteral("replace an output that exists already")},
        quietOption(),
    };
    return verb;
}
