// SPDX-License-Identifier: Apache-2.0
#include "core/NearestWord.h"

#include <algorithm>
#include <cstdlib>
#include <numeric>
#include <vector>

namespace {

using Row = std::vector<int>;

/// What the start of the word costs against each start of the known one, from the two rows before.
Row nextRow(const QString &word, const QString &known, int i, const Row &last, const Row &beforeLast)
{
    Row row(last.size(), i);
    for (int j = 1; j <= known.size(); ++j) {
        const bool same = word.at(i - 1) == known.at(j - 1);
        row[j] = std::min({last[j] + 1, row[j - 1] + 1, last[j - 1] + (same ? 0 : 1)});
        const bool swapped =
            i > 1 && j > 1 && word.at(i - 1) == known.at(j - 2) && word.at(i - 2) == known.at(j - 1);
        if (swapped)
            row[j] = std::min(row[j], beforeLast[j - 2] + 1);
    }
    return row;
}

int lowestOf(const Row &row)
{
    return *std::min_element(row.begin(), row.end());
}

/// How many letters have to be added, removed, changed or swapped with the next one; when that is more than
/// `most`, any number that is.
int editDistance(const QString &word, const QString &known, int most)
{
    if (std::abs(static_cast<int>(word.size() - known.size())) > most)
        return most + 1;
    Row beforeLast;
    Row last(known.size() + 1);
    std::iota(last.begin(), last.end(), 0);
    for (int i = 1; i <= word.size(); ++i) {
        Row row = nextRow(word, known, i, last, beforeLast);
        beforeLast = std::move(last);
        last = std::move(row);
        if (lowestOf(last) > most && lowestOf(beforeLast) > most)
            return most + 1;
    }
    return last.back();
}

/// What is left out at the end is no mistake, only haste.
int costOf(const QString &word, const QString &known, int most)
{
    const bool isStart = word.size() > 1 && known.startsWith(word);
    return isStart ? 0 : editDistance(word, known, most);
}

} // namespace

QString nearestWord(const QString &word, const QStringList &known)
{
    constexpr int longestWord = 64;
    const QString wanted = word.left(longestWord).toLower();
    int lowest = 1 + static_cast<int>(wanted.size()) / 3;
    QString nearest;
    for (const QString &candidate : known) {
        const int cost = costOf(wanted, candidate, lowest);
        if (cost > lowest || (cost == lowest && !nearest.isEmpty()))
            continue;
        lowest = cost;
        nearest = candidate;
    }
    return nearest;
}

QString nearestHint(const QString &word, const QStringList &known)
{
    const QString nearest = nearestWord(word, known);
    return nearest.isEmpty() ? QString() : QStringLiteral(", the nearest is \"%1\"").arg(nearest);
}
