// SPDX-License-Identifier: Apache-2.0
#include "tests/cli/ProfileRunner.h"
#include "tests/support/PropertyListCases.h"
#include "tests/support/TestFiles.h"

#include <QtTest>

namespace {

QString text(const char *literal)
{
    return QString::fromUtf8(literal);
}

} // namespace

/// A damaged profile is refused in one line and a good one read right, whatever its format.
class tst_PctPropertyLists : public QObject
{
    Q_OBJECT

private slots:
    void anXmlListIsShownOrRefused_data() { PropertyListCases::addRows(PropertyListCases::xml()); }
    void anXmlListIsShownOrRefused() { verifyShown(); }
    void aBinaryListIsShownOrRefused_data() { PropertyListCases::addRows(PropertyListCases::binary()); }
    void aBinaryListIsShownOrRefused() { verifyShown(); }
    void anOldStyleListIsShownOrRefused_data() { PropertyListCases::addRows(PropertyListCases::oldStyle()); }
    void anOldStyleListIsShownOrRefused() { verifyShown(); }
    void aListIsASourceOrRefused_data();
    void aListIsASourceOrRefused();

private:
    static void verifyShown();
};

void tst_PctPropertyLists::verifyShown()
{
    QFETCH(QByteArray, profile);
    QFETCH(bool, isRead);
    QFETCH(QString, domains);
    const ProfileRunner runner;
    const QString path = runner.file(text("a.mobileconfig"));
    TestFiles::write(path, profile);
    const PctResult shown = runner.run({text("show"), text("--json"), path});
    if (!isRead) {
        QVERIFY2(shown.isOneLineRefusal(), shown.err.constData());
        return;
    }
    QVERIFY2(shown.exitCode == 0 && shown.err.isEmpty(), shown.err.constData());
    const QJsonObject settings = shown.json().value(text("settings")).toObject();
    QCOMPARE(settings.value(text("strLoginDomainList")), QJsonValue(domains));
}

void tst_PctPropertyLists::aListIsASourceOrRefused_data()
{
    PropertyListCases::addRows(PropertyListCases::xml() + PropertyListCases::binary() +
                               PropertyListCases::oldStyle());
}

void tst_PctPropertyLists::aListIsASourceOrRefused()
{
    QFETCH(QByteArray, profile);
    QFETCH(bool, isRead);
    QFETCH(QString, domains);
    const ProfileRunner runner;
    const QString path = runner.file(text("a.mobileconfig"));
    TestFiles::write(path, profile);
    const PctResult made = runner.makeProfile(true, {text("--from"), path});
    if (!isRead) {
        QVERIFY2(made.isOneLineRefusal() && !QFile::exists(runner.output()), made.err.constData());
        return;
    }
    QVERIFY2(made.exitCode == 0 && made.err.isEmpty(), made.err.constData());
    const QJsonObject item = preferenceOf(runner.propertyList(runner.output()), text("LoginDomainList"));
    QCOMPARE(item.value(text("String")), QJsonValue(domains));
}

QTEST_GUILESS_MAIN(tst_PctPropertyLists)
#include "tst_PctPropertyLists.moc"
