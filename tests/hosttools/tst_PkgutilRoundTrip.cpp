// SPDX-License-Identifier: Apache-2.0
#include "tests/hosttools/ToolRun.h"
#include "tests/support/TestFiles.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

/// What goes in comes out: every member that nobody has touched keeps its bytes, mode, owner and time on
/// the way through `pkgutil --expand` and `pkgutil --flatten`, for root as for anybody else.
class tst_PkgutilRoundTrip : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void keepsEveryMemberAndEveryScript_data();
    void keepsEveryMemberAndEveryScript();
    void keepsUnusualModes();
    void keepsHardLinks();
    void keepsOwnersOfUntouchedScriptsBesideAnEditedOne();
    void givesAddedFilesToRootAndKeepsTheirMode();
    void takesAModeThatWasChangedOnTheDisk();
    void worksWithoutExtendedAttributes();
    void worksAcrossFileSystems();

    void usesTheVerifiedDigestOfAnUntouchedPayload();
    void hashesAPayloadAgainThatWasTouched_data();
    void hashesAPayloadAgainThatWasTouched();

private:
    QString at(const char *name) const { return m_folder->path() + QLatin1Char('/') + QLatin1String(name); }
    void pkgutil(const char *verb, const char *from, const char *to)
    {
        const ToolRun::Result result =
            ToolRun::run(QStringLiteral("pkgutil"), {QLatin1String(verb), at(from), at(to)});
        QVERIFY2(result.exitCode == 0, result.errors.constData());
    }
    void pkgutilAsNobody(const char *verb, const char *from, const char *to);
    QStringList scriptsOf(const char *package) const;
    void makeLargePackage();

    QScopedPointer<QTemporaryDir> m_folder;
};

namespace {

QStringList without(const QStringList &lines, const char *ending)
{
    QStringList rest;
    for (const QString &line : lines)
        if (!line.endsWith(QLatin1String(ending)))
            rest.append(line);
    return rest;
}

/// The line of one member, without its size and time.
QString ownerOf(const QStringList &lines, const char *member)
{
    for (const QString &line : lines)
        if (line.endsWith(QLatin1Char(' ') + QLatin1String(member)))
            return line.simplified().section(QLatin1Char(' '), 0, 3);
    return QString();
}

/// What the folder of a file remembers of it.
QByteArray recordName(const QString &file)
{
    const QByteArray name = QFileInfo(file).fileName().toUtf8();
    return "user.pct.sha1." + QCryptographicHash::hash(name, QCryptographicHash::Sha1).toHex();
}

QByteArray rememberedDigest(const QString &file)
{
    char record[400];
    const ssize_t size = getxattr(QFileInfo(file).path().toUtf8().constData(), recordName(file).constData(),
                                  record, sizeof record);
    return size < 0 ? QByteArray() : QByteArray(record, static_cast<int>(size));
}

/// Replaces a remembered digest by forty times "a" and leaves the rest of the record valid.
void spoilRememberedDigest(const QString &file)
{
    const QByteArray record = rememberedDigest(file);
    const QByteArray spoilt = record.left(record.size() - 40) + QByteArray(40, 'a');
    if (!record.isEmpty())
        setxattr(QFileInfo(file).path().toUtf8().constData(), recordName(file).constData(),
                 spoilt.constData(), static_cast<size_t>(spoilt.size()), 0);
}

void edit(const QString &path)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadWrite) && file.write("edited") == 6);
}

/// As an editor does that keeps the times of what it edits.
void editSecretly(const QString &path)
{
    struct stat before = {};
    QCOMPARE(stat(path.toUtf8().constData(), &before), 0);
    edit(path);
    const timespec times[2] = {before.st_atim, before.st_mtim};
    QCOMPARE(utimensat(AT_FDCWD, path.toUtf8().constData(), times, 0), 0);
}

} // namespace

void tst_PkgutilRoundTrip::init()
{
    m_folder.reset(new QTemporaryDir);
    ToolRun::makeVariant(QStringLiteral("plain"), at("in.pkg"));
}

QStringList tst_PkgutilRoundTrip::scriptsOf(const char *package) const
{
    const QByteArray packed =
        TestFiles::outputOf(QStringLiteral("bsdtar"),
                            {QStringLiteral("-xOf"), at(package), QStringLiteral("Sample.pkg/Scripts")});
    const QByteArray listing =
        ToolRun::filtered(packed, QStringLiteral("bsdtar"), {QStringLiteral("-tvf"), QStringLiteral("-")});
    QStringList lines = QString::fromUtf8(listing).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    lines.sort();
    return lines;
}

void tst_PkgutilRoundTrip::pkgutilAsNobody(const char *verb, const char *from, const char *to)
{
    if (geteuid() != 0)
        return pkgutil(verb, from, to);
    TestFiles::outputOf(QStringLiteral("chown"), {QStringLiteral("65534:65534"), m_folder->path()});
    TestFiles::outputOf(QStringLiteral("setpriv"),
                        {QStringLiteral("--reuid=65534"), QStringLiteral("--regid=65534"),
                         QStringLiteral("--clear-groups"), ToolRun::path(QStringLiteral("pkgutil")),
                         QLatin1String(verb), at(from), at(to)});
}

void tst_PkgutilRoundTrip::keepsEveryMemberAndEveryScript_data()
{
    QTest::addColumn<bool>("asRoot");
    QTest::newRow("as root, who can give files away") << true;
    QTest::newRow("as anybody else") << false;
}

void tst_PkgutilRoundTrip::keepsEveryMemberAndEveryScript()
{
    QFETCH(bool, asRoot);
    if (asRoot && geteuid() != 0)
        QSKIP("this run is not root's");
    if (!asRoot && !ToolRun::keepsExtendedAttributes(m_folder->path()))
        QSKIP("this file system keeps no extended attributes");
    const auto run = [&](const char *verb, const char *from, const char *to) {
        asRoot ? pkgutil(verb, from, to) : pkgutilAsNobody(verb, from, to);
    };
    run("--expand", "in.pkg", "tree");
    run("--flatten", "tree", "out.pkg");
    // The Scripts archive is packed anew, so its size may differ; all else is as it was.
    QCOMPARE(without(ToolRun::listed(at("out.pkg")), "Scripts"),
             without(ToolRun::listed(at("in.pkg")), "Scripts"));
    QCOMPARE(ownerOf(ToolRun::listed(at("out.pkg")), "Sample.pkg/Scripts"),
             ownerOf(ToolRun::listed(at("in.pkg")), "Sample.pkg/Scripts"));
    QCOMPARE(scriptsOf("out.pkg"), scriptsOf("in.pkg"));
    QCOMPARE(scriptsOf("out.pkg").size(), 5);
    run("--expand", "out.pkg", "again");
    QCOMPARE(ToolRun::contentsOf(at("again")), ToolRun::contentsOf(at("tree")));
}

void tst_PkgutilRoundTrip::keepsUnusualModes()
{
    if (!ToolRun::keepsExtendedAttributes(m_folder->path()))
        QSKIP("this file system keeps no extended attributes");
    for (const auto *mode : {"4755", "0000", "0111", "0444"}) {
        const QString file = at("source/mode") + QLatin1String(mode);
        TestFiles::write(file, "contents");
        QCOMPARE(chmod(file.toUtf8().constData(), QByteArray(mode).toUInt(nullptr, 8)), 0);
    }
    if (geteuid() != 0)
        QSKIP("bsdtar can only read files of mode 0 as root");
    QVERIFY(QDir().mkdir(at("source/closed")));
    QCOMPARE(chmod(at("source/closed").toUtf8().constData(), 0500), 0);
    TestFiles::outputOf(QStringLiteral("bsdtar"),
                        {QStringLiteral("-cf"), at("odd.pkg"), QStringLiteral("--format"),
                         QStringLiteral("xar"), QStringLiteral("-C"), m_folder->path(),
                         QStringLiteral("source")});
    pkgutilAsNobody("--expand", "odd.pkg", "tree");
    pkgutilAsNobody("--flatten", "tree", "out.pkg");
    QCOMPARE(ToolRun::listed(at("out.pkg")), ToolRun::listed(at("odd.pkg")));
}

void tst_PkgutilRoundTrip::keepsHardLinks()
{
    ToolRun::makeVariant(QStringLiteral("shared-heap"), at("links.pkg"));
    pkgutil("--expand", "links.pkg", "tree");
    pkgutil("--flatten", "tree", "out.pkg");
    QCOMPARE(ToolRun::listed(at("out.pkg")).filter(QStringLiteral("link to")).size(), 1);
    pkgutil("--expand", "out.pkg", "again");
    QCOMPARE(ToolRun::contentsOf(at("again")), ToolRun::contentsOf(at("tree")));
}

void tst_PkgutilRoundTrip::keepsOwnersOfUntouchedScriptsBesideAnEditedOne()
{
    if (!ToolRun::keepsExtendedAttributes(m_folder->path()))
        QSKIP("this file system keeps no extended attributes");
    pkgutilAsNobody("--expand", "in.pkg", "tree");
    // As editors do it: a new file in place of the old one.
    TestFiles::write(at("new"), "#!/bin/sh\necho edited\n");
    const QByteArray script = at("tree/Sample.pkg/Scripts/postinstall").toUtf8();
    QCOMPARE(chmod(at("new").toUtf8().constData(), 0755), 0);
    QCOMPARE(rename(at("new").toUtf8().constData(), script.constData()), 0);
    pkgutilAsNobody("--flatten", "tree", "out.pkg");

    const QStringList before = scriptsOf("in.pkg");
    const QStringList after = scriptsOf("out.pkg");
    for (const auto *untouched : {"./preinstall", "./._postinstall"})
        QCOMPARE(ownerOf(after, untouched), ownerOf(before, untouched));
    QCOMPARE(ownerOf(after, "./postinstall"), QStringLiteral("-rwxr-xr-x 1 0 0"));
    QCOMPARE(ownerOf(ToolRun::listed(at("out.pkg")), "Sample.pkg/Scripts"),
             ownerOf(ToolRun::listed(at("in.pkg")), "Sample.pkg/Scripts"));
}

void tst_PkgutilRoundTrip::givesAddedFilesToRootAndKeepsTheirMode()
{
    pkgutilAsNobody("--expand", "in.pkg", "tree");
    TestFiles::write(at("tree/Sample.pkg/Scripts/added"), "added");
    TestFiles::write(at("tree/Added"), "added");
    for (const auto *added : {"tree/Sample.pkg/Scripts/added", "tree/Added"})
        QCOMPARE(chmod(at(added).toUtf8().constData(), 0604), 0);
    pkgutilAsNobody("--flatten", "tree", "out.pkg");
    QCOMPARE(ownerOf(scriptsOf("out.pkg"), "./added"), QStringLiteral("-rw----r-- 1 0 0"));
    QCOMPARE(ownerOf(ToolRun::listed(at("out.pkg")), "Added"), QStringLiteral("-rw----r-- 1 root wheel"));
}

void tst_PkgutilRoundTrip::takesAModeThatWasChangedOnTheDisk()
{
    pkgutil("--expand", "in.pkg", "tree");
    QCOMPARE(chmod(at("tree/Sample.pkg/Scripts/preinstall").toUtf8().constData(), 0700), 0);
    pkgutil("--flatten", "tree", "out.pkg");
    QVERIFY(ownerOf(scriptsOf("out.pkg"), "./preinstall").startsWith(QLatin1String("-rwx------")));
}

void tst_PkgutilRoundTrip::worksWithoutExtendedAttributes()
{
    pkgutilAsNobody("--expand", "in.pkg", "tree");
    // A plain copy is what is left of the folder on a file system without such attributes.
    TestFiles::outputOf(
        QStringLiteral("cp"),
        {QStringLiteral("-r"), QStringLiteral("--preserve=mode,timestamps"), at("tree"), at("copy")});
    if (geteuid() == 0)
        TestFiles::outputOf(QStringLiteral("chown"),
                            {QStringLiteral("-R"), QStringLiteral("65534:65534"), at("copy")});
    pkgutilAsNobody("--flatten", "copy", "out.pkg");
    QCOMPARE(ownerOf(ToolRun::listed(at("out.pkg")), "Sample.pkg/Payload"),
             QStringLiteral("-rw-r----- 1 root wheel"));
    QVERIFY(ownerOf(scriptsOf("out.pkg"), "./preinstall").startsWith(QLatin1String("-rwx--x--x 1 0 0")));
    pkgutil("--expand", "out.pkg", "again");
    QCOMPARE(ToolRun::contentsOf(at("again")), ToolRun::contentsOf(at("tree")));
}

void tst_PkgutilRoundTrip::worksAcrossFileSystems()
{
    QTemporaryDir inMemory(QStringLiteral("/dev/shm/tst_PkgutilRoundTrip-XXXXXX"));
    struct stat here = {};
    struct stat there = {};
    if (!inMemory.isValid() || stat(m_folder->path().toUtf8().constData(), &here) != 0 ||
        stat(inMemory.path().toUtf8().constData(), &there) != 0 || here.st_dev == there.st_dev)
        QSKIP("there is no second file system to try");
    makeLargePackage();
    const auto run = [](const char *verb, const QString &from, const QString &to) {
        return ToolRun::run(QStringLiteral("pkgutil"), {QLatin1String(verb), from, to}).exitCode;
    };
    QCOMPARE(run("--expand", at("large.pkg"), inMemory.filePath(QStringLiteral("tree"))), 0);
    QCOMPARE(run("--flatten", inMemory.filePath(QStringLiteral("tree")), at("out.pkg")), 0);
    QCOMPARE(run("--expand", at("out.pkg"), at("again")), 0);
    QCOMPARE(ToolRun::contentsOf(at("again")), ToolRun::contentsOf(at("tree")));
}

void tst_PkgutilRoundTrip::makeLargePackage()
{
    TestFiles::write(at("source/Payload"), QByteArray(9000000, 'p'));
    TestFiles::outputOf(QStringLiteral("bsdtar"),
                        {QStringLiteral("-cf"), at("large.pkg"), QStringLiteral("--format"),
                         QStringLiteral("xar"), QStringLiteral("--options"),
                         QStringLiteral("xar:compression=none"), QStringLiteral("-C"), at("source"),
                         QStringLiteral("Payload")});
    pkgutil("--expand", "large.pkg", "tree");
}

void tst_PkgutilRoundTrip::usesTheVerifiedDigestOfAnUntouchedPayload()
{
    if (!ToolRun::keepsExtendedAttributes(m_folder->path()))
        QSKIP("this file system keeps no extended attributes");
    makeLargePackage();
    const QString payload = at("tree/Payload");
    const QByteArray right =
        QCryptographicHash::hash(TestFiles::read(payload), QCryptographicHash::Sha1).toHex();
    QVERIFY(rememberedDigest(payload).endsWith(right));
    spoilRememberedDigest(payload); // that it comes out shows that the file was not hashed
    pkgutil("--flatten", "tree", "out.pkg");
    QVERIFY(TestFiles::read(at("out.pkg")).contains(QByteArray(40, 'a')));
}

void tst_PkgutilRoundTrip::hashesAPayloadAgainThatWasTouched_data()
{
    QTest::addColumn<QString>("touch");
    for (const auto *touch : {"edited", "edited, its time put back", "another time", "another mode",
                              "copied with its attributes"})
        QTest::newRow(touch) << QString::fromLatin1(touch);
}

void tst_PkgutilRoundTrip::hashesAPayloadAgainThatWasTouched()
{
    QFETCH(QString, touch);
    makeLargePackage();
    const QString payload = at("tree/Payload");
    spoilRememberedDigest(payload); // were it used, it would come out
    if (touch == QLatin1String("edited")) {
        edit(payload);
    } else if (touch == QLatin1String("edited, its time put back")) {
        editSecretly(payload);
    } else if (touch == QLatin1String("another mode")) {
        QCOMPARE(chmod(payload.toUtf8().constData(), 0600), 0);
    } else if (touch == QLatin1String("another time")) {
        TestFiles::outputOf(QStringLiteral("touch"),
                            {QStringLiteral("-d"), QStringLiteral("2001-01-01"), payload});
    } else {
        TestFiles::outputOf(QStringLiteral("cp"), {QStringLiteral("-a"), payload, at("copy")});
        QCOMPARE(rename(at("copy").toUtf8().constData(), payload.toUtf8().constData()), 0);
    }
    pkgutil("--flatten", "tree", "out.pkg");
    QVERIFY(!TestFiles::read(at("out.pkg")).contains(QByteArray(40, 'a')));
    // bsdtar verifies the checksum while it reads.
    QCOMPARE(TestFiles::outputOf(QStringLiteral("bsdtar"),
                                 {QStringLiteral("-xOf"), at("out.pkg"), QStringLiteral("Payload")}),
             TestFiles::read(payload));
}

QTEST_GUILESS_MAIN(tst_PkgutilRoundTrip)
#include "tst_PkgutilRoundTrip.moc"
