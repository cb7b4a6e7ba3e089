// SPDX-License-Identifier: Apache-2.0
#include "config/Product.h"
#include "package/PackageInspection.h"
#include "tests/package/FakeTools.h"
#include "tests/package/VendorScripts.h"
#include "tests/support/TestFiles.h"

#include <QTemporaryDir>
#include <QtTest>

#include <memory>

namespace {

QStringList codesOf(const QList<BuildWarning> &warnings)
{
    QStringList codes;
    for (const BuildWarning &warning : warnings)
        codes.append(warning.code);
    return codes;
}

} // namespace

class tst_PackageInspection : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        m_tools = std::make_unique<FakeTools>();
        TestFiles::write(at("Scripts/preinstall"), VendorScripts::preinstall());
        TestFiles::write(at("Scripts/postinstall"), VendorScripts::postinstall());
    }

    void cleanup() { m_tools.reset(); }

    void vendorScriptsOfferEverything()
    {
        for (const QString &folder : {at("Scripts"), at("Scripts/")}) {
            const ScriptsInspection scripts = inspectScripts(folder);
            QCOMPARE(scripts.version, QStringLiteral("13.1.2"));
            QVERIFY(!scripts.customizedBefore);
            QCOMPARE(scripts.preinstallProblem, QString());
            QCOMPARE(scripts.postinstallProblem, QString());
            QCOMPARE(scripts.documentSwitches, 1);
            QCOMPARE(scripts.viewerSwitches, 1);
            QCOMPARE(scripts.preferenceLists, 1);
            QVERIFY(warningsAbout(scripts, true, true).isEmpty());
        }
    }

    void inspectingChangesNothing()
    {
        inspectScripts(at("Scripts"));
        QCOMPARE(TestFiles::read(at("Scripts/preinstall")), VendorScripts::preinstall());
        QCOMPARE(TestFiles::read(at("Scripts/postinstall")), VendorScripts::postinstall());
    }

    void linesWithASwitchAreCounted()
    {
        TestFiles::write(at("Scripts/postinstall"), "editorXmlFileCopy=0; editorXmlFileCopy=0\n"
                                                    " export editorXmlFileCopy=0\n"
                                                    "plistValue=\nplistValue='x'\nplistValue=\"\"\n");
        const ScriptsInspection scripts = inspectScripts(at("Scripts"));
        QCOMPARE(scripts.documentSwitches, 2);
        QCOMPARE(scripts.viewerSwitches, 0);
        QCOMPARE(scripts.preferenceLists, 1);
    }

    void aVersionThatNoDocumentCanHoldIsNoneAndWarnedAbout_data()
    {
        QTest::addColumn<QByteArray>("lines");
        QTest::addColumn<QString>("version");
        QTest::newRow("control character") << QByteArray("bigversion=\"13\x01\"\n") << QString();
        QTest::newRow("terminal's escape") << QByteArray("bigversion=\x1b[2J13\n") << QString();
        QTest::newRow("noncharacter") << QByteArray("bigversion=13\xef\xbf\xbf\n") << QString();
        QTest::newRow("the other one is fine")
            << QByteArray("bigversion=13\x02\nnewVersion=13.1.9\n") << QStringLiteral("13.1");
        QTest::newRow("newVersion") << QByteArray("newVersion=13.\x02\n") << QString();
    }

    void aVersionThatNoDocumentCanHoldIsNoneAndWarnedAbout()
    {
        QFETCH(QByteArray, lines);
        QFETCH(QString, version);
        const QByteArray switches = "\neditorXmlFileCopy=0\nsetdefaultpdf=0\nplistValue=\"\"\n";
        TestFiles::write(at("Scripts/postinstall"), "#!/bin/sh\n" + lines + switches);
        const ScriptsInspection scripts = inspectScripts(at("Scripts"));
        QCOMPARE(scripts.version, version);
        QCOMPARE(codesOf(warningsAbout(scripts, true, true)).first(), QStringLiteral("version-unusable"));
        TestFiles::write(at("Scripts/postinstall"), "#!/bin/sh\nbigversion=13\n" + switches);
        QVERIFY(!codesOf(warningsAbout(inspectScripts(at("Scripts")), true, true))
                     .contains(QStringLiteral("version-unusable")));
    }

    void missingSwitchesAreWarnedAboutOnlyWhenTheyAreWanted_data()
    {
        QTest::addColumn<bool>("viewer");
        QTest::addColumn<bool>("iManage");
        QTest::addColumn<QStringList>("codes");
        const QString document = QStringLiteral("document-switch-missing");
        const QString viewer = QStringLiteral("viewer-switch-missing");
        const QString preference = QStringLiteral("preference-list-missing");
        QTest::newRow("neither") << false << false << QStringList{document};
        QTest::newRow("viewer") << true << false << QStringList{document, viewer};
        QTest::newRow("iManage") << false << true << QStringList{document, preference};
        QTest::newRow("both") << true << true << QStringList{document, viewer, preference};
    }

    void missingSwitchesAreWarnedAboutOnlyWhenTheyAreWanted()
    {
        QFETCH(bool, viewer);
        QFETCH(bool, iManage);
        QTEST(codesOf(warningsAbout(ScriptsInspection(), viewer, iManage)), "codes");
    }

    void everyWarningIsASentence()
    {
        PackageInspection package;
        package.signedByVendor = true;
        package.scripts.preinstallProblem = QStringLiteral("no anchor");
        package.scripts.postinstallProblem = QStringLiteral("no line");
        const QList<BuildWarning> warnings = warningsAbout(package, true, true);
        QCOMPARE(
            codesOf(warnings),
            QStringList({QStringLiteral("signature-dropped"), QStringLiteral("document-switch-missing"),
                         QStringLiteral("viewer-switch-missing"), QStringLiteral("preference-list-missing"),
                         QStringLiteral("preinstall-unpatched"), QStringLiteral("postinstall-unpatched")}));
        for (const BuildWarning &warning : warnings)
            QVERIFY(!warning.text.isEmpty() && !warning.text.contains(QLatin1Char('\n')));
        QVERIFY(warnings.at(4).text.endsWith(QStringLiteral("no anchor")));
        QVERIFY(warnings.at(5).text.endsWith(QStringLiteral("no line")));
    }

    void scriptsThatCannotBePatchedSayWhy()
    {
        TestFiles::write(at("Scripts/preinstall"), "#!/bin/sh\n");
        TestFiles::write(at("Scripts/postinstall"),
                         "appdatePath=\"$HOME/Library/Application Support/Pelix Software/"
                         "${ApplicationDataType}/${ApplicationName}\"\n");
        const ScriptsInspection scripts = inspectScripts(at("Scripts"));
        QCOMPARE(scripts.preinstallProblem, QStringLiteral("anchor is not unique: [mydir=`pwd`], count=0"));
        QCOMPARE(scripts.postinstallProblem,
                 QStringLiteral("the line that sets appdatePath is the first one"));
    }

    void aDocumentInTheScriptsTellsOfAnEarlierCustomization()
    {
        QVERIFY(QFile::link(at("nowhere"), at("Scripts/ProfStore.xml")));
        QVERIFY(inspectScripts(at("Scripts")).customizedBefore);
    }

    void linksAreNotFollowed()
    {
        QVERIFY(QFile::link(at("Scripts"), at("link")));
        const ScriptsInspection linkedFolder = inspectScripts(at("link/"));
        QVERIFY(linkedFolder.version.isEmpty() && !linkedFolder.preinstallProblem.isEmpty());
        QVERIFY(QFile::rename(at("Scripts/postinstall"), at("outside")));
        QVERIFY(QFile::link(at("outside"), at("Scripts/postinstall")));
        const ScriptsInspection linkedScript = inspectScripts(at("Scripts"));
        QCOMPARE(linkedScript.postinstallProblem, QStringLiteral("is a link"));
        QCOMPARE(linkedScript.documentSwitches, 0);
    }

    void nothingAtAllReadsAsScriptsThatCannotBePatched()
    {
        const ScriptsInspection scripts = inspectScripts(at("missing"));
        QVERIFY(!scripts.preinstallProblem.isEmpty());
        QVERIFY(!scripts.postinstallProblem.isEmpty());
        QVERIFY(!scripts.customizedBefore);
    }

    void aSignatureIsFoundInTheTableOfContents_data()
    {
        QTest::addColumn<QByteArray>("contents");
        QTest::addColumn<bool>("isSigned");
        QTest::newRow("none") << QByteArray("<xar><toc><file><name>a</name></file></toc></xar>") << false;
        QTest::newRow("signature") << QByteArray("<xar><toc><signature style='RSA'/></toc></xar>") << true;
        QTest::newRow("x-signature") << QByteArray("<xar><toc><file/><x-signature/></toc></xar>") << true;
        QTest::newRow("of a file") << QByteArray("<xar><toc><file><signature/></file></toc></xar>") << false;
        QTest::newRow("outside") << QByteArray("<xar><toc/><signature/></xar>") << false;
    }

    void aSignatureIsFoundInTheTableOfContents()
    {
        QFETCH(QByteArray, contents);
        QFETCH(bool, isSigned);
        addXarWithContents(contents);
        const Result<bool> found = ::isSigned(at("a.pkg"), m_folder->path());
        QVERIFY(found);
        QCOMPARE(*found, isSigned);
        QCOMPARE(m_tools->calls(QStringLiteral("xar")).first(),
                 QStringList({QStringLiteral("--dump-toc=") + at("contents.xml"), QStringLiteral("-f"),
                              at("a.pkg")}));
    }

    void contentsThatCannotBeReadAreAnError_data()
    {
        QTest::addColumn<QByteArray>("xar");
        QTest::newRow("tool failed") << QByteArray("exit 1\n");
        QTest::newRow("no file") << QByteArray("exit 0\n");
        QTest::newRow("broken") << QByteArray("printf '<xar><toc><file>' > \"${1#--dump-toc=}\"\n");
        QTest::newRow("empty") << QByteArray(": > \"${1#--dump-toc=}\"\n");
    }

    void contentsThatCannotBeReadAreAnError()
    {
        QFETCH(QByteArray, xar);
        m_tools->add(QStringLiteral("xar"), xar);
        const Result<bool> found = isSigned(at("a.pkg"), m_folder->path());
        QVERIFY(!found);
        QVERIFY(!found.problem().line().isEmpty());
        const Result<PackageInspection> inspected =
            inspectPackage(at("a.pkg"), Product::editor(), m_folder->path());
        QVERIFY(!inspected);
        QVERIFY(!inspected.problem().line().isEmpty());
    }

    void onlyTheScriptsOfTheProductAreUnpacked()
    {
        addUnpackingTools();
        const QTemporaryDir into;
        const Result<QString> scripts = extractScripts(at("a.pkg"), Product::reader(), into.path());
        QVERIFY(scripts);
        QCOMPARE(*scripts, into.filePath(QStringLiteral("Scripts")));
        const QString member = QStringLiteral("Pelix_PDF_Reader.pkg/Scripts");
        QCOMPARE(m_tools->calls(QStringLiteral("xar")),
                 QList<QStringList>({{QStringLiteral("-x"), QStringLiteral("-f"), at("a.pkg"),
                                      QStringLiteral("-C"), into.path(), member}}));
        QCOMPARE(m_tools->calls(QStringLiteral("ditto")),
                 QList<QStringList>({{QStringLiteral("-x"), into.filePath(member),
                                      into.filePath(QStringLiteral("Scripts"))}}));
        QCOMPARE(inspectScripts(into.filePath(QStringLiteral("Scripts"))).version, QStringLiteral("13.1.2"));
    }

    void aPackageIsInspectedAsAWhole()
    {
        addUnpackingTools();
        const QTemporaryDir folder;
        const Result<PackageInspection> package =
            inspectPackage(at("a.pkg"), Product::editor(), folder.path());
        QVERIFY(package);
        QVERIFY(package->signedByVendor);
        QCOMPARE(package->scripts.version, QStringLiteral("13.1.2"));
    }

    void scriptsThatCannotBeUnpackedAreAnError_data()
    {
        QTest::addColumn<QByteArray>("xar");
        QTest::addColumn<QByteArray>("ditto");
        const QByteArray extract = "mkdir -p \"$5/${6%/*}\" && echo x > \"$5/$6\"\n";
        QTest::newRow("xar failed") << QByteArray("exit 1\n") << QByteArray("exit 0\n");
        QTest::newRow("no such member") << QByteArray("exit 0\n") << QByteArray("mkdir \"$3\"\n");
        QTest::newRow("member is a link")
            << QByteArray("mkdir -p \"$5/${6%/*}\" && ln -s /etc/passwd \"$5/$6\"\n")
            << QByteArray("mkdir \"$3\"\n");
        QTest::newRow("component is a link")
            << QByteArray("mkdir \"$5/real\" && ln -s real \"$5/${6%/*}\" && echo x > \"$5/$6\"\n")
            << QByteArray("mkdir \"$3\"\n");
        QTest::newRow("ditto failed") << extract << QByteArray("mkdir \"$3\"; exit 1\n");
        QTest::newRow("nothing unpacked") << extract << QByteArray("exit 0\n");
        QTest::newRow("unpacked a link") << extract << QByteArray("ln -s / \"$3\"\n");
    }

    void scriptsThatCannotBeUnpackedAreAnError()
    {
        QFETCH(QByteArray, xar);
        QFETCH(QByteArray, ditto);
        m_tools->add(QStringLiteral("xar"), xar);
        m_tools->add(QStringLiteral("ditto"), ditto);
        const QTemporaryDir into;
        const Result<QString> scripts = extractScripts(at("a.pkg"), Product::editor(), into.path());
        QVERIFY(!scripts);
        QVERIFY(!scripts.problem().line().isEmpty());
    }

private:
    QString at(const char *name) const { return m_folder->filePath(QString::fromLatin1(name)); }

    void addXarWithContents(const QByteArray &contents)
    {
        m_tools->add(QStringLiteral("xar"), "cat > \"${1#--dump-toc=}\" <<'END'\n" + contents + "\nEND\n");
    }

    void addUnpackingTools()
    {
        m_tools->add(QStringLiteral("xar"),
                     "case $1 in\n"
                     "--dump-toc=*) echo '<xar><toc><signature/></toc></xar>' > \"${1#--dump-toc=}\" ;;\n"
                     "-x) mkdir \"$5/${6%/*}\" && echo archive > \"$5/$6\" ;;\n"
                     "esac\n");
        m_tools->add(QStringLiteral("ditto"),
                     "[ -f \"$2\" ] && cp -R '" + QFile::encodeName(at("Scripts")) + "' \"$3\"\n");
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<FakeTools> m_tools;
};

QTEST_GUILESS_MAIN(tst_PackageInspection)
#include "tst_PackageInspection.moc"
