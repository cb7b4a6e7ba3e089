// SPDX-License-Identifier: Apache-2.0
#include "config/Product.h"
#include "core/PrintableText.h"
#include "project/ProjectReport.h"

#include <algorithm>

namespace {

/// Wide tables scroll by themselves, so that the page never does sideways. On paper all is dark on white.
const char *const head = R"(<!DOCTYPE html>
<html lang="en">
<head>
<meta charset="utf-8">
<meta name="viewport" content="width=device-width, initial-scale=1">
<meta name="color-scheme" content="light dark">
<title>%1</title>
<style>
:root { color-scheme: light dark; --ink: #1d1d1f; --paper: #ffffff; --line: #c7c7cc; --soft: #f2f2f7; --quiet: #55555c;
  --bad: #a5120d; }
@media (prefers-color-scheme: dark) {
  :root { --ink: #f2f2f7; --paper: #1c1c1e; --line: #48484a; --soft: #2c2c2e; --quiet: #b0b0b8; --bad: #ff8a80; }
}
body { color: var(--ink); background: var(--paper); font: 16px/1.5 -apple-system, "Segoe UI", Inter, sans-serif;
  margin: 0 auto; max-width: 72rem; padding: 1rem; overflow-wrap: anywhere; }
h1 { font-size: 1.6rem; } h2 { font-size: 1.25rem; margin-top: 2rem; }
.wide { overflow-x: auto; margin: 0 0 1rem; }
table { border-collapse: collapse; width: 100%; }
th, td { border-bottom: 1px solid var(--line); padding: .4rem .75rem .4rem 0; text-align: left; vertical-align: top;
  min-width: 5rem; }
thead th { background: var(--soft); padding-left: .5rem; } tbody > tr > * { padding-left: .5rem; }
small { color: var(--quiet); display: block; font-size: .875rem; }
code { font: .875rem/1.4 ui-monospace, Menlo, "DejaVu Sans Mono", monospace; overflow-wrap: anywhere; }
.bad { color: var(--bad); font-weight: 600; }
@media print {
  :root { --ink: #000; --paper: #fff; --line: #999; --soft: #eee; --quiet: #333; --bad: #000; }
  body { font-size: 10pt; max-width: none; padding: 0; } .wide { overflow: visible; }
  tr, h2 { break-inside: avoid; } h2 { break-after: avoid; } thead { display: table-header-group; }
}
</style>
</head>
<body>
)";

QString escaped(const QString &text)
{
    return visibleText(text).toHtmlEscaped();
}

QStringList allEscaped(QStringList cells)
{
    std::transform(cells.begin(), cells.end(), cells.begin(), escaped);
    return cells;
}

QString element(const char *tag, const QString &content)
{
    return QStringLiteral("<%1>%2</%1>").arg(QLatin1String(tag), content);
}

QString row(const char *tag, const QStringList &cells)
{
    QString text;
    for (const QString &cell : cells)
        text += QLatin1Char('<') + QLatin1String(tag) + QLatin1Char('>') + cell + QStringLiteral("</") +
                QLatin1String(tag) + QLatin1Char('>');
    return element("tr", text) + QLatin1Char('\n');
}

QString table(const QString &heading, const QString &rows)
{
    return QStringLiteral(
               "<div class=\"wide\"><table>\n<thead>%1</thead>\n<tbody>\n%2</tbody>\n</table></div>\n")
        .arg(heading, rows);
}

QString titled(const ReportedSetting &setting)
{
    return escaped(setting.title) + element("small", escaped(setting.meaning)) +
           element("small", QStringLiteral("Guide: ") + escaped(setting.help) + QStringLiteral(", ") +
                                element("code", escaped(setting.name)));
}

QString settingsPart(const QList<ReportedSetting> &settings)
{
    if (settings.isEmpty())
        return element("p", QStringLiteral("All settings have their defaults.")) + QLatin1Char('\n');
    QString rows;
    for (const ReportedSetting &setting : settings)
        rows += row("td", {titled(setting), escaped(setting.values.first()), escaped(setting.usual)});
    return table(row("th", {QStringLiteral("Setting"), QStringLiteral("Value"), QStringLiteral("Default")}),
                 rows);
}

QString filesPart(const QList<StampedFile> &files)
{
    if (files.isEmpty())
        return {};
    QString rows;
    for (const StampedFile &file : files)
        rows += row("td", {escaped(file.path), QString::number(file.size),
                           element("code", QString::fromLatin1(file.sha256).toHtmlEscaped())});
    return table(row("th", {QStringLiteral("File"), QStringLiteral("Bytes"), QStringLiteral("SHA-256")}),
                 rows);
}

QString notesPart(const ReportedVariant &variant)
{
    QString text;
    if (!variant.problem.isEmpty())
        text += QStringLiteral("<p class=\"bad\">Not made: ") + escaped(variant.problem) +
                QStringLiteral("</p>\n");
    for (const QString &warning : variant.warnings)
        text += element("p", QStringLiteral("Warning: ") + escaped(warning)) + QLatin1Char('\n');
    return text;
}

QString matrixPart(const ProjectReport &report)
{
    const QList<QStringList> matrix = differenceTable(report);
    if (matrix.isEmpty())
        return {};
    QString rows;
    for (const QStringList &cells : matrix.mid(1))
        rows += row("td", allEscaped(cells));
    return element("h2", QStringLiteral("What differs")) + QLatin1Char('\n') +
           table(row("th", allEscaped(matrix.first())), rows);
}

QString introduction(const ProjectReport &report)
{
    const QString made = QStringLiteral("Made by pct ") + escaped(report.tool);
    if (report.vendorPackage.isEmpty())
        return element("p", made + QLatin1Char('.'));
    return element("p", made + QStringLiteral(" from ") + escaped(report.vendorPackage) +
                            QStringLiteral(", version ") + escaped(report.vendorVersion) + QLatin1Char('.'));
}

} // namespace

QByteArray ProjectReport::html() const
{
    QString text = QString::fromLatin1(head).arg(escaped(product->title)) +
                   element("h1", escaped(product->title)) + QLatin1Char('\n') + introduction(*this) +
                   QLatin1Char('\n') + matrixPart(*this);
    for (int i = 0; i < variants.size(); ++i)
        text += element("h2", escaped(variants.at(i).name)) + QLatin1Char('\n') + notesPart(variants.at(i)) +
                settingsPart(unusualSettings(*this, i)) + filesPart(variants.at(i).files);
    return (text + QStringLiteral("</body>\n</html>\n")).toUtf8();
}
