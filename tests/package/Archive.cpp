// SPDX-License-Identifier: Apache-2.0
#include "tests/package/Archive.h"

#include "tests/support/TestFiles.h"

#include <QDir>
#include <QDirIterator>
#include <QRegularExpression>

#include <algorithm>

void Archive::unpack(const QString &archive, const QString &folder)
{
    QDir().mkpath(folder);
    TestFiles::outputOf(QStringLiteral("bsdtar"),
                        {QStringLiteral("-xpf"), archive, QStringLiteral("-C"), folder});
}

QStringList Archive::listing(const QString &archive, const QStringList &changed)
{
    static const QRegularExpression linkCount(QStringLiteral("^(\\S+) +\\d+"));
    QStringList lines;
    const QByteArray output =
        TestFiles::outputOf(QStringLiteral("bsdtar"), {QStringLiteral("-tvf"), archive});
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
