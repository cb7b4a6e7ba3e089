// SPDX-License-Identifier: Apache-2.0
#include "tests/hosttools/profiles/ProfilesRun.h"
#include "tests/support/PropertyListCases.h"
#include "tests/support/TestFiles.h"

#include <QFile>
#include <QTest>

namespace {

/// The list of domains of the only profile that is shown, as Python reads it.
QString shownDomains(const ProfilesRun &run)
{
    const QByteArray domains = ToolRun::filtered(
        run.show().output, QStringLiteral("/usr/bin/python3"),
        {QStringLiteral("-c"),
         QStringLiteral("import sys, plistlib\n"
                        "profiles = list(plistlib.loads(sys.stdin.buffer.read()).values())[0]\n"
                        "settings = profiles[0]['ProfileItems'][0]['PayloadContent']\n"
                        "value = settings['Preferences'][0]['Preference']['String']\n"
                        "number = {True: 1, False: 0} if isinstance(value, bool) else {}\n"
                        "shown = number.get(value, value) if isinstance(value, (str, int)) else ''\n"
                        "sys.stdout.buffer.write(str(shown).encode())")});
    return QString::fromUtf8(domains);
}

} // namespace

/// The stand-in takes and refuses what the Mac's command does.
class tst_ProfilesPropertyLists : public QObject
{
    Q_OBJECT

private slots:
    void anXmlListIsInstalledOrRefused_data() { PropertyListCases::addRows(PropertyListCases::xml()); }
    void anXmlListIsInstalledOrRefused() { verifyInstallation(); }
    void aBinaryListIsInstalledOrRefused_data() { PropertyListCases::addRows(PropertyListCases::binary()); }
    void aBinaryListIsInstalledOrRefused() { verifyInstallation(); }
    void anOldStyleListIsInstalledOrRefused_data()
    {
        PropertyListCases::addRows(PropertyListCases::oldStyle());
    }
    void anOldStyleListIsInstalledOrRefused() { verifyInstallation(); }

private:
    static void verifyInstallation()
    {
        QFETCH(QByteArray, profile);
        QFETCH(bool, isRead);
        QFETCH(QString, domains);
        const ProfilesRun run;
        const ToolRun::Result result = run.install(profile);
        QVERIFY2((result.exitCode == 0) == isRead, result.errors.constData());
        QVERIFY2(isRead || ToolRun::hasOneMessage(result, QStringLiteral("profiles")),
                 result.errors.constData());
        const bool isReal = domains.contains(QLatin1String(".5")) || domains == QLatin1String("1000");
        if (isRead && !isReal)
            QCOMPARE(shownDomains(run), domains);
    }
};

QTEST_GUILESS_MAIN(tst_ProfilesPropertyLists)
#include "tst_ProfilesPropertyLists.moc"
