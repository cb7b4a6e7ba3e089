// SPDX-License-Identifier: Apache-2.0
#include "app/HelpPanel.h"
#include "resources/Resources.h"
#include "tests/app/FakePackages.h"
#include "tests/app/FakePagesWindow.h"
#include "tests/app/HelpFolder.h"
#include "welcome/HelpAddress.h"
#include "welcome/webview/WebViewInQt.h"

#include <QLabel>
#include <QSplitter>
#include <QtTest>

namespace {

/// A shown window whose first page is open.
struct OpenWindow : FakePagesWindow
{
    explicit OpenWindow(const QString &package)
    {
        window.show();
        window.on_fileloaded(package);
        pageButton(first)->click();
        exposed = QTest::qWaitForWindowExposed(&window);
    }

    bool exposed = false;

    QList<int> sizes() const { return window.Splitter()->sizes(); }
    bool isClosed() const
    {
        const QSplitter *splitter = window.Splitter();
        return sizes() == QList<int>({splitter->width() - splitter->handleWidth(), 0});
    }
    int fullWidth() const { return window.Splitter()->width(); }
    WebViewInQt *view() const { return window.findChild<HelpPanel *>()->findChild<WebViewInQt *>(); }
    QLabel *message() const { return view() ? view()->findChild<QLabel *>() : nullptr; }
    QString shownHelp() const
    {
        return view() ? view()->runJavascript(QStringLiteral("document.body.innerText")) : QString();
    }
};

} // namespace

class tst_HelpPanel : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        initPctResources();
        m_packages.useAsInstaller();
    }

    void theAddressIsAnEncodedFileAddress_data();
    void theAddressIsAnEncodedFileAddress();
    void theNameIsThatOfTheCheckedPage();
    void thePanelIsClosedAtFirst();
    void informationOpensThePanelAndClosesIt();
    void aPanelThatIsOpenKeepsItsWidth();
    void thePanelFollowsTheShownPage();
    void aMissingPageIsSaidToBeNotAvailable();
    void thePanelShowsThePagesHelp();
    void thereIsNoViewBeforeThePanelIsOpened();
    void aPageClosesThePanel();
    void theOpeningPagesHaveAPanelToo();
    void thePanelKeepsItsWidthWhenTheWindowGrows();

private:
    FakePackages m_packages;
};

void tst_HelpPanel::theAddressIsAnEncodedFileAddress_data()
{
    QTest::addColumn<QString>("folder");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("address");
    QTest::newRow("plain") << QStringLiteral("/opt/pct/bin") << QStringLiteral("Welcome.html")
                           << QByteArray("file:///opt/pct/bin/../Resources/pcw/en-US/Welcome.html");
    QTest::newRow("blank in the page")
        << QStringLiteral("/opt/pct/bin") << QStringLiteral("Installation%20Options.html")
        << QByteArray("file:///opt/pct/bin/../Resources/pcw/en-US/Installation%20Options.html");
    QTest::newRow("anchor") << QStringLiteral("/opt/pct/bin")
                            << QStringLiteral("Preferences.html#Start%20Page")
                            << QByteArray("file:///opt/pct/bin/../Resources/pcw/en-US/"
                                          "Preferences.html#Start%20Page");
    QTest::newRow("odd folder") << QStringLiteral("/a b/50%20 off#1?/bin") << QStringLiteral("Plugins.html")
                                << QByteArray("file:///a%20b/50%2520%20off%231%3F/bin/../Resources/pcw/en-US/"
                                              "Plugins.html");
}

void tst_HelpPanel::theAddressIsAnEncodedFileAddress()
{
    QFETCH(QString, folder);
    QFETCH(QString, name);
    const QUrl address = helpAddress(folder, name);
    QTEST(address.toEncoded(), "address");
    QCOMPARE(address.toLocalFile(),
             folder + QStringLiteral("/../Resources/pcw/en-US/") +
                 QUrl::fromPercentEncoding(name.section(QLatin1Char('#'), 0, 0).toUtf8()));
}

void tst_HelpPanel::theNameIsThatOfTheCheckedPage()
{
    FakePagesWindow fixture;
    fixture.first->m_infoName = QStringLiteral("First%20Page.html");
    QCOMPARE(fixture.window.InfoName(), QStringLiteral("Welcome.html"));
    fixture.pageButton(fixture.first)->setChecked(true);
    QCOMPARE(fixture.window.InfoName(), QStringLiteral("Welcome.html"));
    fixture.window.InitTabWidgets();
    QCOMPARE(fixture.window.InfoName(), QStringLiteral("First%20Page.html"));
    fixture.pageButton(fixture.last)->setChecked(true);
    QCOMPARE(fixture.window.InfoName(), QStringLiteral("Welcome.html"));
}

void tst_HelpPanel::thePanelIsClosedAtFirst()
{
    const OpenWindow fixture(m_packages.make(editorTitle));
    QVERIFY(fixture.isClosed());
}

void tst_HelpPanel::informationOpensThePanelAndClosesIt()
{
    const OpenWindow fixture(m_packages.make(editorTitle));
    const auto *panel = fixture.window.findChild<HelpPanel *>();
    fixture.tool("tb_info")->click();
    QCOMPARE(fixture.sizes().last(), 285);
    QVERIFY(panel->isVisible());
    QCOMPARE(panel->width(), 285);
    fixture.tool("tb_info")->click();
    QVERIFY(fixture.isClosed());
}

void tst_HelpPanel::aPanelThatIsOpenKeepsItsWidth()
{
    OpenWindow fixture(m_packages.make(editorTitle));
    fixture.tool("tb_info")->click();
    fixture.window.Splitter()->setSizes({fixture.fullWidth() - 400, 400});
    const QList<int> chosen = fixture.sizes();
    fixture.window.ShowInfomation(true);
    QCOMPARE(fixture.sizes(), chosen);
}

void tst_HelpPanel::thePanelFollowsTheShownPage()
{
    const OpenWindow fixture(m_packages.make(editorTitle));
    fixture.tool("tb_info")->click();
    fixture.pageButton(fixture.last)->click();
    const auto *panel = fixture.window.findChild<HelpPanel *>();
    QVERIFY(fixture.last->m_page->isAncestorOf(panel));
    QCOMPARE(fixture.sizes().last(), 285);
    fixture.pageButton(fixture.first)->click();
    QVERIFY(fixture.first->m_page->isAncestorOf(panel));
    QCOMPARE(fixture.sizes().last(), 285);
    QCOMPARE(fixture.window.findChildren<HelpPanel *>().size(), 1);
}

void tst_HelpPanel::aMissingPageIsSaidToBeNotAvailable()
{
    const OpenWindow fixture(m_packages.make(editorTitle));
    fixture.first->m_infoName = QStringLiteral("Missing.html");
    fixture.tool("tb_info")->click();
    QTRY_VERIFY(fixture.message());
    QTRY_VERIFY(fixture.message()->isVisible());
    QCOMPARE(fixture.message()->text(), QStringLiteral("The help page is not available."));
    QVERIFY(fixture.message()->wordWrap());
}

void tst_HelpPanel::thePanelShowsThePagesHelp()
{
    const HelpFolder help;
    help.add(QStringLiteral("First page.html"), "first<script>document.title = 'first'</script>");
    help.add(QStringLiteral("Last.html"), "last");
    const OpenWindow fixture(m_packages.make(editorTitle));
    fixture.first->m_infoName = help.name("First%20page.html");
    fixture.last->m_infoName = help.name("Last.html");
    fixture.tool("tb_info")->click();
    QTRY_COMPARE(fixture.shownHelp(), QStringLiteral("first"));
    fixture.pageButton(fixture.last)->click();
    QTRY_COMPARE(fixture.shownHelp(), QStringLiteral("last"));
    QCOMPARE(fixture.window.findChildren<WebViewInQt *>().size(), 1);
}

void tst_HelpPanel::thereIsNoViewBeforeThePanelIsOpened()
{
    const OpenWindow fixture(m_packages.make(editorTitle));
    fixture.pageButton(fixture.last)->click();
    QTest::qWait(100);
    QVERIFY(!fixture.view());
    // Also its edge opens it.
    fixture.window.Splitter()->setSizes({fixture.fullWidth() - 300, 300});
    QTRY_VERIFY(fixture.view());
}

void tst_HelpPanel::aPageClosesThePanel()
{
    const HelpFolder help;
    help.add(
        QStringLiteral("Closing.html"),
        "<script>setTimeout(() => { for (const call of [['closeguidfun', 'closeguid2'], ['x', 'closeguid'],"
        "['closeguidfun', 'closeguid']]) external.DispatchFun(call[0], call[1], '') }, 500)</script>");
    const OpenWindow fixture(m_packages.make(editorTitle));
    fixture.first->m_infoName = help.name("Closing.html");
    fixture.tool("tb_info")->click();
    QCOMPARE(fixture.sizes().last(), 285);
    QTRY_VERIFY(fixture.isClosed());
    QVERIFY(!fixture.tool("tb_info")->isChecked());
    QTest::qWait(200);
    QVERIFY(fixture.isClosed());
}

void tst_HelpPanel::theOpeningPagesHaveAPanelToo()
{
    FakePagesWindow fixture;
    fixture.window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&fixture.window));
    fixture.tool("tb_info")->click();
    const auto *panel = fixture.window.findChild<HelpPanel *>();
    QVERIFY(panel && panel->isVisible() && fixture.welcomePage()->isVisible());
    QCOMPARE(fixture.window.Splitter()->sizes().last(), 285);
    fixture.window.on_fileloaded(m_packages.make(editorTitle));
    QVERIFY(panel->isVisible() && fixture.importPage()->isVisible());
    QCOMPARE(fixture.window.Splitter()->sizes().last(), 285);
}

void tst_HelpPanel::thePanelKeepsItsWidthWhenTheWindowGrows()
{
    OpenWindow fixture(m_packages.make(editorTitle));
    fixture.tool("tb_info")->click();
    fixture.window.resize(1400, 800);
    QTRY_VERIFY(fixture.fullWidth() > 1000);
    QCOMPARE(fixture.sizes().last(), 285);
}

QTEST_MAIN(tst_HelpPanel)
#include "tst_HelpPanel.moc"
