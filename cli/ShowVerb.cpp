// SPDX-License-Identifier: Apache-2.0
#include "cli/Console.h"
#include "cli/ExitCode.h"
#include "cli/Installer.h"
#include "cli/Json.h"
#include "cli/PrivateFolder.h"
#include "cli/SettingsFile.h"
#include "cli/SettingValue.h"
#include "cli/VerbLine.h"
#include "config/Product.h"
#include "package/InstallActions.h"

namespace {

bool isPackage(const SettingsFile &file)
{
    return file.kind == QLatin1String("package");
}

/// What the scripts of a package do. It has been read before, so there is nothing more to say when this
/// fails.
QList<InstallAction> installationOf(const QString &path, const SettingsFile &file)
{
    const PrivateFolder folder;
    const Result<QString> scripts =
        extractScripts(path, *file.product, folder.makeSubfolder(QStringLiteral("scripts")));
    return scripts ? installActions(*scripts) : QList<InstallAction>();
}

QJsonArray installationArray(const QList<InstallAction> &actions)
{
    QJsonArray array;
    for (const InstallAction &action : actions)
        array.append(QJsonObject{{QStringLiteral("name"), action.name},
                                 {QStringLiteral("happens"), action.happens},
                                 {QStringLiteral("text"), action.text}});
    return array;
}

QList<Console::Row> installationRows(const QList<InstallAction> &actions)
{
    QList<Console::Row> rows;
    for (const InstallAction &action : actions)
        rows.append({action.name, action.text});
    return rows;
}

bool isProfile(const SettingsFile &file)
{
    return file.kind == QLatin1String("profile");
}

/// A profile has no place for what only documents say; a default would look like something that it holds.
bool hasPlaceFor(const SettingsFile &file, const Setting &setting)
{
    return !isProfile(file) || setting.profile.read || !setting.document.read;
}

QJsonObject settingsObject(const SettingsFile &file)
{
    QJsonObject object;
    for (const Setting &setting : settings()) {
        if (hasPlaceFor(file, setting))
            object.insert(setting.name, settingValue(setting, file.settings));
    }
    return object;
}

QJsonArray signersArray(const QList<ProfileSigner> &signers)
{
    QJsonArray array;
    for (const ProfileSigner &signer : signers)
        array.append(QJsonObject{{QStringLiteral("name"), signer.name},
                                 {QStringLiteral("status"), textOrNull(signer.status)},
                                 {QStringLiteral("known"), signer.isKnown}});
    return array;
}

QJsonObject fileObject(const QString &path, const SettingsFile &file)
{
    QJsonObject object{{QStringLiteral("kind"), file.kind},
                       {QStringLiteral("product"), file.product->word},
                       {QStringLiteral("settings"), settingsObject(file)}};
    insertWarnings(object, file.warnings);
    if (isPackage(file))
        object.insert(QStringLiteral("installation"), installationArray(installationOf(path, file)));
    if (isProfile(file)) {
        object.insert(QStringLiteral("identity"), identityObject(file.settings.payloadInfo));
        object.insert(QStringLiteral("signer"),
                      file.signers.isEmpty() ? QJsonValue() : QJsonValue(file.signers.first().name));
        object.insert(QStringLiteral("signers"), signersArray(file.signers));
    }
    return object;
}

QList<Console::Row> identityRows(const ProfilePayloadInfo &identity)
{
    QList<Console::Row> rows;
    const QJsonObject members = identityObject(identity);
    for (auto member = members.begin(); member != members.end(); ++member)
        rows.append({member.key(), readableValue(member.value())});
    return rows;
}

QList<Console::Row> fileRows(const SettingsFile &file)
{
    QList<Console::Row> rows;
    if (isProfile(file))
        rows = identityRows(file.settings.payloadInfo);
    for (const Setting &setting : settings()) {
        if (hasPlaceFor(file, setting))
            rows.append({setting.name, readableValue(setting, file.settings)});
    }
    return rows;
}

QString signatureNote(const SettingsFile &file)
{
    if (file.signers.isEmpty())
        return QStringLiteral("is not signed");
    return QStringLiteral("is signed by %1; whether that is to be trusted was not checked")
        .arg(signersText(file.signers));
}

void writeReadable(const QString &path, const SettingsFile &file, Console &console)
{
    console.writeTable(QStringLiteral("%1 %2").arg(QString(file.product->title), file.kind), fileRows(file));
    if (isPackage(file))
        console.writeTable(QStringLiteral("At installation"), installationRows(installationOf(path, file)));
    if (isProfile(file))
        console.note(path, signatureNote(file));
}

int runShow(const VerbLine &line, Console &console)
{
    const QString path = line.operandPath();
    const Result<SettingsFile> file = readSettings(path);
    if (!file) {
        console.error(file.problem());
        return ExitCode::refused;
    }
    if (line.isSet(OptionName::json))
        console.writeJson(fileObject(path, *file));
    else
        writeReadable(path, *file, console);
    console.warn(file->warnings);
    return ExitCode::done;
}

} // namespace

Verb showVerb()
{
    Verb verb{QLatin1String("show"),
              QLatin1String("print the settings in a document, a profile or a package"), runShow};
    verb.description = QStringLiteral(
        "Prints the settings that a file holds. Settings that the file does not mention have their "
        "default values; those that a profile has no place for are not printed of one. Of a "
        "package it also says what its scripts will do at installation.");
    verb.options = {jsonOption()};
    verb.operands = {{Value::settings("FILE"),
                      QStringLiteral("a configuration document, a profile or a customized package")}};
    return verb;
}
