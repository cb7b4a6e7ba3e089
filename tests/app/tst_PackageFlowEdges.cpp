// SPDX-License-Identifier: Apache-2.0
#include "config/EditorXmlData.h"
#include "resources/Resources.h"
#include "tests/app/BuildFlow.h"
#include "tests/app/Unpacked.h"
#include "tests/app/WindowDriver.h"
#include "tests/support/Archive.h"
#include "tests/support/DialogDriver.h"

#include <QApplication>
#include <QLineEdit>
#include <QToolButton>
#include <QtTest>

using namespace BuildMessages;

class tst_PackageFlowEdges : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { initPctResources(); }
    void init()
    {
        theEditorXmlData = EditorXmlData();
        m_flow = std::make_unique<BuildFlow>();
    }
    void cleanup() { m_flow.reset(); }

    void anInputThatIsNoLongerTheInstallerStopsAtTheFirstMessage();
    void anExistingDocumentIsAskedForAndCancellingKeepsNone();
    void anExistingDocumentIsAskedForAndAnotherNameIsUsed();
    void aFileNameWithBlanksNamesTheWorkFolder();
    void aLeftoverWorkFolderIsRemovedBeforeExpansion();
    void aPackageBuiltBeforeFails();
    void anOutputThatIsTheInputFailsAndKeepsTheInput();
    void aDocumentThatIsTheInputFailsAndKeepsTheInput();

private:
    void confirmReplacing();

    std::unique_ptr<BuildFlow> m_flow;
};

/// Answers the file dialog's own question whether to replace a file.
void tst_PackageFlowEdges::confirmReplacing()
{
    DialogDriver::onNextModal(this, [](QDialog *dialog) {
        qobject_cast<QMessageBox *>(dialog)->button(QMessageBox::Yes)->click();
    });
}

void tst_PackageFlowEdges::anInputThatIsNoLongerTheInstallerStopsAtTheFirstMessage()
{
    const QString input = m_flow->sample(true);
    const auto window = m_flow->openWindow(input);
    TestFiles::write(input, "no package any more");
    ShownMessage shown;
    WindowDriver::acceptMessage(this, &shown);
    QTest::ignoreMessage(QtDebugMsg, QRegularExpression(QStringLiteral("CheckPkg fail!$")));
    tool(*window, "tb_save")->click();
    QCOMPARE(shown.count, 1);
    QCOMPARE(shown.text, inputInvalid);
    QCOMPARE(shown.title, QString());
    QCOMPARE(shown.icon, QMessageBox::Critical);
    QCOMPARE(shown.buttons, QMessageBox::Ok);
    QVERIFY(!QApplication::activeModalWidget());
    QVERIFY(window->isEnabled());
}

void tst_PackageFlowEdges::anExistingDocumentIsAskedForAndCancellingKeepsNone()
{
    const auto window = m_flow->openWindow(m_flow->sample(true));
    QCOMPARE(m_flow->save(*window, m_flow->output("out/first.pkg"), true).text, packageAndDocumentMade);
    const QString document = m_flow->path("out/ProfStore.xml");
    TestFiles::write(document, "edited since");

    const ShownMessage shown =
        m_flow->save(*window, m_flow->output("out/second.pkg"), true, [this] { DialogDriver::cancel(this); });
    QCOMPARE(shown.text, packageMade);
    QCOMPARE(TestFiles::read(document), QByteArray("edited since"));
    QVERIFY(QFileInfo::exists(Unpacked(m_flow->output("out/second.pkg"), true).script("ProfStore.xml")));
}

void tst_PackageFlowEdges::anExistingDocumentIsAskedForAndAnotherNameIsUsed()
{
    const auto window = m_flow->openWindow(m_flow->sample(true));
    const QString document = m_flow->path("out/ProfStore.xml");
    const QString other = m_flow->path("other/kept.xml");
    TestFiles::write(document, "from before");
    QDir().mkpath(m_flow->path("other"));

    const ShownMessage shown = m_flow->save(*window, m_flow->output(), true,
                                            [this, other] { DialogDriver::chooseFile(this, other); });
    QCOMPARE(shown.text, packageAndDocumentMade);
    QCOMPARE(TestFiles::read(document), QByteArray("from before"));
    QVERIFY(equalFiles(other, Unpacked(m_flow->output(), true).script("ProfStore.xml")));
}

/// A failed build leaves its work folder, so that its name can be seen.
void tst_PackageFlowEdges::aFileNameWithBlanksNamesTheWorkFolder()
{
    const QString input = m_flow->path("in/a  b c.pkg");
    QVERIFY(QFile::rename(m_flow->sample(true), input));
    const auto window = m_flow->openWindow(input);
    QCOMPARE(m_flow->save(*window, m_flow->output("out/made of blanks.pkg")).text, packageMade);
    QVERIFY(!QFileInfo::exists(m_flow->workFolder(input)));

    QVERIFY(QFile::remove(input));
    QVERIFY(QFile::rename(m_flow->output("out/made of blanks.pkg"), input));
    QCOMPARE(m_flow->save(*window, m_flow->output()).text, buildFailed);
    QVERIFY(QFileInfo(m_flow->workFolder(input)).isDir());
}

void tst_PackageFlowEdges::aLeftoverWorkFolderIsRemovedBeforeExpansion()
{
    const QString input = m_flow->sample(true);
    TestFiles::write(m_flow->workFolder(input) +
                         QStringLiteral("/Pelix_PDF_Editor.pkg/Scripts/ProfStore.xml"),
                     "leftover");
    TestFiles::write(m_flow->workFolder(input) + QStringLiteral("/Leftover"), "leftover");
    const auto window = m_flow->openWindow(input);
    QCOMPARE(m_flow->save(*window, m_flow->output()).text, packageMade);
    QVERIFY(!Archive::names(m_flow->output()).contains("Leftover"));
    QVERIFY(!QFileInfo::exists(m_flow->workFolder(input)));
}

void tst_PackageFlowEdges::aPackageBuiltBeforeFails()
{
    const auto window = m_flow->openWindow(m_flow->sample(true));
    QCOMPARE(m_flow->save(*window, m_flow->output()).text, packageMade);
    QVERIFY(window->on_fileloaded(m_flow->output()));
    const ShownMessage shown = m_flow->save(*window, m_flow->output("out/again.pkg"));
    QCOMPARE(shown.text, buildFailed);
    QCOMPARE(shown.title, QString());
    QCOMPARE(shown.icon, QMessageBox::Warning);
    QCOMPARE(shown.buttons, QMessageBox::Ok);
    QVERIFY(!QFileInfo::exists(m_flow->output("out/again.pkg")));
    QVERIFY(window->isEnabled());
}

void tst_PackageFlowEdges::anOutputThatIsTheInputFailsAndKeepsTheInput()
{
    const QString input = m_flow->sample(true);
    const QString copy = m_flow->path("copy.pkg");
    QVERIFY(QFile::copy(input, copy));
    const auto window = m_flow->openWindow(input);
    QCOMPARE(m_flow->save(*window, input, false, [this] { confirmReplacing(); }).text, buildFailed);
    QVERIFY(equalFiles(input, copy));
}

void tst_PackageFlowEdges::aDocumentThatIsTheInputFailsAndKeepsTheInput()
{
    const QString input = m_flow->sample(true);
    const QString copy = m_flow->path("copy.pkg");
    QVERIFY(QFile::copy(input, copy));
    TestFiles::write(m_flow->path("out/ProfStore.xml"), "from before");
    const auto window = m_flow->openWindow(input);
    const auto answerWithInput = [this, input] {
        DialogDriver::onNextModal(this, [this, input](QDialog *dialog) {
            dialog->findChild<QLineEdit *>(QStringLiteral("fileNameEdit"))->setText(input);
            confirmReplacing();
            dialog->accept();
        });
    };
    QCOMPARE(m_flow->save(*window, m_flow->output(), true, answerWithInput).text, buildFailed);
    QVERIFY(equalFiles(input, copy));
    QVERIFY(!QFileInfo::exists(m_flow->output()));
}

QTEST_MAIN(tst_PackageFlowEdges)
#include "tst_PackageFlowEdges.moc"
