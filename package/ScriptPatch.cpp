// SPDX-License-Identifier: Apache-2.0
#include "package/ScriptPatch.h"

#include "core/SafeFile.h"
#include "package/Failure.h"
#include "package/ScriptLines.h"

#include <algorithm>

namespace {

using LinesEdit = bool (*)(QStringList &, QString *);

const QString homeDetectionComment =
    QStringLiteral("# Obtain the current logged-in user's username through the HOME environment variable");
const QString scriptFolderLine = QStringLiteral(R"sh(mydir=$(CDPATH= cd -- "$(dirname "$0")" && pwd))sh");
const QString echoUserLine = QStringLiteral(R"sh(echo "currentuser: ${currentuser}")sh");

/// Finds the user at the console; both blocks begin with it.
const char *const consoleUser =
    R"sh(# Obtain the current logged-in user's username through scutil and /dev/console
currentuser=$(scutil <<< "show State:/Users/ConsoleUser" | awk -F': ' '/Name :/ {print $2}')
# Clean scutil result early
if [[ -z "$currentuser" || "$currentuser" == "loginwindow" || "$currentuser" == "_mbsetupuser" ]]; then
 currentuser=""
fi
# Fallback
if [[ -z "$currentuser" ]]; then
 currentuser=$(stat -f "%Su" /dev/console)
fi
# Final validation
if [[ -z "$currentuser" || "$currentuser" == "root" || "$currentuser" == "loginwindow" || "$currentuser" == "_mbsetupuser" ]]; then
 echo "Failed to get current logged-in user."
 exit 1
fi
)sh";

/// Makes HOME that user's.
const char *const consoleUserHome = R"sh(
currentuserhome=$(dscl . -read "/Users/${currentuser}" NFSHomeDirectory | sed 's/^NFSHomeDirectory: //')
if [ -z "${currentuserhome}" ] || [ ! -d "${currentuserhome}" ]; then
 echo "Failed to get current user home."
 exit 1
fi

export HOME="${currentuserhome}"
)sh";

QStringList linesOf(const char *text)
{
    return scriptLines(QString::fromLatin1(text));
}

/// Ends with the line that it is inserted before.
QStringList postinstallBlock()
{
    const QString appdatePath = QStringLiteral(
        R"sh(appdatePath="$HOME/Library/Application Support/Pelix Software/${ApplicationDataType}/${ApplicationName}")sh");
    return linesOf(consoleUser) + QStringList{echoUserLine} + linesOf(consoleUserHome) +
           QStringList{appdatePath};
}

QStringList preinstallBlock()
{
    return linesOf(consoleUser) + linesOf(consoleUserHome) +
           QStringList{echoUserLine, QStringLiteral(R"sh(echo "home: ${HOME}")sh")};
}

/// The old detection runs from its comment to the first "fi" after the line that is characteristic of it.
bool replaceHomeDetection(QStringList &lines, const QString &characteristicLine, const QStringList &block,
                          QString *error)
{
    const int comment = findUniqueAnchor(lines, homeDetectionComment, error);
    if (comment < 0)
        return false;
    const int characteristic = findAnchorAfter(lines, characteristicLine, comment + 1, error);
    if (characteristic < 0)
        return false;
    const int end = findAnchorAfter(lines, QStringLiteral("fi"), characteristic + 1, error);
    return end >= 0 && replaceLineRange(lines, comment, end, block, error);
}

bool insertPostinstallBlock(QStringList &lines, QString *error)
{
    const QStringList block = postinstallBlock();
    const int anchor = findUniqueAnchor(lines, block.last(), error);
    return anchor >= 1 && replaceLineRange(lines, anchor, anchor, block, error);
}

bool isPatched(const QStringList &lines, const QStringList &block)
{
    return !lines.contains(homeDetectionComment) &&
           std::search(lines.begin(), lines.end(), block.begin(), block.end()) != lines.end();
}

bool patchFile(const QString &path, LinesEdit edit, QString *error)
{
    const Result<QString> text = readScript(path);
    if (!text)
        return fail(error, text.problem().text);
    QStringList lines = scriptLines(*text);
    if (!edit(lines, error))
        return false;
    const QString patched = lines.join(QLatin1Char('\n')) + QLatin1Char('\n');
    const Result<> replaced = SafeFile::replaceContents(path, patched.toUtf8(), SafeFile::Lasting::No);
    return replaced || fail(error, replaced.problem().text);
}

} // namespace

bool patchPostinstall(const QString &path, QString *error)
{
    return patchFile(path, patchPostinstallLines, error);
}

bool patchPreinstall(const QString &path, QString *error)
{
    return patchFile(path, patchPreinstallLines, error);
}

bool patchPostinstallLines(QStringList &lines, QString *error)
{
    return insertPostinstallBlock(lines, error) &&
           replaceHomeDetection(lines, QStringLiteral(R"sh(currentuser=$(stat -f "%Su" /dev/console))sh"), {},
                                error) &&
           replaceUniqueLine(lines, QStringLiteral("mydir=$(pwd)"), scriptFolderLine, error);
}

bool patchPreinstallLines(QStringList &lines, QString *error)
{
    return replaceUniqueLine(lines, QStringLiteral("mydir=`pwd`"), scriptFolderLine, error) &&
           replaceHomeDetection(lines, QStringLiteral(R"sh(user_from_home=$(basename "${HOME}"))sh"),
                                preinstallBlock(), error);
}

bool isPatchedPostinstall(const QStringList &lines)
{
    return isPatched(lines, postinstallBlock());
}

bool isPatchedPreinstall(const QStringList &lines)
{
    return isPatched(lines, preinstallBlock());
}

QString unpatchedReason(const QString &error)
{
    return error.isEmpty() ? QStringLiteral("the line that sets appdatePath is the first one") : error;
}
