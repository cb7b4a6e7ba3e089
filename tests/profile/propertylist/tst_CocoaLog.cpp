// SPDX-License-Identifier: Apache-2.0
#include "tests/config/RecordSamples.h"
#include "tests/profile/CocoaCalls.h"
#include "tests/profile/ProfileSamples.h"
#include "tests/profile/StandIns.h"
#include "tests/profile/StderrLines.h"

#include <QtTest>

using namespace ProfileSamples;

/// The lines that the Cocoa layer logs; the tests of what it does are elsewhere.
class tst_CocoaLog : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        if (QSysInfo::kernelType() == QLatin1String("darwin"))
            QSKIP("NSLog does not always write to standard error here");
    }

    void anUnknownProfileIsNamedByTheBundleThatWasWanted()
    {
        EditorXmlData data;
        const StderrLines lines;
        CocoaCalls::importProfile(&data, profileFile(readerBundle), true);
        QVERIFY(lines.has("No matching profile found for bundle ID: com.pelix-software.Pelix.PDF.Editor"));
        CocoaCalls::importProfiles(&data, listing(dictionary({})), false);
        QVERIFY(lines.has("profile in profiles : {"));
        QVERIFY(lines.has("No matching profile found for bundle ID: com.pelix-software.Pelix.PDF.Reader"));
    }

    void theIdentityIsLogged()
    {
        EditorXmlData data;
        const StderrLines lines;
        CocoaCalls::importProfile(&data, profileFile(editorBundle), true);
        QVERIFY(lines.has("Profile Name: A name"));
        QVERIFY(lines.has("Profile Identifier: host.1"));
        QVERIFY(lines.has("Profile UUID: U-1"));
        QVERIFY(lines.has("Profile Organization: Org"));
        QVERIFY(lines.has("Profile Description: What for"));
    }

    void missingInputIsLogged()
    {
        const StderrLines lines;
        CocoaCalls::importProfile(nullptr, profileFile(editorBundle), true);
        QVERIFY(lines.has("Invalid input data or profiles."));
    }

    void parseFailuresAreLogged()
    {
        const StderrLines lines;
        CocoaCalls::parsePlistXML(QStringLiteral("a sentence"));
        QVERIFY(lines.has("parsePlistXML failure: "));
        CocoaCalls::parsePlistXML(QString::fromUtf8(propertyList(dictionary({"a", string("x")}))));
        QVERIFY(lines.has("no profile info"));
    }

    void whatTheSystemsCommandSaysIsLogged()
    {
        StandIns commands;
        commands.set(QStringLiteral("profiles"), "echo no rights >&2\nexit 3\n");
        const StderrLines lines;
        CocoaCalls::loadSystemProfiles();
        QVERIFY(lines.has("Command failed with error: no rights"));
        commands.set(QStringLiteral("profiles"), "head -c 34000000 /dev/zero\n");
        CocoaCalls::loadSystemProfiles();
        QVERIFY(lines.has("Command failed with error: /usr/bin/profiles printed more than 32 MiB"));
        commands.setOutput(QStringLiteral("profiles"), "There are none\n");
        CocoaCalls::loadSystemProfiles();
        QVERIFY(lines.has("profiles content:\nThere are none"));
        QVERIFY(lines.has("Error parsing system profiles: "));
    }

    void aSkippedTypeIsLogged()
    {
        const StderrLines lines;
        CocoaCalls::elementOf(QStringLiteral("RibbonUI"), propertyList(dictionary({"key", "<true/>"})));
        QVERIFY(lines.has("[dictToQDomElement] Unsupported type for key key: "));
    }

    void aProfileThatCannotBeGeneratedIsLogged()
    {
        EditorXmlData data;
        data.elemRibbonCategory =
            RecordSamples::element(QByteArray("<a>").repeated(300) + QByteArray("</a>").repeated(300));
        const StderrLines lines;
        CocoaCalls::generateProfile(&data, true);
        QVERIFY(lines.has("Error generating mobileconfig: "));
    }

    void theCategorySilencesAll()
    {
        QLoggingCategory::setFilterRules(QStringLiteral("*.debug=false"));
        EditorXmlData data;
        const StderrLines lines;
        CocoaCalls::importProfile(&data, profileFile(readerBundle), true);
        CocoaCalls::importProfile(&data, profileFile(editorBundle), true);
        QCOMPARE(lines.all(), QByteArray());
    }
};

QTEST_GUILESS_MAIN(tst_CocoaLog)
#include "tst_CocoaLog.moc"
