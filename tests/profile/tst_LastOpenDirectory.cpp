// SPDX-License-Identifier: Apache-2.0
#include "profile/CProfileGenerator.h"

#include <QFileInfo>
#include <QtTest>

#include <pwd.h>
#include <unistd.h>

class tst_LastOpenDirectory : public QObject
{
    Q_OBJECT

private slots:
    /// The user's own defaults are none of a test's business. Where defaults lie is settled before `main`,
    /// so the environment that ctest gives says it.
    void initTestCase()
    {
        const QString configuration = qEnvironmentVariable("GNUSTEP_CONFIG_FILE");
        QVERIFY2(!configuration.isEmpty(), "run this test through ctest");
        m_defaults =
            QFileInfo(configuration).absolutePath() + QStringLiteral("/defaults/tst_LastOpenDirectory.plist");
        QFile::remove(m_defaults);
    }

    void withoutAStoredDefaultItIsTheHomeFolder()
    {
        QCOMPARE(CProfileGenerator::GetLastOpenDirectory(),
                 QFile::decodeName(::getpwuid(::geteuid())->pw_dir));
    }

    void theFolderOfAChosenFileIsRemembered_data()
    {
        QTest::addColumn<QString>("file");
        QTest::addColumn<QString>("folder");
        QTest::newRow("plain") << QStringLiteral("/srv/a.pkg") << QStringLiteral("/srv");
        QTest::newRow("blanks and per cent")
            << QStringLiteral("/srv/a b/50%20 off/x.pkg") << QStringLiteral("/srv/a b/50%20 off");
        QTest::newRow("other scripts")
            << QStringLiteral("/srv/Größe/日本/x.xml") << QStringLiteral("/srv/Größe/日本");
        QTest::newRow("question mark and hash")
            << QStringLiteral("/srv/a?b#c/x") << QStringLiteral("/srv/a?b#c");
    }

    void theFolderOfAChosenFileIsRemembered()
    {
        QFETCH(QString, file);
        CProfileGenerator::SyncLastOpenDirectory(file);
        QTEST(CProfileGenerator::GetLastOpenDirectory(), "folder");
    }

    void itIsStoredOnDisk()
    {
        CProfileGenerator::SyncLastOpenDirectory(QStringLiteral("/srv/stored/x.pkg"));
        QFile file(m_defaults);
        QVERIFY(file.open(QIODevice::ReadOnly));
        QVERIFY(file.readAll().contains("/srv/stored"));
    }

private:
    QString m_defaults;
};

QTEST_GUILESS_MAIN(tst_LastOpenDirectory)
#include "tst_LastOpenDirectory.moc"
