// SPDX-License-Identifier: Apache-2.0
#include "cli/SettingsFile.h"

#include "cli/InputFile.h"
#include "cli/Installer.h"
#include "cli/PrivateFolder.h"
#include "cli/Product.h"
#include "config/ConfigDocument.h"
#include "config/UnreadSettings.h"
#include "core/PrintableText.h"
#include "core/SafeFile.h"
#include "profile/ProfileDocument.h"

#include <QDomDocument>

namespace {

/// Loads the document at `path`, which warnings call `subject`; `error` gets what is wrong, without what to
/// do about it.
bool loadDocument(const QString &path, const QString &subject, SettingsFile &file, QString &error)
{
    QDomDocument document;
    if (!ConfigDocument::load(path, document, &error))
        return false;
    const QString root = document.documentElement().tagName();
    file.product = findProduct(&Product::rootElement, root);
    if (!file.product) {
        error = QStringLiteral("its root element is \"%1\"").arg(printableStart(root, 64));
        return false;
    }
    file.settings = EditorXmlData();
    ConfigDocument::apply(document, file.settings);
    file.warnings = unreadWarnings(subject, unreadSettings(document));
    return true;
}

Verdict readScripts(const QString &package, bool editor, const QString &folder, QString &scripts)
{
    QString error;
    scripts = extractScripts(package, editor, folder, &error);
    if (!scripts.isEmpty())
        return std::nullopt;
    return unreadableScripts(package, error);
}

Verdict readPackagedDocument(const QString &package, const QString &document, SettingsFile &file)
{
    if (SafeFile::kindOf(document) != SafeFile::Kind::File)
        return Problem{package, QStringLiteral("holds no ProfStore.xml, so it was not customized; give a "
                                               "package that this tool has made")};
    QString error;
    if (loadDocument(document, package, file, error))
        return std::nullopt;
    return Problem{package, QStringLiteral("its ProfStore.xml is no configuration document (%1); build the "
                                           "package again")
                                .arg(error)};
}

Verdict readPackage(const QString &path, SettingsFile &file)
{
    const PrivateFolder folder;
    Verdict problem = folder.problem();
    const Product *product = problem ? nullptr : productOfInstaller(path, problem);
    if (!product)
        return problem;
    QString scripts;
    problem = readScripts(path, product->editor, folder.makeSubfolder(QStringLiteral("inspect")), scripts);
    if (problem)
        return problem;
    problem = readPackagedDocument(path, scripts + QStringLiteral("/ProfStore.xml"), file);
    file.kind = QStringLiteral("package");
    file.product = product;
    return problem;
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

Verdict parseDocument(const QString &path, SettingsFile &file)
{
    file.kind = QStringLiteral("document");
    QString error;
    if (loadDocument(path, path, file, error))
        return std::nullopt;
    return Problem{
        path,
        QStringLiteral("is no configuration document (%1); give one that this tool has made").arg(error)};
}

Verdict parseProfile(const QString &path, SettingsFile &file)
{
    file.kind = QStringLiteral("profile");
    file.settings = EditorXmlData();
    bool editor = false;
    QString error;
    if (!readProfile(path, file.settings, &editor, &error, &file.signers))
        return Problem{
            path,
            QStringLiteral("%1; give a profile of the Pelix PDF Editor or the Pelix PDF Reader").arg(error)};
    file.product = &productOf(editor);
    return std::nullopt;
}

} // namespace

Verdict readDocument(const QString &path, SettingsFile &file)
{
    const Verdict problem = wrongFile(path, FileKind::Document, QStringLiteral("a configuration document"));
    return problem ? problem : parseDocument(path, file);
}

Verdict readProfileFile(const QString &path, SettingsFile &file)
{
    const Verdict problem = wrongFile(path, FileKind::Profile, QStringLiteral("a configuration profile"));
    return problem ? problem : parseProfile(path, file);
}

QString signersText(const QList<ProfileSigner> &signers)
{
    QStringList texts;
    for (const ProfileSigner &signer : signers)
        texts << signerText(signer);
    return texts.join(QStringLiteral(" and by "));
}

Verdict readSettings(const QString &path, SettingsFile &file)
{
    if (Verdict problem =
            unreadable(path, QStringLiteral("a configuration document, a profile or a customized package")))
        return problem;
    switch (kindOfFile(path)) {
    case FileKind::Package:
        return readPackage(path, file);
    case FileKind::Profile:
        return parseProfile(path, file);
    default:
        return parseDocument(path, file);
    }
}
