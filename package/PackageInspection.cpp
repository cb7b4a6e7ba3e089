// SPDX-License-Identifier: Apache-2.0
#include "package/PackageInspection.h"

#include "config/Product.h"
#include "config/XmlStream.h"
#include "core/Command.h"
#include "core/SafeFile.h"
#include "package/ProductVersion.h"
#include "package/ScriptLines.h"
#include "package/ScriptPatch.h"
#include "package/ScriptsFolder.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <limits>
#include <unistd.h>

namespace {

/// Why the build leaves a script as it is, or empty.
QString whyUnpatched(const QStringList &lines, bool isPatched, LinesEdit edit)
{
    if (isPatched)
        return QStringLiteral("it was patched before");
    QStringList edited = lines;
    const Result<> result = edit(edited);
    return result ? QString() : unpatchedReason(result.problem().text);
}

int linesThatHold(const QString &text, const QStringList &lines)
{
    return static_cast<int>(std::count_if(lines.begin(), lines.end(),
                                          [&text](const QString &line) { return line.contains(text); }));
}

void inspectPreinstall(const QString &path, ScriptsInspection &inspection)
{
    const Result<QString> text = readScript(path);
    if (!text) {
        inspection.preinstallProblem = text.problem().text;
        return;
    }
    const QStringList lines = scriptLines(*text);
    inspection.preinstallPatched = isPatchedPreinstall(lines);
    inspection.preinstallProblem = whyUnpatched(lines, inspection.preinstallPatched, patchPreinstallLines);
}

void inspectPostinstall(const QString &path, ScriptsInspection &inspection)
{
    const Result<QString> text = readScript(path);
    if (!text) {
        inspection.postinstallProblem = text.problem().text;
        inspection.obstacle =
            QStringLiteral("its postinstall cannot be read: ") + inspection.postinstallProblem;
        return;
    }
    const QStringList lines = scriptLines(*text);
    inspection.postinstallPatched = isPatchedPostinstall(lines);
    inspection.postinstallProblem = whyUnpatched(lines, inspection.postinstallPatched, patchPostinstallLines);
    inspection.version = productVersion(*text, &inspection.versionUnusable);
    inspection.documentSwitches = linesThatHold(QStringLiteral("editorXmlFileCopy=0"), lines);
    inspection.viewerSwitches = linesThatHold(QStringLiteral("setdefaultpdf=0"), lines);
    inspection.preferenceLists = linesThatHold(QStringLiteral("plistValue=\""), lines);
}

/// That a script is a regular file; otherwise a clause tells what it is.
Result<> checkScript(const QString &scripts, const QString &name)
{
    switch (SafeFile::kindOf(scripts + name)) {
    case SafeFile::Kind::File:
        return {};
    case SafeFile::Kind::Missing:
        return Problem{{}, QStringLiteral("it has no %1 script to switch the settings on").arg(name)};
    case SafeFile::Kind::Link:
        return Problem{{}, QStringLiteral("its %1 is a link").arg(name)};
    case SafeFile::Kind::Folder:
        return Problem{{}, QStringLiteral("its %1 is a folder").arg(name)};
    case SafeFile::Kind::Other:
        break;
    }
    return Problem{{}, QStringLiteral("its %1 is not a regular file").arg(name)};
}

bool isMissing(const QString &path)
{
    return SafeFile::kindOf(path) == SafeFile::Kind::Missing;
}

bool isWritable(const QString &folder)
{
    return ::access(QFile::encodeName(folder).constData(), W_OK | X_OK) == 0;
}

/// That nothing else is in the way of a build than a script that cannot be read.
Result<> checkFolder(const QString &folder)
{
    const QString preinstall = QStringLiteral("preinstall");
    if (!isWritable(folder))
        return Problem{{}, QStringLiteral("nothing can be added to its scripts")};
    Result<> postinstall = checkScript(folder, QStringLiteral("postinstall"));
    if (!postinstall || isMissing(folder + preinstall))
        return postinstall;
    return checkScript(folder, preinstall);
}

QString missingSwitchText(const QString &switchText, const QString &consequence)
{
    return QStringLiteral("postinstall has no line with %1, so %2").arg(switchText, consequence);
}

QString unpatchedText(const QString &script, const QString &problem)
{
    return QStringLiteral("%1 stays as it is and looks for the user in HOME, which is wrong when a device "
                          "management installs the package: %2")
        .arg(script, problem);
}

/// Nothing for a script that the build adapts.
QList<BuildWarning> patchWarnings(const QString &script, const QString &problem, bool patched)
{
    if (problem.isEmpty())
        return {};
    if (patched)
        return {{script + QStringLiteral("-patched-before"),
                 QStringLiteral("%1 was patched before and stays as it is").arg(script)}};
    return {{script + QStringLiteral("-unpatched"), unpatchedText(script, problem)}};
}

/// Looks for a signature in a package's table of contents. The files of the package lie deeper.
class SignatureFinder : public XmlStream::Handler
{
public:
    bool found = false;

    Result<> startElement(const QString &name, const QVector<XmlStream::Attribute> &) override
    {
        constexpr int levelOfSignatures = 3;
        if (++m_level == levelOfSignatures)
            found |= name == QLatin1String("signature") || name == QLatin1String("x-signature");
        return {};
    }

    Result<> endElement() override
    {
        --m_level;
        return {};
    }

private:
    int m_level = 0;
};

/// A package may have any number of files; nothing of them is kept.
XmlStream::Limits limitsOfContents()
{
    XmlStream::Limits limits;
    limits.bytes = 64 * 1024 * 1024;
    limits.nodes = std::numeric_limits<int>::max();
    return limits;
}

Result<bool> readSignature(const QString &tableOfContents)
{
    QFile file(tableOfContents);
    if (!file.open(QIODevice::ReadOnly))
        return Problem{{}, file.errorString()};
    const XmlStream::Limits limits = limitsOfContents();
    SignatureFinder finder;
    const Result<> isRead = XmlStream::read(file.read(limits.bytes + 1), finder, limits);
    if (!isRead)
        return Problem{{}, QStringLiteral("the table of contents cannot be read: ") + isRead.problem().text};
    return finder.found;
}

/// The member as a file of its own below `into`, still packed.
Result<> extractMember(const QString &package, const QString &member, const QString &into)
{
    const CommandResult result =
        Command::run(QStringLiteral("xar"), {QStringLiteral("-x"), QStringLiteral("-f"), package,
                                             QStringLiteral("-C"), into, member});
    if (!result.succeeded())
        return Problem{{}, result.problem()};
    const QString folder = into + QLatin1Char('/') + QFileInfo(member).path();
    if (SafeFile::kindOf(folder) != SafeFile::Kind::Folder ||
        SafeFile::kindOf(into + QLatin1Char('/') + member) != SafeFile::Kind::File)
        return Problem{{}, QStringLiteral("the package has no member ") + member};
    return {};
}

Result<> unpackScripts(const QString &archive, const QString &folder)
{
    const CommandResult result =
        Command::run(QStringLiteral("ditto"), {QStringLiteral("-x"), archive, folder});
    if (!result.succeeded())
        return Problem{{}, result.problem()};
    return isRealFolder(folder);
}

} // namespace

ScriptsInspection inspectScripts(const QString &scripts)
{
    ScriptsInspection inspection;
    if (const Result<> real = isRealFolder(scripts); !real) {
        inspection.obstacle = real.problem().line();
        inspection.preinstallProblem = inspection.postinstallProblem = inspection.obstacle;
        return inspection;
    }
    const QString folder = scripts + QLatin1Char('/');
    inspection.customizedBefore = !isMissing(folder + QStringLiteral("ProfStore.xml"));
    inspection.holdsViewerTool = !isMissing(folder + QStringLiteral("duti"));
    inspectPreinstall(folder + QStringLiteral("preinstall"), inspection);
    inspectPostinstall(folder + QStringLiteral("postinstall"), inspection);
    if (const Result<> usable = checkFolder(folder); !usable)
        inspection.obstacle = usable.problem().text;
    return inspection;
}

Result<> checkContents(const QString &package, const ScriptsInspection &scripts, bool makesDefaultViewer)
{
    if (scripts.customizedBefore)
        return Problem{package, QStringLiteral("was customized before (it holds a ProfStore.xml already); "
                                               "give the vendor's original package")};
    if (!scripts.obstacle.isEmpty())
        return Problem{package, QStringLiteral("no build can work on it, because %1; give the vendor's "
                                               "original package")
                                    .arg(scripts.obstacle)};
    if (makesDefaultViewer && scripts.holdsViewerTool)
        return Problem{package,
                       QStringLiteral("holds a \"duti\" in its scripts already, so it cannot be made "
                                      "the default PDF viewer; give the vendor's original package")};
    return {};
}

QList<BuildWarning> warningsAbout(const ScriptsInspection &scripts, bool wantsDefaultViewer,
                                  bool wantsIManageLogin)
{
    QList<BuildWarning> warnings;
    const auto warnIf = [&warnings](bool condition, const QString &code, const QString &text) {
        if (condition)
            warnings.append({code, text});
    };
    warnIf(scripts.versionUnusable, QStringLiteral("version-unusable"),
           QStringLiteral(
               "postinstall names a version with characters that no document can hold, so it counts as "
               "none"));
    warnIf(scripts.documentSwitches == 0, QStringLiteral("document-switch-missing"),
           missingSwitchText(QStringLiteral("editorXmlFileCopy=0"),
                             QStringLiteral("the settings are not installed")));
    warnIf(wantsDefaultViewer && scripts.viewerSwitches == 0, QStringLiteral("viewer-switch-missing"),
           missingSwitchText(QStringLiteral("setdefaultpdf=0"),
                             QStringLiteral("the product does not become the default PDF viewer")));
    warnIf(wantsIManageLogin && scripts.preferenceLists == 0, QStringLiteral("preference-list-missing"),
           missingSwitchText(QStringLiteral("plistValue=\""),
                             QStringLiteral("the iManage sign-in method is not set")));
    return warnings +
           patchWarnings(QStringLiteral("preinstall"), scripts.preinstallProblem, scripts.preinstallPatched) +
           patchWarnings(QStringLiteral("postinstall"), scripts.postinstallProblem,
                         scripts.postinstallPatched);
}

QList<BuildWarning> warningsAbout(const PackageInspection &package, bool wantsDefaultViewer,
                                  bool wantsIManageLogin)
{
    QList<BuildWarning> warnings;
    if (package.signedByVendor)
        warnings.append({QStringLiteral("signature-dropped"),
                         QStringLiteral("the new package does not carry the vendor's signature; sign it "
                                        "before you deploy it where signatures are asked for")});
    return warnings + warningsAbout(package.scripts, wantsDefaultViewer, wantsIManageLogin);
}

Result<bool> isSigned(const QString &package, const QString &privateFolder)
{
    const QString tableOfContents = privateFolder + QStringLiteral("/contents.xml");
    const CommandResult result =
        Command::run(QStringLiteral("xar"), {QStringLiteral("--dump-toc=") + tableOfContents,
                                             QStringLiteral("-f"), QFileInfo(package).absoluteFilePath()});
    if (!result.succeeded())
        return Problem{{}, result.problem()};
    return readSignature(tableOfContents);
}

Result<QString> extractScripts(const QString &package, const Product &product, const QString &into)
{
    const QString member = product.componentPackage + QStringLiteral("/Scripts");
    const QString folder = into + QStringLiteral("/Scripts");
    if (const Result<> extracted = extractMember(QFileInfo(package).absoluteFilePath(), member, into);
        !extracted)
        return extracted.problem();
    if (const Result<> unpacked = unpackScripts(into + QLatin1Char('/') + member, folder); !unpacked)
        return unpacked.problem();
    return folder;
}

Result<PackageInspection> inspectPackage(const QString &package, const Product &product,
                                         const QString &privateFolder)
{
    const Result<bool> isPackageSigned = isSigned(package, privateFolder);
    if (!isPackageSigned)
        return isPackageSigned.problem();
    const Result<QString> scripts = extractScripts(package, product, privateFolder);
    if (!scripts)
        return scripts.problem();
    return PackageInspection{*isPackageSigned, inspectScripts(*scripts)};
}
