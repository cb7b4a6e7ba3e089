// SPDX-License-Identifier: Apache-2.0
#include "config/Product.h"
#include "project/ProjectReport.h"
#include "tests/support/TestFiles.h"
#include "tests/welcome/webview/HelpPages.h"

#include <QtTest>

namespace {

ProjectReport sampleReport()
{
    ReportedVariant office{QStringLiteral("office"), {}, {}, {}, {}};
    office.settings.bHideMyApps = true;
    office.settings.strLoginDomainList =
        QStringLiteral("@example.com;@a-long-name.of-some-department.example.org");
    office.files.append({QStringLiteral("package"),
                         QStringLiteral("dist/office/Editor-with-a-long-name-office.pkg"), 123456789,
                         QByteArray(64, 'a')});
    office.warnings += QStringLiteral("the new package does not carry the vendor's signature");
    ReportedVariant kiosk{QStringLiteral("kiosk"), {}, {}, {}, QStringLiteral("<b>no</b> room & more")};
    kiosk.settings.nAuthLibrary = 1;
    return {&Product::editor(),
            QStringLiteral("1.0"),
            QStringLiteral("vendor/Editor.pkg"),
            QStringLiteral("14.0"),
            {office, kiosk}};
}

/// The brightness of most of the picture, from 0 to 255.
int usualBrightness(const QImage &image)
{
    QMap<int, int> counts;
    for (int y = 0; y < image.height(); y += 3) {
        for (int x = 0; x < image.width(); x += 3)
            ++counts[qGray(image.pixel(x, y))];
    }
    int most = 0;
    for (auto level = counts.begin(); level != counts.end(); ++level) {
        if (level.value() > counts.value(most))
            most = level.key();
    }
    return most;
}

int grayLevels(const QImage &image)
{
    QSet<int> levels;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            levels.insert(qGray(image.pixel(x, y)));
    }
    return static_cast<int>(levels.size());
}

} // namespace

/// How the report looks on a phone and on a desk, in the colours that the system asks for.
class tst_ReportPage : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void nothingIsWiderThanTheScreen_data();
    void nothingIsWiderThanTheScreen();
    void theColoursAreThoseOfTheSystem();
    void whatIsToldIsThere();
    void namesAreNoMarkup();

private:
    std::unique_ptr<HelpPages> m_pages;
};

void tst_ReportPage::initTestCase()
{
    m_pages = std::make_unique<HelpPages>();
    QByteArray html = sampleReport().html();
    html.replace("</body>", "<script>window.complete = 1</script></body>");
    TestFiles::write(m_pages->path(QStringLiteral("report.html")), html);
    m_pages->openAddress(m_pages->address(QStringLiteral("report.html")));
}

void tst_ReportPage::nothingIsWiderThanTheScreen_data()
{
    QTest::addColumn<QSize>("size");
    QTest::newRow("phone") << QSize(360, 640);
    QTest::newRow("desk") << QSize(1100, 800);
}

void tst_ReportPage::nothingIsWiderThanTheScreen()
{
    QFETCH(QSize, size);
    m_pages->view->resize(size);
    QTRY_COMPARE(m_pages->in(QStringLiteral("'' + innerWidth")), QString::number(size.width()));
    QCOMPARE(m_pages->in(QStringLiteral("'' + (document.documentElement.scrollWidth <= innerWidth)")),
             QStringLiteral("true"));
    const QString folder = QStringLiteral("'' + [...document.querySelectorAll('.wide')].every("
                                          "e => e.getBoundingClientRect().right <= innerWidth)");
    QCOMPARE(m_pages->in(folder), QStringLiteral("true"));
    QTRY_VERIFY(grayLevels(m_pages->view->grab().toImage()) > 8);
    m_pages->view->grab().save(
        QStringLiteral("report-%1-%2.png")
            .arg(QLatin1String(QTest::currentDataTag()),
                 m_pages->in(QStringLiteral("matchMedia('(prefers-color-scheme: dark)')"
                                            ".matches ? 'dark' : 'light'"))));
}

void tst_ReportPage::theColoursAreThoseOfTheSystem()
{
    const bool isDark =
        m_pages->in(QStringLiteral("'' + matchMedia('(prefers-color-scheme: dark)').matches")) ==
        QLatin1String("true");
    const bool asksForDark = qgetenv("QTWEBENGINE_CHROMIUM_FLAGS").contains("preferredColorScheme=0");
    QCOMPARE(isDark, asksForDark);
    const int brightness = usualBrightness(m_pages->view->grab().toImage());
    QVERIFY2(isDark ? brightness < 60 : brightness > 220, qPrintable(QString::number(brightness)));
}

void tst_ReportPage::whatIsToldIsThere()
{
    const QString text = m_pages->in(QStringLiteral("document.body.innerText"));
    for (const char *part :
         {"Pelix PDF Editor", "What differs", "office", "kiosk", "ADAL", "@example.com", "123456789",
          "Editor-with-a-long-name-office.pkg", "Warning: the new package does not carry", "version 14.0"})
        QVERIFY2(text.contains(QLatin1String(part)), part);
    QVERIFY(text.contains(QString(64, QLatin1Char('a'))));
}

void tst_ReportPage::namesAreNoMarkup()
{
    QCOMPARE(m_pages->in(QStringLiteral("'' + document.querySelectorAll('b').length")), QStringLiteral("0"));
    QVERIFY(m_pages->in(QStringLiteral("document.body.innerText"))
                .contains(QLatin1String("<b>no</b> room & more")));
}

QTEST_MAIN(tst_ReportPage)

#include "tst_ReportPage.moc"
