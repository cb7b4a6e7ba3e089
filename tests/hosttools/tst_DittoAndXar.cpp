// SPDX-License-Identifier: Apache-2.0
#include "tests/hosttools/ToolRun.h"
#include "tests/support/TestFiles.h"

#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>

/// Reading single members of a package, and the scripts among them, without the payload.
class tst_DittoAndXar : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void listsMembers();
    void dumpsTheTableOfContents();
    void extractsOnlyWhatIsNamed();
    void extractsAFolderWithAllThatIsInIt();
    void extractsEverythingAndLeavesScriptsPacked();
    void readsScriptsOfAPackageWithADamagedPayload();
    void refusesMembersThatAreNotThere();
    void overwritesNothing();
    void writesThroughNoLinkInTheTargetFolder();

    void unpacksPlainAndPackedArchives_data();
    void unpacksPlainAndPackedArchives();
    void refusesDamagedArchivesAndLeavesNothing();
    void refusesAnArchiveWhoseChecksumIsWrong();

    void sayHowTheyAreUsed_data();
    void sayHowTheyAreUsed();

private:
    QString at(const char *name) const { return m_folder->path() + QLatin1Char('/') + QLatin1String(name); }
    ToolRun::Result xar(const QStringList &arguments) const
    {
        return ToolRun::run(QStringLiteral("xar"), arguments, m_folder->path());
    }
    ToolRun::Result extract(const QStringList &members) const
    {
        return xar(QStringList({QStringLiteral("-x"), QStringLiteral("-f"), QStringLiteral("in.pkg"),
                                QStringLiteral("-C"), QStringLiteral("out")}) +
                   members);
    }

    QScopedPointer<QTemporaryDir> m_folder;
};

void tst_DittoAndXar::init()
{
    m_folder.reset(new QTemporaryDir);
    ToolRun::makeVariant(QStringLiteral("signed"), at("in.pkg"));
    QVERIFY(QDir().mkdir(at("out")));
}

void tst_DittoAndXar::listsMembers()
{
    const ToolRun::Result result =
        xar({QStringLiteral("-t"), QStringLiteral("-f"), QStringLiteral("in.pkg")});
    QCOMPARE(result.exitCode, 0);
    QCOMPARE(result.output, QByteArray("Distribution\nResources\nResources/en.lproj\n"
                                       "Resources/en.lproj/Welcome.html\nResources/current\nSample.pkg\n"
                                       "Sample.pkg/PackageInfo\nSample.pkg/Bom\nSample.pkg/Payload\n"
                                       "Sample.pkg/Scripts\n"));
}

void tst_DittoAndXar::dumpsTheTableOfContents()
{
    const ToolRun::Result printed =
        xar({QStringLiteral("--dump-toc=-"), QStringLiteral("-f"), QStringLiteral("in.pkg")});
    QCOMPARE(printed.exitCode, 0);
    QVERIFY(printed.output.contains("<x-signature style=\"CMS\">"));
    QCOMPARE(
        xar({QStringLiteral("--dump-toc=toc.xml"), QStringLiteral("-f"), QStringLiteral("in.pkg")}).exitCode,
        0);
    QCOMPARE(TestFiles::read(at("toc.xml")), printed.output);
    TestFiles::outputOf(QStringLiteral("xmllint"), {QStringLiteral("--noout"), at("toc.xml")});
}

void tst_DittoAndXar::extractsOnlyWhatIsNamed()
{
    QCOMPARE(extract({QStringLiteral("Sample.pkg/Scripts"), QStringLiteral("Distribution")}).exitCode, 0);
    QCOMPARE(ToolRun::namesIn(at("out")),
             QStringList({QStringLiteral("Distribution"), QStringLiteral("Sample.pkg")}));
    QCOMPARE(ToolRun::namesIn(at("out/Sample.pkg")), QStringList({QStringLiteral("Scripts")}));
    QVERIFY(QFileInfo(at("out/Sample.pkg/Scripts")).isFile());
}

void tst_DittoAndXar::extractsAFolderWithAllThatIsInIt()
{
    QCOMPARE(extract({QStringLiteral("Resources")}).exitCode, 0);
    QCOMPARE(ToolRun::namesIn(at("out/Resources")),
             QStringList({QStringLiteral("current"), QStringLiteral("en.lproj")}));
    QVERIFY(QFileInfo(at("out/Resources/en.lproj/Welcome.html")).isFile());
}

void tst_DittoAndXar::extractsEverythingAndLeavesScriptsPacked()
{
    QCOMPARE(extract({}).exitCode, 0);
    QVERIFY(QFileInfo(at("out/Sample.pkg/Scripts")).isFile());
    QVERIFY(QFileInfo(at("out/Sample.pkg/Payload")).isFile());
}

void tst_DittoAndXar::readsScriptsOfAPackageWithADamagedPayload()
{
    ToolRun::makeVariant(QStringLiteral("wrong-extracted"), at("in.pkg"));
    QCOMPARE(extract({QStringLiteral("Sample.pkg/Scripts")}).exitCode, 0);
    QCOMPARE(extract({QStringLiteral("Sample.pkg/Payload")}).exitCode, 1);
}

void tst_DittoAndXar::refusesMembersThatAreNotThere()
{
    for (const auto *member : {"Missing", "Sample.pkg/Missing", "../in.pkg", "/etc/passwd", ""}) {
        const ToolRun::Result result = extract({QLatin1String(member)});
        QCOMPARE(result.exitCode, 1);
        QVERIFY2(ToolRun::hasOneMessage(result, QStringLiteral("xar")), result.errors.constData());
    }
    QCOMPARE(ToolRun::namesIn(at("out")), QStringList());
}

void tst_DittoAndXar::overwritesNothing()
{
    TestFiles::write(at("out/Distribution"), "keep");
    QCOMPARE(extract({QStringLiteral("Distribution")}).exitCode, 1);
    QCOMPARE(TestFiles::read(at("out/Distribution")), QByteArray("keep"));
}

void tst_DittoAndXar::writesThroughNoLinkInTheTargetFolder()
{
    QVERIFY(QDir().mkdir(at("outside")));
    QVERIFY(QFile::link(at("outside"), at("out/Sample.pkg")));
    QCOMPARE(extract({QStringLiteral("Sample.pkg/Scripts")}).exitCode, 1);
    QCOMPARE(ToolRun::namesIn(at("outside")), QStringList());
}

void tst_DittoAndXar::unpacksPlainAndPackedArchives_data()
{
    QTest::addColumn<QStringList>("options");
    const QString format = QStringLiteral("--format");
    QTest::newRow("portable, packed") << QStringList({QStringLiteral("-z"), format, QStringLiteral("odc")});
    QTest::newRow("portable, plain") << QStringList({format, QStringLiteral("odc")});
}

void tst_DittoAndXar::unpacksPlainAndPackedArchives()
{
    QFETCH(QStringList, options);
    TestFiles::writeScript(at("scripts/postinstall"), "exit 0\n");
    TestFiles::write(at("scripts/deeper/file"), "contents");
    QVERIFY(QFile::link(QStringLiteral("postinstall"), at("scripts/link")));
    TestFiles::outputOf(QStringLiteral("bsdtar"),
                        QStringList({QStringLiteral("-c"), QStringLiteral("-f"), at("packed")}) + options +
                            QStringList({QStringLiteral("-C"), at("scripts"), QStringLiteral(".")}));
    for (const auto *folder : {"new", "existing"}) {
        if (qstrcmp(folder, "existing") == 0)
            QVERIFY(QDir().mkdir(at(folder)));
        const ToolRun::Result result =
            ToolRun::run(QStringLiteral("ditto"), {QStringLiteral("-x"), at("packed"), at(folder)});
        QVERIFY2(result.exitCode == 0, result.errors.constData());
        QCOMPARE(ToolRun::contentsOf(at(folder)), ToolRun::contentsOf(at("scripts")));
        QVERIFY(QFileInfo(at(folder) + QStringLiteral("/postinstall")).isExecutable());
    }
}

void tst_DittoAndXar::refusesDamagedArchivesAndLeavesNothing()
{
    for (const QByteArray &bytes :
         {QByteArray(), QByteArray("text"), QByteArray("070707garbage").repeated(20),
          QByteArray("070701FFFFFFFF").repeated(20)}) {
        TestFiles::write(at("packed"), bytes);
        const ToolRun::Result result =
            ToolRun::run(QStringLiteral("ditto"), {QStringLiteral("-x"), at("packed"), at("unpacked")});
        QCOMPARE(result.exitCode, 1);
        QVERIFY2(ToolRun::hasOneMessage(result, QStringLiteral("ditto")), result.errors.constData());
        QVERIFY(!QFileInfo::exists(at("unpacked")));
    }
}

void tst_DittoAndXar::refusesAnArchiveWhoseChecksumIsWrong()
{
    TestFiles::writeScript(at("scripts/postinstall"), "exit 0\n");
    TestFiles::outputOf(QStringLiteral("bsdtar"),
                        {QStringLiteral("-czf"), at("packed"), QStringLiteral("--format"),
                         QStringLiteral("odc"), QStringLiteral("-C"), at("scripts"), QStringLiteral(".")});
    const QByteArray good = TestFiles::read(at("packed"));
    for (const int fromEnd : {1, 8}) { // the length and the checksum of what is packed
        QByteArray damaged = good;
        damaged[good.size() - fromEnd] = static_cast<char>(damaged.at(good.size() - fromEnd) ^ 1);
        TestFiles::write(at("packed"), damaged);
        const ToolRun::Result result =
            ToolRun::run(QStringLiteral("ditto"), {QStringLiteral("-x"), at("packed"), at("unpacked")});
        QCOMPARE(result.exitCode, 1);
        QVERIFY2(ToolRun::hasOneMessage(result, QStringLiteral("ditto")), result.errors.constData());
        QVERIFY(!QFileInfo::exists(at("unpacked")));
    }
}

void tst_DittoAndXar::sayHowTheyAreUsed_data()
{
    QTest::addColumn<QString>("tool");
    QTest::newRow("xar") << QStringLiteral("xar");
    QTest::newRow("ditto") << QStringLiteral("ditto");
}

void tst_DittoAndXar::sayHowTheyAreUsed()
{
    QFETCH(QString, tool);
    const ToolRun::Result result = ToolRun::run(tool, {QStringLiteral("-f")});
    QCOMPARE(result.exitCode, 2);
    QVERIFY(result.errors.startsWith(QByteArray("usage: " + tool.toUtf8())));
}

QTEST_GUILESS_MAIN(tst_DittoAndXar)
#include "tst_DittoAndXar.moc"
