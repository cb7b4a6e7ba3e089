// SPDX-License-Identifier: Apache-2.0
#include "tests/hosttools/ToolRun.h"
#include "tests/support/TestFiles.h"

#include <QCryptographicHash>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>
#include <QtEndian>
#include <QTest>
#include <QXmlStreamReader>

#include <sys/stat.h>
#include <unistd.h>

/// What `pkgutil --flatten` writes, and that nothing else is touched.
class tst_PkgutilFlatten : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void writesTheFormThatEveryReaderTakes();
    void putsTheLargestMemberLastAndOnAPage_data();
    void putsTheLargestMemberLastAndOnAPage();
    void isReadByOtherArchivers();
    void packsScriptsAsPortableCpio();
    void writesNamesThatXmlCannotHold();
    void makesTheSamePackageOfTheSameFolder();

    void replacesAnExistingPackageAndKeepsItsMode();
    void leavesEverythingAsItWasWhenItFails_data();
    void leavesEverythingAsItWasWhenItFails();
    void refusesTargetsThatAreNoFiles_data();
    void refusesTargetsThatAreNoFiles();
    void refusesATargetInsideTheFolder();
    void refusesAFolderThatCannotBeWritten();
    void leavesNothingBehindWhenItIsKilled();

private:
    QString at(const char *name) const { return m_folder->path() + QLatin1Char('/') + QLatin1String(name); }
    ToolRun::Result flatten(const QString &folder, const QString &package) const
    {
        return ToolRun::run(QStringLiteral("pkgutil"), {QStringLiteral("--flatten"), folder, package});
    }
    /// Flattens "tree" into "out.pkg" and gives the table of contents; fails the test when it cannot.
    QByteArray tocOfTree()
    {
        const ToolRun::Result result = flatten(at("tree"), at("out.pkg"));
        if (result.exitCode != 0)
            qFatal("%s", result.errors.constData());
        const QByteArray package = TestFiles::read(at("out.pkg"));
        return qUncompress(lengthPrefix(package) + compressedToc(package));
    }
    static QByteArray compressedToc(const QByteArray &package)
    {
        return package.mid(28, static_cast<int>(qFromBigEndian<quint64>(package.constData() + 8)));
    }
    /// qUncompress() wants the plain length, four bytes long, before a zlib stream.
    static QByteArray lengthPrefix(const QByteArray &package) { return package.mid(20, 4); }

    QScopedPointer<QTemporaryDir> m_folder;
};

namespace {

QByteArray textOf(const QByteArray &xml, const char *element)
{
    QXmlStreamReader reader(xml);
    while (!reader.atEnd())
        if (reader.readNext() == QXmlStreamReader::StartElement && reader.name() == QLatin1String(element))
            return reader.readElementText(QXmlStreamReader::IncludeChildElements).toUtf8();
    return QByteArray();
}

} // namespace

void tst_PkgutilFlatten::init()
{
    m_folder.reset(new QTemporaryDir);
    TestFiles::write(at("tree/Distribution"), "<installer-gui-script/>");
    TestFiles::write(at("tree/Sample.pkg/Payload"), QByteArray(50000, 'p'));
    TestFiles::write(at("tree/Sample.pkg/Bom"), "BOMStore");
    TestFiles::write(at("tree/Sample.pkg/PackageInfo"), "<pkg-info identifier='sample'/>");
    TestFiles::writeScript(at("tree/Sample.pkg/Scripts/postinstall"), "exit 0\n");
}

void tst_PkgutilFlatten::writesTheFormThatEveryReaderTakes()
{
    const QByteArray toc = tocOfTree();
    const QByteArray package = TestFiles::read(at("out.pkg"));
    QCOMPARE(package.left(8), QByteArray("xar!\0\x1c\0\1", 8));
    QCOMPARE(qFromBigEndian<quint64>(package.constData() + 16), quint64(toc.size()));
    QCOMPARE(qFromBigEndian<quint32>(package.constData() + 24), 1U);
    const QByteArray packed = compressedToc(package);
    QVERIFY(packed.size() > toc.size()); // stored
    QCOMPARE(package.mid(28 + packed.size(), 20), QCryptographicHash::hash(packed, QCryptographicHash::Sha1));
    QVERIFY(toc.contains("<checksum style=\"sha1\">"));
    QCOMPARE(textOf(toc, "checksum").simplified(), QByteArray("0 20"));
    QCOMPARE(toc.count("application/octet-stream"), toc.count("<data>"));
    QCOMPARE(toc.count("archived-checksum style=\"sha1\""), toc.count("<data>"));
    QCOMPARE(toc.count("extracted-checksum style=\"sha1\""), toc.count("<data>"));
    QCOMPARE(textOf(toc, "archived-checksum"), textOf(toc, "archived-checksum").toLower());
    QVERIFY(toc.indexOf("<name>Sample.pkg</name>") < toc.indexOf("<name>Bom</name>"));
}

void tst_PkgutilFlatten::putsTheLargestMemberLastAndOnAPage_data()
{
    QTest::addColumn<int>("members");
    QTest::addColumn<int>("size");
    QTest::addColumn<int>("alignment");
    // Padding that begins another stored block needs a second look.
    for (const int members :
         {1, 20, 50, 100, 101, 102, 103, 104, 105, 106, 107, 108, 109, 110, 111, 200, 400}) {
        QTest::addRow("a small one after %d others", members) << members << 50000 << 4096;
        QTest::addRow("a large one after %d others", members) << members << 1100000 << 65536;
    }
}

void tst_PkgutilFlatten::putsTheLargestMemberLastAndOnAPage()
{
    QFETCH(int, members);
    QFETCH(int, size);
    QFETCH(int, alignment);
    for (int i = 0; i < members; ++i)
        TestFiles::write(at("tree/Resources/") + QString::number(i), "resource");
    TestFiles::write(at("tree/Sample.pkg/Payload"), "THE PAYLOAD" + QByteArray(size, 'p'));
    tocOfTree();
    const QByteArray package = TestFiles::read(at("out.pkg"));
    const int payload = package.indexOf("THE PAYLOAD");
    QCOMPARE(payload % alignment, 0);
    QCOMPARE(payload + 11 + size, package.size());
}

void tst_PkgutilFlatten::isReadByOtherArchivers()
{
    tocOfTree();
    QVERIFY(QDir().mkdir(at("bsdtar")));
    TestFiles::outputOf(QStringLiteral("bsdtar"),
                        {QStringLiteral("-xf"), at("out.pkg"), QStringLiteral("-C"), at("bsdtar")});
    TestFiles::outputOf(QStringLiteral("7z"),
                        {QStringLiteral("x"), at("out.pkg"), QStringLiteral("-o") + at("7z")});
    for (const auto *reader : {"bsdtar/", "7z/"})
        for (const auto *member : {"Distribution", "Sample.pkg/Payload", "Sample.pkg/PackageInfo"})
            QCOMPARE(TestFiles::read(at(reader) + QLatin1String(member)),
                     TestFiles::read(at("tree/") + QLatin1String(member)));
}

void tst_PkgutilFlatten::packsScriptsAsPortableCpio()
{
    tocOfTree();
    const QByteArray scripts =
        TestFiles::outputOf(QStringLiteral("bsdtar"),
                            {QStringLiteral("-xOf"), at("out.pkg"), QStringLiteral("Sample.pkg/Scripts")});
    const QByteArray cpio = ToolRun::filtered(scripts, QStringLiteral("gzip"), {QStringLiteral("-dc")});
    QVERIFY(cpio.startsWith("070707"));
    QCOMPARE(ToolRun::filtered(cpio, QStringLiteral("bsdtar"), {QStringLiteral("-tf"), QStringLiteral("-")}),
             QByteArray(".\n./postinstall\n"));
}

void tst_PkgutilFlatten::writesNamesThatXmlCannotHold()
{
    const QByteArray names[] = {"plain \xc3\xa4\xe2\x82\xac & <b>", "line\nbreak", "no \xff UTF-8"};
    for (const QByteArray &name : names) {
        const QByteArray path = at("tree/Resources/").toUtf8().append(name);
        QVERIFY(QDir().mkpath(at("tree/Resources")));
        FILE *stream = fopen(path.constData(), "w");
        QVERIFY(stream != nullptr);
        QVERIFY(fputs("contents", stream) > 0 && fclose(stream) == 0);
    }
    tocOfTree();
    QCOMPARE(ToolRun::run(QStringLiteral("pkgutil"), {QStringLiteral("--expand"), at("out.pkg"), at("again")})
                 .exitCode,
             0);
    for (const QByteArray &name : names)
        QCOMPARE(access(at("again/Resources/").toUtf8().append(name).constData(), R_OK), 0);
}

void tst_PkgutilFlatten::makesTheSamePackageOfTheSameFolder()
{
    tocOfTree();
    QCOMPARE(flatten(at("tree"), at("second.pkg")).exitCode, 0);
    QCOMPARE(TestFiles::read(at("out.pkg")), TestFiles::read(at("second.pkg")));
}

void tst_PkgutilFlatten::replacesAnExistingPackageAndKeepsItsMode()
{
    TestFiles::write(at("out.pkg"), "old");
    QCOMPARE(chmod(at("out.pkg").toUtf8().constData(), 0640), 0);
    QVERIFY(!tocOfTree().isEmpty());
    struct stat status = {};
    QCOMPARE(stat(at("out.pkg").toUtf8().constData(), &status), 0);
    QCOMPARE(status.st_mode & 07777U, 0640U);
}

void tst_PkgutilFlatten::leavesEverythingAsItWasWhenItFails_data()
{
    QTest::addColumn<QString>("obstacle");
    for (const auto *obstacle : {"pipe", "absolute link", "link upwards", "missing folder",
                                 "file for a folder", "link in Scripts", "too deep"})
        QTest::newRow(obstacle) << QString::fromLatin1(obstacle);
}

void tst_PkgutilFlatten::leavesEverythingAsItWasWhenItFails()
{
    QFETCH(QString, obstacle);
    TestFiles::write(at("place/out.pkg"), "old");
    QString folder = at("tree");
    if (obstacle == QLatin1String("pipe"))
        QCOMPARE(mkfifo(at("tree/pipe").toUtf8().constData(), 0600), 0);
    else if (obstacle == QLatin1String("absolute link"))
        QVERIFY(QFile::link(QStringLiteral("/etc"), at("tree/link")));
    else if (obstacle == QLatin1String("link upwards"))
        QCOMPARE(symlink("../../etc", at("tree/Sample.pkg/link").toUtf8().constData()), 0);
    else if (obstacle == QLatin1String("link in Scripts"))
        QCOMPARE(symlink("../Payload", at("tree/Sample.pkg/Scripts/link").toUtf8().constData()), 0);
    else if (obstacle == QLatin1String("too deep"))
        QVERIFY(QDir().mkpath(at("tree/") + QStringLiteral("d/").repeated(70)));
    else
        folder = obstacle == QLatin1String("missing folder") ? at("missing") : at("tree/Distribution");

    const ToolRun::Result result = flatten(folder, at("place/out.pkg"));
    QCOMPARE(result.exitCode, 1);
    QVERIFY2(ToolRun::hasOneMessage(result, QStringLiteral("pkgutil")), result.errors.constData());
    QCOMPARE(ToolRun::namesIn(at("place")), QStringList({QStringLiteral("out.pkg")}));
    QCOMPARE(TestFiles::read(at("place/out.pkg")), QByteArray("old"));
}

void tst_PkgutilFlatten::refusesTargetsThatAreNoFiles_data()
{
    QTest::addColumn<QString>("kind");
    for (const auto *kind : {"folder", "link to a file", "dangling link", "pipe"})
        QTest::newRow(kind) << QString::fromLatin1(kind);
}

void tst_PkgutilFlatten::refusesTargetsThatAreNoFiles()
{
    QFETCH(QString, kind);
    TestFiles::write(at("victim"), "keep");
    if (kind == QLatin1String("folder"))
        QVERIFY(QDir().mkdir(at("out.pkg")));
    else if (kind == QLatin1String("pipe"))
        QCOMPARE(mkfifo(at("out.pkg").toUtf8().constData(), 0600), 0);
    else
        QVERIFY(QFile::link(kind == QLatin1String("dangling link") ? at("nowhere") : at("victim"),
                            at("out.pkg")));
    const QStringList before = ToolRun::namesIn(m_folder->path());
    const ToolRun::Result result = flatten(at("tree"), at("out.pkg"));
    QCOMPARE(result.exitCode, 1);
    QVERIFY(ToolRun::hasOneMessage(result, QStringLiteral("pkgutil")));
    QCOMPARE(ToolRun::namesIn(m_folder->path()), before);
    QCOMPARE(TestFiles::read(at("victim")), QByteArray("keep"));
}

void tst_PkgutilFlatten::refusesATargetInsideTheFolder()
{
    for (const auto *target : {"tree/out.pkg", "tree/Sample.pkg/out.pkg"}) {
        const ToolRun::Result result = flatten(at("tree"), at(target));
        QCOMPARE(result.exitCode, 1);
        QVERIFY(!QFileInfo::exists(at(target)));
    }
}

void tst_PkgutilFlatten::refusesAFolderThatCannotBeWritten()
{
    const ToolRun::Result result = flatten(at("tree"), at("missing/out.pkg"));
    QCOMPARE(result.exitCode, 1);
    QVERIFY(ToolRun::hasOneMessage(result, QStringLiteral("pkgutil")));
}

void tst_PkgutilFlatten::leavesNothingBehindWhenItIsKilled()
{
    QFile payload(at("tree/Sample.pkg/Payload"));
    QVERIFY(payload.open(QIODevice::WriteOnly) && payload.resize(400LL * 1024 * 1024));
    payload.close();
    TestFiles::write(at("place/out.pkg"), "old");
    QProcess process;
    process.start(ToolRun::path(QStringLiteral("pkgutil")),
                  {QStringLiteral("--flatten"), at("tree"), at("place/out.pkg")});
    QVERIFY(process.waitForStarted());
    QTest::qWait(30);
    process.kill();
    QVERIFY(process.waitForFinished());
    if (process.exitStatus() == QProcess::NormalExit)
        QSKIP("this machine packs 400 MiB faster than a signal arrives");
    QCOMPARE(TestFiles::read(at("place/out.pkg")), QByteArray("old"));
    // Only a file system without unnamed files may show the one in the making.
    const QStringList names = ToolRun::namesIn(at("place"));
    QVERIFY(names.contains(QStringLiteral("out.pkg")) && names.size() <= 2);
    QCOMPARE(flatten(at("tree"), at("place/out.pkg")).exitCode, 0);
}

QTEST_GUILESS_MAIN(tst_PkgutilFlatten)
#include "tst_PkgutilFlatten.moc"
