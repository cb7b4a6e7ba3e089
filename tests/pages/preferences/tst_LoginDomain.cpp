// SPDX-License-Identifier: Apache-2.0
#include "config/LoginDomain.h"
#include "pages/preferences/logindomain/tab_prefer_login_domain.h"

#include <QElapsedTimer>
#include <QtTest>

#include <algorithm>
#include <limits>
#include <regex>

namespace {

QString letters(int count)
{
    return QString(count, QLatin1Char('a'));
}

/// "@" and a domain of so many characters: labels of 49 with their dots, what is left over, and "com".
QString domainOf(int length)
{
    QString text = QStringLiteral("@");
    int left = length - 3;
    while (left > 60) {
        text += letters(49) + QLatin1Char('.');
        left -= 50;
    }
    return text + letters(left - 1) + QStringLiteral(".com");
}

/// The rule as a wide-character expression. It recurses once for each character: short texts only.
bool matchesTheExpression(const QString &text)
{
    static const std::wregex expression(
        L"^@(?=.{1,255}$)(?:[A-Za-z0-9](?:[A-Za-z0-9-]{0,61}[A-Za-z0-9])?\\.)+[A-Za-z]{2,}$");
    return std::regex_match(text.toStdWString(), expression);
}

} // namespace

class tst_LoginDomain : public QObject
{
    Q_OBJECT

private slots:
    void checksAnEntry_data()
    {
        QTest::addColumn<QString>("entry");
        QTest::addColumn<bool>("accepted");

        QTest::newRow("one label") << QStringLiteral("@example.com") << true;
        QTest::newRow("several labels") << QStringLiteral("@mail.eu.example.co") << true;
        QTest::newRow("shortest") << QStringLiteral("@a.bc") << true;
        QTest::newRow("upper case") << QStringLiteral("@EXAMPLE.COM") << true;
        QTest::newRow("digits and hyphens inside") << QStringLiteral("@3-a--b1.0.org") << true;
        QTest::newRow("label of 63") << QString(QStringLiteral("@") + letters(63) + QStringLiteral(".com"))
                                     << true;
        QTest::newRow("two labels of 63") << QString(QStringLiteral("@") + letters(63) + QStringLiteral(".") +
                                                     letters(63) + QStringLiteral(".com"))
                                          << true;
        QTest::newRow("last label over 63") << QString(QStringLiteral("@a.") + letters(64)) << true;
        QTest::newRow("256 in all") << domainOf(255) << true;
        QTest::newRow("255 in all") << domainOf(254) << true;
        QTest::newRow("256 in all, long last label") << QString(QStringLiteral("@a.") + letters(253)) << true;

        QTest::newRow("empty") << QStringLiteral("") << false;
        QTest::newRow("only the sign") << QStringLiteral("@") << false;
        QTest::newRow("no sign") << QStringLiteral("example.com") << false;
        QTest::newRow("two signs") << QStringLiteral("@@example.com") << false;
        QTest::newRow("something before the sign") << QStringLiteral("me@example.com") << false;
        QTest::newRow("no dot") << QStringLiteral("@example") << false;
        QTest::newRow("begins with hyphen") << QStringLiteral("@-example.com") << false;
        QTest::newRow("ends with hyphen") << QStringLiteral("@example-.com") << false;
        QTest::newRow("hyphen alone") << QStringLiteral("@-.com") << false;
        QTest::newRow("one-letter top label") << QStringLiteral("@example.c") << false;
        QTest::newRow("digit in top label") << QStringLiteral("@example.c0m") << false;
        QTest::newRow("hyphen in top label") << QStringLiteral("@example.co-m") << false;
        QTest::newRow("two dots in a row") << QStringLiteral("@example..com") << false;
        QTest::newRow("dot first") << QStringLiteral("@.example.com") << false;
        QTest::newRow("dot last") << QStringLiteral("@example.com.") << false;
        QTest::newRow("label of 64") << QString(QStringLiteral("@") + letters(64) + QStringLiteral(".com"))
                                     << false;
        QTest::newRow("257 in all") << domainOf(256) << false;
        QTest::newRow("257 in all, long last label")
            << QString(QStringLiteral("@a.") + letters(254)) << false;
        QTest::newRow("non-ASCII letter") << QString::fromUtf8("@ex\u00e4mple.com") << false;
        QTest::newRow("non-ASCII top label") << QString::fromUtf8("@example.\u0440\u0444") << false;
        QTest::newRow("non-ASCII digit") << QString::fromUtf8("@\u0661.com") << false;
        QTest::newRow("long s folds to s") << QString::fromUtf8("@example.\u017fo") << false;
        QTest::newRow("beyond 16 bits") << QString::fromUtf8("@\U0001d41a.com") << false;
        QTest::newRow("half a character")
            << QString(QStringLiteral("@") + QString(QChar(0xd835)) + QStringLiteral(".com")) << false;
        QTest::newRow("underscore") << QStringLiteral("@my_domain.com") << false;
        QTest::newRow("blank before") << QStringLiteral(" @example.com") << false;
        QTest::newRow("blank after") << QStringLiteral("@example.com ") << false;
        QTest::newRow("line break after") << QStringLiteral("@example.com\n") << false;
        QTest::newRow("second line") << QStringLiteral("@example.com\n@example.org") << false;
        QTest::newRow("NUL inside") << QString(QStringLiteral("@exa") + QString(QChar(0)) +
                                               QStringLiteral("mple.com"))
                                    << false;
        QTest::newRow("NUL after") << QString(QStringLiteral("@example.com") + QString(QChar(0))) << false;
    }

    void checksAnEntry()
    {
        QFETCH(QString, entry);
        QTEST(isLoginDomain(entry), "accepted");
        QTEST(tab_prefer_login_domain::CheckDomain(entry), "accepted");
    }

    void theLimitsOfTheTableAreWhatTheySay()
    {
        QCOMPARE(domainOf(255).size(), 256);
        QCOMPARE(domainOf(256).size(), 257);
    }

    void givesWhatTheWideExpressionGives_data() { checksAnEntry_data(); }

    void givesWhatTheWideExpressionGives()
    {
        QFETCH(QString, entry);
        QTEST(matchesTheExpression(entry), "accepted");
    }

    void randomTextsGiveWhatTheWideExpressionGives()
    {
        const QString alphabet = QStringLiteral("aabZZ9-..@\n");
        QRandomGenerator random(20260101);
        int accepted = 0;
        for (int i = 0; i < 20'000; ++i) {
            QString text = QStringLiteral("@");
            for (int left = random.bounded(2, 8); left > 0; --left)
                text += alphabet.at(random.bounded(alphabet.size()));
            QVERIFY2(isLoginDomain(text) == matchesTheExpression(text), qPrintable(text));
            accepted += isLoginDomain(text) ? 1 : 0;
        }
        QVERIFY(accepted > 100);
    }

    void aMillionCharactersAreRefusedAtOnce_data()
    {
        QTest::addColumn<QString>("entry");
        constexpr int million = 1'000'000;
        QTest::newRow("one label") << QString(QStringLiteral("@") + letters(million) +
                                              QStringLiteral(".com"));
        QTest::newRow("hyphens") << QString(QStringLiteral("@") + QString(million, QLatin1Char('-')) +
                                            QStringLiteral(".com"));
        QTest::newRow("labels") << QString(QStringLiteral("@") + QStringLiteral("a.").repeated(million / 2) +
                                           QStringLiteral("com"));
        QTest::newRow("top label") << QString(QStringLiteral("@a.") + letters(million));
        QTest::newRow("signs") << QString(million, QLatin1Char('@'));
    }

    void aMillionCharactersAreRefusedAtOnce()
    {
        QFETCH(QString, entry);
        // The fastest of three: a busy machine makes one slower, never faster.
        qint64 fastest = std::numeric_limits<qint64>::max();
        for (int i = 0; i < 3; ++i) {
            QElapsedTimer timer;
            timer.start();
            QVERIFY(!isLoginDomain(entry));
            fastest = std::min(fastest, timer.elapsed());
        }
        QVERIFY2(fastest < 100, qPrintable(QString::number(fastest)));
    }

    void listsAreSplitAtSemicolonsWithoutEmptyParts()
    {
        const QStringList two{QStringLiteral("@a.com"), QStringLiteral(" @b.com")};
        QCOMPARE(loginDomainsOf(QStringLiteral(";@a.com;; @b.com;")), two);
        QCOMPARE(loginDomainsOf(QStringLiteral(";;")), QStringList());
        QCOMPARE(loginDomainsOf(QString()), QStringList());
    }
};

QTEST_GUILESS_MAIN(tst_LoginDomain)
#include "tst_LoginDomain.moc"
