// SPDX-License-Identifier: Apache-2.0
#include "package/ScriptPatch.h"
#include "tests/package/VendorScripts.h"
#include "tests/support/TestFiles.h"

#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

#include <memory>
#include <unistd.h>

namespace {

const QByteArray patchedPostinstall = R"sh(#!/bin/bash
bigversion="13.1.2"
mydir=$(CDPATH= cd -- "$(dirname "$0")" && pwd)
editorXmlFileCopy=0
setdefaultpdf=0
plistValue="General/First:1;"
if true; then
    echo kept
fi
# Obtain the current logged-in user's username through scutil and /dev/console
currentuser=$(scutil <<< "show State:/Users/ConsoleUser" | awk -F': ' '/Name :/ {print $2}')
# Clean scutil result early
if [[ -z "$currentuser" || "$currentuser" == "loginwindow" || "$currentuser" == "_mbsetupuser" ]]; then
 currentuser=""
fi
# Fallback
if [[ -z "$currentuser" ]]; then
 currentuser=$(stat -f "%Su" /dev/console)
fi
# Final validation
if [[ -z "$currentuser" || "$currentuser" == "root" || "$currentuser" == "loginwindow" || "$currentuser" == "_mbsetupuser" ]]; then
 echo "Failed to get current logged-in user."
 exit 1
fi
echo "currentuser: ${currentuser}"

currentuserhome=$(dscl . -read "/Users/${currentuser}" NFSHomeDirectory | sed 's/^NFSHomeDirectory: //')
if [ -z "${currentuserhome}" ] || [ ! -d "${currentuserhome}" ]; then
 echo "Failed to get current user home."
 exit 1
fi

export HOME="${currentuserhome}"
appdatePath="$HOME/Library/Application Support/Pelix Software/${ApplicationDataType}/${ApplicationName}"
echo "$appdatePath"
)sh";

const QByteArray patchedPreinstall = R"sh(#!/bin/bash
mydir=$(CDPATH= cd -- "$(dirname "$0")" && pwd)
# Obtain the current logged-in user's username through scutil and /dev/console
currentuser=$(scutil <<< "show State:/Users/ConsoleUser" | awk -F': ' '/Name :/ {print $2}')
# Clean scutil result early
if [[ -z "$currentuser" || "$currentuser" == "loginwindow" || "$currentuser" == "_mbsetupuser" ]]; then
 currentuser=""
fi
# Fallback
if [[ -z "$currentuser" ]]; then
 currentuser=$(stat -f "%Su" /dev/console)
fi
# Final validation
if [[ -z "$currentuser" || "$currentuser" == "root" || "$currentuser" == "loginwindow" || "$currentuser" == "_mbsetupuser" ]]; then
 echo "Failed to get current logged-in user."
 exit 1
fi

currentuserhome=$(dscl . -read "/Users/${currentuser}" NFSHomeDirectory | sed 's/^NFSHomeDirectory: //')
if [ -z "${currentuserhome}" ] || [ ! -d "${currentuserhome}" ]; then
 echo "Failed to get current user home."
 exit 1
fi

export HOME="${currentuserhome}"
echo "currentuser: ${currentuser}"
echo "home: ${HOME}"
if true; then
    echo kept
fi
)sh";

const char homeComment[] =
    "# Obtain the current logged-in user's username through the HOME environment variable\n";
const char appdatePath[] = "appdatePath=\"$HOME/Library/Application Support/Pelix "
                           "Software/${ApplicationDataType}/${ApplicationName}\"\n";

QByteArray without(QByteArray script, const char *line)
{
    return script.replace(line, "");
}

} // namespace

class tst_ScriptPatch : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_folder = std::make_unique<QTemporaryDir>(); }

    void postinstallLosesTheOldDetectionAndGainsTheBlockBeforeAppdatePath()
    {
        QCOMPARE(postinstallAfterPatch(VendorScripts::postinstall()), patchedPostinstall);
        QCOMPARE(m_error, QString());
    }

    void preinstallGetsTheBlockInPlaceOfTheOldDetection()
    {
        QCOMPARE(preinstallAfterPatch(VendorScripts::preinstall()), patchedPreinstall);
        QCOMPARE(m_error, QString());
    }

    void patchedScriptsAreSoundForBash_data()
    {
        QTest::addColumn<QByteArray>("script");
        QTest::newRow("postinstall") << postinstallAfterPatch(VendorScripts::postinstall());
        QTest::newRow("preinstall") << preinstallAfterPatch(VendorScripts::preinstall());
    }

    void patchedScriptsAreSoundForBash()
    {
        QFETCH(QByteArray, script);
        QVERIFY(script.contains("NFSHomeDirectory"));
        QVERIFY(isSoundForBash(script));
        QVERIFY(!isSoundForBash(QByteArray(script).replace("exit 1\nfi\n", "exit 1\n")));
    }

    void otherLineEndsBecomeLineFeeds_data()
    {
        QTest::addColumn<QByteArray>("lineEnd");
        QTest::newRow("CR LF") << QByteArray("\r\n");
        QTest::newRow("CR") << QByteArray("\r");
    }

    void otherLineEndsBecomeLineFeeds()
    {
        QFETCH(QByteArray, lineEnd);
        QCOMPARE(postinstallAfterPatch(VendorScripts::postinstall().replace("\n", lineEnd)),
                 patchedPostinstall);
        QCOMPARE(preinstallAfterPatch(VendorScripts::preinstall().replace("\n", lineEnd)), patchedPreinstall);
    }

    void aFileWithoutAFinalLineFeedGainsOne()
    {
        QByteArray script = VendorScripts::preinstall();
        script.chop(1);
        QCOMPARE(preinstallAfterPatch(script), patchedPreinstall);
    }

    void anEmptyLastLineIsKept()
    {
        QCOMPARE(preinstallAfterPatch(VendorScripts::preinstall() + "\n"), patchedPreinstall + "\n");
    }

    void anchorsIndentedOrWithTrailingBlanksStillMatch()
    {
        QByteArray script = VendorScripts::postinstall();
        script.replace("mydir=", "  mydir=").replace("mydir=$(pwd)", "mydir=$(pwd) \t");
        script.replace("# Obtain", "\t# Obtain").replace("appdatePath=", " appdatePath=");
        QCOMPARE(postinstallAfterPatch(script), patchedPostinstall);
    }

    void aLineThatDiffersInsideTheTextIsNoAnchor()
    {
        const QByteArray script = VendorScripts::postinstall().replace("$(pwd)", "$( pwd)");
        QCOMPARE(postinstallAfterPatch(script), script);
        QCOMPARE(m_error, QStringLiteral("anchor is not unique: [mydir=$(pwd)], count=0"));
    }

    void twoEqualMydirLinesLeavePostinstallUnchanged()
    {
        const QByteArray script = VendorScripts::postinstall() + "mydir=$(pwd)\n";
        QCOMPARE(postinstallAfterPatch(script), script);
        QCOMPARE(m_error, QStringLiteral("anchor is not unique: [mydir=$(pwd)], count=2"));
    }

    void theOldDetectionEndsAtTheFirstFiAfterTheStatLine()
    {
        QByteArray script = VendorScripts::postinstall();
        script.replace("currentuser=$(basename", "if true; then\n:\nfi\ncurrentuser=$(basename");
        QCOMPARE(postinstallAfterPatch(script), patchedPostinstall);
    }

    void theOldDetectionEndsAtTheFirstFiAfterTheUserFromHomeLine()
    {
        QByteArray script = VendorScripts::preinstall();
        script.replace("user_from_home=$(basename", "if true; then\n:\nfi\nuser_from_home=$(basename");
        QCOMPARE(preinstallAfterPatch(script), patchedPreinstall);
    }

    void postinstallStaysUntouchedWithoutAnAnchor_data()
    {
        QTest::addColumn<QByteArray>("script");
        QTest::addColumn<QString>("error");
        const QByteArray script = VendorScripts::postinstall();
        QTest::newRow("appdatePath") << without(script, appdatePath) << notUnique(appdatePath);
        QTest::newRow("comment") << without(script, homeComment) << notUnique(homeComment);
        QByteArray noStat = script.mid(0, script.indexOf("    currentuser=$(stat"));
        noStat.replace(homeComment, "").append(appdatePath).append(homeComment);
        QTest::newRow("stat") << noStat
                              << QStringLiteral("anchor not found after line 34: "
                                                "[currentuser=$(stat -f \"%Su\" /dev/console)]");
        const QByteArray noFi = noStat + "currentuser=$(stat -f \"%Su\" /dev/console)\n";
        QTest::newRow("fi") << noFi << QStringLiteral("anchor not found after line 35: [fi]");
    }

    void postinstallStaysUntouchedWithoutAnAnchor()
    {
        QFETCH(QByteArray, script);
        QFETCH(QString, error);
        QCOMPARE(postinstallAfterPatch(script), script);
        QCOMPARE(m_error, error);
    }

    void preinstallStaysUntouchedWithoutAnAnchor_data()
    {
        QTest::addColumn<QByteArray>("script");
        QTest::addColumn<QString>("error");
        const QByteArray script = VendorScripts::preinstall();
        QTest::newRow("mydir") << without(script, "mydir=`pwd`\n") << notUnique("mydir=`pwd`");
        QTest::newRow("two mydir") << script + "mydir=`pwd`\n"
                                   << QStringLiteral("anchor is not unique: [mydir=`pwd`], count=2");
        QTest::newRow("comment") << without(script, homeComment) << notUnique(homeComment);
        QTest::newRow("user_from_home")
            << without(script, "user_from_home=$(basename \"${HOME}\")\n")
            << QStringLiteral("anchor not found after line 3: [user_from_home=$(basename \"${HOME}\")]");
        QTest::newRow("fi") << without(script, "fi\n")
                            << QStringLiteral("anchor not found after line 4: [fi]");
    }

    void preinstallStaysUntouchedWithoutAnAnchor()
    {
        QFETCH(QByteArray, script);
        QFETCH(QString, error);
        QCOMPARE(preinstallAfterPatch(script), script);
        QCOMPARE(m_error, error);
    }

    void anAppdatePathOnTheFirstLineFailsWithoutAText()
    {
        const QByteArray script = appdatePath + without(VendorScripts::postinstall(), appdatePath);
        QCOMPARE(postinstallAfterPatch(script), script);
        QCOMPARE(m_error, QString());
        QCOMPARE(unpatchedReason(m_error), QStringLiteral("the line that sets appdatePath is the first one"));
    }

    void aPatchedScriptIsNotPatchedAgain()
    {
        QCOMPARE(postinstallAfterPatch(patchedPostinstall), patchedPostinstall);
        QCOMPARE(m_error, notUnique(homeComment));
        QCOMPARE(preinstallAfterPatch(patchedPreinstall), patchedPreinstall);
        QCOMPARE(m_error, notUnique("mydir=`pwd`"));
    }

    void permissionsAreKept()
    {
        TestFiles::write(path(), VendorScripts::preinstall());
        const auto permissions = QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner | QFile::ExeGroup;
        QVERIFY(QFile::setPermissions(path(), permissions));
        QVERIFY(patchPreinstall(path()));
        QCOMPARE(QFile::permissions(path()) & 0x0077, QFile::Permissions(permissions) & 0x0077);
    }

    void aLinkIsNotFollowed()
    {
        const QString target = m_folder->filePath(QStringLiteral("target"));
        TestFiles::write(target, VendorScripts::preinstall());
        QVERIFY(QFile::link(target, path()));
        QVERIFY(!patchPreinstall(path(), &m_error));
        QCOMPARE(m_error, QStringLiteral("is a link"));
        QCOMPARE(TestFiles::read(target), VendorScripts::preinstall());
    }

    void aMissingScriptIsReportedWithTheFilesErrorString()
    {
        QFile missing(path());
        QVERIFY(!missing.open(QIODevice::ReadOnly));
        QVERIFY(!patchPostinstall(path(), &m_error));
        QCOMPARE(m_error, missing.errorString());
        QVERIFY(!patchPreinstall(path()));
    }

    void aScriptInAReadOnlyFolderStaysAndTheReasonIsTold()
    {
        if (::geteuid() == 0)
            QSKIP("root may write everywhere");
        TestFiles::write(path(), VendorScripts::preinstall());
        QVERIFY(QFile::setPermissions(m_folder->path(), QFile::ReadOwner | QFile::ExeOwner));
        const bool patched = patchPreinstall(path(), &m_error);
        QVERIFY(
            QFile::setPermissions(m_folder->path(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
        QVERIFY(!patched);
        QVERIFY(!m_error.isEmpty());
        QCOMPARE(TestFiles::read(path()), VendorScripts::preinstall());
    }

    void nothingIsLeftBesideThePatchedScript()
    {
        preinstallAfterPatch(VendorScripts::preinstall());
        QCOMPARE(QDir(m_folder->path()).entryList(QDir::Files | QDir::Hidden),
                 QStringList({QStringLiteral("script")}));
    }

private:
    static QString notUnique(const char *anchor)
    {
        return QStringLiteral("anchor is not unique: [%1], count=0")
            .arg(QString::fromLatin1(anchor).trimmed());
    }

    QString path() const { return m_folder->filePath(QStringLiteral("script")); }

    bool isSoundForBash(const QByteArray &script) const
    {
        TestFiles::write(path(), script);
        return QProcess::execute(QStringLiteral("bash"), {QStringLiteral("-n"), path()}) == 0;
    }

    QByteArray postinstallAfterPatch(const QByteArray &script)
    {
        return afterPatch(script, patchPostinstall);
    }

    QByteArray preinstallAfterPatch(const QByteArray &script) { return afterPatch(script, patchPreinstall); }

    /// The file after the patch, which must say success exactly when the file has changed.
    QByteArray afterPatch(const QByteArray &script, bool (*patch)(const QString &, QString *))
    {
        TestFiles::write(path(), script);
        m_error.clear();
        const bool patched = patch(path(), &m_error);
        const QByteArray result = TestFiles::read(path());
        if (patched != (result != script))
            QTest::qFail("the result does not say what happened to the file", __FILE__, __LINE__);
        return result;
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_error;
};

QTEST_GUILESS_MAIN(tst_ScriptPatch)
#include "tst_ScriptPatch.moc"
