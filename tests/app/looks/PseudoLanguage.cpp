// SPDX-License-Identifier: Apache-2.0
#include "tests/app/looks/PseudoLanguage.h"

#include <QRegularExpression>

namespace {

QChar accented(QChar letter)
{
    static const QString plain = QStringLiteral("AEIOUaeioucny");
    static const QString accents = QString::fromUtf8("ÅÉÎÖÜåéîöüçñý");
    const int at = plain.indexOf(letter);
    return at < 0 ? letter : accents.at(at);
}

QString accented(QString text)
{
    for (QChar &letter : text)
        letter = accented(letter);
    return text;
}

/// Two fifths of a text's length, in words of five letters.
QString padding(int length)
{
    QString words;
    for (int i = 0; i < length * 2 / 5; ++i)
        words += i % 6 == 0 ? QLatin1Char(' ') : QLatin1Char('m');
    return words;
}

/// A stretch of text without marks in it.
QString lengthened(const QString &text)
{
    if (text.trimmed().isEmpty())
        return text;
    return QLatin1Char('[') + accented(text) + padding(text.size()) + QLatin1Char(']');
}

} // namespace

QString PseudoLanguage::translate(const char *, const char *source, const char *, int) const
{
    // Tags, entities, place holders, mnemonics, line ends and file patterns stay as they are.
    static const QRegularExpression mark(
        QStringLiteral("<style.*?</style>|<[^>]*>|&[a-z]+;|%[0-9n]|\\n| ?\\(\\*[^)]*\\)"),
        QRegularExpression::DotMatchesEverythingOption);
    const QString english = QString::fromUtf8(source);
    QString translated;
    int end = 0;
    for (auto matches = mark.globalMatch(english); matches.hasNext();) {
        const QRegularExpressionMatch match = matches.next();
        translated += lengthened(english.mid(end, match.capturedStart() - end)) + match.captured();
        end = match.capturedEnd();
    }
    return translated + lengthened(english.mid(end));
}
