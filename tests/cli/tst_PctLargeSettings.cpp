// SPDX-License-Identifier: Apache-2.0
#include "tests/cli/BuildCommand.h"
#include "tests/cli/PctRunner.h"
#include "tests/support/TestFiles.h"

#include <QtTest>

#include <sys/resource.h>

namespace {

constexpr qint64 gibibyte = 1024LL * 1024 * 1024;

QString text(const char *literal)
{
    return QString::fromUtf8(literal);
}

struct rusage childrensUsage()
{
    struct rusage usage = {};
    ::getrusage(RUSAGE_CHILDREN, &usage);
    return usage;
}

/// Whole seconds that child processes have kept processors busy so far.
qint64 childrensSeconds()
{
    const struct rusage usage = childrensUsage();
    return qint64(usage.ru_utime.tv_sec) + qint64(usage.ru_stime.tv_sec);
}

QByteArray document(const QByteArray &preferences, const QByteArray &ribbon = QByteArray())
{
    return "<PelixPDFEditor><Profstore><Preferences>" + preferences +
           "</Preferences><RibbonSetRibbonCategory>" + ribbon +
           "</RibbonSetRibbonCategory></Profstore></PelixPDFEditor>";
}

/// Enough for minutes where the time grows with the square.
QByteArray filled(const QByteArray &piece)
{
    constexpr int length = 12 * 1024 * 1024;
    return piece.repeated(length / piece.size());
}

QByteArray domain(const QByteArray &value)
{
    return document("<Preference Text=\"LoginDomain\" String=\"" + value + "\"/>");
}

QByteArray millionAttributes(const QByteArray &between)
{
    QByteArray xml;
    for (int i = 0; i < 1000 * 1000; ++i)
        xml += " a" + QByteArray::number(i) + between;
    return xml;
}

} // namespace

/// Settings that are made to keep the tool busy. Each verb takes or refuses them in a time that grows with
/// their length only; with its square, each would take minutes.
class tst_PctLargeSettings : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_secondsBefore = childrensSeconds(); }
    void cleanup();
    void whatOnlyCostsTimeIsRefused_data();
    void whatOnlyCostsTimeIsRefused();
    void largeValuesAreTaken_data();
    void largeValuesAreTaken();
    void aProfileThatNobodyCouldReadIsNotMade();
    void memoryStaysBounded();

private:
    qint64 m_secondsBefore = 0;
};

void tst_PctLargeSettings::cleanup()
{
    constexpr qint64 generous = 60;
    const qint64 seconds = childrensSeconds() - m_secondsBefore;
    QVERIFY2(seconds < generous, qPrintable(text("%1 seconds").arg(seconds)));
}

void tst_PctLargeSettings::whatOnlyCostsTimeIsRefused_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("a million attributes") << document("<Preference" + millionAttributes("=''") + "/>");
    QTest::newRow("four million elements") << document(QByteArray("<a/>").repeated(4 * 1000 * 1000));
    QTest::newRow("four million comments") << document(QByteArray("<!---->").repeated(4 * 1000 * 1000));
    QTest::newRow("a document type of a million attributes")
        << "<!DOCTYPE a [<!ATTLIST a" + millionAttributes(" CDATA ''") + ">]>" + document({});
    QTest::newRow("a name of 30 MB") << document('<' + QByteArray(30 * 1000 * 1000, 'a') + "/>");
}

void tst_PctLargeSettings::whatOnlyCostsTimeIsRefused()
{
    QFETCH(QByteArray, content);
    const PctRunner runner;
    const QString path = runner.file(text("document.xml"));
    TestFiles::write(path, content);
    const BuildCommand build{
        true, runner.samplePackage(true), runner.file(text("out.pkg")), {text("--config"), path}};
    for (const QStringList &arguments :
         {QStringList{text("show"), path}, build.arguments(),
          QStringList{text("profile"), text("--product"), text("editor"), text("--config"), path,
                      text("--output"), runner.file(text("out.mobileconfig"))}}) {
        const PctResult result = runner.run(arguments);
        QVERIFY2(result.isOneLineRefusal(), result.err.left(1000).constData());
    }
    const PctResult compared = runner.run({text("diff"), path, path});
    QCOMPARE(compared.exitCode, 2);
    QCOMPARE(runner.files().size(), 2);
}

void tst_PctLargeSettings::largeValuesAreTaken_data()
{
    QTest::addColumn<QByteArray>("value");
    QTest::addColumn<QByteArray>("content");
    const QByteArray brackets = filled("&lt;");
    const QByteArray quotes = filled("&quot;");
    QTest::newRow("<") << brackets << domain(brackets);
    QTest::newRow("quotes") << quotes << domain(quotes);
    QTest::newRow("< in a ribbon") << brackets
                                   << document({},
                                               "<RibbonUI><Category Text=\"" + brackets + "\"/></RibbonUI>");
}

void tst_PctLargeSettings::largeValuesAreTaken()
{
    QFETCH(QByteArray, value);
    QFETCH(QByteArray, content);
    const PctRunner runner;
    const QString path = runner.file(text("document.xml"));
    const QString profile = runner.file(text("out.mobileconfig"));
    TestFiles::write(path, content);
    const BuildCommand build{
        true, runner.samplePackage(true), runner.file(text("out.pkg")), {text("--config"), path}};
    QCOMPARE(runner.run({text("show"), path}).exitCode, 0);
    QCOMPARE(runner.run(build.arguments()).exitCode, 0);
    QCOMPARE(runner
                 .run({text("profile"), text("--product"), text("editor"), text("--config"), path,
                       text("--output"), profile})
                 .exitCode,
             0);
    QCOMPARE(runner.run({text("diff"), path, build.output}).exitCode, 0);
    QCOMPARE(runner.run({text("diff"), build.output, profile}).exitCode, 0);
    QVERIFY(ExpandedPackage(build.output).script(text("ProfStore.xml")).contains(value));
}

void tst_PctLargeSettings::aProfileThatNobodyCouldReadIsNotMade()
{
    const PctRunner runner;
    const QString path = runner.file(text("document.xml"));
    // In a profile each of them takes four characters.
    TestFiles::write(path, domain(QByteArray(9 * 1000 * 1000, '>')));
    const PctResult result = runner.run({text("profile"), text("--product"), text("editor"), text("--config"),
                                         path, text("--output"), runner.file(text("out.mobileconfig"))});
    QVERIFY2(result.isOneLineRefusal(), result.err.left(1000).constData());
    QVERIFY2(result.err.contains("no profile can hold these settings (it is larger than 32 MiB)"),
             result.err.left(1000).constData());
    QCOMPARE(runner.files(), QStringList(text("document.xml")));
}

void tst_PctLargeSettings::memoryStaysBounded()
{
    const qint64 peak = qint64(childrensUsage().ru_maxrss) * PCT_RESIDENT_SIZE_UNIT;
    QVERIFY2(peak > 0 && peak < gibibyte, qPrintable(text("%1 bytes").arg(peak)));
}

QTEST_GUILESS_MAIN(tst_PctLargeSettings)
#include "tst_PctLargeSettings.moc"
