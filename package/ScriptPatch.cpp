// SPDX-License-Identifier: Apache-2.0
#include "package/ScriptPatch.h"

#include "core/SafeFile.h"
#include "package/ScriptLines.h"

#include <algorithm>

namespace {

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
Result<> replaceHomeDetection(QStringList &lines, const QString &characteristicLine, const QStringList &block)
{
    const Result<int> comment = uniqueAnchor(lines, homeDetectionComment);
    if (!comment)
        return comment.problem();
    const Result<int> characteristic = anchorAfter(lines, characteristicLine, *comment + 1);
    if (!characteristic)
        return characteristic.problem();
    const Result<int> end = anchorAfter(lines, QStringLiteral("fi"), *characteristic + 1);
    return end ? replaceRange(lines, *comment, *end, block) : end.problem();
}

/// A block that would stand at the very beginning is refused without a text.
Result<> insertPostinstallBlock(QStringList &lines)
{
    const QStringList block = postinstallBlock();
    const Result<int> anchor = uniqueAnchor(lines, block.last());
    if (!anchor)
        return anchor.problem();
    return *anchor >= 1 ? replaceRange(lines, *anchor, *anchor, block) : Problem();
}

bool isPatched(const QStringList &lines, const QStringList &block)
{
    return !lines.contains(homeDetectionComment) &&
           std::search(lines.begin(), lines.end(), block.begin(), block.end()) != lines.end();
}

} // namespace

bool patchPostinstall(const QString &path, QString *error)
{
    return told(patchScript(path, patchPostinstallLines), error);
}

bool patchPreinstall(const QString &path, QString *error)
{
    return told(patchScript(path, patchPreinstallLines), error);
}

Result<> patchScript(const QString &path, LinesEdit edit)
{
    const Result<QString> text = readScript(path);
    if (!text)
        return text.problem();
    QStringList lines = scriptLines(*text);
    if (Result<> edited = edit(lines); !edited)
        return edited;
    const QString patched = lines.join(QLatin1Char('\n')) + QLatin1Char('\n');
    return SafeFile::replaceContents(path, patched.toUtf8(), SafeFile::Lasting::No);
}

Result<> patchPostinstallLines(QStringList &lines)
{
    if (Result<> inserted = insertPostinstallBlock(lines); !inserted)
        return inserted;
    if (Result<> removed = replaceHomeDetection(
            lines, QStringLiteral(R"sh(currentuser=$(stat -f "%Su" /dev/console))sh"), {});
        !removed)
        return removed;
    return replaceUnique(lines, QStringLiteral("mydir=$(pwd)"), scriptFolderLine);
}

Result<> patchPreinstallLines(QStringList &lines)
{
    if (Result<> replaced = replaceUnique(lines, QStringLiteral("mydir=`pwd`"), scriptFolderLine); !replaced)
        return replaced;
    return replaceHomeDetection(lines, QStringLiteral(R"sh(user_from_home=$(basename "${HOME}"))sh"),
                                preinstallBlock());
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
