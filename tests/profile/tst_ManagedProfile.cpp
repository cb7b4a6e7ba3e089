// SPDX-License-Identifier: Apache-2.0
#include "config/Product.h"
#include "profile/ManagedProfile.h"

#include "config/EditorXmlData.h"
#include "tests/profile/ProfileSamples.h"
#include "tests/profile/StandIns.h"
#include "tests/support/ProblemText.h"

#include <QtTest>

using namespace ProfileSamples;

namespace {

const QByteArray type = "com.pelix-software.Pelix.PDF.Editor.settings";

/// A report of one profile with settings of the product.
QByteArray reportOf(const QByteArray &payloadUuid)
{
    const QByteArray payload =
        dictionary({"_name", string(type), "spconfigprofile_payload_uuid", string(payloadUuid)});
    const QByteArray profile = dictionary({"_name", string("Office"), "spconfigprofile_profile_identifier",
                                           string("office"), "_items", array(payload)});
    return propertyList(array(dictionary({"_items", array(profile)})));
}

enum class Outcome { Nothing, Filled, WithoutIdentity, CannotTell };

Outcome outcomeOf(const Result<ManagedProfile::Reading> &reading)
{
    if (!reading)
        return Outcome::CannotTell;
    if (!reading->isFilled)
        return Outcome::Nothing;
    return reading->identity ? Outcome::Filled : Outcome::WithoutIdentity;
}

} // namespace

Q_DECLARE_METATYPE(Outcome)

class tst_ManagedProfile : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_preferences.reset(new QTemporaryDir);
        m_commands.reset(new StandIns);
        qputenv("PCT_MANAGED_PREFERENCES", QFile::encodeName(m_preferences->path()));
    }

    void cleanup()
    {
        m_commands.reset();
        qunsetenv("PCT_MANAGED_PREFERENCES");
    }

    void whatIsManagedIsReadOrTold_data()
    {
        QTest::addColumn<QByteArray>("report"); // null: the command fails
        QTest::addColumn<bool>("hasPreferences");
        QTest::addColumn<Outcome>("outcome");
        QTest::addColumn<QString>("problem");
        const QByteArray none = propertyList("<array/>");
        QTest::newRow("nothing") << none << false << Outcome::Nothing << QString();
        QTest::newRow("nothing, and no report") << QByteArray() << false << Outcome::Nothing << QString();
        QTest::newRow("a profile without its values")
            << reportOf("U-1") << false << Outcome::CannotTell
            << QStringLiteral(
                   "the profile \"office\" is installed, but its settings are not among the managed "
                   "preferences");
        QTest::newRow("values and their profile") << reportOf("U-1") << true << Outcome::Filled << QString();
        QTest::newRow("values without a profile")
            << none << true << Outcome::WithoutIdentity
            << QStringLiteral("system_profiler tells of no profile with them");
    }

    void whatIsManagedIsReadOrTold()
    {
        QFETCH(QByteArray, report);
        QFETCH(bool, hasPreferences);
        if (report.isNull())
            m_commands->set(QStringLiteral("system_profiler"), "exit 1\n");
        else
            m_commands->setOutput(QStringLiteral("system_profiler"), report);
        if (hasPreferences)
            managePreferences();
        EditorXmlData data;
        const Result<ManagedProfile::Reading> reading = ManagedProfile::read(data, Product::editor());
        QTEST(outcomeOf(reading), "outcome");
        QTEST(reading ? problemText(reading->identity) : problemText(reading), "problem");
        QCOMPARE(data.bHideMyApps, hasPreferences);
        QCOMPARE(data.payloadInfo.PayloadDisplayName == QLatin1String("Office"),
                 hasPreferences && report == reportOf("U-1"));
    }

private:
    void managePreferences() const
    {
        const QByteArray item =
            dictionary({"Preference", dictionary({"Text", string("HideMyApps"), "Mode", string("1")})});
        TestFiles::write(
            m_preferences->filePath(QString::fromLatin1(type) + QStringLiteral(".plist")),
            propertyList(dictionary({"PayloadUUID", string("U-1"), "Preferences", array(item)})));
    }

    QScopedPointer<QTemporaryDir> m_preferences;
    QScopedPointer<StandIns> m_commands;
};

QTEST_GUILESS_MAIN(tst_ManagedProfile)
#include "tst_ManagedProfile.moc"
