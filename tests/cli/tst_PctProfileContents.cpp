// SPDX-License-Identifier: Apache-2.0
#include "tests/cli/ProfileRunner.h"
#include "tests/support/TestFiles.h"

#include <QtTest>

namespace {

QString text(const char *literal)
{
    return QString::fromUtf8(literal);
}

QString stringIn(const QJsonObject &object, const char *key)
{
    return object.value(text(key)).toString();
}

} // namespace

/// What a profile can hold of a document.
class tst_PctProfileContents : public QObject
{
    Q_OBJECT

private slots:
    void everyCharacterOfADocumentIsCarried_data();
    void everyCharacterOfADocumentIsCarried();
    void settingsThatNoProfileCanCarryAreRefused();
};

void tst_PctProfileContents::everyCharacterOfADocumentIsCarried_data()
{
    QTest::addColumn<QString>("typed");
    QTest::newRow("an emoji") << text("smile \U0001F600!");
    QTest::newRow("an emoji's escape, typed out") << text("\\UD83D\\UDE00");
    QTest::newRow("a letter's escape, typed out") << text("\\U0041");
    QTest::newRow("backslashes beside an emoji") << text("\\\\\U0001F600\\");
    QTest::newRow("private use") << text("\uE000\uE0F01f600\uE0F0\uF8FF");
}

void tst_PctProfileContents::everyCharacterOfADocumentIsCarried()
{
    QFETCH(QString, typed);
    const ProfileRunner runner;
    const QByteArray settings = "<Profstore><Preferences><Preference Text='LoginDomainList' String='" +
                                typed.toUtf8() +
                                "'/></Preferences><RibbonSetRibbonCategory><RibbonUI name='" +
                                typed.toUtf8() + "'/></RibbonSetRibbonCategory></Profstore>";
    const PctResult made =
        runner.makeProfile(true, {text("--config"), runner.document("PelixPDFEditor", settings)});
    QVERIFY2(made.exitCode == 0 && made.err.isEmpty(), made.err.constData());
    const QJsonObject profile = runner.propertyList(runner.output());
    QCOMPARE(stringIn(preferenceOf(profile, text("LoginDomainList")), "String"), typed);
    const QJsonObject ribbon = payloadOf(profile).value(text("RibbonSetRibbonCategory")).toObject();
    QCOMPARE(stringIn(ribbon.value(text("RibbonUI")).toObject(), "name"), typed);

    QVERIFY(QFile::rename(runner.output(), runner.file(text("source"))));
    const PctResult again = runner.makeProfile(true, {text("--from"), text("source")});
    QVERIFY2(again.exitCode == 0 && again.err.isEmpty(), again.err.constData());
    QCOMPARE(stringIn(preferenceOf(runner.propertyList(runner.output()), text("LoginDomainList")), "String"),
             typed);
}

void tst_PctProfileContents::settingsThatNoProfileCanCarryAreRefused()
{
    const ProfileRunner runner;
    TestFiles::write(runner.output(), "as it was");
    // As deep as a document may be, with the levels that a profile adds too deep for a profile.
    const QString document = runner.document(
        "PelixPDFEditor", "<Profstore><RibbonSetRibbonCategory><RibbonUI>" + QByteArray("<a>").repeated(252) +
                              QByteArray("</a>").repeated(252) +
                              "</RibbonUI></RibbonSetRibbonCategory></Profstore>");
    QCOMPARE(runner.run({text("show"), document}).exitCode, 0);
    const PctResult result = runner.makeProfile(true, {text("--force"), text("--config"), document});
    QVERIFY2(result.isOneLineRefusal() && result.err.contains("nested deeper than 256"),
             result.err.constData());
    QCOMPARE(TestFiles::read(runner.output()), QByteArray("as it was"));
    QCOMPARE(runner.files().size(), 2);
}

QTEST_GUILESS_MAIN(tst_PctProfileContents)
#include "tst_PctProfileContents.moc"
