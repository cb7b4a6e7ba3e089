// SPDX-License-Identifier: Apache-2.0
#include "tests/hosttools/ToolRun.h"
#include "tests/support/TestFiles.h"

#include <QElapsedTimer>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>

#include <sys/stat.h>
#include <unistd.h>

/// What `pkgutil --expand` takes, what it refuses and what it leaves behind.
class tst_PkgutilExpand : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();

    void readsEveryFormInWhichPackagesAreWritten_data();
    void readsEveryFormInWhichPackagesAreWritten();
    void readsWhatBsdtarWrites_data();
    void readsWhatBsdtarWrites();
    void readsMembersThatShareBytesAndHardLinks();
    void verifiesEveryByteOfALargePayload();
    void keepsPayloadAndBomAndUnpacksScripts();
    void unpacksScriptsOfEveryComponentAndOfAPlainPackage();
    void keepsModesTimesAndLinks();
    void keepsNoSetIdBitsOnTheDisk();

    void refusesHostileAndDamagedPackages_data();
    void refusesHostileAndDamagedPackages();
    void refusesAFolderThatExists_data();
    void refusesAFolderThatExists();
    void refusesInputsThatAreNoFiles_data();
    void refusesInputsThatAreNoFiles();
    void leavesNothingBehindWhenItIsAskedToStop();
    void saysHowItIsUsed();

private:
    QString at(const char *name) const { return m_folder->path() + QLatin1Char('/') + QLatin1String(name); }
    ToolRun::Result expand(const QString &package, const QString &folder) const
    {
        return ToolRun::run(QStringLiteral("pkgutil"), {QStringLiteral("--expand"), package, folder});
    }
    /// Expands a variant into "out"; it must succeed.
    void expandVariant(const QString &variant)
    {
        ToolRun::makeVariant(variant, at("in.pkg"));
        const ToolRun::Result result = expand(at("in.pkg"), at("out"));
        QVERIFY2(result.exitCode == 0, result.errors.constData());
        QCOMPARE(result.errors, QByteArray());
        QCOMPARE(result.output, QByteArray());
    }

    QTemporaryDir m_good;
    QTemporaryDir m_hostile;
    QScopedPointer<QTemporaryDir> m_folder;
};

namespace {

mode_t modeOf(const QString &path)
{
    struct stat status = {};
    lstat(path.toUtf8().constData(), &status);
    return status.st_mode & 07777U;
}

qint64 timeOf(const QString &path)
{
    struct stat status = {};
    lstat(path.toUtf8().constData(), &status);
    return status.st_mtim.tv_sec;
}

} // namespace

void tst_PkgutilExpand::initTestCase()
{
    ToolRun::makeAllVariants(QStringLiteral("good"), m_good.path());
    ToolRun::makeAllVariants(QStringLiteral("hostile"), m_hostile.path());
}

void tst_PkgutilExpand::init()
{
    m_folder.reset(new QTemporaryDir);
}

void tst_PkgutilExpand::readsEveryFormInWhichPackagesAreWritten_data()
{
    QTest::addColumn<QString>("variant");
    for (const QString &variant : ToolRun::namesIn(m_good.path()))
        QTest::newRow(qPrintable(variant)) << variant;
}

void tst_PkgutilExpand::readsEveryFormInWhichPackagesAreWritten()
{
    QFETCH(QString, variant);
    const ToolRun::Result result = expand(m_good.filePath(variant), at("out"));
    QVERIFY2(result.exitCode == 0, result.errors.constData());
    QCOMPARE(expand(m_good.filePath(QStringLiteral("plain")), at("plain")).exitCode, 0);
    const QByteArray contents = ToolRun::contentsOf(at("out"));
    QCOMPARE(contents, ToolRun::contentsOf(at("plain")));
    QCOMPARE(contents.count('\n') + 1, 14);
}

void tst_PkgutilExpand::readsWhatBsdtarWrites_data()
{
    QTest::addColumn<QString>("options");
    for (const auto *compression : {"none", "gzip", "bzip2", "lzma", "xz"})
        for (const auto *checksum : {"none", "sha1", "md5"}) {
            const QString options = QStringLiteral("xar:compression=%1,xar:checksum=%2,xar:toc-checksum=%2")
                                        .arg(QLatin1String(compression), QLatin1String(checksum));
            QTest::newRow(qPrintable(options)) << options;
        }
}

void tst_PkgutilExpand::readsWhatBsdtarWrites()
{
    QFETCH(QString, options);
    TestFiles::write(at("source/Distribution"), "<installer-gui-script/>");
    TestFiles::write(at("source/Sample.pkg/Payload"), QByteArray(300000, 'p') + "end");
    TestFiles::write(at("source/Sample.pkg/Empty"), QByteArray());
    TestFiles::outputOf(QStringLiteral("bsdtar"),
                        {QStringLiteral("-cf"), at("in.pkg"), QStringLiteral("--format"),
                         QStringLiteral("xar"), QStringLiteral("--options"), options, QStringLiteral("-C"),
                         at("source"), QStringLiteral("Distribution"), QStringLiteral("Sample.pkg")});
    const ToolRun::Result result = expand(at("in.pkg"), at("out"));
    QVERIFY2(result.exitCode == 0, result.errors.constData());
    QCOMPARE(ToolRun::contentsOf(at("out")), ToolRun::contentsOf(at("source")));
}

void tst_PkgutilExpand::readsMembersThatShareBytesAndHardLinks()
{
    expandVariant(QStringLiteral("shared-heap"));
    QCOMPARE(TestFiles::read(at("out/Sample.pkg/PackageInfo.copy")),
             TestFiles::read(at("out/Sample.pkg/PackageInfo")));
    struct stat first = {};
    struct stat second = {};
    QCOMPARE(stat(at("out/Distribution").toUtf8().constData(), &first), 0);
    QCOMPARE(stat(at("out/Resources/hard").toUtf8().constData(), &second), 0);
    QCOMPARE(first.st_ino, second.st_ino);
}

void tst_PkgutilExpand::verifiesEveryByteOfALargePayload()
{
    QByteArray payload;
    payload.reserve(9001000);
    while (payload.size() < 9000000)
        payload.append(QByteArray::number(payload.size())).append(' ');
    TestFiles::write(at("source/Payload"), payload);
    TestFiles::outputOf(QStringLiteral("bsdtar"),
                        {QStringLiteral("-cf"), at("in.pkg"), QStringLiteral("--format"),
                         QStringLiteral("xar"), QStringLiteral("--options"),
                         QStringLiteral("xar:compression=none"), QStringLiteral("-C"), at("source"),
                         QStringLiteral("Payload")});
    QCOMPARE(expand(at("in.pkg"), at("out")).exitCode, 0);
    QCOMPARE(TestFiles::read(at("out/Payload")), payload);

    // What follows is padding: the archiver writes whole blocks.
    const QByteArray whole = TestFiles::read(at("in.pkg"));
    const int end = whole.indexOf(payload.right(100)) + 100;
    for (const int position : {end - 1, end - 4500000}) {
        QByteArray package = whole;
        package[position] = static_cast<char>(package[position] ^ 1);
        TestFiles::write(at("damaged.pkg"), package);
        QCOMPARE(expand(at("damaged.pkg"), at("damaged")).exitCode, 1);
    }
}

void tst_PkgutilExpand::keepsPayloadAndBomAndUnpacksScripts()
{
    expandVariant(QStringLiteral("signed"));
    QVERIFY(QFileInfo(at("out/Sample.pkg/Payload")).isFile());
    QVERIFY(QFileInfo(at("out/Sample.pkg/Bom")).isFile());
    QVERIFY(QFileInfo(at("out/Sample.pkg/Scripts")).isDir());
    QCOMPARE(ToolRun::namesIn(at("out/Sample.pkg/Scripts")),
             QStringList({QStringLiteral("._postinstall"), QStringLiteral("latest"),
                          QStringLiteral("postinstall"), QStringLiteral("preinstall")}));
    QCOMPARE(TestFiles::read(at("out/Sample.pkg/Scripts/._postinstall")),
             QByteArray("\0\5\x16\7AppleDouble", 15));
}

void tst_PkgutilExpand::unpacksScriptsOfEveryComponentAndOfAPlainPackage()
{
    TestFiles::writeScript(at("scripts/postinstall"), "exit 0\n");
    TestFiles::write(at("source/One.pkg/PackageInfo"), "<pkg-info identifier='one'/>");
    TestFiles::write(at("source/Two.pkg/PackageInfo"), "<pkg-info identifier='two'/>");
    for (const auto *packed : {"source/Scripts", "source/One.pkg/Scripts", "source/Two.pkg/Scripts"})
        TestFiles::outputOf(QStringLiteral("bsdtar"),
                            {QStringLiteral("-czf"), at(packed), QStringLiteral("--format"),
                             QStringLiteral("odc"), QStringLiteral("-C"), at("scripts"),
                             QStringLiteral(".")});
    TestFiles::outputOf(QStringLiteral("bsdtar"),
                        {QStringLiteral("-cf"), at("in.pkg"), QStringLiteral("--format"),
                         QStringLiteral("xar"), QStringLiteral("-C"), at("source"), QStringLiteral("Scripts"),
                         QStringLiteral("One.pkg"), QStringLiteral("Two.pkg")});
    QCOMPARE(expand(at("in.pkg"), at("out")).exitCode, 0);
    for (const auto *script :
         {"out/Scripts/postinstall", "out/One.pkg/Scripts/postinstall", "out/Two.pkg/Scripts/postinstall"})
        QCOMPARE(TestFiles::read(at(script)), TestFiles::read(at("scripts/postinstall")));
}

void tst_PkgutilExpand::keepsModesTimesAndLinks()
{
    expandVariant(QStringLiteral("plain"));
    QCOMPARE(modeOf(at("out/Sample.pkg/Payload")), 0640U);
    QCOMPARE(modeOf(at("out/Sample.pkg/Scripts/preinstall")), 0711U);
    QCOMPARE(modeOf(at("out/Sample.pkg/Scripts/postinstall")), 0755U);
    QCOMPARE(timeOf(at("out/Sample.pkg/Payload")), 1500000000);
    QCOMPARE(timeOf(at("out/Sample.pkg")), 1500000000);
    QCOMPARE(timeOf(at("out/Sample.pkg/Scripts/postinstall")), 1500000000);
    QCOMPARE(timeOf(at("out/Sample.pkg/Scripts/latest")), 1500000000);
    QCOMPARE(TestFiles::outputOf(QStringLiteral("readlink"), {at("out/Sample.pkg/Scripts/latest")}),
             QByteArray("postinstall\n"));
    QCOMPARE(TestFiles::outputOf(QStringLiteral("readlink"), {at("out/Resources/current")}),
             QByteArray("en.lproj/Welcome.html\n"));
}

void tst_PkgutilExpand::keepsNoSetIdBitsOnTheDisk()
{
    TestFiles::writeScript(at("source/tool"), "exit 0\n");
    QCOMPARE(chmod(at("source/tool").toUtf8().constData(), 06755), 0);
    TestFiles::outputOf(QStringLiteral("bsdtar"),
                        {QStringLiteral("-cf"), at("in.pkg"), QStringLiteral("--format"),
                         QStringLiteral("xar"), QStringLiteral("-C"), at("source"), QStringLiteral("tool")});
    QCOMPARE(expand(at("in.pkg"), at("out")).exitCode, 0);
    QCOMPARE(modeOf(at("out/tool")), 0755U);
}

void tst_PkgutilExpand::refusesHostileAndDamagedPackages_data()
{
    QTest::addColumn<QString>("variant");
    for (const QString &variant : ToolRun::namesIn(m_hostile.path()))
        QTest::newRow(qPrintable(variant)) << variant;
}

void tst_PkgutilExpand::refusesHostileAndDamagedPackages()
{
    QFETCH(QString, variant);
    TestFiles::write(at("outside/keep"), "keep");
    QElapsedTimer timer;
    timer.start();
    const ToolRun::Result result = expand(m_hostile.filePath(variant), at("out"));
    QCOMPARE(result.exitCode, 1);
    QVERIFY2(ToolRun::hasOneMessage(result, QStringLiteral("pkgutil")), result.errors.constData());
    QVERIFY(result.errors.contains(QByteArray("/" + variant.toUtf8() + ": ")));
    QVERIFY(timer.elapsed() < 30000);
    // Nothing outside the folder, and of the folder nothing either.
    QCOMPARE(ToolRun::namesIn(m_folder->path()), QStringList({QStringLiteral("outside")}));
    QCOMPARE(ToolRun::namesIn(at("outside")), QStringList({QStringLiteral("keep")}));
    QVERIFY(!QFileInfo::exists(QStringLiteral("/tmp/escaped")));
}

void tst_PkgutilExpand::refusesAFolderThatExists_data()
{
    QTest::addColumn<QString>("kind");
    for (const auto *kind : {"folder", "file", "dangling link"})
        QTest::newRow(kind) << QString::fromLatin1(kind);
}

void tst_PkgutilExpand::refusesAFolderThatExists()
{
    QFETCH(QString, kind);
    ToolRun::makeVariant(QStringLiteral("plain"), at("in.pkg"));
    if (kind == QLatin1String("folder"))
        QVERIFY(QDir().mkdir(at("out")));
    else if (kind == QLatin1String("file"))
        TestFiles::write(at("out"), "keep");
    else
        QVERIFY(QFile::link(at("nowhere"), at("out")));
    const QByteArray before = ToolRun::contentsOf(m_folder->path());
    const ToolRun::Result result = expand(at("in.pkg"), at("out"));
    QCOMPARE(result.exitCode, 1);
    QVERIFY(ToolRun::hasOneMessage(result, QStringLiteral("pkgutil")));
    QCOMPARE(ToolRun::contentsOf(m_folder->path()), before);
}

void tst_PkgutilExpand::refusesInputsThatAreNoFiles_data()
{
    QTest::addColumn<QString>("input");
    QTest::newRow("missing") << QStringLiteral("missing.pkg");
    QTest::newRow("a folder") << QStringLiteral("folder");
    QTest::newRow("a pipe, which would wait for ever") << QStringLiteral("pipe");
    QTest::newRow("a device without an end") << QStringLiteral("/dev/zero");
}

void tst_PkgutilExpand::refusesInputsThatAreNoFiles()
{
    QFETCH(QString, input);
    QVERIFY(QDir().mkdir(at("folder")));
    QCOMPARE(mkfifo(at("pipe").toUtf8().constData(), 0600), 0);
    const QString path = QDir(m_folder->path()).absoluteFilePath(input);
    const ToolRun::Result result = expand(path, at("out"));
    QCOMPARE(result.exitCode, 1);
    QVERIFY(ToolRun::hasOneMessage(result, QStringLiteral("pkgutil")));
    QVERIFY(!QFileInfo::exists(at("out")));
}

void tst_PkgutilExpand::leavesNothingBehindWhenItIsAskedToStop()
{
    // A payload that takes long to unpack, so that the signal finds the tool at work.
    QFile payload(at("Payload"));
    QVERIFY(payload.open(QIODevice::WriteOnly) && payload.resize(300LL * 1024 * 1024));
    payload.close();
    TestFiles::outputOf(QStringLiteral("bsdtar"),
                        {QStringLiteral("-cf"), at("in.pkg"), QStringLiteral("--format"),
                         QStringLiteral("xar"), QStringLiteral("--options"),
                         QStringLiteral("xar:compression=gzip"), QStringLiteral("-C"), m_folder->path(),
                         QStringLiteral("Payload")});
    const QStringList idle = ToolRun::namesIn(m_folder->path());
    QProcess process;
    process.start(ToolRun::path(QStringLiteral("pkgutil")),
                  {QStringLiteral("--expand"), at("in.pkg"), at("out")});
    QTRY_VERIFY(ToolRun::namesIn(m_folder->path()) != idle);
    process.terminate();
    QVERIFY(process.waitForFinished());
    QCOMPARE(process.exitStatus(), QProcess::NormalExit);
    QCOMPARE(process.exitCode(), 1);
    QCOMPARE(ToolRun::namesIn(m_folder->path()), idle);
}

void tst_PkgutilExpand::saysHowItIsUsed()
{
    for (const QStringList &arguments : {QStringList(), QStringList({QStringLiteral("--expand")}),
                                         QStringList({QStringLiteral("--unknown"), at("a"), at("b")})}) {
        const ToolRun::Result result = ToolRun::run(QStringLiteral("pkgutil"), arguments);
        QCOMPARE(result.exitCode, 2);
        QVERIFY(result.errors.startsWith("usage: pkgutil "));
    }
}

QTEST_GUILESS_MAIN(tst_PkgutilExpand)
#include "tst_PkgutilExpand.moc"
