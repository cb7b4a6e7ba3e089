// SPDX-License-Identifier: Apache-2.0
#include "tests/cli/ProfileRunner.h"
#include "tests/cli/ShownSettings.h"
#include "tests/support/TestFiles.h"

#include <QtTest>

#include <algorithm>
#include <sys/resource.h>
#include <sys/stat.h>

namespace {

using namespace ProfileXml;

constexpr qint64 mebibyte = 1024LL * 1024;

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

QByteArray nested(const QByteArray &open, const QByteArray &close)
{
    constexpr int depth = 100000;
    return profile(payload("") +
                   key("RibbonSetRibbonCategory", open.repeated(depth) + close.repeated(depth)));
}

QByteArray entityBomb()
{
    QByteArray entities = "<!DOCTYPE plist [<!ENTITY e0 \"0123456789\">";
    for (int i = 1; i < 12; ++i) {
        const QByteArray use = "&e" + QByteArray::number(i - 1) + ";";
        entities += "<!ENTITY e" + QByteArray::number(i) + " \"" + use.repeated(10) + "\">";
    }
    return entities + "]><plist version='1.0'>" +
           dictionary(key("PayloadIdentifier", string("&e11;")) +
                      key("PayloadContent", array(dictionary(payload(""))))) +
           "</plist>";
}

/// A binary property list whose one array holds itself.
QByteArray binaryCircle()
{
    return QByteArray("bplist00\xa1\x00", 10) + QByteArray("\x08", 1) + QByteArray(6, '\0') +
           QByteArray("\x01\x01", 2) + QByteArray("\0\0\0\0\0\0\0\x01", 8) + QByteArray(8, '\0') +
           QByteArray("\0\0\0\0\0\0\0\x0a", 8);
}

QByteArray outer(const QByteArray &entries)
{
    return plist(dictionary(entries));
}

const QList<QByteArray> &someValues()
{
    static const QList<QByteArray> values{string("x"),         "<integer>-7</integer>",
                                          "<true/>",           "<real>1e400</real>",
                                          "<data>AA==</data>", "<date>2026-01-01T00:00:00Z</date>",
                                          array(string("x")),  dictionary(key("a", string("b"))),
                                          array(""),           dictionary("")};
    return values;
}

} // namespace

/// Profiles that no honest tool has written. Each is given to `show`, `diff` and `profile --from`, and all
/// refuse it in one line, with every file as it was.
class tst_PctHostileProfiles : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_peakBefore = childrensPeakMemory(); }
    void cleanup();

    void contentIsRefused_data();
    void contentIsRefused();
    void hugeFilesAreRefused_data();
    void hugeFilesAreRefused();
    void aPipeIsRefused();
    void wrongTypesNeverCrash_data();
    void wrongTypesNeverCrash();
    void ofSeveralPayloadsTheProductsOwnCounts();
    void ofEqualKeysTheLastCounts();

private:
    static void verifyRefused(const ProfileRunner &runner, const QString &profile);

    qint64 m_peakBefore = 0;
};

/// The peak is that of all so far, so a row answers only for what it has added.
void tst_PctHostileProfiles::cleanup()
{
    const qint64 peak = childrensPeakMemory();
    QVERIFY2(peak < std::max(1024 * mebibyte, m_peakBefore + 1), qPrintable(text("%1 bytes").arg(peak)));
}

void tst_PctHostileProfiles::verifyRefused(const ProfileRunner &runner, const QString &profile)
{
    const QByteArray start = "pct: " + profile.toUtf8() + ": ";
    const PctResult shown = runner.run({text("show"), profile});
    QVERIFY2(shown.isOneLineRefusal() && shown.err.startsWith(start), shown.err.left(1000).constData());

    const PctResult compared = runner.run({text("diff"), profile, profile});
    QCOMPARE(compared.exitCode, 2);
    QCOMPARE(compared.messages().size(), 1);

    TestFiles::write(runner.output(), "as it was");
    const QStringList before = runner.files();
    const PctResult made = runner.makeProfile(true, {text("--force"), text("--from"), profile});
    QVERIFY2(made.isOneLineRefusal() && made.err.startsWith(start), made.err.left(1000).constData());
    QCOMPARE(TestFiles::read(runner.output()), QByteArray("as it was"));
    QCOMPARE(runner.files(), before);
    QCOMPARE(runner.temporaryLeftovers(), QStringList());
    QVERIFY(childrensPeakMemory() > 0);
}

void tst_PctHostileProfiles::contentIsRefused_data()
{
    QTest::addColumn<QByteArray>("content");
    const QByteArray good = profile(payload(""));
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("no property list") << QByteArray("Hello, this is a letter.\n");
    QTest::newRow("no dictionary") << plist(array(""));
    QTest::newRow("a string") << plist(string("x"));
    QTest::newRow("an empty dictionary") << plist(dictionary(""));
    for (const int part : {2, 3, 10})
        QTest::addRow("truncated, one %dth", part) << good.left(good.size() / part);
    QTest::newRow("truncated by its last tag") << good.left(good.size() - 3);
    QTest::newRow("dictionaries 100,000 deep") << nested("<dict><key>a</key>", "</dict>");
    QTest::newRow("arrays 100,000 deep") << nested("<array>", "</array>");
    QTest::newRow("old-style arrays 100,000 deep") << QByteArray(100000, '(') + QByteArray(100000, ')');
    QTest::newRow("old-style dictionaries 100,000 deep")
        << QByteArray("{a=").repeated(100000) + QByteArray(";}").repeated(100000);
    QTest::newRow("entity bomb") << entityBomb();
    QTest::newRow("no PayloadContent") << outer(key("PayloadIdentifier", string("a.b")));
    QTest::newRow("empty PayloadContent") << outer(key("PayloadContent", array("")));
    QTest::newRow("other application") << profile(payload("", "org.example.viewer"));
    QTest::newRow("the application's name is a number")
        << profile(key("PayloadIdentifier", "<integer>7</integer>"));
    QTest::newRow("NUL bytes") << QByteArray(good).replace("A profile", QByteArray("A \0rofile", 9));
    QTest::newRow("NUL bytes in front") << QByteArray(4, '\0') + good;
    QTest::newRow("NUL bytes only") << QByteArray(4096, '\0');
    QTest::newRow("binary, cut off") << QByteArray("bplist00");
    QTest::newRow("binary, nonsense") << "bplist00" + QByteArray(64, '\xff');
    QTest::newRow("binary, holds itself") << binaryCircle();
    QTest::newRow("binary, a number as a key")
        << QByteArray("bplist00\xd1\x01\x01\x10\x07\x08\x0b", 15) + QByteArray(6, '\0') +
               QByteArray("\x01\x01", 2) + QByteArray("\0\0\0\0\0\0\0\x02", 8) + QByteArray(8, '\0') +
               QByteArray("\0\0\0\0\0\0\0\x0d", 8);
    for (const auto *key : {"<0a1b>", "(a)", "{b=c;}"})
        QTest::addRow("old-style, %s as a key", key)
            << "{PayloadContent=({PayloadIdentifier=\"com.pelix-software.Pelix.PDF.Editor\";"
               "RibbonSetRibbonCategory={RibbonUI={" +
                   QByteArray(key) + "=x;};};});}";
    QTest::newRow("old-style, no semicolon") << QByteArray("{PayloadContent=({PayloadIdentifier=x})}");
    QTest::newRow("signed, cut off") << QByteArray("\x30\x80\x06\x09\x2a\x86\x48");
    QTest::newRow("signed, nonsense") << "\x30\x84\x7f\xff\xff\xff" + QByteArray(1000, '\x30');
    int number = 0;
    for (const QByteArray &value : someValues()) {
        if (!value.startsWith("<array><string>") && number != 8)
            QTest::addRow("PayloadContent is %d", number) << outer(key("PayloadContent", value));
        QTest::addRow("PayloadContent holds %d", number) << outer(key("PayloadContent", array(value)));
        ++number;
    }
}

void tst_PctHostileProfiles::contentIsRefused()
{
    QFETCH(QByteArray, content);
    const ProfileRunner runner;
    const QString path = runner.file(text("hostile"));
    TestFiles::write(path, content);
    verifyRefused(runner, path);
    QCOMPARE(TestFiles::read(path), content);
}

void tst_PctHostileProfiles::hugeFilesAreRefused_data()
{
    QTest::addColumn<QByteArray>("start");
    QTest::addColumn<char>("filling");
    const QByteArray head = plist(string("")).left(plist(string("")).indexOf("</string>"));
    QTest::newRow("one long string") << head << 'x';
    QTest::newRow("binary") << QByteArray("bplist00") << '\x51';
    QTest::newRow("signed") << QByteArray("\x30\x84\x06\x40\x00\x00") << '\x30';
    QTest::newRow("old-style") << QByteArray("{a=") << 'b';
    QTest::newRow("white space") << QByteArray() << ' ';
}

void tst_PctHostileProfiles::hugeFilesAreRefused()
{
    QFETCH(QByteArray, start);
    QFETCH(char, filling);
    const ProfileRunner runner;
    const QString path = runner.file(text("huge"));
    TestFiles::write(path, start + QByteArray(static_cast<int>(100 * mebibyte), filling));
    verifyRefused(runner, path);
}

void tst_PctHostileProfiles::aPipeIsRefused()
{
    const ProfileRunner runner;
    QCOMPARE(::mkfifo(QFile::encodeName(runner.file(text("pipe"))).constData(), 0600), 0);
    verifyRefused(runner, runner.file(text("pipe")));
}

void tst_PctHostileProfiles::wrongTypesNeverCrash_data()
{
    QTest::addColumn<QByteArray>("value");
    for (const QByteArray &value : someValues())
        QTest::newRow(value.constData()) << value;
}

/// A value of any type stands for every key in turn. What can be taken for a setting is; the rest is left.
void tst_PctHostileProfiles::wrongTypesNeverCrash()
{
    QFETCH(QByteArray, value);
    QByteArray items;
    for (const auto *name :
         {"StartPage", "Advertise", "bMIPCheckPolicyOnDocSave", "AuthLibrary", "DefaultLaunchAttachmentPerms",
          "HideMyApps", "iManage10loginMethod", "LoginDomain", "LoginDomainList", "SupportExtSSO"})
        items += preference(name, key("Mode", value) + key("Disable", value) + key("UseOAuth2", value) +
                                      key("String", value) + key("BuiltInPermList", value) +
                                      key("DisableOpenSaveFileAttach", value));
    items += dictionary(key("Preference", value)) + value + preference("x", key("Text", value));
    const QByteArray plugin = dictionary(
        key("Plugin", dictionary(key("Text", string("Plugin")) + key("UnloadPluginArray", value))));
    const QByteArray whole = payload(items) + key("Plugins", array(plugin + value)) +
                             key("RibbonSetRibbonCategory", dictionary(key("RibbonUI", value))) +
                             key("RibbonSetTabElements", value);
    const ProfileRunner runner;
    const QString path = runner.file(text("odd"));
    const QList<QByteArray> contents{whole, payload("") + key("Preferences", value),
                                     payload("") + key("Plugins", value)};
    for (const QByteArray &content : contents) {
        TestFiles::write(path, profile(content)
                                   .replace(string("A profile"), value)
                                   .replace(string("66666666-7777-4888-9999-AAAAAAAAAAAA"), value));
        const PctResult result = runner.run({text("show"), text("--json"), path});
        QCOMPARE(result.status, QProcess::NormalExit);
        QVERIFY2(result.isOneLineRefusal() || (result.exitCode == 0 && result.err.isEmpty()),
                 result.err.constData());
        if (result.exitCode == 0)
            QCOMPARE(result.json().value(text("settings")).toObject().size(),
                     asAProfileShows(shownDefaults()).size());
        const PctResult made = runner.makeProfile(true, {text("--force"), text("--from"), path});
        QVERIFY2(made.isOneLineRefusal() || (made.exitCode == 0 && made.err.isEmpty()), made.err.constData());
    }
}

void tst_PctHostileProfiles::ofSeveralPayloadsTheProductsOwnCounts()
{
    const ProfileRunner runner;
    const QString path = runner.file(text("several"));
    const QByteArray editor = payload(preference("StartPage", key("Mode", string("0"))));
    const QByteArray other = payload("", "org.example.viewer");
    const QByteArray next = "</dict><dict>";
    for (const QByteArray &payloads : QByteArrayList{editor + next + other, other + next + editor}) {
        TestFiles::write(path, profile(payloads));
        const QJsonObject shown = runner.run({text("show"), text("--json"), path}).json();
        QCOMPARE(shown.value(text("product")).toString(), text("editor"));
        QCOMPARE(shown.value(text("settings")).toObject().value(text("bShowStartPage")), QJsonValue(false));
    }
    TestFiles::write(path, profile(other + next + other));
    verifyRefused(runner, path);
}

void tst_PctHostileProfiles::ofEqualKeysTheLastCounts()
{
    const ProfileRunner runner;
    const QString path = runner.file(text("duplicate"));
    const QByteArray item = preference("StartPage", key("Mode", string("1")) + key("Mode", string("2")) +
                                                        key("Mode", string("0")));
    TestFiles::write(path, profile(payload("") + payload(item)));
    const PctResult shown = runner.run({text("show"), text("--json"), path});
    QVERIFY2(shown.exitCode == 0 && shown.err.isEmpty(), shown.err.constData());
    QCOMPARE(shown.json().value(text("settings")).toObject().value(text("bShowStartPage")),
             QJsonValue(false));
    const PctResult made = runner.makeProfile(true, {text("--from"), path});
    QVERIFY2(made.exitCode == 0 && made.err.isEmpty(), made.err.constData());
    QCOMPARE(preferenceOf(runner.propertyList(runner.output()), text("StartPage")).value(text("Mode")),
             QJsonValue(text("0")));
}

QTEST_GUILESS_MAIN(tst_PctHostileProfiles)
#include "tst_PctHostileProfiles.moc"
