// SPDX-License-Identifier: Apache-2.0
#include "profile/ReadProfile.h"

#include "config/EditorXmlData.h"
#include "profile/ConfigGenerator.h"
#include "profile/propertylist/PropertyListInput.h"

#include <QFile>
#include <QFileInfo>

#include <utility>

namespace {

Result<QByteArray> readFile(const QString &path)
{
    // Opening a named pipe would wait for its writer.
    const QFileInfo info(path);
    if (!info.exists())
        return Problem{{}, QStringLiteral("does not exist")};
    if (!info.isFile())
        return Problem{{}, QStringLiteral("is not a regular file")};
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return Problem{{}, QStringLiteral("cannot be read (%1)").arg(file.errorString())};
    const QByteArray bytes = file.read(PropertyListInput::maximumBytes + 1);
    if (bytes.size() > PropertyListInput::maximumBytes)
        return Problem{
            {}, QStringLiteral("is larger than %1 MiB").arg(PropertyListInput::maximumBytes / (1024 * 1024))};
    return bytes;
}

Result<QByteArray> readSignedContent(const QString &path)
{
    const CommandResult decoded = SignedMessage::decoded(path, PropertyListInput::maximumBytes);
    if (!decoded.succeeded())
        return Problem{{}, QStringLiteral("is a damaged signed message (%1)").arg(decoded.problem())};
    if (decoded.truncated)
        return Problem{
            {},
            QStringLiteral("holds a signed profile that cannot be read (%1)").arg(decoded.outputProblem())};
    return decoded.standardOutput;
}

/// Not every system lets the decoding fail for a signature that does not fit.
Result<QList<ProfileSigner>> readSigners(const QString &path)
{
    static const QStringList damaged{QStringLiteral("BadSignature"), QStringLiteral("DigestMismatch"),
                                     QStringLiteral("MalformedSignature")};
    QList<ProfileSigner> signers = SignedMessage::signersOf(path);
    if (signers.isEmpty())
        signers.append({QStringLiteral("unknown signer"), QString(), true});
    for (const ProfileSigner &signer : std::as_const(signers)) {
        if (damaged.contains(signer.status))
            return Problem{{},
                           QStringLiteral("is a damaged signed message (its signature is called %1)")
                               .arg(signer.status)};
    }
    return signers;
}

Result<ReadProfile> read(const QByteArray &bytes, EditorXmlData &data, const Product *wanted,
                         const QList<ProfileSigner> &signers)
{
    const Result<const Product *> product = ConfigGenerator::importAny(bytes, data, wanted);
    if (!product)
        return product.problem();
    return ReadProfile{*product, signers};
}

Result<ReadProfile> readSigned(const QString &path, EditorXmlData &data, const Product *wanted)
{
    const Result<QByteArray> content = readSignedContent(path);
    if (!content)
        return content.problem();
    const Result<QList<ProfileSigner>> signers = readSigners(path);
    return signers ? read(*content, data, wanted, *signers) : signers.problem();
}

} // namespace

Result<ReadProfile> readProfile(const QString &path, EditorXmlData &data, const Product *wanted)
{
    const Result<QByteArray> bytes = readFile(path);
    if (!bytes)
        return bytes.problem();
    return SignedMessage::isOne(*bytes) ? readSigned(path, data, wanted) : read(*bytes, data, wanted, {});
}

Result<bool> readInstalledProfile(EditorXmlData &data, const Product &product)
{
    const Result<QList<EditorXmlData>> installed = ConfigGenerator::installedProfiles(product);
    if (!installed)
        return installed.problem();
    if (installed->isEmpty())
        return false;
    data = installed->first();
    return true;
}
