// SPDX-License-Identifier: Apache-2.0
#include "tests/support/Archive.h"

#include "tests/support/TestFiles.h"

#include <QDir>
#include <QDirIterator>
#include <QRegularExpression>

#include <algorithm>

namespace {

bool isPackage(const QString &archive)
{
    return TestFiles::read(archive).startsWith("xar!");
}

QString readerOf(const QString &archive)
{
    return isPackage(archive) ? QStringLiteral(PCT_PACKAGE_READER) : QStringLiteral("bsdtar");
}

} // namespace

void Archive::unpack(const QString &archive, const QString &folder)
{
    QDir().mkpath(folder);
    // To xar, "p" means the owner, which only root can set.
    const QString options = isPackage(archive) ? QStringLiteral("-xf") : QStringLiteral("-xpf");
    TestFiles::outputOf(readerOf(archive), {options, archive, QStringLiteral("-C"), folder});
}

QByteArray Archive::names(const QString &archive)
{
    return TestFiles::outputOf(readerOf(archive), {QStringLiteral("-tf"), archive});
}

QStringList Archive::listing(const QString &archive, const QStringList &changed)
{
    static const QRegularExpression linkCount(QStringLiteral("^(\\S+) +\\d+"));
    QStringList lines;
    const QByteArray output = TestFiles::outputOf(readerOf(archive), {QStringLiteral("-tvf"), archive});
    for (QString line : QString::fromUtf8(output).split(QLatin1Char('\n'), Qt::SkipEmptyParts)) {
        const auto endsLine = [&line](const QString &name) { return line.endsWith(name); };
        if (std::none_of(changed.begin(), changed.end(), endsLine))
            lines += line.replace(linkCount, QStringLiteral("\\1"));
    }
    lines.sort();
    return lines;
}

QStringList Archive::filesBelow(const QString &folder)
{
    QStringList files;
    QDirIterator all(folder, QDir::Files | QDir::Hidden | QDir::System, QDirIterator::Subdirectories);
    while (all.hasNext())
        files += QDir(folder).relativeFilePath(all.next());
    files.sort();
    return files;
}
