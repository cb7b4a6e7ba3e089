// SPDX-License-Identifier: Apache-2.0
#include "config/Product.h"
#include "config/Settings.h"
#include "profile/ConfigGenerator.h"
#include "profile/CProfileGenerator.h"
#include "profile/ReadProfile.h"
#include "tests/profile/ProfileSamples.h"
#include "tests/support/ProblemText.h"
#include "tests/support/TestFiles.h"

#include <QTemporaryDir>
#include <QtTest>

namespace {

QString firstDifference(const EditorXmlData &first, const EditorXmlData &second)
{
    for (const Setting &setting : settings()) {
        if (!sameValue(setting, first, second))
            return setting.name;
    }
    return first.payloadInfo == second.payloadInfo ? QString() : QStringLiteral("payloadInfo");
}

} // namespace

/// What changes on the way is stated by ProfileSamples::throughProfile.
class tst_ProfileRoundTrip : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QLoggingCategory::setFilterRules(QStringLiteral("pct.*.debug=false")); }

    void recordsSurviveAFile()
    {
        QRandomGenerator random(20260103);
        const QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("a.mobileconfig"));
        for (int i = 0; i < 300; ++i) {
            const bool editor = i % 2 == 0;
            const EditorXmlData data = ProfileSamples::randomRecord(random);
            QVERIFY(CProfileGenerator::CreateProfile(&data, path, editor));
            EditorXmlData back;
            QVERIFY(CProfileGenerator::ImportProfile(path, &back, editor));
            QCOMPARE(firstDifference(back, ProfileSamples::throughProfile(data, editor)), QString());
        }
    }

    void recordsSurviveABinaryPropertyListOfAnotherProgram()
    {
        QRandomGenerator random(20260104);
        const QTemporaryDir folder;
        const QString xml = folder.filePath(QStringLiteral("a.xml"));
        const QString binary = folder.filePath(QStringLiteral("a.mobileconfig"));
        for (int i = 0; i < 40; ++i) {
            const EditorXmlData data = ProfileSamples::randomRecord(random);
            const Result<QString> text = ConfigGenerator::generate(&data, Product::editor());
            QCOMPARE(problemText(text), QString());
            TestFiles::write(xml, text->toUtf8());
            TestFiles::outputOf(QStringLiteral("plistutil"),
                                {QStringLiteral("-i"), xml, QStringLiteral("-o"), binary,
                                 QStringLiteral("-f"), QStringLiteral("bin")});
            EditorXmlData back;
            const Result<ReadProfile> profile = readProfile(binary, back);
            QCOMPARE(problemText(profile), QString());
            QCOMPARE(profile->product, &Product::editor());
            EditorXmlData expected = ProfileSamples::throughProfile(data, true);
            expected.bMIPCheckPolicySet = data.bMIPCheckPolicySet;
            expected.nMIPCheckPolicyOnDocSave = data.nMIPCheckPolicyOnDocSave;
            QCOMPARE(firstDifference(back, expected), QString());
        }
    }
};

QTEST_GUILESS_MAIN(tst_ProfileRoundTrip)
#include "tst_ProfileRoundTrip.moc"
