// SPDX-License-Identifier: Apache-2.0
#include "config/CCommon.h"
#include "config/ConfigDocument.h"
#include "config/EditorXmlData.h"
#include "core/Command.h"
#include "core/SafeFile.h"
#include "package/BuildPaths.h"
#include "package/Failure.h"
#include "core/Logging.h"
#include "package/ScriptsFolder.h"

#include <QDir>
#include <QDomDocument>
#include <QFile>
#include <QFileInfo>

namespace {

/// Edits postinstall in place. An expression that matches nothing is no failure.
bool editPostinstall(const QString &scripts, const QString &expression, QString *error)
{
    if (const Result<> script = isRealScript(scripts, QStringLiteral("postinstall")); !script)
        return ended(script, error);
    const CommandResult result =
        Command::run(QStringLiteral("sed"),
                     {QStringLiteral("-i"), QString(), expression, scripts + QStringLiteral("postinstall")});
    return result.succeeded() || fail(error, result.problem());
}

/// Copies a file into a real scripts folder under a name that is not taken there.
bool addToScripts(const QString &file, const QString &scripts, const QString &name, QString *error)
{
    if (const Result<> folder = isRealFolder(scripts); !folder)
        return ended(folder, error);
    return ended(SafeFile::copyNew(file, scripts + name, SafeFile::Lasting::No), error);
}

/// Neither the umask nor the user of whoever builds the package shows in what it adds.
constexpr QFile::Permissions readableFile =
    QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup | QFile::ReadOther;
constexpr QFile::Permissions readableProgram =
    readableFile | QFile::ExeOwner | QFile::ExeGroup | QFile::ExeOther;

bool setPermissions(const QString &path, QFile::Permissions permissions, QString *error)
{
    QFile file(path);
    return file.setPermissions(permissions) || fail(error, path + QStringLiteral(": ") + file.errorString());
}

bool addDocument(const QString &document, const QString &scripts, QString *error)
{
    if (SafeFile::kindOf(scripts + QStringLiteral("ProfStore.xml")) != SafeFile::Kind::Missing)
        return fail(error, QStringLiteral("the package was customized before: it has a \"ProfStore.xml\" in "
                                          "its scripts; start from the vendor's package"));
    return addToScripts(document, scripts, QStringLiteral("ProfStore.xml"), error) &&
           setPermissions(scripts + QStringLiteral("ProfStore.xml"), readableFile, error);
}

bool addDefaultViewerTool(const QString &scripts, QString *error)
{
    const QString name = QStringLiteral("duti");
    return addToScripts(QStringLiteral(":/duti"), scripts, name, error) &&
           setPermissions(scripts + name, readableProgram, error);
}

} // namespace

bool CCommon::EditorXmlConfigfileToPkg(QString pkgDir, bool bEditor, const QString &xmlPath, QString *error)
{
    return EditorXmlConfigfileToPkg(pkgDir, bEditor, xmlPath, theEditorXmlData, error);
}

bool CCommon::EditorXmlConfigfileToPkg(QString pkgDir, bool bEditor, const QString &xmlPath,
                                       const EditorXmlData &settings, QString *error,
                                       SafeFile::Lasting lasting)
{
    const Result<QString> version = ReadAppVersion(pkgDir, bEditor);
    if (!version)
        return fail(error, version.problem().line());
    const QDomDocument document = ConfigDocument::fromSettings(settings, bEditor, *version);
    const QString path = xmlPath.isEmpty() ? temporaryDocumentPath() : xmlPath;
    QString cause;
    if (!ConfigDocument::save(document, path, &cause, lasting))
        return fail(error, path + QStringLiteral(": ") + cause);
    const bool added = EditorXmlAddfileToPkg(path, pkgDir, bEditor, error);
    qCDebug(logPackage).noquote() << QStringLiteral("xmlFilePath : ") + path;
    return added;
}

bool CCommon::EditorXmlAddfileToPkg(QString xmlFile, QString pkgDir, bool bEditor, QString *error)
{
    const QString scripts = scriptsFolder(pkgDir, bEditor);
    qCDebug(logPackage).noquote() << QStringLiteral("qsTemp:") + scripts;
    if (!addDocument(xmlFile, scripts, error)) {
        qCDebug(logPackage) << "CCommon::EditorXmlAddfileToPkg: copy xml file fail!";
        return false;
    }
    return editPostinstall(scripts, QStringLiteral("s/editorXmlFileCopy=0/editorXmlFileCopy=1/g"), error);
}

bool CCommon::RegistryToPkg(QString key, QString name, QString value, QString pkgDir, bool bEditor,
                            QString *error)
{
    const QString entry = QStringLiteral("%1/%2:%3;").arg(key, name, value);
    return editPostinstall(scriptsFolder(pkgDir, bEditor),
                           QStringLiteral("s+plistValue=\"+plistValue=\"%1+").arg(entry), error);
}

bool CCommon::SetDefaultPDF(QString pkgDir, QString *error)
{
    const QString scripts = pkgDir + QDir::separator() + QStringLiteral("Scripts/");
    if (!addDefaultViewerTool(scripts, error)) {
        qCDebug(logPackage) << "SetDefaultPDF: copy duti fail!";
        return false;
    }
    return editPostinstall(scripts, QStringLiteral("s/setdefaultpdf=0/setdefaultpdf=1/g"), error);
}

bool CCommon::AddFileToPkg(QString file, QString topDir, bool bEditor)
{
    const QFileInfo source(file);
    if (!source.exists())
        return false;
    const QString scripts =
        topDir + QDir::separator() + componentPackageName(bEditor) + QStringLiteral("/Scripts/");
    const bool copied = addToScripts(file, scripts, source.fileName(), nullptr);
    if (!copied)
        qCDebug(logPackage) << "AddFileToPkg: copy file fail!";
    return copied;
}
