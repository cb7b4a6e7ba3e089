// SPDX-License-Identifier: Apache-2.0
#include "config/CCommon.h"
#include "config/EditorXmlData.h"
#include "config/Product.h"
#include "core/HostPaths.h"
#include "package/FlatPackage.h"
#include "package/PackageBuild.h"
#include "resources/Resources.h"
#include "tests/support/Archive.h"
#include "tests/support/TestFiles.h"

#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

#include <algorithm>
#include <sys/stat.h>
#include <utility>

namespace {

/// One product's sample installer, what is built from it, and both taken apart by another program than ours.
struct Sample
{
    bool editor;
    QString name;
    QString component;
    QString input;
    QString output;
    QString document;
    QString before;
    QString after;
    BuildReport report;

    QString scripts() const { return after + QStringLiteral("/unpacked scripts/"); }
};

void takeApart(const QString &package, const QString &component, const QString &folder)
{
    Archive::unpack(package, folder);
    Archive::unpack(folder + QLatin1Char('/') + component + QStringLiteral("/Scripts"),
                    folder + QStringLiteral("/unpacked scripts"));
}

/// How an install script ended, run with bash among stand-ins for the commands of a Mac.
struct ScriptRun
{
    int exitCode = -1;
    QString output;
};

ScriptRun runScript(const QString &script, const QStringList &environment)
{
    QProcess process;
    process.setEnvironment(QProcess::systemEnvironment() + environment);
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(QStringLiteral(PCT_RUN_INSTALL_SCRIPT), {script});
    process.waitForFinished(-1);
    return {process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1,
            QString::fromUtf8(process.readAll())};
}

} // namespace

/// Whole builds of the sample installers with the commands of this machine.
class tst_PackageBuild : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        initPctResources();
        HostPaths::putStandInsFirst();
        m_products = {makeProduct(true), makeProduct(false)};
        for (const Sample &product : std::as_const(m_products))
            QVERIFY2(product.report.succeeded(),
                     qPrintable(product.report.failedStep + QStringLiteral(": ") + product.report.problem));
    }

    void aBuildOfAVendorPackageHasNothingToWarnAbout_data() { addProducts(); }
    void aBuildOfAVendorPackageHasNothingToWarnAbout()
    {
        for (const BuildWarning &warning : product().report.warnings)
            QFAIL(qPrintable(warning.text));
        QVERIFY(!product().report.productVersion.isEmpty());
        QVERIFY(!QFileInfo::exists(m_folder.filePath(product().name + QStringLiteral(" work"))));
    }

    void everyMemberKeepsModeOwnerAndTime_data() { addProducts(); }
    void everyMemberKeepsModeOwnerAndTime()
    {
        const QStringList scripts = {QStringLiteral("/Scripts")};
        const QStringList before = Archive::listing(product().input, scripts);
        QVERIFY(before.size() > 5);
        QCOMPARE(Archive::listing(product().output, scripts), before);
    }

    void untouchedMembersAreTheSameBitForBit_data() { addProducts(); }
    void untouchedMembersAreTheSameBitForBit()
    {
        QStringList names = Archive::filesBelow(product().before);
        names.removeAll(product().component + QStringLiteral("/Scripts"));
        names.removeAll(QStringLiteral("unpacked scripts/preinstall"));
        names.removeAll(QStringLiteral("unpacked scripts/postinstall"));
        for (const char *needed : {"Payload", "Bom", "PackageInfo"})
            QVERIFY(names.contains(product().component + QLatin1Char('/') + QString::fromLatin1(needed)));
        QVERIFY(names.contains(QStringLiteral("unpacked scripts/._postinstall")));
        for (const QString &name : std::as_const(names))
            TestFiles::outputOf(QStringLiteral("cmp"), {product().before + QLatin1Char('/') + name,
                                                        product().after + QLatin1Char('/') + name});
    }

    void scriptsKeepTheirNeighboursModesAndLinks_data() { addProducts(); }
    void scriptsKeepTheirNeighboursModesAndLinks()
    {
        const QStringList changed = {QStringLiteral(" ."),
                                     QStringLiteral(" ./"),
                                     QStringLiteral("/preinstall"),
                                     QStringLiteral("/postinstall"),
                                     QStringLiteral("/ProfStore.xml"),
                                     QStringLiteral("/duti")};
        const QString member = QLatin1Char('/') + product().component + QStringLiteral("/Scripts");
        const QStringList before = Archive::listing(product().before + member, changed);
        QVERIFY(before.join(QLatin1Char('\n')).contains(QStringLiteral(" -> ")));
        QCOMPARE(Archive::listing(product().after + member, changed), before);
        QCOMPARE(modeOf("postinstall"), 0711u);
        QCOMPARE(modeOf("preinstall"), 0755u);
        QVERIFY((modeOf("duti") & 0111u) == 0111u);
    }

    void onlyTheDocumentAndTheViewerToolAreNew_data() { addProducts(); }
    void onlyTheDocumentAndTheViewerToolAreNew()
    {
        QStringList expected = Archive::filesBelow(product().before);
        expected << QStringLiteral("unpacked scripts/ProfStore.xml")
                 << QStringLiteral("unpacked scripts/duti");
        expected.sort();
        QCOMPARE(Archive::filesBelow(product().after), expected);
    }

    void theDocumentIsWellFormedAndTheOneThatWasKept_data() { addProducts(); }
    void theDocumentIsWellFormedAndTheOneThatWasKept()
    {
        const QString document = product().scripts() + QStringLiteral("ProfStore.xml");
        TestFiles::outputOf(QStringLiteral("xmllint"), {QStringLiteral("--noout"), document});
        TestFiles::outputOf(QStringLiteral("cmp"), {document, product().document});
        const QByteArray root = TestFiles::outputOf(
            QStringLiteral("xmllint"), {QStringLiteral("--xpath"), QStringLiteral("name(/*)"), document});
        QCOMPARE(root.trimmed(), QByteArray("PelixPDF") + product().name.toUtf8());
    }

    void theSwitchesOfPostinstallAreOn_data() { addProducts(); }
    void theSwitchesOfPostinstallAreOn()
    {
        const QByteArray script = TestFiles::read(product().scripts() + QStringLiteral("postinstall"));
        QVERIFY(script.contains("\neditorXmlFileCopy=1\n"));
        QVERIFY(script.contains("\nsetdefaultpdf=1\n"));
        QVERIFY(script.contains("\nplistValue=\"iManage10/loginMethod/UseOAuth2:1;"));
    }

    void patchedScriptsRun_data()
    {
        QTest::addColumn<int>("productIndex");
        QTest::addColumn<QString>("consoleUser");
        QTest::addColumn<QString>("deviceOwner");
        QTest::addColumn<QString>("home");
        QTest::addColumn<QString>("refusal");
        const QString noUser = QStringLiteral("Failed to get current logged-in user.");
        const QString noHome = QStringLiteral("Failed to get current user home.");
        for (int i = 0; i < m_products.size(); ++i) {
            const auto row = [&](const char *what, const char *user, const char *owner, const char *home,
                                 const QString &refusal) {
                QTest::newRow(
                    qPrintable(m_products.at(i).name + QStringLiteral(", ") + QString::fromLatin1(what)))
                    << i << QString::fromLatin1(user) << QString::fromLatin1(owner)
                    << QString::fromLatin1(home) << refusal;
            };
            row("logged-in user", "anna", "anna", "home", {});
            row("nobody logged in", "", "root", "home", noUser);
            row("only the console's owner is known", "", "anna", "home", {});
            row("loginwindow", "loginwindow", "root", "home", noUser);
            row("loginwindow over a session", "loginwindow", "anna", "home", {});
            row("_mbsetupuser", "_mbsetupuser", "_mbsetupuser", "home", noUser);
            row("_mbsetupuser over a session", "_mbsetupuser", "anna", "home", {});
            row("root", "root", "root", "home", noUser);
            row("home does not exist", "anna", "anna", "missing", noHome);
            row("no home at all", "anna", "anna", "", noHome);
        }
    }

    void patchedScriptsRun()
    {
        QFETCH(QString, consoleUser);
        QFETCH(QString, deviceOwner);
        QFETCH(QString, home);
        QFETCH(QString, refusal);
        const QTemporaryDir folder;
        QVERIFY(QDir(folder.path()).mkdir(QStringLiteral("home")));
        const QString userHome = home.isEmpty() ? QString() : folder.filePath(home);
        const QStringList environment = {
            QStringLiteral("SANDBOX_CONSOLE_USER=") + consoleUser,
            QStringLiteral("SANDBOX_STAT_USER=") + deviceOwner, QStringLiteral("SANDBOX_HOME=") + userHome,
            QStringLiteral("SANDBOX_LOG=") + folder.filePath(QStringLiteral("log")),
            QStringLiteral("SANDBOX_WORK_FOLDER=/")};
        for (const char *name : {"preinstall", "postinstall"}) {
            const ScriptRun run = runScript(product().scripts() + QString::fromLatin1(name), environment);
            QVERIFY2(run.exitCode == (refusal.isEmpty() ? 0 : 1), qPrintable(run.output));
            QVERIFY2(run.output.contains(refusal.isEmpty() ? QStringLiteral("currentuser: anna") : refusal),
                     qPrintable(run.output));
        }
        if (refusal.isEmpty())
            checkInstalled(userHome, TestFiles::read(folder.filePath(QStringLiteral("log"))));
        else
            QVERIFY(Archive::filesBelow(folder.filePath(QStringLiteral("home"))).isEmpty());
    }

    void aPackageThatWasBuiltIsNotBuiltFromAgain_data() { addProducts(); }
    void aPackageThatWasBuiltIsNotBuiltFromAgain()
    {
        BuildPlan plan = planFor(product());
        plan.inputPackage = product().output;
        plan.outputPackage = m_folder.filePath(QStringLiteral("again.pkg"));
        const BuildReport report = buildPackage(plan);
        QCOMPARE(report.failedStep, QStringLiteral("add the configuration document"));
        QVERIFY(!QFileInfo::exists(plan.outputPackage));
    }

    void aTruncatedPackageFailsAndLeavesTheOldOutput()
    {
        const Sample &editor = m_products.first();
        const QByteArray bytes = TestFiles::read(editor.input);
        BuildPlan plan = planFor(editor);
        plan.inputPackage = m_folder.filePath(QStringLiteral("truncated.pkg"));
        plan.outputPackage = m_folder.filePath(QStringLiteral("old.pkg"));
        TestFiles::write(plan.inputPackage, bytes.left(bytes.size() / 2));
        TestFiles::write(plan.outputPackage, "old output");
        const BuildReport report = buildPackage(plan);
        QCOMPARE(report.failedStep, QStringLiteral("expand the package"));
        QVERIFY(!report.problem.isEmpty());
        QCOMPARE(TestFiles::read(plan.outputPackage), QByteArray("old output"));
    }

    void thePackageOfTheOtherProductIsRefused()
    {
        BuildPlan plan = planFor(m_products.first());
        plan.inputPackage = m_products.last().input;
        plan.outputPackage = m_folder.filePath(QStringLiteral("other.pkg"));
        QCOMPARE(buildPackage(plan).failedStep, QStringLiteral("inspect the expanded package"));
        QVERIFY(!QFileInfo::exists(plan.outputPackage));
    }

    void aPackageIsTheInstallerOfItsProductOnly_data() { addProducts(); }
    void aPackageIsTheInstallerOfItsProductOnly()
    {
        for (const QString &package : {product().input, product().output}) {
            QVERIFY(CCommon::CheckPkg(package, product().editor));
            QVERIFY(!CCommon::CheckPkg(package, !product().editor));
        }
    }

    void aFileThatIsNoPackageIsNobodysInstaller()
    {
        const QString file = m_folder.filePath(QStringLiteral("Pelix PDF Editor and Pelix PDF Reader.pkg"));
        TestFiles::write(file, "Pelix PDF Editor, Pelix PDF Reader");
        QVERIFY(!CCommon::CheckPkg(file, true));
        QVERIFY(!CCommon::CheckPkg(file, false));
    }

    void expandingIntoAFolderThatExistsReportsSuccessAndChangesNothing()
    {
        const QTemporaryDir folder;
        QVERIFY(CCommon::ExpandPkg(m_products.first().input, folder.path()));
        QVERIFY(!FlatPackage::expand(m_products.first().input, folder.path()));
        QVERIFY(QDir(folder.path()).isEmpty());
    }

    void aPackageIsInspectedBeforeAndAfterABuild_data() { addProducts(); }
    void aPackageIsInspectedBeforeAndAfterABuild()
    {
        const ScriptsInspection before = inspect(product().input);
        QCOMPARE(before.version, product().report.productVersion);
        QVERIFY(!before.customizedBefore && before.preinstallProblem.isEmpty() &&
                before.postinstallProblem.isEmpty());
        QCOMPARE(before.documentSwitches + before.viewerSwitches + before.preferenceLists, 3);
        const ScriptsInspection after = inspect(product().output);
        QVERIFY(after.customizedBefore && !after.preinstallProblem.isEmpty());
        QCOMPARE(after.documentSwitches + after.viewerSwitches, 0);
    }

    void aFileThatIsNoPackageCannotBeInspected()
    {
        const QString file = m_folder.filePath(QStringLiteral("text.pkg"));
        TestFiles::write(file, "no package");
        const QTemporaryDir folder;
        const Result<PackageInspection> inspected = inspectPackage(file, Product::editor(), folder.path());
        QVERIFY(!inspected);
        QVERIFY(!inspected.problem().line().isEmpty());
        QVERIFY(!extractScripts(m_products.first().input, Product::reader(), folder.path()));
    }

private:
    BuildPlan planFor(const Sample &product) const
    {
        BuildPlan plan;
        plan.inputPackage = product.input;
        plan.outputPackage = product.output;
        plan.documentPath = product.document;
        plan.workFolder = m_folder.filePath(product.name + QStringLiteral(" work"));
        plan.product = &Product::of(product.editor);
        plan.collectSettings = [] { return PackageSettings{{}, true, true}; };
        return plan;
    }

    Sample makeProduct(bool editor) const
    {
        Sample product;
        product.editor = editor;
        product.name = editor ? QStringLiteral("Editor") : QStringLiteral("Reader");
        product.component = QStringLiteral("Pelix_PDF_%1.pkg").arg(product.name);
        product.input = QStringLiteral(PCT_SAMPLES_DIR "/Pelix PDF %1.pkg").arg(product.name);
        product.output = m_folder.filePath(product.name + QStringLiteral(" out.pkg"));
        product.document = m_folder.filePath(product.name + QStringLiteral(" kept.xml"));
        product.before = m_folder.filePath(product.name + QStringLiteral(" before"));
        product.after = m_folder.filePath(product.name + QStringLiteral(" after"));
        product.report = buildPackage(planFor(product));
        if (product.report.succeeded()) {
            takeApart(product.input, product.component, product.before);
            takeApart(product.output, product.component, product.after);
        }
        return product;
    }

    void addProducts() const
    {
        QTest::addColumn<int>("productIndex");
        for (int i = 0; i < m_products.size(); ++i)
            QTest::newRow(qPrintable(m_products.at(i).name)) << i;
    }

    const Sample &product() const
    {
        QFETCH(int, productIndex);
        return m_products.at(productIndex);
    }

    unsigned modeOf(const char *script) const
    {
        struct stat status = {};
        const QString path = product().scripts() + QString::fromLatin1(script);
        return ::stat(QFile::encodeName(path).constData(), &status) == 0 ? status.st_mode & 07777 : 0;
    }

    ScriptsInspection inspect(const QString &package) const
    {
        const QTemporaryDir folder;
        const Result<PackageInspection> inspection =
            inspectPackage(package, Product::of(product().editor), folder.path());
        if (!inspection)
            qFatal("cannot inspect %s: %s", qPrintable(package), qPrintable(inspection.problem().line()));
        return inspection->scripts;
    }

    /// What the sample's postinstall does for the user with the switches on.
    void checkInstalled(const QString &home, const QByteArray &calls) const
    {
        const QString support =
            home + QStringLiteral("/Library/Application Support/Pelix Software/Pelix PDF/");
        QCOMPARE(TestFiles::read(support + product().name + QStringLiteral("/ProfStore.xml")),
                 TestFiles::read(product().document));
        QVERIFY2(calls.contains(" iManage10/loginMethod/UseOAuth2 1\n"), calls.constData());
        QVERIFY2(calls.contains("./duti -s "), calls.constData());
    }

    QTemporaryDir m_folder;
    QList<Sample> m_products;
};

QTEST_GUILESS_MAIN(tst_PackageBuild)
#include "tst_PackageBuild.moc"
