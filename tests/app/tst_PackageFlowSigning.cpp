// SPDX-License-Identifier: Apache-2.0
#include "app/CPDF_Waiting.h"
#include "core/HostPaths.h"
#include "profile/signing/dlg_sign_package.h"
#include "resources/Resources.h"
#include "tests/app/BuildFlow.h"
#include "tests/app/DialogScript.h"
#include "tests/app/ProfileFlow.h"
#include "tests/package/LogCapture.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QProcess>
#include <QToolButton>
#include <QtTest>

Q_DECLARE_METATYPE(DialogScript::Answer)

using namespace Answers;
using namespace BuildMessages;

namespace {

using Window = DlgCustomizationTool_v2;

const QString signer = QStringLiteral("Developer ID Installer: Example Org (ABCDE12345)");

/// Whether openssl takes both signatures for ones over the table of contents, which Python has read.
bool isSignedPackage(const QString &package)
{
    const QString judgement = QStringLiteral(
        "import sys, tempfile, signed_package as sp\n"
        "with tempfile.TemporaryDirectory() as folder:\n"
        "    package = sp.Package(sys.argv[1])\n"
        "    sys.exit(package.toc.find('signature') is None or package.stored_digest() != package.digest or\n"
        "             not sp.rsa_holds(package, folder) or not sp.cms_holds(package, folder))\n");
    return QProcess::execute(QStringLiteral("/usr/bin/env"),
                             {QStringLiteral("PYTHONPATH=" PCT_SUPPORT_DIR), QStringLiteral("python3"),
                              QStringLiteral("-B"), QStringLiteral("-c"), judgement, package}) == 0;
}

void addIdentity(const QString &name, const QString &file, const QString &use = QStringLiteral("packages"))
{
    TestFiles::outputOf(
        QStringLiteral(PCT_SUPPORT_DIR "/make-identity"),
        {QStringLiteral("--name"), name, QStringLiteral("--use"), use, QStringLiteral("--output"), file});
}

} // namespace

/// What follows the success of a build when there are identities for packages.
class tst_PackageFlowSigning : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { initPctResources(); }
    void init()
    {
        theEditorXmlData = EditorXmlData();
        m_flow = std::make_unique<BuildFlow>();
        m_window = m_flow->openWindow(m_flow->sample(true));
    }
    void cleanup()
    {
        m_window.reset();
        m_flow.reset();
    }

    void withoutAnIdentityNothingIsAsked();
    void identitiesForProfilesDoNotCount();
    void theIdentitiesAreOffered();
    void signingReplacesThePackageByItsSignedForm();
    void whoDeclinesIsToldNoMoreAndHasTheUnsignedPackage_data();
    void whoDeclinesIsToldNoMoreAndHasTheUnsignedPackage();
    void aSigningThatFailsLeavesThePackageAsItWasAndLogsWhy_data();
    void aSigningThatFailsLeavesThePackageAsItWasAndLogsWhy();
    void whileSigningTheWindowIsDisabledUnderTheWaitingIndicator();

private:
    QString identityFile(const char *name) const { return m_flow->path("identities/") + QLatin1String(name); }
    void save(const QList<DialogScript::Answer> &answers);
    void replaceTool(const QByteArray &script);

    std::unique_ptr<BuildFlow> m_flow;
    std::unique_ptr<Window> m_window;
};

/// Saves as the flow does and waits until it has shown all its dialogs and the window can be used again.
void tst_PackageFlowSigning::save(const QList<DialogScript::Answer> &answers)
{
    int left = static_cast<int>(answers.size()) + 1;
    const auto chooseOutput = [this](QDialog *dialog) {
        dialog->findChild<QCheckBox *>()->setChecked(false);
        choose(m_flow->output())(dialog);
    };
    QList<DialogScript::Answer> counted{chooseOutput};
    for (const DialogScript::Answer &answer : answers)
        counted.append(answer);
    for (DialogScript::Answer &answer : counted) {
        answer = [&left, answer](QDialog *dialog) {
            --left;
            answer(dialog);
        };
    }
    const DialogScript script(counted);
    tool(*m_window, "tb_save")->click();
    QTRY_VERIFY_WITH_TIMEOUT(left == 0 && m_window->isEnabled() && !QApplication::activeModalWidget(),
                             60'000);
}

/// Another command in the place of the one that signs, which it finds as $real.
void tst_PackageFlowSigning::replaceTool(const QByteArray &script)
{
    const QFileInfo real(HostPaths::command(QStringLiteral("/usr/bin/productsign")));
    for (const QFileInfo &other : real.dir().entryInfoList(QDir::Files))
        QFile::link(other.filePath(), m_flow->path("tools/") + other.fileName());
    QFile::remove(m_flow->path("tools/productsign"));
    TestFiles::writeScript(m_flow->path("tools/productsign"),
                           "real='" + QFile::encodeName(real.filePath()) + "'\n" + script);
    qputenv("PCT_HOSTTOOLS", QFile::encodeName(m_flow->path("tools")));
}

void tst_PackageFlowSigning::withoutAnIdentityNothingIsAsked()
{
    ShownMessage shown;
    save({read(&shown)});
    QCOMPARE(shown.text, packageMade);
    QVERIFY(!isSignedPackage(m_flow->output()));
}

void tst_PackageFlowSigning::identitiesForProfilesDoNotCount()
{
    addIdentity(QStringLiteral("For Profiles"), identityFile("profiles.pem"), QStringLiteral("code"));
    ShownMessage shown;
    save({read(&shown)});
    QCOMPARE(shown.text, packageMade);
}

void tst_PackageFlowSigning::theIdentitiesAreOffered()
{
    addIdentity(signer, identityFile("signer.pem"));
    addIdentity(QStringLiteral("For Profiles"), identityFile("profiles.pem"), QStringLiteral("code"));
    ShownMessage shown;
    QStringList offered;
    const auto look = [&](QDialog *dialog) {
        const auto *box = dialog->findChild<QComboBox *>();
        for (int index = 0; index < box->count(); ++index)
            offered << box->itemText(index);
        QVERIFY(qobject_cast<dlg_sign_package *>(dialog));
        QCOMPARE(dialog->windowTitle(), QStringLiteral("Signing Package"));
        QCOMPARE(dialog->parentWidget(), m_window.get());
        dialog->reject();
    };
    save({read(&shown), look});
    QCOMPARE(shown.text, packageMade);
    QCOMPARE(offered, QStringList(signer));
}

void tst_PackageFlowSigning::signingReplacesThePackageByItsSignedForm()
{
    addIdentity(signer, identityFile("signer.pem"));
    ShownMessage made;
    ShownMessage shown;
    save({read(&made), press(QStringLiteral("Sign")), read(&shown)});
    QCOMPARE(made.text, packageMade);
    QCOMPARE(shown.text, ProfileMessages::isSigned);
    QCOMPARE(shown.icon, QMessageBox::Information);
    QCOMPARE(shown.title, QString());
    QVERIFY(isSignedPackage(m_flow->output()));
    QCOMPARE(QDir(m_flow->path("out")).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
             QStringList(QStringLiteral("custom.pkg")));
}

void tst_PackageFlowSigning::whoDeclinesIsToldNoMoreAndHasTheUnsignedPackage_data()
{
    QTest::addColumn<DialogScript::Answer>("answer");
    QTest::newRow("the button") << press(QStringLiteral("Don't Sign"));
    QTest::newRow("the window's control") << closeWindow();
    QTest::newRow("Escape") << escape();
}

void tst_PackageFlowSigning::whoDeclinesIsToldNoMoreAndHasTheUnsignedPackage()
{
    QFETCH(DialogScript::Answer, answer);
    addIdentity(signer, identityFile("signer.pem"));
    ShownMessage made;
    QByteArray before;
    const auto keepAndAnswer = [&](QDialog *dialog) {
        before = TestFiles::read(m_flow->output());
        answer(dialog);
    };
    save({read(&made), keepAndAnswer});
    QVERIFY(!before.isEmpty());
    QVERIFY(TestFiles::read(m_flow->output()) == before);
}

void tst_PackageFlowSigning::aSigningThatFailsLeavesThePackageAsItWasAndLogsWhy_data()
{
    QTest::addColumn<QByteArray>("script");
    QTest::addColumn<QString>("reason");
    QTest::newRow("refused") << QByteArray("echo 'the keychain is locked' >&2\nexit 1\n")
                             << QStringLiteral("the keychain is locked");
    QTest::newRow("not signed at all")
        << QByteArray("for word; do input=$output output=$word; done\ncp \"$input\" \"$output\"\n")
        << QStringLiteral("the new package has no signature");
    QTest::newRow("a signature that does not hold")
        << QByteArray("\"$real\" \"$@\" >&2 || exit\nfor word; do output=$word; done\n"
                      "printf x | dd of=\"$output\" bs=1 seek=4000 conv=notrunc 2>&1\n")
        << QStringLiteral("cannot be signed");
}

void tst_PackageFlowSigning::aSigningThatFailsLeavesThePackageAsItWasAndLogsWhy()
{
    QFETCH(QByteArray, script);
    QFETCH(QString, reason);
    const QByteArray hostTools = qgetenv("PCT_HOSTTOOLS");
    const auto restore = qScopeGuard([&] { qputenv("PCT_HOSTTOOLS", hostTools); });
    addIdentity(signer, identityFile("signer.pem"));
    QDir().mkpath(m_flow->path("tools"));
    replaceTool(script);
    const LogCapture log;
    ShownMessage made;
    ShownMessage shown;
    QByteArray before;
    const auto keepAndSign = [&](QDialog *dialog) {
        before = TestFiles::read(m_flow->output());
        press(QStringLiteral("Sign"))(dialog);
    };
    save({read(&made), keepAndSign, read(&shown)});
    QCOMPARE(shown.text, ProfileMessages::notSigned);
    QVERIFY(TestFiles::read(m_flow->output()) == before);
    const QStringList told = log.lines().filter(m_flow->output() + QLatin1Char(':')).filter(reason);
    QVERIFY2(told.size() == 1, qPrintable(log.lines().join(QLatin1Char('\n'))));
}

void tst_PackageFlowSigning::whileSigningTheWindowIsDisabledUnderTheWaitingIndicator()
{
    const QByteArray hostTools = qgetenv("PCT_HOSTTOOLS");
    const auto restore = qScopeGuard([&] { qputenv("PCT_HOSTTOOLS", hostTools); });
    addIdentity(signer, identityFile("signer.pem"));
    QDir().mkpath(m_flow->path("tools"));
    const QString goOn = m_flow->path("go-on");
    replaceTool("until [ -e '" + QFile::encodeName(goOn) +
                "' ]; do sleep 0.05; done\nexec \"$real\" \"$@\"\n");
    const auto lookWhileItSigns = [&] {
        QVERIFY(!m_window->isEnabled());
        QVERIFY(m_window->findChild<CPDF_Waiting *>()->isVisible());
        m_window->close();
        QVERIFY(m_window->isVisible());
        TestFiles::write(goOn, "go on");
    };
    const auto sign = [&](QDialog *dialog) {
        // The dialog blocks until it is closed, and only then does the work begin.
        connect(dialog, &QDialog::finished, m_window.get(),
                [&] { QTimer::singleShot(200, m_window.get(), lookWhileItSigns); });
        press(QStringLiteral("Sign"))(dialog);
    };
    ShownMessage made;
    ShownMessage shown;
    save({read(&made), sign, read(&shown)});
    QVERIFY(QFileInfo::exists(goOn));
    QCOMPARE(shown.text, ProfileMessages::isSigned);
    QVERIFY(!m_window->findChild<CPDF_Waiting *>()->isVisible());
}

QTEST_MAIN(tst_PackageFlowSigning)
#include "tst_PackageFlowSigning.moc"
