// SPDX-License-Identifier: Apache-2.0
#include "tests/support/TestFiles.h"

#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

namespace {

/// A brew that has what PCT_TEST_INSTALLED lists and notes what it is to install.
constexpr const char *brew =
    "case \"$1\" in\n"
    "list) case \" $PCT_TEST_INSTALLED \" in *\" $3 \"*) echo \"$3 1.0\" ;; *) exit 1 ;; esac ;;\n"
    "install) echo \"brew $*\" >>\"$PCT_TEST_LOG\"; exit \"${PCT_TEST_BREW_EXIT:-0}\" ;;\n"
    "esac\n";
constexpr const char *noteCall = "echo \"$(basename \"$0\") $*\" >>\"$PCT_TEST_LOG\"\n";

QString listed(const char *list)
{
    return QString::fromUtf8(
        TestFiles::read(QStringLiteral(PCT_SOURCE_DIR "/scripts/") + QLatin1String(list)));
}

QStringList namesIn(const QString &text)
{
    QStringList names;
    for (const QString &line : text.split(QLatin1Char('\n'))) {
        const QString name = line.section(QLatin1Char('#'), 0, 0).trimmed();
        if (!name.isEmpty())
            names << name;
    }
    return names;
}

} // namespace

/// The set-up, with the system's commands played.
class tst_SetUp : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void aMacGetsWhatItLacks();
    void aMacThatHasEverythingIsLeftAlone();
    void aFailedInstallationIsAFailure();
    void aMacWithoutHomebrewIsTold();
    void aMacThatOnlyRunsTheToolGetsNoTestersPrograms();
    void debianGetsWhatItLacks();
    void debianThatOnlyRunsTheToolGetsNoTestersPackages();
    void theNameThatTheSuiteHasIsTaken();
    void anUnknownPurposeIsRefused();

private:
    void play(const char *command, const QByteArray &script) const
    {
        TestFiles::writeScript(m_folder->filePath(QLatin1String("bin/") + QLatin1String(command)), script);
    }
    int setUp(const QStringList &purpose = {});
    void playDebianWithout(const QByteArray &pattern) const;
    QString log() const;

    std::unique_ptr<QTemporaryDir> m_folder;
    QProcessEnvironment m_environment;
    QString m_errors;
};

void tst_SetUp::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    m_environment = QProcessEnvironment();
    // Only what the script needs of the system, so that no installer of this machine can be reached.
    for (const char *name : {"sh", "sed", "dirname", "basename", "env"}) {
        const QString program = QStandardPaths::findExecutable(QLatin1String(name));
        QVERIFY(QDir().mkpath(m_folder->filePath(QStringLiteral("bin"))));
        QVERIFY(QFile::link(program, m_folder->filePath(QLatin1String("bin/") + QLatin1String(name))));
    }
    play("uname", "echo Darwin\n");
    m_environment.insert(QStringLiteral("PATH"), m_folder->filePath(QStringLiteral("bin")));
    m_environment.insert(QStringLiteral("PCT_TEST_LOG"), m_folder->filePath(QStringLiteral("log")));
}

int tst_SetUp::setUp(const QStringList &purpose)
{
    QProcess script;
    script.setProcessEnvironment(m_environment);
    script.start(QStringLiteral("/bin/sh"),
                 QStringList{QStringLiteral(PCT_SOURCE_DIR "/scripts/setup.sh")} + purpose);
    if (!script.waitForFinished() || script.exitStatus() != QProcess::NormalExit)
        return -1;
    m_errors = QString::fromUtf8(script.readAllStandardError());
    return script.exitCode();
}

QString tst_SetUp::log() const
{
    const QString path = m_folder->filePath(QStringLiteral("log"));
    return QFileInfo::exists(path) ? QString::fromUtf8(TestFiles::read(path)) : QString();
}

void tst_SetUp::aMacGetsWhatItLacks()
{
    play("brew", brew);
    QStringList names = namesIn(listed("packages-homebrew.txt"));
    QVERIFY(names.removeOne(QStringLiteral("cmake")));
    QVERIFY(names.contains(QStringLiteral("qtbase")));
    m_environment.insert(QStringLiteral("PCT_TEST_INSTALLED"), QStringLiteral("cmake"));
    QCOMPARE(setUp(), 0);
    QCOMPARE(log(), QStringLiteral("brew install --quiet %1\n").arg(names.join(QLatin1Char(' '))));
}

void tst_SetUp::aMacThatHasEverythingIsLeftAlone()
{
    play("brew", brew);
    m_environment.insert(QStringLiteral("PCT_TEST_INSTALLED"),
                         namesIn(listed("packages-homebrew.txt")).join(QLatin1Char(' ')));
    QCOMPARE(setUp(), 0);
    QCOMPARE(log(), QString());
    QCOMPARE(m_errors, QString());
}

void tst_SetUp::aFailedInstallationIsAFailure()
{
    play("brew", brew);
    m_environment.insert(QStringLiteral("PCT_TEST_BREW_EXIT"), QStringLiteral("1"));
    QCOMPARE(setUp(), 1);
}

void tst_SetUp::aMacWithoutHomebrewIsTold()
{
    QCOMPARE(setUp(), 1);
    QVERIFY(m_errors.contains(QStringLiteral("Homebrew")));
    play("cmake", "");
    QCOMPARE(setUp(), 0);
}

void tst_SetUp::aMacThatOnlyRunsTheToolGetsNoTestersPrograms()
{
    play("brew", brew);
    const QString list = listed("packages-homebrew.txt");
    const auto end = list.indexOf(QStringLiteral("\n# test\n"));
    QVERIFY(end > 0);
    const QStringList names = namesIn(list.left(end));
    QVERIFY(names.contains(QStringLiteral("qtbase")) && !names.contains(QStringLiteral("p7zip")));
    QCOMPARE(setUp({QStringLiteral("run")}), 0);
    QCOMPARE(log(), QStringLiteral("brew install --quiet %1\n").arg(names.join(QLatin1Char(' '))));
}

/// A Debian that lacks the packages which match the pattern of a shell.
void tst_SetUp::playDebianWithout(const QByteArray &pattern) const
{
    play("uname", "echo Linux\n");
    play("brew", "exit 1\n");
    play("id", "echo 0\n");
    play("apt-get", noteCall);
    play("dpkg-query", "case \"$4\" in " + pattern + ") exit 1 ;; *) echo 'ii ' ;; esac\n");
}

void tst_SetUp::debianGetsWhatItLacks()
{
    playDebianWithout("xvfb");
    QCOMPARE(setUp({QStringLiteral("test")}), 0);
    QCOMPARE(log(), QStringLiteral("apt-get update -qq\n"
                                   "apt-get install -y -qq --no-install-recommends xvfb\n"));
}

void tst_SetUp::debianThatOnlyRunsTheToolGetsNoTestersPackages()
{
    playDebianWithout("xvfb|qtbase5-dev|qt6-base-dev|cmake");
    QCOMPARE(setUp({QStringLiteral("run")}), 0);
    QCOMPARE(log(), QStringLiteral("apt-get update -qq\n"
                                   "apt-get install -y -qq --no-install-recommends cmake qt6-base-dev\n"));
}

void tst_SetUp::theNameThatTheSuiteHasIsTaken()
{
    playDebianWithout("p7zip-full|7zip");
    play("apt-cache", "[ \"$3\" != 7zip ] || echo 'Package: 7zip'\n");
    QCOMPARE(setUp(), 0);
    QVERIFY2(log().endsWith(QStringLiteral(" --no-install-recommends 7zip\n")), qPrintable(log()));
    QFile::remove(m_folder->filePath(QStringLiteral("log")));
    playDebianWithout("p7zip-full");
    QCOMPARE(setUp(), 0);
    QCOMPARE(log(), QString());
}

void tst_SetUp::anUnknownPurposeIsRefused()
{
    QCOMPARE(setUp({QStringLiteral("everything")}), 2);
    QVERIFY(m_errors.startsWith(QStringLiteral("usage:")));
}

QTEST_GUILESS_MAIN(tst_SetUp)
#include "tst_SetUp.moc"
