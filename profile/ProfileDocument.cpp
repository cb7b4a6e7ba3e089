// SPDX-License-Identifier: Apache-2.0
#include "profile/ProfileDocument.h"

#include "core/Command.h"
#include "core/PrintableText.h"
#include "profile/ConfigGenerator.h"
#include "profile/PropertyListInput.h"

#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

namespace {

bool fail(QString &error, const QString &text)
{
    error = text;
    return false;
}

bool readFile(const QString &path, QByteArray &bytes, QString &error)
{
    // Opening a named pipe would wait for its writer.
    const QFileInfo info(path);
    if (!info.exists())
        return fail(error, QStringLiteral("does not exist"));
    if (!info.isFile())
        return fail(error, QStringLiteral("is not a regular file"));
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return fail(error, QStringLiteral("cannot be read (%1)").arg(file.errorString()));
    bytes = file.read(PropertyListInput::maximumBytes + 1);
    if (bytes.size() > PropertyListInput::maximumBytes)
        return fail(
            error,
            QStringLiteral("is larger than %1 MiB").arg(PropertyListInput::maximumBytes / (1024 * 1024)));
    return true;
}

/// A signed message is one ASN.1 sequence, and no property list starts like that.
bool isSignedMessage(const QByteArray &bytes)
{
    return bytes.size() > 1 && bytes.at(0) == '\x30' && (bytes.at(1) & 0x80) != 0;
}

CommandResult decode(const QString &path, const QStringList &options)
{
    // The command would take a name that starts with a dash for an option.
    return Command::run(QStringLiteral("/usr/bin/security"),
                        QStringList{QStringLiteral("cms"), QStringLiteral("-D")} + options +
                            QStringList{QStringLiteral("-i"), QFileInfo(path).absoluteFilePath()},
                        -1, PropertyListInput::maximumBytes);
}

bool readSignedContent(const QString &path, QByteArray &bytes, QString &error)
{
    const CommandResult decoded = decode(path, {});
    if (!decoded.succeeded())
        return fail(error, QStringLiteral("is a damaged signed message (%1)").arg(decoded.problem()));
    if (decoded.truncated)
        return fail(
            error,
            QStringLiteral("holds a signed profile that cannot be read (%1)").arg(decoded.outputProblem()));
    bytes = decoded.standardOutput;
    return true;
}

/// The command describes each signer in a header line like `SMIME: signer0.id="Jane Doe"; …`.
QString signerOf(const QString &path)
{
    const CommandResult headers =
        decode(path, {QStringLiteral("-h"), QStringLiteral("1"), QStringLiteral("-n")});
    static const QRegularExpression signerName(QStringLiteral("signer0\\.id=\"([^\"\\n]+)\""));
    const QString name = signerName.match(QString::fromUtf8(headers.standardOutput)).captured(1);
    return name.isEmpty() ? QStringLiteral("unknown signer") : printableText(name);
}

bool read(const QString &path, EditorXmlData &data, bool &editor, QString &error, QString &signer)
{
    QByteArray bytes;
    if (!readFile(path, bytes, error))
        return false;
    if (isSignedMessage(bytes)) {
        if (!readSignedContent(path, bytes, error))
            return false;
        signer = signerOf(path);
    }
    return ConfigGenerator::importAny(bytes, data, editor, error);
}

} // namespace

bool readProfile(const QString &path, EditorXmlData &data, bool *isEditor, QString *error, QString *signer)
{
    bool editor = false;
    QString problem;
    QString signedBy;
    const bool success = read(path, data, editor, problem, signedBy);
    if (isEditor)
        *isEditor = editor;
    if (error)
        *error = problem;
    if (signer)
        *signer = signedBy;
    return success;
}

bool readInstalledProfile(EditorXmlData &data, bool editor, QString *problem)
{
    return ConfigGenerator::importInstalled(data, editor, ConfigGenerator::EmptyPolicy::NotSet, *problem) ==
           ConfigGenerator::Import::Filled;
}

QString profileText(const EditorXmlData &data, bool editor)
{
    return ConfigGenerator::generate(&data, editor);
}
