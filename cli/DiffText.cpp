// SPDX-License-Identifier: Apache-2.0
#include "cli/DiffText.h"

#include "cli/Console.h"
#include "cli/Json.h"
#include "core/PrintableText.h"

#include <unistd.h>

namespace {

bool hasColours()
{
    return ::isatty(STDOUT_FILENO) == 1 && qEnvironmentVariableIsEmpty("NO_COLOR") &&
           qEnvironmentVariable("TERM") != QLatin1String("dumb") && !qEnvironmentVariableIsEmpty("TERM");
}

/// What sets a line of a diff off: a sequence for terminals and a class for pages.
struct Look
{
    const char *sequence;
    const char *name;
};

Look lookOf(const QString &line)
{
    if (line.startsWith(QLatin1String("--- ")) || line.startsWith(QLatin1String("+++ ")))
        return {"\x1b[1m", "file"};
    if (line.startsWith(QLatin1String("@@")))
        return {"\x1b[36m", "place"};
    if (line.startsWith(QLatin1Char('-')))
        return {"\x1b[31m", "removed"};
    return line.startsWith(QLatin1Char('+')) ? Look{"\x1b[32m", "added"} : Look{"", "same"};
}

QString coloured(const QString &line)
{
    const QLatin1String sequence(lookOf(line).sequence);
    return sequence.isEmpty() ? line : sequence + line + QLatin1String("\x1b[0m");
}

QString marked(const QString &line)
{
    return QStringLiteral("<span class=\"%1\">%2</span>")
        .arg(QLatin1String(lookOf(line).name), line.toHtmlEscaped());
}

const char *const pageStyle = "body{font-family:sans-serif;margin:2em}pre{font-family:monospace}"
                              ".file{font-weight:bold}.place{color:#056}.removed{background:#fdd}"
                              ".added{background:#dfd}";

} // namespace

QList<DiffHunk> FileDiff::hunks() const
{
    return diffLines(diffableLines(before), diffableLines(after));
}

QString FileDiff::unified() const
{
    const auto named = [this](const QString &side, const QString &text) {
        return text.isEmpty() ? QStringLiteral("/dev/null") : QString(side + QLatin1Char('/') + name);
    };
    return unifiedDiff(hunks(), named(sideBefore, before), named(sideAfter, after));
}

void writeDiffs(const QList<FileDiff> &diffs, Console &console)
{
    const bool isColoured = hasColours();
    for (const FileDiff &diff : diffs) {
        QStringList lines = diff.unified().split(QLatin1Char('\n'));
        lines.removeLast();
        for (const QString &line : lines)
            console.out() << (isColoured ? coloured(line) : line) << '\n';
    }
}

QJsonArray diffsArray(const QList<FileDiff> &diffs)
{
    QJsonArray array;
    for (const FileDiff &diff : diffs) {
        const QString unified = diff.unified();
        array.append(QJsonObject{{QStringLiteral("name"), diff.name},
                                 {QStringLiteral("changed"), !unified.isEmpty()},
                                 {QStringLiteral("diff"), textOrNull(unified)}});
    }
    return array;
}

QString diffPage(const QString &title, const QStringList &lines, const QList<FileDiff> &diffs)
{
    QString page =
        QStringLiteral("<!DOCTYPE html>\n<html lang=\"en\"><head><meta charset=\"utf-8\"><title>%1</title>"
                       "<style>%2</style></head><body>\n<h1>%1</h1>\n<ul>\n")
            .arg(visibleText(title).toHtmlEscaped(), QLatin1String(pageStyle));
    for (const QString &line : lines)
        page += QStringLiteral("<li>") + visibleText(line).toHtmlEscaped() + QStringLiteral("</li>\n");
    page += QStringLiteral("</ul>\n<pre>\n");
    for (const FileDiff &diff : diffs) {
        for (const QString &line : diff.unified().split(QLatin1Char('\n')))
            page += marked(line) + QLatin1Char('\n');
    }
    return page + QStringLiteral("</pre>\n</body></html>\n");
}
