// SPDX-License-Identifier: Apache-2.0
#include "tests/cli/BuildCommand.h"
#include "tests/cli/PctRunner.h"
#include "tests/cli/ShownSettings.h"
#include "tests/support/TestFiles.h"

#include <QJsonDocument>
#include <QtTest>

#include <algorithm>
#include <limits>
#include <sys/resource.h>

namespace {

QString text(const char *literal)
{
    return QString::fromUtf8(literal);
}

/// Differs from the defaults in most ways in which settings can.
QString document(const PctRunner &runner)
{
    const QString path = runner.file(text("settings.xml"));
    const PctResult made = runner.run({text("config"),         text("new"),
                                       text("--product"),      text("editor"),
                                       text("--output"),       path,
                                       text("--set"),          text("nAuthLibrary=ADAL"),
                                       text("--set"),          text("bShowStartPage=0"),
                                       text("--set"),          text("nFileAttachmentsMode=1"),
                                       text("--set"),          text("nMIPCheckPolicyOnDocSave=0"),
                                       text("--set"),          text("strLoginDomainList=@a.example"),
                                       text("--hide-command"), text("Ribbon_Page_View"),
                                       text("--quick-access"), text("Ribbon_Action_MenuBar_Save")});
    if (made.exitCode != 0)
        qFatal("%s", made.err.constData());
    return path;
}

QString jsonOf(const PctRunner &runner, const QString &file)
{
    const QString path = runner.file(text("settings.json"));
    TestFiles::write(path, runner.run({text("show"), text("--json"), file}).out);
    return path;
}

double secondsOf(const timeval &time)
{
    return double(time.tv_sec) + double(time.tv_usec) / 1e6;
}

double childrensSeconds()
{
    struct rusage usage = {};
    ::getrusage(RUSAGE_CHILDREN, &usage);
    return secondsOf(usage.ru_utime) + secondsOf(usage.ru_stime);
}

/// The processor time of the cheapest of three runs: a busy machine makes a run dearer, never cheaper.
double cheapestRefusal(const PctRunner &runner, const QString &path)
{
    double cheapest = std::numeric_limits<double>::infinity();
    for (int run = 0; run < 3; ++run) {
        const double before = childrensSeconds();
        const PctResult result = runner.run({text("show"), path});
        if (!result.isOneLineRefusal())
            qWarning("%s", result.err.constData());
        else
            cheapest = std::min(cheapest, childrensSeconds() - before);
    }
    return cheapest;
}

qint64 childrensPeakMemory()
{
    struct rusage usage = {};
    ::getrusage(RUSAGE_CHILDREN, &usage);
    return static_cast<qint64>(usage.ru_maxrss) * PCT_RESIDENT_SIZE_UNIT;
}

PctResult profile(const PctRunner &runner, const QString &config, const QString &output)
{
    return runner.run({text("profile"), text("--product"), text("editor"), text("--config"), config,
                       text("--output"), output, text("--identifier"), text("org.example"), text("--uuid"),
                       text("00000000-0000-4000-8000-000000000000")});
}

} // namespace

class tst_PctSettingsJson : public QObject
{
    Q_OBJECT

private slots:
    void itStandsWhereADocumentStands();
    void aPartIsEnough_data();
    void aPartIsEnough();
    void whatIsWrongIsRefusedWithItsPlace_data();
    void whatIsWrongIsRefusedWithItsPlace();
    void hostileJsonCostsLittle_data();
    void hostileJsonCostsLittle();
    void itCanBeChangedAsADocumentCan();
    void anOldStyleProfileIsStillOne();
};

void tst_PctSettingsJson::itStandsWhereADocumentStands()
{
    const PctRunner runner;
    const QString xml = document(runner);
    const QString json = jsonOf(runner, xml);
    QCOMPARE(runner.run({text("diff"), xml, json}).exitCode, 0);
    QCOMPARE(runner.run({text("show"), text("--json"), json}).out, TestFiles::read(json));
    BuildCommand build;
    build.input = runner.samplePackage(true);
    QByteArrayList kept;
    for (const QString &config : {xml, json}) {
        build.output = config + text(".pkg");
        const QString keptPath = config + text(".kept");
        build.more = QStringList{text("--config"), config, text("--keep-config"), keptPath};
        const PctResult result = runner.run(build.arguments());
        QVERIFY2(result.exitCode == 0, result.err.constData());
        kept += TestFiles::read(keptPath);
    }
    QCOMPARE(kept.at(0), kept.at(1));
    QCOMPARE(profile(runner, xml, runner.file(text("a.mobileconfig"))).exitCode, 0);
    QCOMPARE(profile(runner, json, runner.file(text("b.mobileconfig"))).exitCode, 0);
    QCOMPARE(
        runner.run({text("diff"), runner.file(text("a.mobileconfig")), runner.file(text("b.mobileconfig"))})
            .exitCode,
        0);
}

void tst_PctSettingsJson::aPartIsEnough_data()
{
    QTest::addColumn<QByteArray>("json");
    QTest::addColumn<bool>("isWithProduct");
    QTest::newRow("nested") << QByteArray("{\"product\": \"editor\", \"settings\": {\"nAuthLibrary\": 1}}")
                            << true;
    QTest::newRow("flat") << QByteArray("{\"nAuthLibrary\": 1}") << false;
    QTest::newRow("flat, with a product")
        << QByteArray("{\"nAuthLibrary\": 1, \"product\": \"editor\"}") << true;
    QTest::newRow("with a byte order mark")
        << QByteArray("\xef\xbb\xbf{\"settings\": {\"nAuthLibrary\": 1}}") << false;
}

void tst_PctSettingsJson::aPartIsEnough()
{
    QFETCH(QByteArray, json);
    QFETCH(bool, isWithProduct);
    const PctRunner runner;
    const QString path = runner.file(text("part.json"));
    const QString made = runner.file(text("made.xml"));
    TestFiles::write(path, json);
    QCOMPARE(runner
                 .run({text("config"), text("new"), text("--product"), text("editor"), text("--config"), path,
                       text("--output"), made})
                 .exitCode,
             0);
    QCOMPARE(runner.run({text("config"), text("get"), made, text("nAuthLibrary")}).out, QByteArray("ADAL\n"));
    const PctResult shown = runner.run({text("show"), text("--json"), path});
    QCOMPARE(shown.exitCode == 0, isWithProduct);
    if (isWithProduct)
        QCOMPARE(shown.json().value(text("settings")).toObject(), shownWith({{text("nAuthLibrary"), 1}}));
    else
        QVERIFY2(shown.err.contains("for which product"), shown.err.constData());
}

void tst_PctSettingsJson::whatIsWrongIsRefusedWithItsPlace_data()
{
    QTest::addColumn<QByteArray>("json");
    QTest::addColumn<QByteArray>("message");
    const auto row = [](const char *json, const char *message) {
        QTest::newRow(json) << QByteArray(json) << QByteArray(message);
    };
    row("{\n \"settings\": {\"bShowStartpage\": true}}",
        "line 2, column 15: there is no \"bShowStartpage\", the nearest is \"bShowStartPage\"");
    row("{\"settingz\": {}}", "line 1, column 2: there is no \"settingz\", the nearest is \"settings\"");
    row("{\"bShowStartPage\": 1}", "line 1, column 20: \"bShowStartPage\" is true or false");
    row("{\"nAuthLibrary\": \"1\"}", "\"nAuthLibrary\" is an integer");
    row("{\"nAuthLibrary\": 1.5}", "\"nAuthLibrary\" is an integer");
    row("{\"nAuthLibrary\": 99999999999}", "\"nAuthLibrary\" is an integer");
    row("{\"strLoginDomain\": 1}", "\"strLoginDomain\" is a text");
    row("{\"strLoginDomain\": \"\\u0001\"}", "no document can hold the control characters");
    row("{\"elemRibbonCategory\": \"<a>\"}", "an element \"RibbonUI\" as XML");
    row("{\"elemRibbonCategory\": \"<a/>\"}", "an element \"RibbonUI\" as XML");
    row("{\"product\": \"both\"}", "\"product\" is \"editor\" or \"reader\"");
    row("{\"settings\": {}, \"nAuthLibrary\": 1}", "there is no \"nAuthLibrary\"");
    row("{\"nAuthLibrary\": 1, \"nAuthLibrary\": 0}",
        "line 1, column 21: \"nAuthLibrary\" stands there twice");
    row("{\"settings\": 3}", "\"settings\" is an object");
    row("[]", "line 1, column 1: it is no object");
}

void tst_PctSettingsJson::whatIsWrongIsRefusedWithItsPlace()
{
    QFETCH(QByteArray, json);
    QFETCH(QByteArray, message);
    const PctRunner runner;
    const QString path = runner.file(text("wrong.json"));
    const QString output = runner.file(text("out.mobileconfig"));
    TestFiles::write(path, json);
    const PctResult result = profile(runner, path, output);
    QVERIFY2(result.isOneLineRefusal(), result.err.constData());
    QVERIFY2(result.err.contains(message), result.err.constData());
    QVERIFY(!QFile::exists(output));
}

void tst_PctSettingsJson::hostileJsonCostsLittle_data()
{
    QTest::addColumn<QByteArray>("json");
    QByteArray keys = "{\"k\":0";
    for (int i = 0; i < 1000 * 1000; ++i)
        keys += ",\"" + QByteArray::number(i) + "\":0";
    QTest::newRow("a million keys") << keys + '}';
    QTest::newRow("a million settings") << "{\"settings\":" + keys + "}}";
    QTest::newRow("deep") << "{\"a\":" + QByteArray(1000 * 1000, '[');
    QTest::newRow("NUL") << QByteArray("{\"a\":\0}", 7);
    QTest::newRow("too large") << "{\"a\":\"" + QByteArray(33 * 1024 * 1024, 'x') + "\"}";
}

void tst_PctSettingsJson::hostileJsonCostsLittle()
{
    QFETCH(QByteArray, json);
    const PctRunner runner;
    const QString path = runner.file(text("hostile.json"));
    TestFiles::write(path, json);
    const double seconds = cheapestRefusal(runner, path);
    QVERIFY2(seconds < PCT_COST_FACTOR, qPrintable(QString::number(seconds)));
    constexpr qint64 mostBytes = qint64(256) * 1024 * 1024 * PCT_COST_FACTOR;
    QVERIFY2(childrensPeakMemory() < mostBytes, qPrintable(QString::number(childrensPeakMemory())));
}

void tst_PctSettingsJson::itCanBeChangedAsADocumentCan()
{
    const PctRunner runner;
    const QString json = jsonOf(runner, document(runner));
    const PctResult result =
        runner.run({text("config"), text("set"), json, text("nMIPCheckPolicyOnDocSave=Default")});
    QVERIFY2(result.exitCode == 0, result.err.constData());
    const QJsonObject settings =
        QJsonDocument::fromJson(TestFiles::read(json)).object().value(text("settings")).toObject();
    QCOMPARE(settings.value(text("bMIPCheckPolicySet")), QJsonValue(false));
    QCOMPARE(settings.value(text("nMIPCheckPolicyOnDocSave")), QJsonValue(-1));
    QCOMPARE(settings.value(text("nAuthLibrary")), QJsonValue(1));
}

void tst_PctSettingsJson::anOldStyleProfileIsStillOne()
{
    const PctRunner runner;
    const QString path = runner.file(text("old.mobileconfig"));
    for (const char *list : {"{ \"Payload\" = 1; }", "{ Payload = ( ); }", "{ \"a\"; }"}) {
        TestFiles::write(path, list);
        const PctResult result = runner.run({text("show"), path});
        QVERIFY2(result.err.contains("give a profile"), result.err.constData());
    }
}

QTEST_GUILESS_MAIN(tst_PctSettingsJson)
#include "tst_PctSettingsJson.moc"
