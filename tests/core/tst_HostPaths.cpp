// SPDX-License-Identifier: Apache-2.0
#include "core/HostPaths.h"

#include <QTemporaryDir>
#include <QtTest>

class tst_HostPaths : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_path = qgetenv("PATH");
        qputenv("PCT_HOSTTOOLS", QFile::encodeName(m_folder.path()));
    }

    void cleanup() { qputenv("PATH", m_path); }

    void aBareNameStaysAsItIs()
    {
        QCOMPARE(HostPaths::command(QStringLiteral("pkgutil")), QStringLiteral("pkgutil"));
    }

    void anExistingProgramIsUsedAsItStands()
    {
        QCOMPARE(HostPaths::command(QStringLiteral("/bin/sh")), QStringLiteral("/bin/sh"));
    }

    void anAbsentProgramIsAnsweredByItsStandIn()
    {
        QCOMPARE(HostPaths::command(QStringLiteral("/usr/bin/only-on-a-mac")),
                 m_folder.filePath(QStringLiteral("only-on-a-mac")));
    }

    void standInsComeFirstInThePathOnce()
    {
        qputenv("PATH", "/usr/bin:/bin");
        HostPaths::putStandInsFirst();
        HostPaths::putStandInsFirst();
        QCOMPARE(qgetenv("PATH"), QFile::encodeName(m_folder.path()) + ":/usr/bin:/bin");
    }

    void withoutASettingStandInsLieBesideTheExecutable()
    {
        qunsetenv("PCT_HOSTTOOLS");
        const QString wanted = QDir::cleanPath(QCoreApplication::applicationDirPath() +
                                               QStringLiteral("/../libexec/pct/only-on-a-mac"));
        QCOMPARE(HostPaths::command(QStringLiteral("/usr/bin/only-on-a-mac")), wanted);
    }

private:
    QTemporaryDir m_folder;
    QByteArray m_path;
};

QTEST_GUILESS_MAIN(tst_HostPaths)
#include "tst_HostPaths.moc"
