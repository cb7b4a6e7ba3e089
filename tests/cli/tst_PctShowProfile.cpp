// SPDX-License-Identifier: Apache-2.0
#include "tests/cli/ProfileRunner.h"
#include "tests/cli/ShownSettings.h"
#include "tests/support/TestFiles.h"

#include <QtTest>

#include <QJsonArray>

namespace {

QString text(const char *literal)
{
    return QString::fromUtf8(literal);
}

using namespace ProfileXml;

QByteArray mode(const QByteArray &value)
{
    return key("Mode", value);
}

/// Differs from the defaults in every setting that a profile carries; types as a real Mac writes them.
QByteArray everySetting()
{
    const QByteArray preferences =
        preference("StartPage", mode("<false/>")) + preference("Advertise", key("Disable", "<true/>")) +
        preference("bMIPCheckPolicyOnDocSave", mode("<integer>1</integer>")) +
        preference("AuthLibrary", mode("<integer>1</integer>")) +
        preference("DefaultLaunchAttachmentPerms", mode(string("1")) +
                                                       key("DisableOpenSaveFileAttach", string("2")) +
                                                       key("BuiltInPermList", string("version:1|.exe:3"))) +
        preference("HideMyApps", mode(string("1"))) +
        preference("iManage10loginMethod", key("UseOAuth2", string("1"))) +
        preference("LoginDomain", key("String", string("2"))) +
        preference("LoginDomainList", key("String", string("a.example;\xc3\xa4.example"))) +
        preference("SupportExtSSO", mode(string("1")));
    const QByteArray plugins =
        dictionary(key("Plugin", dictionary(key("Text", string("Plugin")) +
                                            key("UnloadPluginArray", string("libOne.dylib;")))));
    return profile(
        payload(preferences) + key("Plugins", array(plugins)) +
        key("RibbonSetRibbonCategory", dictionary(key("RibbonUI", dictionary(key("name", string("r")))))) +
        key("RibbonSetTabElements", dictionary(key("QuickAccessBar", dictionary(key("name", string("q")))))));
}

QJsonObject everySettingJson()
{
    const QJsonObject shown = shownWith({{text("bShowStartPage"), false},
                                         {text("bRemoveAdvertise"), true},
                                         {text("nFileAttachmentsMode"), 2},
                                         {text("strBuiltInPermList"), text("version:1|.exe:3")},
                                         {text("bDisableOpenFileAll"), true},
                                         {text("strUnloadPluginArray"), text("libOne.dylib;")},
                                         {text("bMIPCheckPolicySet"), true},
                                         {text("nMIPCheckPolicyOnDocSave"), 1},
                                         {text("nAuthLibrary"), 1},
                                         {text("bHideMyApps"), true},
                                         {text("bSupportExtSSO"), true},
                                         {text("elemRibbonCategory"), text("<RibbonUI name=\"r\"/>")},
                                         {text("elemQuickAccessBar"), text("<QuickAccessBar name=\"q\"/>")},
                                         {text("bUseOAuth2"), true},
                                         {text("strLoginDomain"), text("2")},
                                         {text("strLoginDomainList"), text("a.example;ä.example")}});
    return asAProfileShows(shown);
}

QJsonObject identityJson()
{
    return {{text("PayloadDisplayName"), text("A profile")},
            {text("PayloadIdentifier"), text("host.example")},
            {text("PayloadUUID"), text("66666666-7777-4888-9999-AAAAAAAAAAAA")},
            {text("PayloadOrganization"), QString()},
            {text("PayloadDescription"), QString()}};
}

QByteArray convertedByPython(const QString &path, const char *format)
{
    const QString script = text("import plistlib, sys; sys.stdout.buffer.write(plistlib.dumps("
                                "plistlib.load(open(sys.argv[1], 'rb')), fmt=plistlib.%1))")
                               .arg(text(format));
    return TestFiles::outputOf(text("/usr/bin/python3"), {text("-c"), script, path});
}

void sign(const ProfileRunner &runner, const QString &identity, const QString &path, const QStringList &how)
{
    TestFiles::outputOf(text("openssl"),
                        QStringList{text("cms"), text("-sign"), text("-nodetach"), text("-binary"),
                                    text("-outform"), text("DER"), text("-signer"),
                                    runner.identityFile(identity), text("-in"), path, text("-out"),
                                    path + text(".signed")} +
                            how);
}

} // namespace

/// `pct show` on configuration profiles, in all the forms in which they are out there.
class tst_PctShowProfile : public QObject
{
    Q_OBJECT

private slots:
    void everyFormOfAProfileIsShown_data();
    void everyFormOfAProfileIsShown();
    void everySignedFormIsShown_data();
    void everySignedFormIsShown();
    void readableOutputSaysIdentityAndSignature();
    void whatAProfileDoesNotMentionHasItsDefault();
    void whatNoProfileCarriesIsNotShown();
    void aSignatureThatDoesNotFitIsRefused();
    void withoutTheSecurityCommandASignedProfileIsRefused();
    void namesInAProfileAreHarmless();
};

void tst_PctShowProfile::everyFormOfAProfileIsShown_data()
{
    QTest::addColumn<QByteArray>("content");
    const ProfileRunner runner;
    const QString path = runner.file(text("a"));
    const QByteArray xml = everySetting();
    TestFiles::write(path, xml);
    QTest::newRow("as it is") << xml;
    QTest::newRow("white space before the XML declaration") << " \r\n\t\n" + xml;
    QTest::newRow("carriage returns") << QByteArray(xml).replace("\n", "\r\n");
    QTest::newRow("byte order mark") << "\xef\xbb\xbf" + xml;
    QTest::newRow("no document type") << xml.left(xml.indexOf("<!DOCTYPE")) + xml.mid(xml.indexOf("<plist"));
    QTest::newRow("comments") << QByteArray(xml).replace("<dict>", "<dict><!-- a comment -->");
    QTest::newRow("as Python writes it") << convertedByPython(path, "FMT_XML");
    QTest::newRow("binary") << convertedByPython(path, "FMT_BINARY");
}

void tst_PctShowProfile::everyFormOfAProfileIsShown()
{
    QFETCH(QByteArray, content);
    const ProfileRunner runner;
    const QString path = runner.file(text("profile.xml"));
    TestFiles::write(path, content);
    const PctResult result = runner.run({text("show"), text("--json"), path});
    QVERIFY2(result.exitCode == 0 && result.err.isEmpty(), result.err.constData());
    const QJsonObject expected{{text("kind"), text("profile")},    {text("product"), text("editor")},
                               {text("identity"), identityJson()}, {text("signer"), QJsonValue()},
                               {text("signers"), QJsonArray()},    {text("settings"), everySettingJson()}};
    QCOMPARE(result.json(), expected);
}

void tst_PctShowProfile::everySignedFormIsShown_data()
{
    QTest::addColumn<QStringList>("key");
    QTest::addColumn<QStringList>("how");
    QTest::addColumn<bool>("indefinite");
    const QStringList rsa{text("rsa:2048")};
    const QStringList elliptic{text("ec"), text("-pkeyopt"), text("ec_paramgen_curve:P-256")};
    QTest::newRow("DER, SHA-256") << rsa << QStringList{text("-md"), text("sha256")} << false;
    QTest::newRow("BER, SHA-1") << rsa << QStringList{text("-md"), text("sha1"), text("-stream")} << true;
    QTest::newRow("DER, ECDSA") << elliptic << QStringList{text("-md"), text("sha256")} << false;
    QTest::newRow("BER, ECDSA") << elliptic << QStringList{text("-md"), text("sha384"), text("-stream")}
                                << true;
}

void tst_PctShowProfile::everySignedFormIsShown()
{
    QFETCH(QStringList, key);
    QFETCH(QStringList, how);
    QFETCH(bool, indefinite);
    const ProfileRunner runner;
    runner.addIdentity(text("Some Vendor"), key);
    const QString path = runner.file(text("a"));
    TestFiles::write(path, everySetting());
    sign(runner, text("Some Vendor"), path, how);
    QCOMPARE(TestFiles::read(path + text(".signed")).startsWith("\x30\x80"), indefinite);
    const PctResult result = runner.run({text("show"), text("--json"), path + text(".signed")});
    QVERIFY2(result.exitCode == 0 && result.err.isEmpty(), result.err.constData());
    QCOMPARE(result.json().value(text("settings")).toObject(), everySettingJson());
    QCOMPARE(result.json().value(text("identity")).toObject(), identityJson());
    QCOMPARE(result.json().value(text("signer")).toString(), text("Some Vendor"));
}

void tst_PctShowProfile::readableOutputSaysIdentityAndSignature()
{
    const ProfileRunner runner;
    const QString path = runner.file(text("a"));
    TestFiles::write(path, everySetting());
    const PctResult result = runner.run({text("show"), path});
    const QStringList lines = QString::fromUtf8(result.out).split(QLatin1Char('\n'));
    QCOMPARE(lines.size(), 1 + 5 + everySettingJson().size() + 1);
    QCOMPARE(lines.first(), text("Pelix PDF Editor profile"));
    QVERIFY(lines.contains(text("  PayloadIdentifier         \"host.example\"")));
    QVERIFY(lines.contains(text("  bShowStartPage            false")));
    QCOMPARE(result.messages(), QStringList{text("pct: %1: is not signed").arg(path)});
}

void tst_PctShowProfile::whatAProfileDoesNotMentionHasItsDefault()
{
    const ProfileRunner runner;
    const QString path = runner.file(text("a"));
    TestFiles::write(path, profile(payload("", "com.pelix-software.Pelix.PDF.Reader")));
    const PctResult result = runner.run({text("show"), text("--json"), path});
    QCOMPARE(result.json().value(text("product")).toString(), text("reader"));
    const QJsonObject settings = result.json().value(text("settings")).toObject();
    QCOMPARE(settings.value(text("bShowStartPage")), QJsonValue(true));
    QCOMPARE(settings.value(text("strLoginDomain")), QJsonValue(text("1")));
    QCOMPARE(settings.value(text("elemRibbonCategory")), QJsonValue(text("<RibbonUI/>")));
}

void tst_PctShowProfile::whatNoProfileCarriesIsNotShown()
{
    const ProfileRunner runner;
    const QString path = runner.file(text("a"));
    TestFiles::write(path, everySetting());
    const QByteArray shown = runner.run({text("show"), path}).out;
    for (const char *name : {"strDisableOpenSaveFileAttach", "bSetAsDefaultViewer"})
        QVERIFY2(!shown.contains(name), shown.constData());
    QVERIFY2(shown.contains("nFileAttachmentsMode"), shown.constData());
}

void tst_PctShowProfile::aSignatureThatDoesNotFitIsRefused()
{
    const ProfileRunner runner;
    runner.addIdentity(text("Some Vendor"));
    const QString path = runner.file(text("a"));
    TestFiles::write(path, everySetting());
    sign(runner, text("Some Vendor"), path, {});
    QByteArray bytes = TestFiles::read(path + text(".signed"));
    QVERIFY(bytes.contains("host.example"));
    TestFiles::write(path, bytes.replace("host.example", "host.exbmple"));
    const PctResult result = runner.run({text("show"), path});
    QVERIFY2(result.isOneLineRefusal(), result.err.constData());
}

void tst_PctShowProfile::withoutTheSecurityCommandASignedProfileIsRefused()
{
    const ProfileRunner runner;
    runner.addIdentity(text("Some Vendor"));
    const QString path = runner.file(text("a"));
    TestFiles::write(path, everySetting());
    sign(runner, text("Some Vendor"), path, {});
    runner.removeTool(text("security"));
    const PctResult result = runner.run({text("show"), path + text(".signed")});
    QVERIFY2(result.isOneLineRefusal(), result.err.constData());
}

void tst_PctShowProfile::namesInAProfileAreHarmless()
{
    const ProfileRunner runner;
    const QString path = runner.file(text("a"));
    TestFiles::write(path, everySetting().replace("host.example", "a\nb\u202ec"));
    const PctResult shown = runner.run({text("show"), path});
    QVERIFY2(QString::fromUtf8(shown.out).contains(text("\"a\\nb\\u202ec\"")), shown.out.constData());
    TestFiles::write(path, everySetting().replace("com.pelix-software.Pelix.PDF.Editor", "a\nb\u202ec"));
    const PctResult refused = runner.run({text("show"), path});
    QVERIFY2(refused.isOneLineRefusal(), refused.err.constData());
    QVERIFY2(!QString::fromUtf8(refused.err).contains(text("\u202e")), refused.err.constData());
}

QTEST_GUILESS_MAIN(tst_PctShowProfile)
#include "tst_PctShowProfile.moc"
