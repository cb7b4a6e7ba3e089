// SPDX-License-Identifier: Apache-2.0
#include "package/ExpandedPackage.h"

#include "config/CCommon.h"
#include "config/ConfigDocument.h"
#include "config/EditorXmlData.h"
#include "config/Product.h"
#include "core/Command.h"
#include "core/Logging.h"
#include "package/BuildPaths.h"
#include "package/ProductVersion.h"
#include "package/ScriptLines.h"
#include "package/ScriptPatch.h"
#include "package/ScriptsFolder.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace {

/// Edits postinstall in place. An expression that matches nothing is no failure.
Result<> editPostinstall(const QString &scripts, const QString &expression)
{
    if (Result<> script = isRealScript(scripts, QStringLiteral("postinstall")); !script)
        return script;
    const CommandResult result =
        Command::run(QStringLiteral("sed"),
                     {QStringLiteral("-i"), QString(), expression, scripts + QStringLiteral("postinstall")});
    return result.succeeded() ? Result<>() : Problem{{}, result.problem()};
}

/// Copies a file into a real scripts folder under a name that is not taken there.
Result<> addToScripts(const QString &file, const QString &scripts, const QString &name)
{
    if (Result<> folder = isRealFolder(scripts); !folder)
        return folder;
    return SafeFile::copyNew(file, scripts + name, SafeFile::Lasting::No);
}

/// Neither the umask nor the user of whoever builds the package shows in what it adds.
constexpr QFile::Permissions readableFile =
    QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup | QFile::ReadOther;
constexpr QFile::Permissions readableProgram =
    readableFile | QFile::ExeOwner | QFile::ExeGroup | QFile::ExeOther;

Result<> setPermissions(const QString &path, QFile::Permissions permissions)
{
    QFile file(path);
    return file.setPermissions(permissions) ? Result<>() : Problem{path, file.errorString()};
}

Result<> addWith(QFile::Permissions permissions, const QString &file, const QString &scripts,
                 const QString &name)
{
    if (Result<> added = addToScripts(file, scripts, name); !added)
        return added;
    return setPermissions(scripts + name, permissions);
}

Result<> copyDocument(const QString &document, const QString &scripts)
{
    const QString name = QStringLiteral("ProfStore.xml");
    if (SafeFile::kindOf(scripts + name) != SafeFile::Kind::Missing)
        return Problem{{},
                       QStringLiteral("the package was customized before: it has a \"ProfStore.xml\" in its "
                                      "scripts; start from the vendor's package")};
    return addWith(readableFile, document, scripts, name);
}

Result<> adapt(const QString &script, LinesEdit patch, const QString &folder, const Product &product)
{
    const Result<> patched = patchScript(scriptsFolder(folder, product) + script, patch);
    if (patched)
        return patched;
    const QString cause = patched.problem().text;
    qCDebug(logPackage).noquote() << QStringLiteral("adapt %1 for Intune failed: ").arg(script) + cause;
    return Problem{{}, unpatchedReason(cause)};
}

QString loggedScriptsFolder(const QString &folder, const Product &product)
{
    const QString scripts = scriptsFolder(folder, product);
    qCDebug(logPackage).noquote() << QStringLiteral("qsTemp:") + scripts;
    return scripts;
}

} // namespace

Result<QString> ExpandedPackage::version(const QString &folder, const Product &product)
{
    const QString path = loggedScriptsFolder(folder, product) + QStringLiteral("postinstall");
    if (SafeFile::kindOf(path) == SafeFile::Kind::Missing)
        return QString();
    const Result<QString> postinstall = readScript(path);
    return postinstall ? productVersion(*postinstall) : postinstall;
}

Result<> ExpandedPackage::addSettings(const QString &folder, const Product &product,
                                      const EditorXmlData &settings, const QString &path,
                                      SafeFile::Lasting lasting)
{
    const Result<QString> productVersion = version(folder, product);
    if (!productVersion)
        return productVersion.problem();
    const QDomDocument document = ConfigDocument::fromSettings(settings, product, *productVersion);
    const QString written = path.isEmpty() ? temporaryDocumentPath() : path;
    if (const Result<> saved = ConfigDocument::save(document, written, lasting); !saved)
        return Problem{written, saved.problem().text};
    Result<> added = addDocument(written, folder, product);
    qCDebug(logPackage).noquote() << QStringLiteral("xmlFilePath : ") + written;
    return added;
}

Result<> ExpandedPackage::addDocument(const QString &document, const QString &folder, const Product &product)
{
    const QString scripts = loggedScriptsFolder(folder, product);
    if (Result<> added = copyDocument(document, scripts); !added) {
        qCDebug(logPackage) << "CCommon::EditorXmlAddfileToPkg: copy xml file fail!";
        return added;
    }
    return editPostinstall(scripts, QStringLiteral("s/editorXmlFileCopy=0/editorXmlFileCopy=1/g"));
}

Result<> ExpandedPackage::addPreference(const Preference &preference, const QString &folder,
                                        const Product &product)
{
    const QString entry = QStringLiteral("%1/%2:%3;").arg(preference.key, preference.name, preference.value);
    return editPostinstall(scriptsFolder(folder, product),
                           QStringLiteral("s+plistValue=\"+plistValue=\"%1+").arg(entry));
}

Result<> ExpandedPackage::addIManageLogin(const QString &folder, const Product &product)
{
    return addPreference(
        {QStringLiteral("iManage10/loginMethod"), QStringLiteral("UseOAuth2"), QStringLiteral("1")}, folder,
        product);
}

Result<> ExpandedPackage::makeDefaultViewer(const QString &component)
{
    const QString scripts = component + QDir::separator() + QStringLiteral("Scripts/");
    if (Result<> added = addWith(readableProgram, QStringLiteral(":/duti"), scripts, QStringLiteral("duti"));
        !added) {
        qCDebug(logPackage) << "SetDefaultPDF: copy duti fail!";
        return added;
    }
    return editPostinstall(scripts, QStringLiteral("s/setdefaultpdf=0/setdefaultpdf=1/g"));
}

Result<> ExpandedPackage::adaptPreinstall(const QString &folder, const Product &product)
{
    return adapt(QStringLiteral("preinstall"), patchPreinstallLines, folder, product);
}

Result<> ExpandedPackage::adaptPostinstall(const QString &folder, const Product &product)
{
    return adapt(QStringLiteral("postinstall"), patchPostinstallLines, folder, product);
}

QString CCommon::GetAppVersion(QString pkgDir, bool bEditor)
{
    const Result<QString> version = ExpandedPackage::version(pkgDir, Product::of(bEditor));
    return version ? *version : QString();
}

bool CCommon::EditorXmlConfigfileToPkg(QString pkgDir, bool bEditor, const QString &xmlPath)
{
    return bool(ExpandedPackage::addSettings(pkgDir, Product::of(bEditor), theEditorXmlData, xmlPath));
}

bool CCommon::EditorXmlAddfileToPkg(QString xmlFile, QString pkgDir, bool bEditor)
{
    return bool(ExpandedPackage::addDocument(xmlFile, pkgDir, Product::of(bEditor)));
}

bool CCommon::RegistryToPkg(QString key, QString name, QString value, QString pkgDir, bool bEditor)
{
    return bool(ExpandedPackage::addPreference({key, name, value}, pkgDir, Product::of(bEditor)));
}

bool CCommon::SetDefaultPDF(QString pkgDir)
{
    return bool(ExpandedPackage::makeDefaultViewer(pkgDir));
}

bool CCommon::AddFileToPkg(QString file, QString topDir, bool bEditor)
{
    const QFileInfo source(file);
    if (!source.exists())
        return false;
    const QString scripts =
        topDir + QDir::separator() + Product::of(bEditor).componentPackage + QStringLiteral("/Scripts/");
    const Result<> copied = addToScripts(file, scripts, source.fileName());
    if (!copied)
        qCDebug(logPackage) << "AddFileToPkg: copy file fail!";
    return bool(copied);
}

bool CCommon::AdaptPreInstallForIntune(QString pkgDir, bool bEditor)
{
    return bool(ExpandedPackage::adaptPreinstall(pkgDir, Product::of(bEditor)));
}

bool CCommon::AdaptPostInstallForIntune(QString pkgDir, bool bEditor)
{
    return bool(ExpandedPackage::adaptPostinstall(pkgDir, Product::of(bEditor)));
}
