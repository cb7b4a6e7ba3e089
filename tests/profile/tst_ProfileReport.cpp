// SPDX-License-Identifier: Apache-2.0
#include "profile/ProfileReport.h"
#include "tests/profile/ProfileSamples.h"

#include <QtTest>

using namespace ProfileSamples;

namespace {

QByteArray reported(const QByteArray &name, const QByteArray &value)
{
    return "<key>spconfigprofile_" + name + "</key>" + string(value);
}

QByteArray entry(const QByteArray &name, const QByteArray &properties, const QByteArray &items = {})
{
    return "<dict><key>_name</key>" + string(name) + properties + "<key>_items</key>" + array(items) +
           "</dict>";
}

} // namespace

class tst_ProfileReport : public QObject
{
    Q_OBJECT

private slots:
    void payloadsAreFoundInAnySectionWithTheirProfile()
    {
        const QByteArray first =
            entry("type.one", reported("payload_identifier", "id.1") + reported("payload_uuid", "u-1") +
                                  reported("payload_data", "{ a = b; }"));
        const QByteArray second = entry("type.two", reported("payload_identifier", "id.2"));
        const QByteArray profile =
            entry("Office",
                  reported("profile_identifier", "office") + reported("profile_uuid", "u-0") +
                      reported("organization", "Org") + reported("description", "For all"),
                  first + second);
        const QByteArray report = propertyList(array(entry("all", {}, entry("section", {}, profile))));
        const Result<QList<ProfileReport::Payload>> read = ProfileReport::payloads(report);
        QVERIFY(read);
        const QList<ProfileReport::Payload> &payloads = *read;
        QCOMPARE(payloads.size(), 2);
        QCOMPARE(payloads[0].type, QStringLiteral("type.one"));
        QCOMPARE(payloads[0].identifier, QStringLiteral("id.1"));
        QCOMPARE(payloads[0].uuid, QStringLiteral("u-1"));
        QCOMPARE(payloads[0].settings, QStringLiteral("{ a = b; }"));
        QCOMPARE(payloads[1].type, QStringLiteral("type.two"));
        for (const ProfileReport::Payload &payload : payloads) {
            QCOMPARE(payload.profile.PayloadDisplayName, QStringLiteral("Office"));
            QCOMPARE(payload.profile.PayloadIdentifier, QStringLiteral("office"));
            QCOMPARE(payload.profile.PayloadUUID, QStringLiteral("u-0"));
            QCOMPARE(payload.profile.PayloadOrganization, QStringLiteral("Org"));
            QCOMPARE(payload.profile.PayloadDescription, QStringLiteral("For all"));
        }
    }

    void aReportThatIsNoneIsTold_data()
    {
        QTest::addColumn<QByteArray>("report");
        QTest::newRow("cut") << QByteArray("<plist><array>");
        QTest::newRow("a dictionary") << propertyList("<dict/>");
        QTest::newRow("a text") << propertyList(string("x"));
    }

    void aReportThatIsNoneIsTold()
    {
        QFETCH(QByteArray, report);
        const Result<QList<ProfileReport::Payload>> read = ProfileReport::payloads(report);
        QVERIFY(!read);
        QVERIFY(!read.problem().text.isEmpty());
    }
};

QTEST_GUILESS_MAIN(tst_ProfileReport)
#include "tst_ProfileReport.moc"
