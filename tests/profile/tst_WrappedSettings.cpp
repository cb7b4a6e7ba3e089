// SPDX-License-Identifier: Apache-2.0
#include "config/EditorXmlData.h"
#include "config/Product.h"
#include "profile/ConfigGenerator.h"
#include "profile/CProfileGenerator.h"
#include "profile/ReadProfile.h"
#include "tests/profile/ProfileSamples.h"
#include "tests/profile/StandIns.h"
#include "tests/support/ProblemText.h"
#include "tests/support/TestFiles.h"

#include <QtTest>

using namespace ProfileSamples;

namespace {

const QByteArray managed = "com.apple.ManagedClient.preferences";

QByteArray settingsType(const QByteArray &bundle)
{
    return bundle + ".settings";
}

/// Settings with the domains as their mark.
QByteArray settingsWith(const QByteArray &domains)
{
    return dictionary({"Preferences", array(preference("LoginDomainList", {"String", string(domains)}))});
}

QByteArray items(const QByteArray &settings)
{
    return array(dictionary({"mcx_preference_settings", settings}));
}

QByteArray domain(const QByteArray &bundle, const QByteArray &content)
{
    return dictionary({settingsType(bundle), content});
}

QByteArray forced(const QByteArray &domains)
{
    return dictionary({"Forced", items(settingsWith(domains))});
}

QByteArray managedPayload(const QByteArray &content)
{
    return dictionary({"PayloadType", string(managed), "PayloadIdentifier", string("an.identifier"),
                       "PayloadContent", content});
}

QByteArray plainPayload(const QByteArray &type, const QByteArray &identifier, const QByteArray &domains)
{
    return dictionary({"PayloadType", string(type), "PayloadIdentifier", string(identifier), "Preferences",
                       array(preference("LoginDomainList", {"String", string(domains)}))});
}

QByteArray profileOf(const QByteArray &payloads)
{
    return propertyList(
        dictionary({"PayloadIdentifier", string("office"), "PayloadUUID", string("U-1"), "PayloadType",
                    string("Configuration"), "PayloadContent", array(payloads)}));
}

/// The same profile as the system lists it.
QByteArray listingOf(const QByteArray &items)
{
    return propertyList(
        dictionary({"_computerlevel", array(dictionary({"ProfileIdentifier", string("office"), "ProfileUUID",
                                                        string("U-1"), "ProfileItems", array(items)}))}));
}

QByteArray listedItem(const QByteArray &type, const QByteArray &identifier, const QByteArray &content)
{
    return dictionary(
        {"PayloadType", string(type), "PayloadIdentifier", string(identifier), "PayloadContent", content});
}

const QByteArray other = "org.example.viewer";

} // namespace

/// Settings that a management has put somewhere else than the window does: `pct` finds them, and the window
/// reads what it always has.
class tst_WrappedSettings : public QObject
{
    Q_OBJECT

private slots:
    void isReadFromAFile_data()
    {
        QTest::addColumn<QByteArray>("payloads");
        QTest::newRow("managed preferences") << managedPayload(domain(editorBundle, forced("a;b")));
        QTest::newRow("wrapped once more") << managedPayload(
            dictionary({"PayloadContentManagedPreferences", domain(editorBundle, forced("a;b"))}));
        QTest::newRow("set once") << managedPayload(
            domain(editorBundle, dictionary({"Set-Once", items(settingsWith("a;b"))})));
        QTest::newRow("forced over set once") << managedPayload(
            domain(editorBundle,
                   dictionary({"Forced", items(settingsWith("a;b")), "Set-Once", items(settingsWith("c"))})));
        QTest::newRow("behind another payload")
            << plainPayload(other, other, "x") +
                   plainPayload(settingsType(editorBundle), editorBundle, "a;b");
        QTest::newRow("behind other managed preferences")
            << managedPayload(domain(other, forced("x"))) +
                   managedPayload(domain(editorBundle, forced("a;b")));
        QTest::newRow("known by its type")
            << plainPayload(settingsType(editorBundle), "com.example.rewritten.1", "a;b");
        QTest::newRow("without an identifier") << plainPayload(settingsType(editorBundle), "", "a;b");
    }

    void isReadFromAFile()
    {
        QFETCH(QByteArray, payloads);
        TestFiles::write(path(), profileOf(payloads));
        EditorXmlData data;
        const Result<ReadProfile> profile = readProfile(path(), data);
        QCOMPARE(problemText(profile), QString());
        QCOMPARE(profile->product, &Product::editor());
        QCOMPARE(data.strLoginDomainList, QStringLiteral("a;b"));
        QCOMPARE(data.payloadInfo.PayloadIdentifier, QStringLiteral("office"));
    }

    void theWindowReadsNoneOfIt_data() { isReadFromAFile_data(); }

    void theWindowReadsNoneOfIt()
    {
        QFETCH(QByteArray, payloads);
        TestFiles::write(path(), profileOf(payloads));
        EditorXmlData data;
        QVERIFY(!CProfileGenerator::ImportProfile(path(), &data, true));
        QVERIFY(data == EditorXmlData());
    }

    void whatIsNotOursIsRefused_data()
    {
        QTest::addColumn<QByteArray>("payloads");
        QTest::addColumn<QString>("problem");
        const QString noDomain = QStringLiteral("forces no preferences of the domain of either product");
        QTest::newRow("another domain") << managedPayload(domain(other, forced("a"))) << noDomain;
        QTest::newRow("a domain in the payload itself")
            << dictionary({"PayloadType", string(managed), settingsType(editorBundle), settingsWith("a")})
            << noDomain;
        QTest::newRow("settings without the dictionary around them")
            << managedPayload(domain(editorBundle, settingsWith("a"))) << noDomain;
        QTest::newRow("things of other types")
            << managedPayload(domain(editorBundle, dictionary({"Forced", string("a")}))) + string("x")
            << noDomain;
        QTest::newRow("another type")
            << plainPayload(other, other, "a")
            << QStringLiteral("is a profile of another application (\"%1\")").arg(QString::fromLatin1(other));
    }

    void whatIsNotOursIsRefused()
    {
        QFETCH(QByteArray, payloads);
        TestFiles::write(path(), profileOf(payloads));
        EditorXmlData data;
        QTEST(problemText(readProfile(path(), data)), "problem");
        QVERIFY(data == EditorXmlData());
    }

    void ofBothProductsTheOneThatIsWantedIsRead()
    {
        TestFiles::write(
            path(), profileOf(managedPayload(dictionary({settingsType(editorBundle), forced("of.editor"),
                                                         settingsType(readerBundle), forced("of.reader")}))));
        for (const Product &product : Product::all()) {
            EditorXmlData data;
            const Result<ReadProfile> profile = readProfile(path(), data, &product);
            QCOMPARE(problemText(profile), QString());
            QCOMPARE(profile->product, &product);
            QCOMPARE(data.strLoginDomainList, QStringLiteral("of.") + product.word);
        }
    }

    void theIdentifierDecidesOverTheType()
    {
        TestFiles::write(path(), profileOf(plainPayload(settingsType(readerBundle), editorBundle, "a")));
        EditorXmlData data;
        const Result<ReadProfile> profile = readProfile(path(), data);
        QCOMPARE(problemText(profile), QString());
        QCOMPARE(profile->product, &Product::editor());
    }

    void isReadFromWhatIsInstalled_data()
    {
        QTest::addColumn<QByteArray>("items");
        const QByteArray content = settingsWith("a;b");
        QTest::newRow("managed preferences, wrapped once more") << listedItem(
            managed, "an.identifier",
            dictionary({"PayloadContentManagedPreferences", domain(editorBundle, forced("a;b"))}));
        QTest::newRow("managed preferences with our identifier") << listedItem(
            managed, editorBundle,
            dictionary({"PayloadContentManagedPreferences", domain(editorBundle, forced("a;b"))}));
        QTest::newRow("managed preferences as in a file")
            << listedItem(managed, "an.identifier", domain(editorBundle, forced("a;b")));
        QTest::newRow("known by its type")
            << listedItem(settingsType(editorBundle), "com.example.rewritten.1", content);
        QTest::newRow("behind another payload")
            << listedItem(other, other, settingsWith("x")) +
                   listedItem(settingsType(editorBundle), editorBundle, content);
    }

    void isReadFromWhatIsInstalled()
    {
        QFETCH(QByteArray, items);
        StandIns commands;
        commands.setOutput(QStringLiteral("profiles"), listingOf(items));
        EditorXmlData data;
        const Result<bool> installed = readInstalledProfile(data, Product::editor());
        QVERIFY2(installed && *installed, qPrintable(problemText(installed)));
        QCOMPARE(data.strLoginDomainList, QStringLiteral("a;b"));
        QCOMPARE(data.payloadInfo.PayloadIdentifier, QStringLiteral("office"));
        const Result<bool> ofReader = readInstalledProfile(data, Product::reader());
        QVERIFY(ofReader && !*ofReader);
    }

    void theWindowGoesByTheIdentifierOfWhatIsInstalled()
    {
        StandIns commands;
        commands.setOutput(QStringLiteral("profiles"),
                           listingOf(listedItem(settingsType(editorBundle), "com.example.rewritten.1",
                                                settingsWith("a;b"))));
        EditorXmlData data;
        QVERIFY(!CProfileGenerator::ImportProfile(&data, true));
        QVERIFY(data == EditorXmlData());
    }

    void whatPctWritesReadsBackInEachStyle()
    {
        EditorXmlData written;
        written.strLoginDomainList = QStringLiteral("a;b");
        written.nMIPCheckPolicyOnDocSave = -1;
        ProfileForm form;
        form.style = ProfileForm::Style::ManagedPreferences;
        const Result<QString> text = ConfigGenerator::generate(&written, Product::reader(), form);
        QCOMPARE(problemText(text), QString());
        EditorXmlData data;
        const Result<const Product *> product = ConfigGenerator::importAny(text->toUtf8(), data);
        QCOMPARE(problemText(product), QString());
        QCOMPARE(*product, &Product::reader());
        QCOMPARE(data.strLoginDomainList, QStringLiteral("a;b"));
        TestFiles::write(path(), text->toUtf8());
        EditorXmlData seen;
        QVERIFY(!CProfileGenerator::ImportProfile(path(), &seen, false));
        QVERIFY(seen == EditorXmlData());
    }

private:
    QString path() const { return m_folder.filePath(QStringLiteral("input.mobileconfig")); }

    QTemporaryDir m_folder;
};

QTEST_GUILESS_MAIN(tst_WrappedSettings)
#include "tst_WrappedSettings.moc"
