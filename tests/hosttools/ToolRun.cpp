// SPDX-License-Identifier: Apache-2.0
#include "tests/hosttools/ToolRun.h"

#include "tests/support/TestFiles.h"

#include <QCoreApplication>
#include <QCryptographicHash>
#include <QDir>
#include <QDirIterator>
#include <QFileInfo>
#include <QProcess>

#include <sys/xattr.h>

namespace ToolRun {

namespace {

constexpr int timeLimit = 60 * 1000;

Result finish(QProcess &process)
{
    process.closeWriteChannel();
    if (!process.waitForFinished(timeLimit) || process.exitStatus() != QProcess::NormalExit)
        return {-1, process.readAllStandardOutput(), process.readAllStandardError()};
    return {process.exitCode(), process.readAllStandardOutput(), process.readAllStandardError()};
}

QString describe(const QFileInfo &info)
{
    if (info.isSymLink())
        return QStringLiteral("link to ") +
               QString::fromUtf8(
                   TestFiles::outputOf(QStringLiteral("readlink"), {info.filePath()}).trimmed());
    if (info.isDir())
        return QStringLiteral("folder");
    const QByteArray digest =
        QCryptographicHash::hash(TestFiles::read(info.filePath()), QCryptographicHash::Sha256);
    return QStringLiteral("file ") + QString::fromLatin1(digest.toHex());
}

} // namespace

QString path(const QString &tool)
{
    const QString fallback = QCoreApplication::applicationDirPath() + QStringLiteral("/../libexec/pct");
    return qEnvironmentVariable("PCT_HOSTTOOLS", fallback) + QLatin1Char('/') + tool;
}

Result run(const QString &tool, const QStringList &arguments, const QString &folder,
           const QStringList &environment)
{
    QProcess process;
    process.setWorkingDirectory(folder);
    process.setEnvironment(QProcess::systemEnvironment() + environment);
    process.start(path(tool), arguments);
    return finish(process);
}

bool hasOneMessage(const Result &result, const QString &tool)
{
    return result.errors.startsWith(QByteArray(tool.toUtf8() + ": ")) && result.errors.count('\n') == 1 &&
           result.errors.endsWith('\n');
}

void makeVariant(const QString &variant, const QString &target)
{
    TestFiles::outputOf(QStringLiteral("/usr/bin/python3"),
                        {QStringLiteral(PCT_MAKE_XAR_VARIANT), variant, target});
}

void makeAllVariants(const QString &kind, const QString &folder)
{
    TestFiles::outputOf(QStringLiteral("/usr/bin/python3"),
                        {QStringLiteral(PCT_MAKE_XAR_VARIANT), QStringLiteral("--all"), kind, folder});
}

QByteArray contentsOf(const QString &folder)
{
    QStringList lines;
    QDirIterator entries(folder, QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                         QDirIterator::Subdirectories);
    while (entries.hasNext()) {
        entries.next();
        lines.append(QDir(folder).relativeFilePath(entries.filePath()) + QLatin1Char(' ') +
                     describe(entries.fileInfo()));
    }
    lines.sort();
    return lines.join(QLatin1Char('\n')).toUtf8();
}

QStringList listed(const QString &archive)
{
    const QByteArray listing =
        TestFiles::outputOf(QStringLiteral("bsdtar"), {QStringLiteral("-tvf"), archive});
    QStringList lines = QString::fromUtf8(listing).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    lines.sort();
    return lines;
}

QStringList namesIn(const QString &folder)
{
    return QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
}

QByteArray filtered(const QByteArray &input, const QString &program, const QStringList &arguments)
{
    QProcess process;
    process.start(program, arguments);
    process.write(input);
    const Result result = finish(process);
    if (result.exitCode != 0)
        qFatal("%s failed: %s", qPrintable(program), result.errors.constData());
    return result.output;
}

bool keepsExtendedAttributes(const QString &folder)
{
    const QByteArray path = folder.toUtf8();
    const bool kept = setxattr(path.constData(), "user.pct.test", "1", 1, 0) == 0;
    removexattr(path.constData(), "user.pct.test");
    return kept;
}

} // namespace ToolRun
