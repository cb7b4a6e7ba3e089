// SPDX-License-Identifier: Apache-2.0
#include "package/InstallActions.h"

#include "core/SafeFile.h"
#include "package/ScriptLines.h"
#include "package/ScriptPatch.h"

#include <algorithm>

namespace {

/// The lines of a script; none of one that is missing or cannot be read.
QStringList linesOf(const QString &scripts, const QString &name)
{
    const Result<QString> text = readScript(scripts + QLatin1Char('/') + name);
    return text ? scriptLines(*text) : QStringList();
}

bool anyHolds(const QStringList &lines, const QString &text)
{
    return std::any_of(lines.begin(), lines.end(),
                       [&text](const QString &line) { return line.contains(text); });
}

bool isThere(const QString &scripts, const QString &name)
{
    return SafeFile::kindOf(scripts + QLatin1Char('/') + name) == SafeFile::Kind::File;
}

InstallAction action(const char *name, bool happens, const char *ifSo, const char *ifNot)
{
    return {QString::fromLatin1(name), happens, QString::fromLatin1(happens ? ifSo : ifNot)};
}

InstallAction userSearch(const QStringList &preinstall, const QStringList &postinstall)
{
    const bool before = isPatchedPreinstall(preinstall);
    const bool after = isPatchedPostinstall(postinstall);
    if (before == after)
        return action("consoleUser", before, "both scripts look for the user who is logged in at the console",
                      "the scripts look for the user in HOME, which is wrong under a device management");
    return {QStringLiteral("consoleUser"), false,
            QStringLiteral("only %1 looks for the user who is logged in at the console, the other in HOME")
                .arg(before ? QStringLiteral("preinstall") : QStringLiteral("postinstall"))};
}

} // namespace

QList<InstallAction> installActions(const QString &scripts)
{
    const QStringList postinstall = linesOf(scripts, QStringLiteral("postinstall"));
    const QStringList preinstall = linesOf(scripts, QStringLiteral("preinstall"));
    const auto isOn = [&](const char *line, const char *file) {
        return anyHolds(postinstall, QString::fromLatin1(line)) &&
               isThere(scripts, QString::fromLatin1(file));
    };
    return {
        action("document", isOn("editorXmlFileCopy=1", "ProfStore.xml"),
               "the settings are put in place for the user, as ProfStore.xml",
               "no settings are put in place"),
        action("defaultViewer", isOn("setdefaultpdf=1", "duti"),
               "the product becomes the default PDF viewer, by duti",
               "the default PDF viewer stays what it is"),
        action("signIn", anyHolds(postinstall, QStringLiteral("iManage10/loginMethod/UseOAuth2:1;")),
               "iManage 10 is set to sign in with OAuth 2", "the sign-in of iManage stays as it is"),
        userSearch(preinstall, postinstall),
    };
}
