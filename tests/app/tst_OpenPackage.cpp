// SPDX-License-Identifier: Apache-2.0
#include "config/EditorXmlData.h"
#include "resources/Resources.h"
#include "tests/app/FakePackages.h"
#include "tests/app/FakePagesWindow.h"
#include "tests/app/WindowDriver.h"
#include "tests/support/DialogDriver.h"

#include <QFileDialog>
#include <QtTest>

class tst_OpenPackage : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        initPctResources();
        m_packages.useAsInstaller();
    }
    void init() { theEditorXmlData = EditorXmlData(); }

    void anEmptyPathIsRefused();
    void theFirstPackageOffersToImportADocument();
    void laterPackagesGoStraightToTheFirstPageAndKeepTheValues();
    void thePageShownFirstIsTheLowestFromTheProductsOwn_data();
    void thePageShownFirstIsTheLowestFromTheProductsOwn();
    void aPackageOfTheOtherProductIsRefusedWithTheExpectedName_data();
    void aPackageOfTheOtherProductIsRefusedWithTheExpectedName();
    void cancellingTheOpenDialogChangesNothing();
    void anOpenedPackageIsRememberedAsFolder();
    void aDroppedPackageIsOpened();
    void anImportedDocumentFillsThePages();
    void aDocumentThatDoesNotParseChangesNothing();

private:
    FakePackages m_packages;
};

void tst_OpenPackage::anEmptyPathIsRefused()
{
    FakePagesWindow fixture;
    QVERIFY(!fixture.window.on_fileloaded(QString()));
    QVERIFY(!fixture.first->m_page);
    QVERIFY(!fixture.tool("tb_save")->isEnabled());
}

void tst_OpenPackage::theFirstPackageOffersToImportADocument()
{
    FakePagesWindow fixture;
    QVERIFY(fixture.window.on_fileloaded(m_packages.make(editorTitle)));
    QVERIFY(fixture.shows(fixture.importPage()));
    QVERIFY(!fixture.pageButton(fixture.first)->isChecked());
    QVERIFY(fixture.tool("tb_save")->isEnabled());
    QCOMPARE(fixture.window.InfoName(), QStringLiteral("Welcome.html"));
    fixture.pageButton(fixture.first)->click();
    QCOMPARE(fixture.current(), fixture.first->m_page);
}

void tst_OpenPackage::laterPackagesGoStraightToTheFirstPageAndKeepTheValues()
{
    FakePagesWindow fixture;
    QVERIFY(fixture.window.on_fileloaded(m_packages.make(editorTitle)));
    fixture.pageButton(fixture.last)->click();
    QVERIFY(fixture.window.on_fileloaded(m_packages.make(editorTitle, QStringLiteral("second.pkg"))));
    QCOMPARE(fixture.current(), fixture.first->m_page);
    QVERIFY(fixture.pageButton(fixture.first)->isChecked());
    QCOMPARE(fixture.first->m_imports, 1);
    QCOMPARE(fixture.window.findChildren<tab_import_xml *>().size(), 1);
}

void tst_OpenPackage::thePageShownFirstIsTheLowestFromTheProductsOwn_data()
{
    QTest::addColumn<bool>("editor");
    QTest::newRow("Editor") << true;
    QTest::newRow("Reader") << false;
}

void tst_OpenPackage::thePageShownFirstIsTheLowestFromTheProductsOwn()
{
    QFETCH(bool, editor);
    FakePagesWindow fixture(editor);
    fixture.window.show();
    const QString file = m_packages.make(editor ? editorTitle : readerTitle);
    QVERIFY(fixture.window.on_fileloaded(file) && fixture.window.on_fileloaded(file));
    QCOMPARE(fixture.current(), fixture.first->m_page);
    QVERIFY(fixture.pageButton(fixture.first)->isChecked());
}

void tst_OpenPackage::aPackageOfTheOtherProductIsRefusedWithTheExpectedName_data()
{
    QTest::addColumn<bool>("editor");
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("message");
    QTest::newRow("a Reader package for the Editor")
        << true << readerTitle
        << QStringLiteral("Please select the installation package for Pelix PDF Editor\n");
    QTest::newRow("an Editor package for the Reader")
        << false << editorTitle
        << QStringLiteral("Please select the installation package for Pelix PDF Reader\n");
    QTest::newRow("no package at all")
        << true << QStringLiteral("x")
        << QStringLiteral("Please select the installation package for Pelix PDF Editor\n");
}

void tst_OpenPackage::aPackageOfTheOtherProductIsRefusedWithTheExpectedName()
{
    QFETCH(bool, editor);
    QFETCH(QString, title);
    FakePagesWindow fixture(editor);
    ShownMessage shown;
    WindowDriver::acceptMessage(this, &shown);
    QVERIFY(!fixture.window.on_fileloaded(m_packages.make(title)));
    QTEST(shown.text, "message");
    QCOMPARE(shown.title, QString());
    QCOMPARE(shown.icon, QMessageBox::Warning);
    QCOMPARE(shown.buttons, QMessageBox::Ok);
    QCOMPARE(shown.parent.data(), &fixture.window);
    QVERIFY(fixture.shows(fixture.welcomePage()));
    QVERIFY(!fixture.tool("tb_save")->isEnabled());
}

void tst_OpenPackage::cancellingTheOpenDialogChangesNothing()
{
    FakePagesWindow fixture;
    QStringList filters;
    DialogDriver::onNextModal(this, [&filters](QDialog *dialog) {
        filters = qobject_cast<QFileDialog *>(dialog)->nameFilters();
        dialog->reject();
    });
    fixture.tool("tb_open")->click();
    QCOMPARE(filters, QStringList(QStringLiteral("Package files (*.pkg)")));
    QVERIFY(fixture.shows(fixture.welcomePage()));
    QVERIFY(!fixture.first->m_page);
    QVERIFY(!fixture.tool("tb_save")->isEnabled());
}

void tst_OpenPackage::anOpenedPackageIsRememberedAsFolder()
{
    FakePagesWindow fixture;
    DialogDriver::chooseFile(this, m_packages.make(editorTitle, QStringLiteral("sub folder/a.pkg")));
    fixture.tool("tb_open")->click();
    QVERIFY(fixture.shows(fixture.importPage()));

    QString folder;
    DialogDriver::onNextModal(this, [&folder](QDialog *dialog) {
        folder = qobject_cast<QFileDialog *>(dialog)->directory().dirName();
        dialog->reject();
    });
    fixture.tool("tb_open")->click();
    QCOMPARE(folder, QStringLiteral("sub folder"));
}

void tst_OpenPackage::aDroppedPackageIsOpened()
{
    FakePagesWindow fixture;
    fixture.window.show();
    QVERIFY(WindowDriver::dropFiles(fixture.welcomePage(), {m_packages.make(editorTitle)}));
    QVERIFY(!fixture.importPage()); // the drop comes first, the load after it
    QTRY_VERIFY(fixture.importPage() && fixture.importPage()->isVisible());
}

void tst_OpenPackage::anImportedDocumentFillsThePages()
{
    FakePagesWindow fixture;
    fixture.window.show();
    QVERIFY(fixture.window.on_fileloaded(m_packages.make(editorTitle)));
    const QString document = m_packages.path("ProfStore.xml");
    TestFiles::write(document, "<PelixPDFEditor><Plugins><Item UnloadPluginArray=\"a.dylib;\"/></Plugins>"
                               "</PelixPDFEditor>");
    QVERIFY(WindowDriver::dropFiles(fixture.importPage(), {document}));
    QTRY_COMPARE(fixture.current(), fixture.first->m_page);
    QVERIFY(fixture.pageButton(fixture.first)->isChecked());
    QCOMPARE(fixture.first->m_imports, 2);
    QCOMPARE(fixture.last->m_imports, 2);
    QCOMPARE(theEditorXmlData.strUnloadPluginArray, QStringLiteral("a.dylib;"));
    QVERIFY(fixture.tool("tb_save")->isEnabled());
}

void tst_OpenPackage::aDocumentThatDoesNotParseChangesNothing()
{
    FakePagesWindow fixture;
    fixture.window.show();
    QVERIFY(fixture.window.on_fileloaded(m_packages.make(editorTitle)));
    const QString document = m_packages.path("broken.xml");
    TestFiles::write(document, "<PelixPDFEditor>");
    QTest::ignoreMessage(QtDebugMsg, QRegularExpression(QStringLiteral("Failed to parse XML content")));
    QVERIFY(WindowDriver::dropFiles(fixture.importPage(), {document}));
    QCoreApplication::processEvents();
    QVERIFY(fixture.importPage()->isVisible());
    QCOMPARE(fixture.first->m_imports, 1);
    QVERIFY(theEditorXmlData == EditorXmlData());
}

QTEST_MAIN(tst_OpenPackage)
#include "tst_OpenPackage.moc"
