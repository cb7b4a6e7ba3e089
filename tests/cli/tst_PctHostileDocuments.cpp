// SPDX-License-Identifier: Apache-2.0
#include "tests/cli/BuildCommand.h"
#include "tests/cli/PctRunner.h"
#include "tests/support/TestFiles.h"

#include <QtTest>

#include <algorithm>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr qint64 gibibyte = 1024LL * 1024 * 1024;

QString text(const char *literal)
{
    return QString::fromUtf8(literal);
}

/// The largest amount of memory that any child process so far has held.
qint64 childrensPeakMemory()
{
    struct rusage usage = {};
    ::getrusage(RUSAGE_CHILDREN, &usage);
    return static_cast<qint64>(usage.ru_maxrss) * PCT_RESIDENT_SIZE_UNIT;
}

QByteArray nested(int depth)
{
    return QByteArray("<PelixPDFEditor>") + QByteArray("<a>").repeated(depth) +
           QByteArray("</a>").repeated(depth) + "</PelixPDFEditor>";
}

QByteArray entityBomb()
{
    QByteArray xml = "<!DOCTYPE b [<!ENTITY e0 \"0123456789\">";
    for (int i = 1; i < 12; ++i) {
        const QByteArray use = "&e" + QByteArray::number(i - 1) + ";";
        xml += "<!ENTITY e" + QByteArray::number(i) + " \"" + use.repeated(10) + "\">";
    }
    return xml + "]><PelixPDFEditor>&e11;</PelixPDFEditor>";
}

QByteArray oneLongEntity()
{
    return "<!DOCTYPE b [<!ENTITY e \"" + QByteArray(100000, 'x') + "\">]><PelixPDFEditor>" +
           QByteArray("&e;").repeated(100000) + "</PelixPDFEditor>";
}

} // namespace

/// Documents that no honest tool has written. Each is given to `show` and to `build`, and both refuse it
/// in one line, at once, with every file as it was.
class tst_PctHostileDocuments : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_peakBefore = childrensPeakMemory(); }
    void cleanup();

    void contentIsRefused_data();
    void contentIsRefused();
    void aHugeFileIsRefused();
    void whatIsNoFileIsRefused_data();
    void whatIsNoFileIsRefused();
    void anUnreadableFileIsRefused();

private:
    static void verifyRefused(const PctRunner &runner, const QString &document);

    qint64 m_peakBefore = 0;
};

/// The peak is that of all so far, so a row answers only for what it has added.
void tst_PctHostileDocuments::cleanup()
{
    const qint64 peak = childrensPeakMemory();
    QVERIFY2(peak < std::max(gibibyte, m_peakBefore + 1), qPrintable(text("%1 bytes").arg(peak)));
}

void tst_PctHostileDocuments::verifyRefused(const PctRunner &runner, const QString &document)
{
    const QByteArray start = "pct: " + document.toUtf8() + ": ";
    const PctResult shown = runner.run({text("show"), document});
    QVERIFY2(shown.isOneLineRefusal(), shown.err.constData());
    QVERIFY2(shown.err.startsWith(start), shown.err.constData());

    const QString output = runner.file(text("out.pkg"));
    TestFiles::write(output, "as it was");
    const BuildCommand build{
        true, runner.samplePackage(true), output, {text("--force"), text("--config"), document}};
    const PctResult built = runner.run(build.arguments());
    QVERIFY2(built.isOneLineRefusal(), built.err.constData());
    QVERIFY2(built.err.startsWith(start), built.err.constData());
    QCOMPARE(TestFiles::read(output), QByteArray("as it was"));
    QCOMPARE(runner.temporaryLeftovers(), QStringList());
    QVERIFY(childrensPeakMemory() > 0);
}

void tst_PctHostileDocuments::contentIsRefused_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("no XML") << QByteArray("bShowStartPage=true\n");
    QTest::newRow("not closed") << QByteArray("<PelixPDFEditor><Profstore>");
    QTest::newRow("another root element") << QByteArray("<plist version='1.0'><dict/></plist>");
    QTest::newRow("a root element with a line feed's name") << QByteArray("<\xe2\x80\xae/>");
    QTest::newRow("100,000 levels") << nested(100000);
    QTest::newRow("257 levels") << nested(257);
    QTest::newRow("entity bomb") << entityBomb();
    QTest::newRow("one long entity, used often") << oneLongEntity();
    QTest::newRow("NUL bytes") << QByteArray("<PelixPDFEditor>\0</PelixPDFEditor>", 34);
    QTest::newRow("NUL bytes only") << QByteArray(4096, '\0');
    QTest::newRow("control characters") << QByteArray("<PelixPDFEditor a='&#27;[31m'/>");
    QTest::newRow("external entity") << QByteArray(
        "<!DOCTYPE a [<!ENTITY e SYSTEM 'file:///etc/passwd'>]><PelixPDFEditor>&e;</PelixPDFEditor>");
    QTest::newRow("a million elements")
        << QByteArray("<PelixPDFEditor>") + QByteArray("<a/>").repeated(1000000) + "</PelixPDFEditor>";
}

void tst_PctHostileDocuments::contentIsRefused()
{
    QFETCH(QByteArray, content);
    const PctRunner runner;
    const QString document = runner.file(text("document.xml"));
    TestFiles::write(document, content);
    verifyRefused(runner, document);
}

void tst_PctHostileDocuments::aHugeFileIsRefused()
{
    const PctRunner runner;
    const QString document = runner.file(text("huge.xml"));
    TestFiles::write(document, "<PelixPDFEditor>");
    QVERIFY(QFile::resize(document, 64 * gibibyte));
    verifyRefused(runner, document);
}

void tst_PctHostileDocuments::whatIsNoFileIsRefused_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("missing") << text("missing.xml");
    QTest::newRow("folder") << text("folder");
    QTest::newRow("pipe") << text("pipe");
    QTest::newRow("link that leads nowhere") << text("link");
    QTest::newRow("path through a file") << text("file/document.xml");
}

void tst_PctHostileDocuments::whatIsNoFileIsRefused()
{
    QFETCH(QString, name);
    const PctRunner runner;
    QVERIFY(QDir().mkpath(runner.file(text("folder"))));
    QCOMPARE(::mkfifo(QFile::encodeName(runner.file(text("pipe"))).constData(), 0600), 0);
    QVERIFY(QFile::link(runner.file(text("nowhere")), runner.file(text("link"))));
    TestFiles::write(runner.file(text("file")), "x");
    verifyRefused(runner, runner.file(name));
}

void tst_PctHostileDocuments::anUnreadableFileIsRefused()
{
    if (::geteuid() == 0)
        QSKIP("the superuser can read every file");
    const PctRunner runner;
    const QString document = runner.document("PelixPDFEditor", "");
    QVERIFY(QFile::setPermissions(document, QFile::Permissions()));
    verifyRefused(runner, document);
}

QTEST_GUILESS_MAIN(tst_PctHostileDocuments)
#include "tst_PctHostileDocuments.moc"
