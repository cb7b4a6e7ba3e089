// SPDX-License-Identifier: Apache-2.0
#include "core/TextDiff.h"

#include "core/PrintableText.h"

#include <QHash>

#include <algorithm>
#include <vector>

namespace {

using Numbers = std::vector<int>;

/// A part of both texts: from the first line up to the last one, which is not part of it.
struct Region
{
    int oldFrom;
    int oldTo;
    int newFrom;
    int newTo;

    qint64 oldSize() const { return oldTo - oldFrom; }
    qint64 newSize() const { return newTo - newFrom; }
    bool isEmpty() const { return oldFrom == oldTo || newFrom == newTo; }
};

/// How often a line stands in each part of a region, and where.
struct Places
{
    int oldCount = 0;
    int newCount = 0;
    int newAt = 0;
    bool isAnchor() const { return oldCount == 1 && newCount == 1; }
};

/// Finds for each old line the new one that it is, or none.
class Matching
{
public:
    Matching(const QStringList &before, const QStringList &after);

    Numbers newOfOld();

private:
    void match(int oldLine, int newLine) { m_newOfOld[static_cast<size_t>(oldLine)] = newLine; }
    int oldLine(int at) const { return m_old[static_cast<size_t>(at)]; }
    int newLine(int at) const { return m_new[static_cast<size_t>(at)]; }
    Places &placesOf(int line) { return m_places[static_cast<size_t>(line)]; }
    void trim(Region &region);
    void split(const Region &region);
    void count(const Region &region);
    void forgetCounts(const Region &region);
    Numbers anchorsOf(const Region &region);
    void splitAt(const Numbers &anchors, const Region &region);
    void matchClosely(const Region &region);
    Numbers commonLengths(const Region &region) const;

    QHash<QString, int> m_numbers;
    Numbers m_old;
    Numbers m_new;
    Numbers m_newOfOld;
    std::vector<Places> m_places; ///< by line number; all zero between two regions
    std::vector<Region> m_regions;
    qint64 m_budget; ///< lines that may still be looked at
};

Matching::Matching(const QStringList &before, const QStringList &after)
    : m_newOfOld(static_cast<size_t>(before.size()), -1)
{
    const auto numbered = [this](const QStringList &lines) {
        Numbers numbers;
        numbers.reserve(static_cast<size_t>(lines.size()));
        for (const QString &line : lines)
            numbers.push_back(
                m_numbers.insert(line, m_numbers.value(line, static_cast<int>(m_numbers.size()))).value());
        return numbers;
    };
    m_old = numbered(before);
    m_new = numbered(after);
    m_places.resize(static_cast<size_t>(m_numbers.size()));
    constexpr qint64 looksPerLine = 40;
    constexpr qint64 fewestLooks = 4 * 1000 * 1000;
    m_budget = fewestLooks + looksPerLine * static_cast<qint64>(m_old.size() + m_new.size());
    m_regions.push_back({0, static_cast<int>(m_old.size()), 0, static_cast<int>(m_new.size())});
}

Numbers Matching::newOfOld()
{
    while (!m_regions.empty()) {
        Region region = m_regions.back();
        m_regions.pop_back();
        trim(region);
        if (!region.isEmpty())
            split(region);
    }
    return std::move(m_newOfOld);
}

/// Takes away what both begin and end with.
void Matching::trim(Region &region)
{
    while (!region.isEmpty() && oldLine(region.oldFrom) == newLine(region.newFrom))
        match(region.oldFrom++, region.newFrom++);
    while (!region.isEmpty() && oldLine(region.oldTo - 1) == newLine(region.newTo - 1))
        match(--region.oldTo, --region.newTo);
}

void Matching::split(const Region &region)
{
    m_budget -= region.oldSize() + region.newSize();
    if (m_budget < 0)
        return;
    const Numbers anchors = anchorsOf(region);
    if (!anchors.empty())
        splitAt(anchors, region);
    else if (region.oldSize() * region.newSize() <= std::min<qint64>(m_budget, 1000 * 1000))
        matchClosely(region);
}

void Matching::count(const Region &region)
{
    for (int at = region.oldFrom; at < region.oldTo; ++at) {
        Places &places = placesOf(oldLine(at));
        ++places.oldCount;
    }
    for (int at = region.newFrom; at < region.newTo; ++at) {
        Places &places = placesOf(newLine(at));
        ++places.newCount;
        places.newAt = at;
    }
}

void Matching::forgetCounts(const Region &region)
{
    for (int at = region.oldFrom; at < region.oldTo; ++at)
        placesOf(oldLine(at)) = {};
    for (int at = region.newFrom; at < region.newTo; ++at)
        placesOf(newLine(at)) = {};
}

/// The longest row of lines that stand once in both parts and in the same order, as old lines, last one
/// first.
Numbers Matching::anchorsOf(const Region &region)
{
    count(region);
    Numbers ends; // of the rows of each length the one whose last new line is the first
    Numbers previous(static_cast<size_t>(region.oldSize()), -1);
    for (int at = region.oldFrom; at < region.oldTo; ++at) {
        if (!placesOf(oldLine(at)).isAnchor())
            continue;
        const auto end = std::lower_bound(ends.begin(), ends.end(), at, [this](int one, int other) {
            return placesOf(oldLine(one)).newAt < placesOf(oldLine(other)).newAt;
        });
        if (end != ends.begin())
            previous[static_cast<size_t>(at - region.oldFrom)] = *(end - 1);
        if (end == ends.end())
            ends.push_back(at);
        else
            *end = at;
    }
    Numbers anchors;
    for (int at = ends.empty() ? -1 : ends.back(); at >= 0;
         at = previous[static_cast<size_t>(at - region.oldFrom)]) {
        anchors.push_back(at);
        match(at, placesOf(oldLine(at)).newAt);
    }
    forgetCounts(region);
    return anchors;
}

void Matching::splitAt(const Numbers &anchors, const Region &region)
{
    Region rest = region;
    for (const int anchor : anchors) {
        const int newAnchor = m_newOfOld[static_cast<size_t>(anchor)];
        m_regions.push_back({anchor + 1, rest.oldTo, newAnchor + 1, rest.newTo});
        rest.oldTo = anchor;
        rest.newTo = newAnchor;
    }
    m_regions.push_back(rest);
}

/// The longest common row.
void Matching::matchClosely(const Region &region)
{
    m_budget -= region.oldSize() * region.newSize();
    const Numbers longest = commonLengths(region);
    const auto width = static_cast<size_t>(region.newSize() + 1);
    const auto cell = [&](int oldAt, int newAt) {
        return longest[static_cast<size_t>(oldAt - region.oldFrom) * width +
                       static_cast<size_t>(newAt - region.newFrom)];
    };
    for (int oldAt = region.oldFrom, newAt = region.newFrom; oldAt < region.oldTo && newAt < region.newTo;) {
        if (oldLine(oldAt) == newLine(newAt))
            match(oldAt++, newAt++);
        else if (cell(oldAt + 1, newAt) >= cell(oldAt, newAt + 1))
            ++oldAt;
        else
            ++newAt;
    }
}

/// How many lines are common from each pair of lines on, as a table with one row for each old line and one
/// more.
Numbers Matching::commonLengths(const Region &region) const
{
    const auto width = static_cast<size_t>(region.newSize() + 1);
    Numbers longest(width * static_cast<size_t>(region.oldSize() + 1), 0);
    for (int oldAt = region.oldTo - 1; oldAt >= region.oldFrom; --oldAt) {
        int *row = longest.data() + static_cast<size_t>(oldAt - region.oldFrom) * width;
        const int *below = row + width;
        for (qint64 at = region.newSize() - 1; at >= 0; --at) {
            const bool isCommon = oldLine(oldAt) == newLine(region.newFrom + static_cast<int>(at));
            row[at] = isCommon ? below[at + 1] + 1 : std::max(below[at], row[at + 1]);
        }
    }
    return longest;
}

/// All lines of both texts in one list.
QList<DiffLine> mergedLines(const QStringList &before, const QStringList &after)
{
    const Numbers newOfOld = Matching(before, after).newOfOld();
    QList<DiffLine> lines;
    int newAt = 0;
    const auto addUpTo = [&](int end) {
        while (newAt < end)
            lines.append({DiffLine::Kind::Added, after.at(newAt++)});
    };
    for (int oldAt = 0; oldAt < before.size(); ++oldAt) {
        const int partner = newOfOld[static_cast<size_t>(oldAt)];
        addUpTo(partner);
        lines.append({partner < 0 ? DiffLine::Kind::Removed : DiffLine::Kind::Same, before.at(oldAt)});
        newAt += partner < 0 ? 0 : 1;
    }
    addUpTo(static_cast<int>(after.size()));
    return lines;
}

bool isSame(const DiffLine &line)
{
    return line.kind == DiffLine::Kind::Same;
}

/// The end of the hunk that begins with the difference at `from`: behind it lie more same lines than two
/// hunks have between them.
int endOfHunk(const QList<DiffLine> &lines, int from, int context)
{
    int last = from;
    for (int at = from; at < lines.size() && at - last <= 2 * context + 1; ++at) {
        if (!isSame(lines.at(at)))
            last = at;
    }
    return std::min(last + 1 + context, static_cast<int>(lines.size()));
}

/// Counts the lines of both texts on their way through the list.
class HunkMaker
{
public:
    void pass(const QList<DiffLine> &lines, int end);
    DiffHunk take(const QList<DiffLine> &lines, int end);

private:
    int m_at = 0;
    int m_old = 0;
    int m_new = 0;
};

void HunkMaker::pass(const QList<DiffLine> &lines, int end)
{
    for (; m_at < end; ++m_at) {
        m_old += lines.at(m_at).kind == DiffLine::Kind::Added ? 0 : 1;
        m_new += lines.at(m_at).kind == DiffLine::Kind::Removed ? 0 : 1;
    }
}

DiffHunk HunkMaker::take(const QList<DiffLine> &lines, int end)
{
    DiffHunk hunk;
    const int oldBefore = m_old;
    const int newBefore = m_new;
    hunk.lines = lines.mid(m_at, end - m_at);
    pass(lines, end);
    hunk.oldCount = m_old - oldBefore;
    hunk.newCount = m_new - newBefore;
    hunk.oldStart = oldBefore + (hunk.oldCount > 0 ? 1 : 0);
    hunk.newStart = newBefore + (hunk.newCount > 0 ? 1 : 0);
    return hunk;
}

QString rangeText(int start, int count)
{
    return count == 1 ? QString::number(start) : QStringLiteral("%1,%2").arg(start).arg(count);
}

} // namespace

QChar DiffLine::mark() const
{
    if (kind == Kind::Same)
        return QLatin1Char(' ');
    return kind == Kind::Removed ? QLatin1Char('-') : QLatin1Char('+');
}

QString DiffHunk::heading() const
{
    return QStringLiteral("@@ -%1 +%2 @@").arg(rangeText(oldStart, oldCount), rangeText(newStart, newCount));
}

QStringList diffableLines(const QString &text)
{
    QStringList lines = text.split(QLatin1Char('\n'));
    if (lines.last().isEmpty())
        lines.removeLast();
    else
        lines.last() += QStringLiteral("\n\\ No newline at end of file");
    return lines;
}

QList<DiffHunk> diffLines(const QStringList &before, const QStringList &after, int context)
{
    const QList<DiffLine> lines = mergedLines(before, after);
    QList<DiffHunk> hunks;
    HunkMaker maker;
    for (int at = 0; at < lines.size(); ++at) {
        if (isSame(lines.at(at)))
            continue;
        const int end = endOfHunk(lines, at, context);
        maker.pass(lines, at - context);
        hunks.append(maker.take(lines, end));
        at = end - 1;
    }
    return hunks;
}

QString unifiedDiff(const QList<DiffHunk> &hunks, const QString &nameBefore, const QString &nameAfter)
{
    if (hunks.isEmpty())
        return {};
    QString text =
        QStringLiteral("--- %1\n+++ %2\n").arg(printableText(nameBefore), printableText(nameAfter));
    for (const DiffHunk &hunk : hunks) {
        text += hunk.heading() + QLatin1Char('\n');
        for (const DiffLine &line : hunk.lines)
            text += line.mark() + visibleLines(line.text) + QLatin1Char('\n');
    }
    return text;
}
