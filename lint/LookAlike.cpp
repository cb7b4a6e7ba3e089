// SPDX-License-Identifier: Apache-2.0
#include "lint/LookAlike.h"

#include <QHash>

#include <algorithm>

namespace {

/// Pairs of a character and the one that it looks like: Cyrillic, Greek, Latin with another shape of its own,
/// and marks.
const QHash<QChar, QChar> &twins()
{
    static const QString pairs = QStringLiteral(
        "\u0430a\u0435e\u043Eo\u0440p\u0441c\u0443y\u0445x\u0455s\u0456i\u0458j\u04BBh\u0501d\u051Bq\u051Dw"
        "\u0410A\u0412B\u0415E\u0406I\u0408J\u041AK\u041CM\u041DH\u041EO\u0420P\u0421C\u0422T\u0423Y\u0425X"
        "\u0405S\u03BFo\u03BDv\u03C1p\u03B1a\u03B9i\u0391A\u0392B\u0395E\u0396Z\u0397H\u0399I\u039AK\u039CM"
        "\u039DN\u039FO\u03A1P\u03A4T\u03A5Y\u03A7X\u0131i\u0251a\u0261g\u2010-\u2011-\u2012-\u2013-\u2014-"
        "\u2212-\u2223|\u01C0|\uA789:\u2236:\u0589:\u037E;");
    static const QHash<QChar, QChar> all = [] {
        QHash<QChar, QChar> table;
        for (int i = 0; i + 1 < pairs.size(); i += 2)
            table.insert(pairs.at(i), pairs.at(i + 1));
        return table;
    }();
    return all;
}

bool isSeen(QChar c)
{
    return c.category() != QChar::Other_Format;
}

QString placeOf(const QString &text, int at)
{
    const QString code = QString::number(text.at(at).unicode(), 16).toUpper();
    return QStringLiteral("U+%1 in place %2").arg(code.rightJustified(4, QLatin1Char('0'))).arg(at + 1);
}

} // namespace

QString plainForm(const QString &text)
{
    const auto isPlain = [](QChar c) { return c.unicode() > 0x20 && c.unicode() < 0x7f; };
    if (std::all_of(text.begin(), text.end(), isPlain))
        return text;
    QString plain;
    // The twins first: a few have a compatible form that looks like nothing of this.
    for (const QChar c : text) {
        if (isSeen(c))
            plain += twins().value(c, c);
    }
    return plain.normalized(QString::NormalizationForm_KC).trimmed();
}

QString lookAlike(const QString &text, const QStringList &known)
{
    const QString plain = plainForm(text);
    return plain != text && !known.contains(text) && known.contains(plain) ? plain : QString();
}

QString oddityOf(const QString &text)
{
    if (plainForm(text) == text)
        return {};
    for (int i = 0; i < text.size(); ++i) {
        const QString one = text.mid(i, 1);
        if (!one.at(0).isSpace() && !one.at(0).isSurrogate() && plainForm(one) != one)
            return placeOf(text, i);
    }
    return text.trimmed() == text ? QStringLiteral("another white space")
                                  : QStringLiteral("white space at an end");
}
