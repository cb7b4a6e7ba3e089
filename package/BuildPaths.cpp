// SPDX-License-Identifier: Apache-2.0
#include "package/BuildPaths.h"

#include "core/Command.h"
#include "core/SafeFile.h"
#include "package/Failure.h"

#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>

namespace {

/// The path with the links of its folder resolved, so that files that do not exist yet can be compared.
QString resolved(const QString &path)
{
    const QFileInfo info(path);
    const QString folder = QFileInfo(info.absolutePath()).canonicalFilePath();
    return (folder.isEmpty() ? info.absolutePath() : folder) + QLatin1Char('/') + info.fileName();
}

bool isSame(const QString &first, const QString &second)
{
    return resolved(first) == resolved(second) || SafeFile::sameFile(first, second);
}

/// True for the file's place and, when that is a link, for the place it leads to.
bool liesIn(const QString &folder, const QString &path)
{
    const QString start = QFileInfo(folder).canonicalFilePath() + QLatin1Char('/');
    return resolved(path).startsWith(start) || QFileInfo(path).canonicalFilePath().startsWith(start);
}

bool checkInput(const QString &input, QString *error)
{
    return QFileInfo(input).isFile() ||
           fail(error, QStringLiteral("%1: is not a file; choose the vendor's installer package").arg(input));
}

bool checkOutputFolder(const QString &output, QString *error)
{
    const QString folder = QFileInfo(output).absolutePath();
    if (!QFileInfo(folder).isDir())
        return fail(error, QStringLiteral("%1: there is no such folder; make it first").arg(folder));
    return QFileInfo(folder).isWritable() ||
           fail(error,
                QStringLiteral("%1: cannot be written; choose another folder for the output").arg(folder));
}

bool checkOutput(const QString &output, QString *error)
{
    switch (SafeFile::kindOf(output)) {
    case SafeFile::Kind::Missing:
    case SafeFile::Kind::File:
        return checkOutputFolder(output, error);
    case SafeFile::Kind::Link:
        return fail(error,
                    QStringLiteral("%1: is a link; choose the name of a file as the output").arg(output));
    case SafeFile::Kind::Folder:
        return fail(error,
                    QStringLiteral("%1: is a folder; choose the name of a file as the output").arg(output));
    case SafeFile::Kind::Other:
        break;
    }
    return fail(error, QStringLiteral("%1: is not a regular file; choose another output").arg(output));
}

} // namespace

QString temporaryDocumentPath()
{
    return QStandardPaths::writableLocation(QStandardPaths::TempLocation) + QStringLiteral("/ProfStore.xml");
}

bool checkFiles(const BuildFiles &files, QString *error)
{
    return checkQuoting(files.input, error) && checkQuoting(files.output, error) &&
           checkInput(files.input, error) && checkOutput(files.output, error) &&
           checkFilesDiffer(files, error);
}

bool checkFilesDiffer(const BuildFiles &files, QString *error)
{
    if (isSame(files.input, files.output))
        return fail(error,
                    QStringLiteral("%1: is the input as well; choose another output").arg(files.output));
    if (isSame(files.input, files.document))
        return fail(error, QStringLiteral("%1: is the input as well; choose another name for the document")
                               .arg(files.document));
    return !isSame(files.output, files.document) ||
           fail(error, QStringLiteral("%1: is both the output and the document; choose another name for one")
                           .arg(files.output));
}

bool checkQuoting(const QString &path, QString *error)
{
    const QStringList words = QProcess::splitCommand(QStringLiteral("program \"%1\"").arg(path));
    return (words.size() == 2 && words.last() == path) ||
           fail(error, QStringLiteral("%1: holds a double quote, which no command line can carry; "
                                      "rename the file or its folder")
                           .arg(path));
}

bool removeWorkFolder(const QString &folder, const BuildFiles &files, QString *error)
{
    const SafeFile::Kind kind = SafeFile::kindOf(folder);
    if (kind == SafeFile::Kind::Missing)
        return true;
    if (kind != SafeFile::Kind::Folder)
        return fail(
            error, QStringLiteral("%1: is in the way of the work folder and no folder; move it").arg(folder));
    for (const QString &file : {files.input, files.output, files.document}) {
        if (liesIn(folder, file))
            return fail(error, QStringLiteral("%1: lies in the work folder %2, which is removed; move it")
                                   .arg(file, folder));
    }
    const CommandResult result = Command::runLine(QStringLiteral("rm -rf \"%1\"").arg(folder), {folder});
    if (!result.succeeded())
        return fail(error, result.problem());
    return SafeFile::kindOf(folder) == SafeFile::Kind::Missing ||
           fail(error, QStringLiteral("%1: cannot be removed").arg(folder));
}
