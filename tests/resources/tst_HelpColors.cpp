// SPDX-License-Identifier: Apache-2.0
#include "tests/resources/GuidePages.h"
#include "tests/support/TestFiles.h"

#include <QColor>
#include <QMap>
#include <QRegularExpression>
#include <QtTest>

#include <cmath>

namespace {

using Scheme = QMap<QString, QColor>;

struct Rule
{
    QString selector;
    QString body;
};

QString sheet()
{
    QString text = QString::fromUtf8(TestFiles::read(GuidePages::path(QStringLiteral("help.css"))));
    return text.remove(
        QRegularExpression(QStringLiteral("/\\*.*?\\*/"), QRegularExpression::DotMatchesEverythingOption));
}

/// The innermost blocks, in document order.
QList<Rule> rules()
{
    QList<Rule> found;
    static const QRegularExpression block(QStringLiteral("([^{}]+)\\{([^{}]*)\\}"));
    auto matches = block.globalMatch(sheet());
    while (matches.hasNext()) {
        const QRegularExpressionMatch match = matches.next();
        found.append({match.captured(1).trimmed(), match.captured(2)});
    }
    return found;
}

/// The colours of the light scheme, then those of the dark one.
QList<Scheme> schemes()
{
    QList<Scheme> found;
    static const QRegularExpression definition(QStringLiteral("--([a-z-]+):\\s*(#[0-9a-f]{6});"));
    for (const Rule &rule : rules()) {
        if (rule.selector != QLatin1String(":root"))
            continue;
        Scheme scheme;
        auto matches = definition.globalMatch(rule.body);
        while (matches.hasNext()) {
            const QRegularExpressionMatch match = matches.next();
            scheme.insert(match.captured(1), QColor(match.captured(2)));
        }
        found.append(scheme);
    }
    return found;
}

double linear(double channel)
{
    return channel <= 0.03928 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

double luminance(const QColor &color)
{
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

double contrast(const QColor &first, const QColor &second)
{
    const double a = luminance(first);
    const double b = luminance(second);
    return (qMax(a, b) + 0.05) / (qMin(a, b) + 0.05);
}

/// "page" and "page-code", but not "pages".
QStringList namesOf(const Scheme &scheme, const QString &family)
{
    QStringList names;
    for (const QString &name : scheme.keys()) {
        if (name == family || name.startsWith(family + QLatin1Char('-')))
            names.append(name);
    }
    return names;
}

} // namespace

/// Text can be read in both schemes.
class tst_HelpColors : public QObject
{
    Q_OBJECT

private slots:
    void thereIsALightAndADarkScheme();
    void theFormulaIsRight();
    void textCanBeRead_data();
    void textCanBeRead();
    void rulesUseTheNamedColoursOnly();
    void barTextStandsOnABar();
};

void tst_HelpColors::thereIsALightAndADarkScheme()
{
    const QList<Scheme> both = schemes();
    QCOMPARE(both.size(), 2);
    QCOMPARE(both.at(0).keys(), both.at(1).keys());
    QVERIFY(sheet().contains(QLatin1String("@media screen and (prefers-color-scheme: dark)")));
    QVERIFY(luminance(both.at(0).value(QStringLiteral("page"))) > 0.5);
    QVERIFY(luminance(both.at(1).value(QStringLiteral("page"))) < 0.1);
}

void tst_HelpColors::theFormulaIsRight()
{
    QVERIFY(qAbs(contrast(Qt::white, Qt::black) - 21.0) < 0.01);
    // The lightest grey that is readable on white.
    QVERIFY(qAbs(contrast(QColor(0x76, 0x76, 0x76), Qt::white) - 4.54) < 0.01);
}

void tst_HelpColors::textCanBeRead_data()
{
    QTest::addColumn<QColor>("foreground");
    QTest::addColumn<QColor>("background");
    QTest::addColumn<double>("least");
    const auto addRows = [](const Scheme &scheme, const QStringList &foregrounds,
                            const QStringList &backgrounds, double least) {
        for (const QString &foreground : foregrounds) {
            for (const QString &background : backgrounds)
                QTest::addRow("%s on %s, %s", qUtf8Printable(foreground), qUtf8Printable(background),
                              qUtf8Printable(scheme.value(background).name()))
                    << scheme.value(foreground) << scheme.value(background) << least;
        }
    };
    const QStringList bars = {QStringLiteral("bar"), QStringLiteral("bar-active")};
    for (const Scheme &scheme : schemes()) {
        const QStringList pages = namesOf(scheme, QStringLiteral("page"));
        addRows(scheme, namesOf(scheme, QStringLiteral("text")), pages, 4.5);
        addRows(scheme, namesOf(scheme, QStringLiteral("bar-text")), bars, 4.5);
        addRows(scheme, {QStringLiteral("focus")}, pages, 3);
        addRows(scheme, {QStringLiteral("bar-focus")}, bars, 3);
    }
}

void tst_HelpColors::textCanBeRead()
{
    QFETCH(QColor, foreground);
    QFETCH(QColor, background);
    QFETCH(double, least);
    QVERIFY(foreground.isValid() && background.isValid());
    const double actual = contrast(foreground, background);
    QVERIFY2(actual >= least, qPrintable(QString::number(actual)));
}

void tst_HelpColors::rulesUseTheNamedColoursOnly()
{
    static const QRegularExpression declaration(
        QStringLiteral("(?<![a-z-])(color|background|border-color|outline-color):\\s*([^;]+);"));
    static const QRegularExpression text(QStringLiteral("^var\\(--(bar-)?text(-[a-z]+)?\\)$"));
    static const QRegularExpression ground(QStringLiteral("^var\\(--(page(-[a-z]+)?|bar|bar-active)\\)$"));
    int checked = 0;
    for (const Rule &rule : rules()) {
        if (rule.selector == QLatin1String(":root"))
            continue;
        QVERIFY2(!rule.body.contains(QLatin1Char('#')), qUtf8Printable(rule.selector));
        auto matches = declaration.globalMatch(rule.body);
        while (matches.hasNext()) {
            const QRegularExpressionMatch match = matches.next();
            const QString property = match.captured(1);
            if (property == QLatin1String("color"))
                QVERIFY2(text.match(match.captured(2)).hasMatch(), qUtf8Printable(rule.selector));
            if (property == QLatin1String("background"))
                QVERIFY2(ground.match(match.captured(2)).hasMatch(), qUtf8Printable(rule.selector));
            ++checked;
        }
    }
    QVERIFY(checked > 10);
}

void tst_HelpColors::barTextStandsOnABar()
{
    int checked = 0;
    for (const Rule &rule : rules()) {
        if (!QRegularExpression(QStringLiteral("(?<![a-z-])color: var\\(--bar-text"))
                 .match(rule.body)
                 .hasMatch())
            continue;
        QVERIFY2(rule.body.contains(QLatin1String("background: var(--bar")), qUtf8Printable(rule.selector));
        ++checked;
    }
    QVERIFY(checked > 0);
}

QTEST_APPLESS_MAIN(tst_HelpColors)
#include "tst_HelpColors.moc"
