// SPDX-License-Identifier: Apache-2.0
#include "package/ScriptLines.h"

#include "core/SafeFile.h"

#include <QFileInfo>

#include <algorithm>

namespace {

/// Far above any real script, and small enough that a hostile one cannot exhaust the memory.
constexpr qint64 maximumScriptBytes = qint64{16} * 1024 * 1024;

} // namespace

Result<int> uniqueAnchor(const QStringList &lines, const QString &anchor)
{
    const QString wanted = anchor.trimmed();
    const auto equalsAnchor = [&wanted](const QString &line) { return line.trimmed() == wanted; };
    const auto count = std::count_if(lines.begin(), lines.end(), equalsAnchor);
    if (count != 1)
        return Problem{
            {}, QStringLiteral("anchor is not unique: [%1], count=%2").arg(wanted, QString::number(count))};
    return static_cast<int>(std::find_if(lines.begin(), lines.end(), equalsAnchor) - lines.begin());
}

Result<int> anchorAfter(const QStringList &lines, const QString &anchor, int from)
{
    const QString wanted = anchor.trimmed();
    for (int i = std::max(from, 0); i < lines.size(); ++i) {
        if (lines.at(i).trimmed() == wanted)
            return i;
    }
    return Problem{{},
                   QStringLiteral("anchor not found after line %1: [%2]").arg(QString::number(from), wanted)};
}

Result<> replaceRange(QStringList &lines, int start, int end, const QStringList &block)
{
    if (start < 0 || end < start || end >= lines.size())
        return Problem{{}, QStringLiteral("invalid range: start=%1, end=%2").arg(start).arg(end)};
    lines = lines.mid(0, start) + block + lines.mid(end + 1);
    return {};
}

Result<> replaceUnique(QStringList &lines, const QString &anchor, const QString &newLine)
{
    const Result<int> index = uniqueAnchor(lines, anchor);
    return index ? replaceRange(lines, *index, *index, {newLine}) : index.problem();
}

int findUniqueAnchor(const QStringList &lines, const QString &anchor, QString *error)
{
    const Result<int> index = uniqueAnchor(lines, anchor);
    return told(index, error) ? *index : -1;
}

int findAnchorAfter(const QStringList &lines, const QString &anchor, int from, QString *error)
{
    const Result<int> index = anchorAfter(lines, anchor, from);
    return told(index, error) ? *index : -1;
}

bool replaceLineRange(QStringList &lines, int start, int end, const QStringList &block, QString *error)
{
    return told(replaceRange(lines, start, end, block), error);
}

bool replaceUniqueLine(QStringList &lines, const QString &anchor, const QString &newLine, QString *error)
{
    return told(replaceUnique(lines, anchor, newLine), error);
}

QString normalizeNewlines(QString text)
{
    text.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    text.replace(QLatin1Char('\r'), QLatin1Char('\n'));
    return text;
}

QStringList scriptLines(const QString &text)
{
    QStringList lines = normalizeNewlines(text).split(QLatin1Char('\n'));
    if (lines.last().isEmpty())
        lines.removeLast();
    return lines;
}

Result<QString> readScript(const QString &path)
{
    const SafeFile::Kind kind = SafeFile::kindOf(path);
    if (kind == SafeFile::Kind::Link)
        return Problem{path, QStringLiteral("is a link")};
    if (kind != SafeFile::Kind::File && kind != SafeFile::Kind::Missing)
        return Problem{path, QStringLiteral("is not a regular file")};
    if (QFileInfo(path).size() > maximumScriptBytes)
        return Problem{path, QStringLiteral("is too large for a script")};
    const Result<QByteArray> bytes = SafeFile::readContents(path);
    if (!bytes)
        return bytes.problem();
    return QString::fromUtf8(bytes->constData());
}
