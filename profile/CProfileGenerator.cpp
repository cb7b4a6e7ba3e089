// SPDX-License-Identifier: Apache-2.0
#include "profile/CProfileGenerator.h"

#include "config/ConfigDocument.h"
#include "config/Product.h"
#include "core/Logging.h"
#include "core/SafeFile.h"
#include "profile/ConfigGenerator.h"
#include "profile/LocalHostName.h"
#include "profile/PayloadUuid.h"
#include "profile/UserDefaults.h"

#include <QFile>
#include <QFileInfo>

namespace {

bool warn(const QString &text)
{
    qCWarning(logProfile).noquote() << text;
    return false;
}

/// The bytes up to the first NUL. One byte more than may be read, so that a file that is too large is noticed
/// without reading all of it.
QByteArray firstText(QFile &file)
{
    const QByteArray bytes = file.read(ConfigDocument::maximumImportBytes + 1);
    return bytes.left(static_cast<int>(qstrlen(bytes.constData())));
}

} // namespace

bool CProfileGenerator::CreateProfile(const EditorXmlData *data, const QString &path, bool bEditor)
{
    if (path.isEmpty())
        return false;
    const Result<QString> text = ConfigGenerator::generate(data, Product::of(bEditor));
    if (!text)
        return warn(QStringLiteral("generateConfig failure!"));
    const QString absolutePath = QFileInfo(path).absoluteFilePath();
    qCDebug(logProfile).noquote() << "configData : " << *text;
    qCDebug(logProfile).noquote() << "Absolute path:" << absolutePath;
    if (const Result<> written = SafeFile::replaceContents(path, text->toUtf8()); !written)
        return warn(
            QStringLiteral("can not access filepath : %1 (%2)").arg(absolutePath, written.problem().text));
    qCDebug(logProfile).noquote()
        << QStringLiteral("profile generated successfully \uFF1A%1...").arg(absolutePath);
    return true;
}

bool CProfileGenerator::ImportProfile(const QString &path, EditorXmlData *data, bool bEditor)
{
    if (path.isEmpty() || !data)
        return warn(QStringLiteral("Invalid filepath or EditorXmlData."));
    QFile file(path);
    // Opening a named pipe would wait for its writer.
    if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly | QIODevice::Text))
        return warn(QStringLiteral("Failed to open file: ") + path);
    const QByteArray text = firstText(file);
    if (text.size() > ConfigDocument::maximumImportBytes)
        return warn(QStringLiteral("Failed to parse profile : it is larger than 1 MiB"));
    const Result<bool> isFilled =
        ConfigGenerator::importText(QString::fromUtf8(text), *data, Product::of(bEditor));
    if (!isFilled)
        return warn(QStringLiteral("Failed to parse profile : ") + isFilled.problem().text);
    return *isFilled;
}

bool CProfileGenerator::ImportProfile(EditorXmlData *data, bool bEditor)
{
    if (!data)
        return warn(QStringLiteral("Invalid EditorXmlData."));
    using namespace ConfigGenerator;
    const Result<Installed> result = importInstalled(*data, Product::of(bEditor));
    if (result && *result == Installed::Filled)
        return true;
    qCDebug(logProfile, "Profiles that were installed for the device are listed for root only.");
    const bool isListed = result && *result != Installed::Nothing;
    return isListed ? false : warn(QStringLiteral("Failed to load system profiles."));
}

QString CProfileGenerator::GenPayloadIdentifier(QString *uuid)
{
    const QString fresh = freshUuid();
    if (uuid)
        *uuid = fresh;
    return QStringLiteral("%1.%2").arg(localHostName(), fresh);
}

QString CProfileGenerator::GetSysProfileIdentifier(QString *uuid, bool bEditor)
{
    const Product &product = Product::of(bEditor);
    const auto installed = ConfigGenerator::installedIdentity(product);
    if (!installed || !*installed) {
        warn(QStringLiteral("Failed to load system profiles."));
        return {};
    }
    const ConfigGenerator::InstalledIdentity &identity = **installed;
    if (uuid && identity.uuid)
        *uuid = *identity.uuid;
    if (identity.identifier.isEmpty())
        warn(QStringLiteral("No matching profile identifier found for bundle ID: ") +
             product.bundleIdentifier);
    return identity.identifier;
}

QString CProfileGenerator::GetLastOpenDirectory()
{
    return readLastOpenDirectory();
}

void CProfileGenerator::SyncLastOpenDirectory(const QString &filePath)
{
    storeLastOpenDirectory(QFileInfo(filePath).absolutePath());
}
