// SPDX-License-Identifier: Apache-2.0
#include "config/Product.h"
#include "core/PrintableText.h"
#include "project/ProjectReport.h"

#include <algorithm>

#include <QRegularExpression>

namespace {

/// Text that Markdown takes for nothing else, on one line.
QString escaped(const QString &text)
{
    static const QRegularExpression marks(QStringLiteral("([\\\\`*_{}\\[\\]<>#|~&])"));
    return visibleText(text).replace(marks, QStringLiteral("\\\\1"));
}

QStringList allEscaped(QStringList cells)
{
    std::transform(cells.begin(), cells.end(), cells.begin(), escaped);
    return cells;
}

QString code(const QString &text)
{
    return QLatin1Char('`') + visibleText(text).replace(QLatin1Char('`'), QLatin1Char('\'')) +
           QLatin1Char('`');
}

QString row(const QStringList &cells)
{
    return QStringLiteral("| ") + cells.join(QStringLiteral(" | ")) + QStringLiteral(" |\n");
}

QString table(const QStringList &heading, const QList<QStringList> &rows)
{
    QStringList line;
    for (int i = 0; i < heading.size(); ++i)
        line += QStringLiteral("---");
    QString text = row(heading) + row(line);
    for (const QStringList &cells : rows)
        text += row(cells);
    return text + QLatin1Char('\n');
}

QString settingsPart(const QList<ReportedSetting> &settings)
{
    if (settings.isEmpty())
        return QStringLiteral("All settings have their defaults.\n\n");
    QList<QStringList> rows;
    for (const ReportedSetting &setting : settings)
        rows.append({escaped(setting.title), escaped(setting.values.first()), escaped(setting.usual),
                     escaped(setting.meaning)});
    return table({QStringLiteral("Setting"), QStringLiteral("Value"), QStringLiteral("Default"),
                  QStringLiteral("Meaning")},
                 rows);
}

QString filesPart(const QList<StampedFile> &files)
{
    QList<QStringList> rows;
    for (const StampedFile &file : files)
        rows.append({code(file.path), QString::number(file.size), code(QString::fromLatin1(file.sha256))});
    return files.isEmpty()
               ? QString()
               : table({QStringLiteral("File"), QStringLiteral("Bytes"), QStringLiteral("SHA-256")}, rows);
}

QString notesPart(const ReportedVariant &variant)
{
    QString text;
    if (!variant.problem.isEmpty())
        text += QStringLiteral("**Not made:** %1\n\n").arg(escaped(variant.problem));
    for (const QString &warning : variant.warnings)
        text += QStringLiteral("- Warning: %1\n").arg(escaped(warning));
    return variant.warnings.isEmpty() ? text : text + QLatin1Char('\n');
}

QString matrixPart(const ProjectReport &report)
{
    QList<QStringList> matrix = differenceTable(report);
    if (matrix.isEmpty())
        return {};
    std::transform(matrix.begin(), matrix.end(), matrix.begin(), allEscaped);
    return QStringLiteral("## What differs\n\n") + table(matrix.first(), matrix.mid(1));
}

} // namespace

QByteArray ProjectReport::markdown() const
{
    QString text = QStringLiteral("# %1\n\n").arg(escaped(product->title));
    if (!vendorPackage.isEmpty())
        text += QStringLiteral("From %1, version %2, by pct %3.\n\n")
                    .arg(code(vendorPackage), escaped(vendorVersion), escaped(tool));
    text += matrixPart(*this);
    for (int i = 0; i < variants.size(); ++i)
        text += QStringLiteral("## %1\n\n").arg(escaped(variants.at(i).name)) + notesPart(variants.at(i)) +
                settingsPart(unusualSettings(*this, i)) + filesPart(variants.at(i).files);
    return text.trimmed().toUtf8() + '\n';
}
