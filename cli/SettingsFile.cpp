// SPDX-License-Identifier: Apache-2.0
#include "cli/SettingsFile.h"

#include "cli/InputFile.h"
#include "cli/Installer.h"
#include "cli/PrivateFolder.h"
#include "cli/SettingsJson.h"
#include "config/ConfigDocument.h"
#include "config/Product.h"
#include "config/UnreadSettings.h"
#include "core/PrintableText.h"
#include "core/SafeFile.h"
#include "profile/propertylist/PropertyListInput.h"
#include "profile/ReadProfile.h"

namespace {

/// Loads the document at `path`, which warnings call `subject`. The problem is without what to do about it.
Result<SettingsFile> loadDocument(const QString &path, const QString &subject)
{
    const Result<QDomDocument> document = ConfigDocument::load(path);
    if (!document)
        return Problem{path, document.problem().text};
    SettingsFile file;
    const QString root = document->documentElement().tagName();
    file.product = Product::find(&Product::rootElement, root);
    if (!file.product)
        return Problem{path, QStringLiteral("its root element is \"%1\"").arg(printableStart(root, 64))};
    ConfigDocument::apply(*document, file.settings);
    file.warnings = unreadWarnings(subject, unreadSettings(*document));
    return file;
}

/// Adds what a document, a profile or JSON holds besides its signature.
Result<SettingsFile> withContents(SettingsFile file, const QString &path)
{
    const Result<QByteArray> bytes = SafeFile::readContents(path);
    if (!bytes)
        return bytes.problem();
    file.contents = SignedMessage::isOne(*bytes)
                        ? SignedMessage::decoded(path, PropertyListInput::maximumBytes).standardOutput
                        : *bytes;
    return file;
}

Result<SettingsFile> readPackagedDocument(const QString &package, const QString &document, Contents contents)
{
    if (SafeFile::kindOf(document) != SafeFile::Kind::File)
        return Problem{package, QStringLiteral("holds no ProfStore.xml, so it was not customized; give a "
                                               "package that this tool has made")};
    Result<SettingsFile> file = loadDocument(document, package);
    if (!file)
        return Problem{package,
                       QStringLiteral("its ProfStore.xml is no configuration document (%1); build the "
                                      "package again")
                           .arg(file.problem().text)};
    file->kind = QStringLiteral("package");
    return contents == Contents::Kept ? withContents(*file, document) : file;
}

Result<SettingsFile> readPackage(const QString &path, Contents contents)
{
    const PrivateFolder folder;
    if (const Result<> usable = folder.check(); !usable)
        return usable.problem();
    const Result<const Product *> product = productOfInstaller(path);
    if (!product)
        return product.problem();
    const Result<QString> scripts =
        extractScripts(path, **product, folder.makeSubfolder(QStringLiteral("inspect")));
    if (!scripts)
        return unreadableScripts(path, scripts.problem().line());
    Result<SettingsFile> file =
        readPackagedDocument(path, *scripts + QStringLiteral("/ProfStore.xml"), contents);
    if (file)
        file->product = *product;
    return file;
}

QString signerText(const ProfileSigner &signer)
{
    const QString name = QStringLiteral("\"%1\"").arg(printableText(signer.name));
    if (signer.isKnown)
        return name;
    if (signer.status.startsWith(QLatin1String("SigningCert")))
        return name + QStringLiteral(", whose certificate has expired or is unknown to this system");
    return QStringLiteral("%1, whose signature this system calls \"%2\"").arg(name, signer.status);
}

Result<SettingsFile> parseDocument(const QString &path)
{
    Result<SettingsFile> file = loadDocument(path, path);
    if (!file)
        return Problem{path,
                       QStringLiteral("is no configuration document (%1); give one that this tool has made")
                           .arg(file.problem().text)};
    file->kind = QStringLiteral("document");
    return file;
}

/// Without a product the file has to name it.
Result<SettingsFile> parseJson(const QString &path, const Product *product)
{
    SettingsFile file;
    file.product = product;
    const Result<QByteArray> bytes = SafeFile::readContents(path);
    const Result<> read = bytes ? readSettingsJson(*bytes, file) : bytes.problem();
    if (!read)
        return Problem{path,
                       QStringLiteral("is no JSON of settings (%1); give what \"pct show --json\" prints, "
                                      "or a part of it")
                           .arg(read.problem().text)};
    if (file.product)
        return file;
    return Problem{path,
                   QStringLiteral("does not say for which product it is; add \"product\": \"editor\" or "
                                  "\"reader\"")};
}

Result<SettingsFile> parseProfile(const QString &path, const Product *wanted = nullptr)
{
    SettingsFile file;
    const Result<ReadProfile> profile = readProfile(path, file.settings, wanted);
    if (!profile)
        return Problem{path, QStringLiteral("%1; give a profile of the %2 or the %3")
                                 .arg(profile.problem().text, QString(Product::editor().title),
                                      QString(Product::reader().title))};
    file.kind = QStringLiteral("profile");
    file.product = profile->product;
    file.signers = profile->signers;
    return file;
}

/// An old-style profile may begin with anything.
Result<SettingsFile> parseUnknown(const QString &path, const Product *wanted)
{
    Result<SettingsFile> document = parseDocument(path);
    if (document)
        return document;
    Result<SettingsFile> profile = parseProfile(path, wanted);
    return profile ? profile : document;
}

Result<SettingsFile> parse(const QString &path, FileKind kind, const Product *product)
{
    switch (kind) {
    case FileKind::Profile:
        return parseProfile(path, product);
    case FileKind::Document:
        return parseDocument(path);
    case FileKind::Json:
        return parseJson(path, product);
    default:
        return parseUnknown(path, product);
    }
}

} // namespace

Result<SettingsFile> readDocumentFile(const QString &path, const Product *product)
{
    const Result<> checked = checkFile(path, FileKind::Document, QStringLiteral("a configuration document"));
    if (!checked)
        return checked.problem();
    return kindOfFile(path) == FileKind::Json ? parseJson(path, product) : parseDocument(path);
}

Result<SettingsFile> readDocument(const Product &wanted, const QString &path)
{
    Result<SettingsFile> file = readDocumentFile(path, &wanted);
    if (file && file->product != &wanted)
        file->warnings.append(otherProductWarning(path, *file->product, wanted));
    return file;
}

Result<SettingsFile> readProfileFile(const QString &path, const Product *wanted)
{
    const Result<> file = checkFile(path, FileKind::Profile, QStringLiteral("a configuration profile"));
    return file ? parseProfile(path, wanted) : file.problem();
}

QString signersText(const QList<ProfileSigner> &signers)
{
    QStringList texts;
    for (const ProfileSigner &signer : signers)
        texts << signerText(signer);
    return texts.join(QStringLiteral(" and by "));
}

Result<SettingsFile> readSettings(const QString &path, const Product *product, Contents contents)
{
    const QString give = QStringLiteral("a configuration document, a profile or a customized package");
    if (const Result<> readable = checkReadable(path, give); !readable)
        return readable.problem();
    const FileKind kind = kindOfFile(path);
    if (kind == FileKind::Package)
        return readPackage(path, contents);
    Result<SettingsFile> file = parse(path, kind, product);
    if (file && contents == Contents::Kept)
        return withContents(*file, path);
    return file;
}
