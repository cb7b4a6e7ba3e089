// SPDX-License-Identifier: Apache-2.0
#include "cli/Console.h"
#include "cli/ExitCode.h"
#include "cli/HostCommands.h"
#include "cli/Json.h"
#include "cli/SettingDifferences.h"
#include "cli/SettingsFile.h"
#include "cli/VerbLine.h"
#include "config/Product.h"
#include "config/ProductSettings.h"
#include "profile/ConfigGenerator.h"
#include "profile/InstalledSettings.h"

#include <algorithm>

namespace {

/// What is installed in one place, against the file.
struct Comparison
{
    QString origin;
    ProfilePayloadInfo identity;
    QList<Difference> differences;
};

/// What a run has found out; without a problem and a comparison it has not begun.
struct Finding
{
    Result<> result;
    SettingsFile file;
    QList<Comparison> comparisons;
    QStringList unread;

    bool hasDrift() const
    {
        return std::any_of(comparisons.begin(), comparisons.end(),
                           [](const Comparison &one) { return !one.differences.isEmpty(); });
    }
    bool isSame() const { return !hasDrift() && !comparisons.isEmpty() && unread.isEmpty(); }
};

/// The settings as they come back from a profile, which does not carry all that a document does.
Result<EditorXmlData> asCarried(const EditorXmlData &settings, const Product &product)
{
    const EditorXmlData wanted = settingsForProduct(settings, product);
    const Result<QString> profile = ConfigGenerator::generate(&wanted, product);
    if (!profile)
        return Problem{{},
                       QStringLiteral("no profile can hold its settings (%1)").arg(profile.problem().text)};
    EditorXmlData carried;
    const Result<const Product *> read = ConfigGenerator::importAny(profile->toUtf8(), carried, &product);
    return read ? Result<EditorXmlData>(carried) : read.problem();
}

Result<SettingsFile> readWanted(const QString &path, const Product &product)
{
    Result<SettingsFile> file = readSettings(path, &product);
    if (!file)
        return file;
    if (file->product != &product)
        return Problem{path, QStringLiteral("has settings of the %1; use --product %2")
                                 .arg(QString(file->product->title), QString(file->product->word))};
    const Result<EditorXmlData> carried = asCarried(file->settings, product);
    if (!carried)
        return Problem{path, carried.problem().text + QStringLiteral("; give others")};
    file->settings = *carried;
    return file;
}

void compare(const InstalledSettings &installed, const Product &product, Finding &finding)
{
    finding.unread = installed.unread;
    for (const InstalledSettings::Copy &copy : installed.copies) {
        const Result<EditorXmlData> carried = asCarried(copy.settings, product);
        if (carried)
            finding.comparisons.append({copy.origin, copy.settings.payloadInfo,
                                        settingDifferences(*carried, finding.file.settings)});
        else
            finding.unread.append(copy.origin + QStringLiteral(": ") + carried.problem().text);
    }
}

Problem cannotTell(const Product &product, const Finding &finding)
{
    if (finding.unread.isEmpty())
        return {QStringLiteral("profiles"),
                QStringLiteral("no settings of the %1 are installed on this machine, as far as this user can "
                               "see; run this as root, or install a profile")
                    .arg(QString(product.title))};
    return {QStringLiteral("profiles"),
            QStringLiteral("what is installed for the %1 cannot be told (%2); run this as root")
                .arg(QString(product.title), finding.unread.join(QStringLiteral("; ")))};
}

Finding findDrift(const VerbLine &line)
{
    const Product &product = line.product();
    const Result<SettingsFile> file = readWanted(line.operandPath(), product);
    if (!file)
        return {file.problem(), {}, {}, {}};
    Finding finding{{}, *file, {}, {}};
    finding.result = haveCommands({QStringLiteral("/usr/bin/profiles")});
    if (!finding.result)
        return finding;
    compare(InstalledSettings::find(product), product, finding);
    if (!finding.hasDrift() && !finding.isSame())
        finding.result = cannotTell(product, finding);
    return finding;
}

QString verdict(const Finding &finding)
{
    if (!finding.result)
        return QStringLiteral("unknown");
    return finding.hasDrift() ? QStringLiteral("drift") : QStringLiteral("same");
}

QJsonArray comparisonsArray(const QList<Comparison> &comparisons)
{
    QJsonArray array;
    for (const Comparison &one : comparisons)
        array.append(QJsonObject{{QStringLiteral("origin"), one.origin},
                                 {QStringLiteral("identity"), identityObject(one.identity)},
                                 {QStringLiteral("differences"), differencesArray(one.differences)}});
    return array;
}

QJsonObject findingObject(const VerbLine &line, const Finding &finding)
{
    QJsonObject object{{QStringLiteral("result"), verdict(finding)},
                       {QStringLiteral("problem"), problemOrNull(finding.result)},
                       {QStringLiteral("product"), line.product().word},
                       {QStringLiteral("file"), line.operandPath()},
                       {QStringLiteral("kind"), textOrNull(finding.file.kind)},
                       {QStringLiteral("installed"), comparisonsArray(finding.comparisons)},
                       {QStringLiteral("unread"), QJsonArray::fromStringList(finding.unread)}};
    insertWarnings(object, finding.file.warnings);
    return object;
}

QJsonObject driftRefusal(const VerbLine &line, const Problem &problem)
{
    return findingObject(line, {problem, {}, {}, {}});
}

void writeReadable(const Finding &finding, Console &console)
{
    for (const Comparison &one : finding.comparisons)
        writeLines(one.differences, console, one.origin + QStringLiteral(": "));
    if (!finding.result)
        return;
    for (const QString &text : finding.unread)
        console.note(QStringLiteral("profiles"), text);
}

int runDrift(const VerbLine &line, Console &console)
{
    Finding finding = findDrift(line);
    finding.result = console.told(finding.result);
    if (line.isSet(OptionName::json))
        console.writeJson(findingObject(line, finding));
    else
        writeReadable(finding, console);
    console.warn(finding.file.warnings);
    if (!finding.result) {
        console.error(finding.result.problem());
        return ExitCode::trouble;
    }
    return finding.hasDrift() ? ExitCode::different : ExitCode::done;
}

} // namespace

Verb driftVerb()
{
    Verb verb{QLatin1String("drift"), QLatin1String("say whether this machine has the settings of a file"),
              runDrift};
    verb.description = QStringLiteral(
        "Compares what is installed on this machine with a file, one line for each setting that differs: the "
        "installed value and that of the file. Exit code 0 when all is the same, 1 when something differs, 2 "
        "when that cannot be said.");
    verb.options = {required(productOption(QStringLiteral("the product whose settings are compared"))),
                    jsonOption()};
    verb.operands = {{Value::settings("FILE"),
                      QStringLiteral("a configuration document, a profile or a customized package")}};
    verb.trouble = ExitCode::trouble;
    verb.refusal = driftRefusal;
    return verb;
}
