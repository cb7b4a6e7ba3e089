// SPDX-License-Identifier: Apache-2.0
#include "app/DlgCustomizationTool_v2.h"
#include "app/RegisterPages.h"
#include "config/CCommon.h"
#include "resources/Resources.h"
#include "tests/app/FakeHandler.h"

#include <QBoxLayout>
#include <QStackedLayout>
#include <QToolButton>
#include <QtTest>

namespace {

using Handler = std::shared_ptr<FakeHandler>;

Handler page(int id)
{
    return std::make_shared<FakeHandler>(id);
}

QToolButton *buttonOf(const DlgCustomizationTool_v2 &window, const Handler &handler)
{
    return window.findChild<QToolButton *>(handler->GetTabName());
}

QStringList buttonNames(const DlgCustomizationTool_v2 &window)
{
    const auto *column = window.findChild<QVBoxLayout *>(QStringLiteral("verticalLayout_category"));
    QStringList names;
    for (int i = 0; i < column->count(); ++i) {
        const QWidget *widget = column->itemAt(i)->widget();
        names << (widget ? widget->objectName() : QStringLiteral("spacer"));
    }
    return names;
}

QStackedLayout *stackOf(const DlgCustomizationTool_v2 &window)
{
    return window.findChild<QStackedLayout *>();
}

} // namespace

class tst_PageRegistry : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { initPctResources(); }

    void aNullHandlerIsRefused();
    void forTheReaderAnEditorOnlyPageIsNotRegisteredAndGetsNoButton();
    void forTheEditorAnEditorOnlyPageIsRegistered();
    void registeringTheSameIdTwiceKeepsTheFirst();
    void inProfileModeAPageWithoutProfileSupportIsRefused();
    void inPackageModeProfileSupportDoesNotMatter();
    void inProfileModeTheInstallationOptionsPageIsAbsent();
    void inPackageModeBothPagesArePresent_data();
    void inPackageModeBothPagesArePresent();
    void aPageButtonShowsItsPage();
    void pageButtonsStandInIdOrderAboveTheSpacer();
    void onlyOnePageButtonIsCheckedAtATime();
    void aPageWithId6OrMoreIsNeverBuilt();
    void pagesAreBuiltOnceAndFilledOnEveryUpdate();
    void aHandlerWithoutAWidgetIsPassedOver();
};

void tst_PageRegistry::aNullHandlerIsRefused()
{
    DlgCustomizationTool_v2 window(true, PCW_CONFIG_PACKAGE);
    QVERIFY(!window.Register(nullptr));
    QCOMPARE(buttonNames(window), QStringList(QStringLiteral("spacer")));
}

void tst_PageRegistry::forTheReaderAnEditorOnlyPageIsNotRegisteredAndGetsNoButton()
{
    DlgCustomizationTool_v2 window(false, PCW_CONFIG_PACKAGE);
    const Handler handler = page(2);
    handler->m_onlyForEditor = true;
    QVERIFY(!window.Register(handler));
    QVERIFY(!buttonOf(window, handler));
    window.InitTabWidgets();
    QVERIFY(!handler->m_page);
}

void tst_PageRegistry::forTheEditorAnEditorOnlyPageIsRegistered()
{
    DlgCustomizationTool_v2 window(true, PCW_CONFIG_PACKAGE);
    const Handler handler = page(2);
    handler->m_onlyForEditor = true;
    QVERIFY(window.Register(handler));
    QVERIFY(buttonOf(window, handler));
}

void tst_PageRegistry::registeringTheSameIdTwiceKeepsTheFirst()
{
    DlgCustomizationTool_v2 window(true, PCW_CONFIG_PACKAGE);
    const Handler first = page(3);
    const Handler second = page(3);
    QVERIFY(window.Register(first));
    QVERIFY(!window.Register(second));
    QCOMPARE(buttonNames(window).size(), 2);
    window.InitTabWidgets();
    QVERIFY(first->m_page);
    QVERIFY(!second->m_page);
}

void tst_PageRegistry::inProfileModeAPageWithoutProfileSupportIsRefused()
{
    DlgCustomizationTool_v2 window(true, PCW_CONFIG_PROFILE);
    const Handler handler = page(2);
    handler->m_supportsProfile = false;
    QVERIFY(!window.Register(handler));
    QVERIFY(!buttonOf(window, handler));
}

void tst_PageRegistry::inPackageModeProfileSupportDoesNotMatter()
{
    DlgCustomizationTool_v2 window(true, PCW_CONFIG_PACKAGE);
    const Handler handler = page(2);
    handler->m_supportsProfile = false;
    QVERIFY(window.Register(handler));
}

void tst_PageRegistry::inProfileModeTheInstallationOptionsPageIsAbsent()
{
    DlgCustomizationTool_v2 window(true, PCW_CONFIG_PROFILE);
    registerPages(window);
    QVERIFY(!buttonNames(window).contains(QStringLiteral("Installation Options")));
    QVERIFY(buttonNames(window).contains(QStringLiteral("Plugins")));
}

void tst_PageRegistry::inPackageModeBothPagesArePresent_data()
{
    QTest::addColumn<bool>("editor");
    QTest::newRow("Editor") << true;
    QTest::newRow("Reader") << false;
}

void tst_PageRegistry::inPackageModeBothPagesArePresent()
{
    QFETCH(bool, editor);
    DlgCustomizationTool_v2 window(editor, PCW_CONFIG_PACKAGE);
    registerPages(window);
    const QStringList names = buttonNames(window);
    QCOMPARE(names.first(), QStringLiteral("Installation Options"));
    QVERIFY(names.contains(QStringLiteral("Plugins")));
}

void tst_PageRegistry::aPageButtonShowsItsPage()
{
    DlgCustomizationTool_v2 window(true, PCW_CONFIG_PACKAGE);
    const Handler handler = page(2);
    window.Register(handler);
    const QToolButton *button = buttonOf(window, handler);
    QCOMPARE(button->text(), handler->GetTabTitle());
    QVERIFY(button->toolTip().contains(QStringLiteral("Title &lt;2&gt;")));
    QVERIFY(button->toolTip().contains(handler->GetTabTooltip()));
    QVERIFY(button->toolTip().contains(QStringLiteral("SF Pro Text")));
    QVERIFY(!button->icon().isNull());
    QCOMPARE(button->iconSize(), QSize(24, 24));
    QCOMPARE(button->minimumHeight(), 40);
    QCOMPARE(button->maximumHeight(), 40);
    QCOMPARE(button->toolButtonStyle(), Qt::ToolButtonTextBesideIcon);
    QVERIFY(button->styleSheet().contains(QStringLiteral("padding-left: 14px;")));
    QVERIFY(button->styleSheet().contains(QStringLiteral("background-color: #3F3954;")));
    QVERIFY(button->isCheckable());
    QVERIFY(!button->isEnabled());
}

void tst_PageRegistry::pageButtonsStandInIdOrderAboveTheSpacer()
{
    DlgCustomizationTool_v2 window(true, PCW_CONFIG_PACKAGE);
    for (int id : {0, 1, 3, 4, 5})
        window.Register(page(id));
    QCOMPARE(buttonNames(window),
             QStringList({QStringLiteral("page-0"), QStringLiteral("page-1"), QStringLiteral("page-3"),
                          QStringLiteral("page-4"), QStringLiteral("page-5"), QStringLiteral("spacer")}));
}

void tst_PageRegistry::onlyOnePageButtonIsCheckedAtATime()
{
    DlgCustomizationTool_v2 window(true, PCW_CONFIG_PACKAGE);
    const Handler first = page(1);
    const Handler second = page(2);
    window.Register(first);
    window.Register(second);
    window.InitTabWidgets();
    window.EnableButtons(true);
    buttonOf(window, first)->click();
    QCOMPARE(stackOf(window)->currentWidget(), first->m_page);
    buttonOf(window, second)->click();
    QVERIFY(!buttonOf(window, first)->isChecked());
    QVERIFY(buttonOf(window, second)->isChecked());
    QCOMPARE(stackOf(window)->currentWidget(), second->m_page);
}

void tst_PageRegistry::aPageWithId6OrMoreIsNeverBuilt()
{
    DlgCustomizationTool_v2 window(true, PCW_CONFIG_PACKAGE);
    const Handler last = page(5);
    const Handler beyond = page(6);
    window.Register(last);
    window.Register(beyond);
    window.InitTabWidgets();
    window.EnableButtons(true);
    buttonOf(window, last)->click();
    buttonOf(window, beyond)->click();
    QCOMPARE(stackOf(window)->currentWidget(), last->m_page);
    window.UpdateTabWidgets();
    QCOMPARE(beyond->m_imports, 0);
    QCOMPARE(stackOf(window)->indexOf(beyond->m_page), -1);
    QCOMPARE(window.InfoName(), QStringLiteral("Welcome.html"));
}

void tst_PageRegistry::pagesAreBuiltOnceAndFilledOnEveryUpdate()
{
    DlgCustomizationTool_v2 window(true, PCW_CONFIG_PACKAGE);
    const Handler handler = page(5);
    window.Register(handler);
    window.InitTabWidgets();
    window.InitTabWidgets();
    QCOMPARE(handler->m_imports, 1);
    const int pages = stackOf(window)->count();
    QVERIFY(window.UpdateTabWidgets());
    QCOMPARE(handler->m_imports, 2);
    QCOMPARE(stackOf(window)->count(), pages);
}

void tst_PageRegistry::aHandlerWithoutAWidgetIsPassedOver()
{
    struct Widgetless : FakeHandler
    {
        using FakeHandler::FakeHandler;
        QWidget *GetWidget(bool) override { return nullptr; }
    };
    DlgCustomizationTool_v2 window(true, PCW_CONFIG_PACKAGE);
    const auto handler = std::make_shared<Widgetless>(2);
    window.Register(handler);
    window.InitTabWidgets();
    window.UpdateTabWidgets();
    QCOMPARE(handler->m_imports, 0);
    window.EnableButtons(true);
    const QWidget *before = stackOf(window)->currentWidget();
    buttonOf(window, handler)->click();
    QCOMPARE(stackOf(window)->currentWidget(), before);
}

QTEST_MAIN(tst_PageRegistry)
#include "tst_PageRegistry.moc"
