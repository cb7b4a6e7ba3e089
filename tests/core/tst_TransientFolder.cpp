// SPDX-License-Identifier: Apache-2.0
#include "core/TransientFolder.h"
#include "tests/support/TestFiles.h"

#include <QTemporaryDir>
#include <QtTest>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace {

QString text(const char *literal)
{
    return QString::fromUtf8(literal);
}

/// The shell makes what Qt has no names for.
void inFolder(const QString &folder, const char *command)
{
    TestFiles::outputOf(text("sh"), {text("-c"), text("cd \"$0\" && ") + text(command), folder});
}

QStringList namesIn(const QString &folder)
{
    return QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
}

/// Uses up all descriptors of the process while it lives.
class NoDescriptors
{
public:
    NoDescriptors()
    {
        ::getrlimit(RLIMIT_NOFILE, &m_before);
        const rlimit few = {64, m_before.rlim_max};
        ::setrlimit(RLIMIT_NOFILE, &few);
        for (int one = ::open("/dev/null", O_RDONLY); one >= 0; one = ::open("/dev/null", O_RDONLY))
            m_held.push_back(one);
    }
    ~NoDescriptors()
    {
        for (const int one : m_held)
            ::close(one);
        ::setrlimit(RLIMIT_NOFILE, &m_before);
    }
    NoDescriptors(const NoDescriptors &) = delete;
    NoDescriptors &operator=(const NoDescriptors &) = delete;

private:
    rlimit m_before = {};
    std::vector<int> m_held;
};

} // namespace

class tst_TransientFolder : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_parent = std::make_unique<QTemporaryDir>(); }

    void onlyItsUserCanEnter()
    {
        const TransientFolder folder(HeldFolder(m_parent->path()), text("test-"));
        QVERIFY(folder.made());
        struct stat status = {};
        QCOMPARE(::stat(QFile::encodeName(folder.path()).constData(), &status), 0);
        QCOMPARE(int(status.st_mode & 07777), 0700);
        QCOMPARE(namesIn(m_parent->path()).size(), 1);
        QVERIFY(namesIn(m_parent->path()).first().startsWith(text("test-")));
    }

    void allGoesWithIt_data()
    {
        QTest::addColumn<QString>("command");
        QTest::newRow("nothing") << text(":");
        QTest::newRow("files and folders") << text("mkdir -p a/b/c d; : > a/b/file; : > .hidden");
        QTest::newRow("names that are no text")
            << text("n=$(printf 'a\\377b'); mkdir -p \"$n/$n/$n\"; : > \"$n/$n/$n/$n\"; : > \"$n/x\"");
        QTest::newRow("folders that cannot be changed")
            << text("mkdir -p a/b/c; : > a/b/c/file; chmod 0 a/b/c; chmod 500 a/b; chmod 500 a");
        QTest::newRow("a tree deeper than a path is long")
            << text("i=0; while [ $i -lt 400 ]; do mkdir 0123456789; cd -P 0123456789; : > file; "
                    "i=$((i+1)); done");
        QTest::newRow("links and pipes") << text("mkfifo pipe; ln -s / top; ln -s missing gone");
    }

    void allGoesWithIt()
    {
        QFETCH(QString, command);
        {
            const TransientFolder folder(HeldFolder(m_parent->path()), text("test-"));
            inFolder(folder.path(), command.toUtf8().constData());
        }
        QCOMPARE(namesIn(m_parent->path()), QStringList());
    }

    void linksInItLeadNowhere()
    {
        TestFiles::write(m_parent->filePath(text("outside/file")), "stays");
        {
            const TransientFolder folder(HeldFolder(m_parent->path()), text("test-"));
            QVERIFY(QFile::link(m_parent->filePath(text("outside")), folder.filePath(text("link"))));
        }
        QCOMPARE(TestFiles::read(m_parent->filePath(text("outside/file"))), QByteArray("stays"));
        QCOMPARE(namesIn(m_parent->path()), QStringList{text("outside")});
    }

    void aParentThatBecomesALinkLeadsNowhere()
    {
        const QString place = m_parent->filePath(text("place"));
        QVERIFY(QDir().mkdir(place));
        {
            const TransientFolder folder((HeldFolder(place)), text("test-"));
            TestFiles::write(folder.filePath(text("file")), "made");
            inFolder(m_parent->path(), "mv place moved; cp -R moved copy; ln -s copy place");
        }
        QCOMPARE(namesIn(m_parent->filePath(text("moved"))), QStringList());
        const QStringList copied = namesIn(m_parent->filePath(text("copy")));
        QCOMPARE(copied.size(), 1);
        QCOMPARE(namesIn(m_parent->filePath(text("copy/") + copied.first())), QStringList{text("file")});
    }

    void itGoesThoughNoFurtherFileCanBeOpened()
    {
        auto folder = std::make_unique<TransientFolder>(HeldFolder(m_parent->path()), text("test-"));
        inFolder(folder->path(), "mkdir -p a/b/c; : > a/b/c/file");
        {
            const NoDescriptors none;
            folder.reset();
        }
        QCOMPARE(namesIn(m_parent->path()), QStringList());
    }

    void oneThatCannotBeHeldIsNotLeft()
    {
        const HeldFolder parent(m_parent->path());
        Result<> made;
        {
            const NoDescriptors none;
            made = TransientFolder(parent, text("test-")).made();
        }
        QVERIFY(!made);
        QVERIFY(!made.problem().text.isEmpty());
        QCOMPARE(namesIn(m_parent->path()), QStringList());
    }

    void aMissingParentSaysWhy()
    {
        const TransientFolder folder(HeldFolder(m_parent->filePath(text("missing"))), text("test-"));
        QVERIFY(!folder.made());
        QVERIFY(!folder.made().problem().text.isEmpty());
        QCOMPARE(folder.filePath(text("file")), QString());
    }

private:
    std::unique_ptr<QTemporaryDir> m_parent;
};

QTEST_GUILESS_MAIN(tst_TransientFolder)
#include "tst_TransientFolder.moc"
