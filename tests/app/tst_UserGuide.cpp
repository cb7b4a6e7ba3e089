// SPDX-License-Identifier: Apache-2.0
#include "app/HelpPanel.h"
#include "resources/Resources.h"
#include "tests/app/FakePackages.h"
#include "tests/app/FakePagesWindow.h"
#include "tests/app/HelpFolder.h"
#include "welcome/tab_userguide.h"
#include "welcome/tab_welcome_profile.h"
#include "welcome/webview/WebViewInQt.h"

#include <QMenu>
#include <QProcess>
#include <QSplitter>
#include <QtTest>

namespace {

const QByteArray closing = "<button style='position:fixed;inset:0;width:100%' "
                           "onclick=\"external.DispatchFun('closeguidfun', 'closeguid', '')\">Close</button>";

/// A shown window and its guide.
struct GuideWindow : FakePagesWindow
{
    explicit GuideWindow(PCW_CONFIGTYPE type = PCW_CONFIG_PACKAGE)
        : FakePagesWindow(true, type)
    {
        window.show();
        exposed = QTest::qWaitForWindowExposed(&window);
    }

    bool exposed = false;

    void chooseGuide() const
    {
        for (QAction *action : tool("tb_about")->menu()->actions()) {
            if (action->text() == QLatin1String("User Guide"))
                action->trigger();
        }
    }
    tab_userguide *guide() const { return window.findChild<tab_userguide *>(); }
    bool showsGuide() const { return guide() && current() == guide() && guide()->isVisible(); }
    WebViewInQt *view() const { return guide()->findChild<WebViewInQt *>(); }
    bool informationIsPressed() const { return tool("tb_info")->isChecked(); }
    bool helpIsOpen() const { return window.Splitter()->sizes().value(1) > 0; }

    /// Presses the guide's own button.
    void closeByPage()
    {
        const HelpFolder help;
        help.add(QStringLiteral("Closing.html"), closing);
        view()->loadRequest(help.address("Closing.html"));
        const QString ready = QStringLiteral("!!document.querySelector('button')");
        QTRY_COMPARE(view()->runJavascript(ready), QStringLiteral("true"));
        for (const QWidget *child : view()->findChildren<QWidget *>()) {
            if (child->focusProxy())
                QTest::mouseClick(child->focusProxy(), Qt::LeftButton);
        }
        QTRY_VERIFY(!showsGuide());
    }
};

} // namespace

class tst_UserGuide : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        initPctResources();
        m_packages.useAsInstaller();
    }

    void theMenuShowsTheGuideInTheWindow();
    void theGuideIsMadeOnce();
    void aPageButtonLeavesTheGuide();
    void aPageButtonThatIsCheckedLeavesTheGuide();
    void theInformationButtonLeavesTheGuide();
    void theGuideClosesItselfThroughTheBridge();
    void theGuideClosesItselfOverTheHelpPanel();
    void aPackageLeavesTheGuide();
    void helpThatWasOpenIsOpenAfterTheGuide();
    void theGuideCanBeShownAgain();
    void theGuidePageIsAsItsFormSays();
    void aWindowMayGoWithItsGuide();
    void theProgramEndsWellWithHelpAndGuideOpen();

private:
    FakePackages m_packages;
};

void tst_UserGuide::theMenuShowsTheGuideInTheWindow()
{
    const GuideWindow fixture;
    QVERIFY(!fixture.guide());
    fixture.chooseGuide();
    QVERIFY(fixture.showsGuide());
    QVERIFY(fixture.informationIsPressed());
}

void tst_UserGuide::theGuideIsMadeOnce()
{
    GuideWindow fixture;
    fixture.chooseGuide();
    fixture.window.ShowUserGuide();
    fixture.chooseGuide();
    QCOMPARE(fixture.window.findChildren<tab_userguide *>().size(), 1);
    QCOMPARE(fixture.window.findChildren<WebViewInQt *>().size(), 1);
}

void tst_UserGuide::aPageButtonLeavesTheGuide()
{
    GuideWindow fixture;
    fixture.window.on_fileloaded(m_packages.make(editorTitle));
    fixture.chooseGuide();
    fixture.pageButton(fixture.last)->click();
    QVERIFY(fixture.shows(fixture.last->m_page));
    QVERIFY(!fixture.informationIsPressed());
    QVERIFY(!fixture.helpIsOpen());
}

void tst_UserGuide::aPageButtonThatIsCheckedLeavesTheGuide()
{
    GuideWindow fixture;
    fixture.window.on_fileloaded(m_packages.make(editorTitle));
    fixture.pageButton(fixture.first)->click();
    fixture.chooseGuide();
    fixture.pageButton(fixture.first)->click();
    QVERIFY(fixture.shows(fixture.first->m_page));
    QVERIFY(!fixture.informationIsPressed());
}

void tst_UserGuide::theInformationButtonLeavesTheGuide()
{
    const GuideWindow fixture;
    fixture.chooseGuide();
    fixture.tool("tb_info")->click();
    QVERIFY(fixture.shows(fixture.welcomePage()));
    QVERIFY(!fixture.informationIsPressed());
    QVERIFY(!fixture.helpIsOpen());
}

void tst_UserGuide::theGuideClosesItselfThroughTheBridge()
{
    GuideWindow fixture;
    fixture.chooseGuide();
    fixture.closeByPage();
    QVERIFY(fixture.shows(fixture.welcomePage()));
    QVERIFY(!fixture.informationIsPressed());
    QVERIFY(!fixture.helpIsOpen());
}

void tst_UserGuide::theGuideClosesItselfOverTheHelpPanel()
{
    GuideWindow fixture;
    fixture.tool("tb_info")->click();
    QVERIFY(fixture.helpIsOpen());
    fixture.chooseGuide();
    fixture.closeByPage();
    QVERIFY(fixture.shows(fixture.welcomePage()));
    QVERIFY(!fixture.informationIsPressed());
    QVERIFY(!fixture.helpIsOpen());
}

void tst_UserGuide::aPackageLeavesTheGuide()
{
    GuideWindow fixture;
    fixture.chooseGuide();
    fixture.window.on_fileloaded(m_packages.make(editorTitle));
    QVERIFY(fixture.shows(fixture.importPage()));
    QVERIFY(!fixture.informationIsPressed());
}

void tst_UserGuide::helpThatWasOpenIsOpenAfterTheGuide()
{
    GuideWindow fixture;
    fixture.window.on_fileloaded(m_packages.make(editorTitle));
    fixture.tool("tb_info")->click();
    fixture.chooseGuide();
    fixture.pageButton(fixture.last)->click();
    QVERIFY(fixture.informationIsPressed());
    QVERIFY(fixture.helpIsOpen());
}

void tst_UserGuide::theGuideCanBeShownAgain()
{
    const GuideWindow fixture;
    for (int time = 0; time < 3; ++time) {
        fixture.chooseGuide();
        QVERIFY(fixture.showsGuide());
        fixture.tool("tb_info")->click();
        QVERIFY(!fixture.showsGuide());
    }
}

void tst_UserGuide::theGuidePageIsAsItsFormSays()
{
    const tab_userguide page(nullptr);
    QCOMPARE(page.objectName(), QStringLiteral("tab_userguide"));
    QCOMPARE(page.windowTitle(), QStringLiteral("Form"));
    QVERIFY(qobject_cast<QVBoxLayout *>(page.layout()));
    QCOMPARE(page.layout()->itemAt(0)->widget(), page.findChild<WebViewInQt *>());
}

void tst_UserGuide::aWindowMayGoWithItsGuide()
{
    {
        const GuideWindow fixture;
        fixture.chooseGuide();
        QTest::qWait(20);
    }
    QTest::qWait(200);
}

void tst_UserGuide::theProgramEndsWellWithHelpAndGuideOpen()
{
    QProcess program;
    program.setProcessChannelMode(QProcess::MergedChannels);
    program.start(QStringLiteral(PCT_WINDOW_WITH_HELP), QStringList());
    QVERIFY(program.waitForFinished(120000));
    const QByteArray output = program.readAll();
    QVERIFY2(program.exitStatus() == QProcess::NormalExit && program.exitCode() == 0, output);
    QVERIFY2(output.contains("closed"), output);
    QVERIFY2(!output.contains("Release of profile") && !output.contains("Please set"), output);
}

QTEST_MAIN(tst_UserGuide)
#include "tst_UserGuide.moc"
