// SPDX-License-Identifier: Apache-2.0
#include "profile/ProfileDocument.h"

#include "profile/ConfigGenerator.h"
#include "profile/propertylist/PropertyListInput.h"

#include <QFile>
#include <QFileInfo>

#include <utility>

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

bool readSignedContent(const QString &path, QByteArray &bytes, QString &error)
{
    const CommandResult decoded = SignedMessage::decoded(path, PropertyListInput::maximumBytes);
    if (!decoded.succeeded())
        return fail(error, QStringLiteral("is a damaged signed message (%1)").arg(decoded.problem()));
    if (decoded.truncated)
        return fail(
            error,
            QStringLiteral("holds a signed profile that cannot be read (%1)").arg(decoded.outputProblem()));
    bytes = decoded.standardOutput;
    return true;
}

/// Not every system lets the decoding fail for a signature that does not fit.
bool readSigners(const QString &path, QList<ProfileSigner> &signers, QString &error)
{
    static const QStringList damaged{QStringLiteral("BadSignature"), QStringLiteral("DigestMismatch"),
                                     QStringLiteral("MalformedSignature")};
    signers = SignedMessage::signersOf(path);
    if (signers.isEmpty())
        signers.append({QStringLiteral("unknown signer"), QString(), true});
    for (const ProfileSigner &signer : std::as_const(signers)) {
        if (damaged.contains(signer.status))
            return fail(error, QStringLiteral("is a damaged signed message (its signature is called %1)")
                                   .arg(signer.status));
    }
    return true;
}

bool read(const QString &path, EditorXmlData &data, bool &editor, QString &error,
          QList<ProfileSigner> &signers)
{
    QByteArray bytes;
    if (!readFile(path, bytes, error))
        return false;
    if (SignedMessage::isOne(bytes)) {
        if (!readSignedContent(path, bytes, error) || !readSigners(path, signers, error))
            return false;
    }
    return ConfigGenerator::importAny(bytes, data, editor, error);
}

} // namespace

bool readProfile(const QString &path, EditorXmlData &data, bool *isEditor, QString *error,
                 QList<ProfileSigner> *signers)
{
    bool editor = false;
    QString problem;
    QList<ProfileSigner> signedBy;
    const bool success = read(path, data, editor, problem, signedBy);
    if (isEditor)
        *isEditor = editor;
    if (error)
        *error = problem;
    if (signers)
        *signers = signedBy;
    return success;
}

bool readInstalledProfile(EditorXmlData &data, bool editor, QString *problem)
{
    return ConfigGenerator::importInstalled(data, editor, ConfigGenerator::EmptyPolicy::NotSet, *problem) ==
           ConfigGenerator::Import::Filled;
}

QString profileText(const EditorXmlData &data, bool editor, QString *problem)
{
    return ConfigGenerator::generate(&data, editor, problem);
}
