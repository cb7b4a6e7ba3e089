// SPDX-License-Identifier: Apache-2.0
#include "app/OpenRequests.h"

#include "config/EditorXmlData.h"
#include "resources/Resources.h"
#include "tests/app/FakePackages.h"
#include "tests/app/FakePagesWindow.h"
#include "tests/app/WindowDriver.h"
#include "tests/support/DialogDriver.h"

#include <QFileOpenEvent>
#include <QtTest>

namespace {

/// What macOS does when a file is opened with the tool.
void askToOpen(const QString &path)
{
    QCoreApplication::postEvent(qApp, new QFileOpenEvent(path));
    QCoreApplication::processEvents();
}

QStringList program(const QStringList &arguments)
{
    return QStringList{QStringLiteral("pelix-customization-tool")} + arguments;
}

} // namespace

class tst_OpenRequests : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        initPctResources();
        m_packages.useAsInstaller();
    }
    void init() { theEditorXmlData = EditorXmlData(); }

    void aFileOfTheCommandLineIsOpened();
    void aRelativePathIsMeantFromTheWorkingFolder();
    void optionsAreNoFiles();
    void withoutAFileNothingIsOpened_data();
    void withoutAFileNothingIsOpened();
    void aFileAskedForBeforeThereIsAWindowWaits();
    void aFileAskedForLaterIsOpened();
    void theNewestFileIsOpened();
    void anAddressThatIsNoFileIsIgnored();
    void aFileWaitsUntilADialogIsClosed();
    void aFileWaitsUntilABuildHasEnded();
    void theOtherProductsPackageIsRefusedAsByTheOpenButton();
    void inProfileModeTheFileIsReadAsAProfile();
    void aWindowThatIsGoneOpensNothing();

private:
    FakePackages m_packages;
};

void tst_OpenRequests::aFileOfTheCommandLineIsOpened()
{
    OpenRequests requests(program({m_packages.make(editorTitle)}));
    FakePagesWindow fixture;
    QCoreApplication::processEvents();
    QVERIFY(!fixture.importPage());
    requests.serve(&fixture.window);
    QTRY_VERIFY(fixture.importPage());
    QVERIFY(fixture.tool("tb_save")->isEnabled());
}

void tst_OpenRequests::aRelativePathIsMeantFromTheWorkingFolder()
{
    const QFileInfo package(m_packages.make(editorTitle));
    const QString before = QDir::currentPath();
    QVERIFY(QDir::setCurrent(package.absolutePath()));
    OpenRequests requests(program({package.fileName()}));
    QVERIFY(QDir::setCurrent(before));
    FakePagesWindow fixture;
    requests.serve(&fixture.window);
    QTRY_VERIFY(fixture.importPage());
}

void tst_OpenRequests::optionsAreNoFiles()
{
    OpenRequests requests(program({QStringLiteral("-style=fusion"), m_packages.make(editorTitle)}));
    FakePagesWindow fixture;
    requests.serve(&fixture.window);
    QTRY_VERIFY(fixture.importPage());
}

void tst_OpenRequests::withoutAFileNothingIsOpened_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::newRow("only the program") << program({});
    QTest::newRow("only an option") << program({QStringLiteral("-style=fusion")});
    QTest::newRow("an empty argument") << program({QString()});
    QTest::newRow("not even the program") << QStringList();
}

void tst_OpenRequests::withoutAFileNothingIsOpened()
{
    QFETCH(QStringList, arguments);
    OpenRequests requests(arguments);
    FakePagesWindow fixture;
    requests.serve(&fixture.window);
    QTest::qWait(50);
    QVERIFY(!fixture.importPage());
    QVERIFY(!fixture.tool("tb_save")->isEnabled());
}

void tst_OpenRequests::aFileAskedForBeforeThereIsAWindowWaits()
{
    OpenRequests requests(program({}));
    askToOpen(m_packages.make(editorTitle));
    FakePagesWindow fixture;
    requests.serve(&fixture.window);
    QTRY_VERIFY(fixture.importPage());
}

void tst_OpenRequests::aFileAskedForLaterIsOpened()
{
    OpenRequests requests(program({}));
    FakePagesWindow fixture;
    requests.serve(&fixture.window);
    QCoreApplication::processEvents();
    askToOpen(m_packages.make(editorTitle));
    QTRY_VERIFY(fixture.importPage());
}

void tst_OpenRequests::theNewestFileIsOpened()
{
    OpenRequests requests(program({m_packages.path("no such.pkg")}));
    askToOpen(m_packages.make(editorTitle));
    FakePagesWindow fixture;
    requests.serve(&fixture.window);
    // The older one would be refused with a message, which nobody answers here.
    QTRY_VERIFY(fixture.importPage());
}

void tst_OpenRequests::anAddressThatIsNoFileIsIgnored()
{
    OpenRequests requests(program({m_packages.make(editorTitle)}));
    QCoreApplication::postEvent(qApp, new QFileOpenEvent(QUrl(QStringLiteral("mailto:nobody@example.org"))));
    QCoreApplication::processEvents();
    FakePagesWindow fixture;
    requests.serve(&fixture.window);
    QTRY_VERIFY(fixture.importPage());
}

void tst_OpenRequests::aFileWaitsUntilADialogIsClosed()
{
    OpenRequests requests(program({}));
    FakePagesWindow fixture;
    fixture.window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&fixture.window));
    requests.serve(&fixture.window);
    QDialog dialog(&fixture.window);
    DialogDriver::onNextModal(this, [&](QDialog *shown) {
        askToOpen(m_packages.make(editorTitle));
        QTest::qWait(50);
        QVERIFY(!fixture.importPage());
        shown->accept();
    });
    dialog.exec();
    QTRY_VERIFY(fixture.importPage());
}

void tst_OpenRequests::aFileWaitsUntilABuildHasEnded()
{
    OpenRequests requests(program({}));
    FakePagesWindow fixture;
    requests.serve(&fixture.window);
    fixture.window.setEnabled(false);
    askToOpen(m_packages.make(editorTitle));
    QTest::qWait(50);
    QVERIFY(!fixture.importPage());
    fixture.window.setEnabled(true);
    QTRY_VERIFY(fixture.importPage());
}

void tst_OpenRequests::theOtherProductsPackageIsRefusedAsByTheOpenButton()
{
    OpenRequests requests(program({m_packages.make(readerTitle)}));
    FakePagesWindow fixture;
    ShownMessage shown;
    WindowDriver::acceptMessage(this, &shown);
    requests.serve(&fixture.window);
    QTRY_COMPARE(shown.count, 1);
    QVERIFY(
        shown.text.startsWith(QStringLiteral("Please select the installation package for Pelix PDF Editor")));
    QVERIFY(!fixture.importPage());
}

void tst_OpenRequests::inProfileModeTheFileIsReadAsAProfile()
{
    OpenRequests requests(program({m_packages.make(editorTitle)}));
    FakePagesWindow fixture(true, PCW_CONFIG_PROFILE);
    requests.serve(&fixture.window);
    QTest::qWait(50);
    // A package is no profile; it is refused in silence, as by the Open button.
    QVERIFY(!fixture.importPage());
    QVERIFY(!fixture.tool("tb_save")->isEnabled());
}

void tst_OpenRequests::aWindowThatIsGoneOpensNothing()
{
    OpenRequests requests(program({}));
    {
        const FakePagesWindow fixture;
        requests.serve(const_cast<DlgCustomizationTool_v2 *>(&fixture.window));
    }
    askToOpen(m_packages.make(editorTitle));
    QTest::qWait(50);
    QVERIFY(!QApplication::activeModalWidget());
}

QTEST_MAIN(tst_OpenRequests)
#include "tst_OpenRequests.moc"
