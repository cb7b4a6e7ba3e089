// SPDX-License-Identifier: Apache-2.0
#include "core/PrintableText.h"

namespace {

bool isInvisible(QChar c)
{
    return c.category() == QChar::Other_Control || c.category() == QChar::Other_Format ||
           c.category() == QChar::Separator_Line || c.category() == QChar::Separator_Paragraph;
}

QString escaped(QChar c)
{
    if (c == QLatin1Char('\n'))
        return QStringLiteral("\\n");
    if (c == QLatin1Char('\t'))
        return QStringLiteral("\\t");
    if (c.unicode() < 0x100)
        return QStringLiteral("\\x%1").arg(c.unicode(), 2, 16, QLatin1Char('0'));
    return QStringLiteral("\\u%1").arg(c.unicode(), 4, 16, QLatin1Char('0'));
}

} // namespace

QString printableText(const QString &text)
{
    QString line;
    line.reserve(text.size());
    for (const QChar c : text) {
        if (c == QLatin1Char('\\'))
            line += QStringLiteral("\\\\");
        else
            line += isInvisible(c) ? escaped(c) : QString(c);
    }
    return line;
}
