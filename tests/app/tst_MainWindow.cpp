// SPDX-License-Identifier: Apache-2.0
#include "app/CPDF_Waiting.h"
#include "app/DlgAbout.h"
#include "core/Version.h"
#include "resources/Resources.h"
#include "tests/app/FakePagesWindow.h"
#include "tests/support/DialogDriver.h"
#include "tests/support/TestFiles.h"

#include <QGridLayout>
#include <QLabel>
#include <QMenu>
#include <QMovie>
#include <QtTest>

class tst_MainWindow : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { initPctResources(); }

    void theFormHasItsWidgets();
    void theToolTipsAreThoseOfTheMode_data();
    void theToolTipsAreThoseOfTheMode();
    void theStackStandsBesideTheColumnWithItsMargin();
    void theMenuOpensAtOnceAndOffersTheAboutBox();
    void theAboutBoxSaysWhatAndWhose();
    void atFirstOnlyAPackageCanBeOpened();
    void aProfileNeedsNoFileBeforeThePagesCanBeUsed();
    void theWaitingIndicatorStandsInTheMiddle();
    void theWaitingIndicatorStandsStillWithReducedMotion();
    void escapeDoesNotCloseTheWindow();
    void theWindowControlClosesTheWindow();
};

void tst_MainWindow::theFormHasItsWidgets()
{
    const FakePagesWindow fixture;
    QCOMPARE(fixture.window.objectName(), QStringLiteral("DlgCustomizationTool_v2"));
    QCOMPARE(fixture.window.windowTitle(), QStringLiteral("Pelix Customization Tool"));
    QCOMPARE(fixture.window.findChild<QLabel *>(QStringLiteral("label_pct"))->text(),
             QStringLiteral("Pelix Customization Tool"));
    for (const char *name :
         {"gridLayout", "widget_toolbar", "horizontalLayout", "tb_open", "widget", "tb_save", "widget_2",
          "horizontalLayout_3", "tb_info", "tb_about", "widget_logo", "horizontalLayout_2", "label_pct_icon",
          "label_pct", "widget_category", "verticalLayout_category"})
        QVERIFY2(fixture.window.findChild<QObject *>(QLatin1String(name)), name);
}

void tst_MainWindow::theToolTipsAreThoseOfTheMode_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("openText");
    QTest::addColumn<QString>("saveText");
    QTest::addColumn<QString>("openImage");
    QTest::newRow("package") << 0 << QStringLiteral("Import a pkg installation package")
                             << QStringLiteral("Save the configured settings as installation package")
                             << QStringLiteral(":/img/open-normal.png");
    QTest::newRow("profile")
        << 1 << QStringLiteral("Import a .mobileconfig configuration profile")
        << QStringLiteral("Save the configured settings as a\u00a0.mobileconfig configuration profile")
        << QStringLiteral(":/img/open2-normal.png");
}

void tst_MainWindow::theToolTipsAreThoseOfTheMode()
{
    QFETCH(int, type);
    QFETCH(QString, openText);
    QFETCH(QString, saveText);
    QFETCH(QString, openImage);
    const FakePagesWindow fixture(true, PCW_CONFIGTYPE(type));
    const auto tip = [&fixture](const char *name) { return fixture.tool(name)->toolTip(); };
    QVERIFY(tip("tb_open").contains(QStringLiteral(">Open<")) && tip("tb_open").contains(openText));
    QVERIFY(tip("tb_save").contains(QStringLiteral(">Save<")) && tip("tb_save").contains(saveText));
    QVERIFY(tip("tb_info").contains(QStringLiteral(">Information<")) &&
            tip("tb_info").contains(QStringLiteral("Customization Wizard Help")));
    QVERIFY(tip("tb_about").contains(QStringLiteral(">About<")) &&
            tip("tb_about").contains(QStringLiteral("About Customization Wizard")));
    QVERIFY(fixture.tool("tb_open")->styleSheet().contains(openImage));
    QVERIFY(fixture.tool("tb_save")->styleSheet().contains(QStringLiteral(":/img/save-disable.png")));
}

void tst_MainWindow::theStackStandsBesideTheColumnWithItsMargin()
{
    const FakePagesWindow fixture;
    const auto *grid = fixture.window.findChild<QGridLayout *>(QStringLiteral("gridLayout"));
    QLayout *stack = fixture.window.findChild<QStackedLayout *>();
    QCOMPARE(grid->itemAtPosition(1, 1)->layout(), stack);
    QCOMPARE(stack->contentsMargins(), QMargins(16, 16, 16, 16));
}

void tst_MainWindow::theMenuOpensAtOnceAndOffersTheAboutBox()
{
    FakePagesWindow fixture;
    const QToolButton *button = fixture.tool("tb_about");
    QCOMPARE(button->popupMode(), QToolButton::InstantPopup);
    QStringList texts;
    for (const QAction *action : button->menu()->actions())
        texts << action->text();
    QCOMPARE(texts, QStringList({QStringLiteral("User Guide"), QStringLiteral("About PCT")}));

    QString title;
    DialogDriver::onNextModal(this, [&title](QDialog *dialog) {
        title = QString::fromLatin1(dialog->metaObject()->className());
        dialog->close();
    });
    button->menu()->actions().last()->trigger();
    QCOMPARE(title, QStringLiteral("DlgAbout"));
    QVERIFY(!fixture.window.findChild<DlgAbout *>());
}

void tst_MainWindow::theAboutBoxSaysWhatAndWhose()
{
    const DlgAbout about;
    QCOMPARE(about.windowTitle(), QStringLiteral("Pelix Customization Tool"));
    QCOMPARE(about.findChild<QLabel *>(QStringLiteral("label_title"))->text(),
             QStringLiteral("Pelix Customization Wizard"));
    QCOMPARE(about.findChild<QLabel *>(QStringLiteral("label_version"))->text(),
             QStringLiteral("Version ") + QLatin1String(toolVersion));
    QCOMPARE(about.findChild<QLabel *>(QStringLiteral("label_copyright"))->text(),
             QStringLiteral("Copyright © 2026 Pelix Software. All rights reserved."));
    QVERIFY(about.windowFlags().testFlag(Qt::CustomizeWindowHint));
    QVERIFY(about.windowFlags().testFlag(Qt::WindowCloseButtonHint));
    QVERIFY(!(about.windowFlags() & Qt::WindowMinMaxButtonsHint));
    QVERIFY(about.findChildren<QAbstractButton *>().isEmpty());
}

void tst_MainWindow::atFirstOnlyAPackageCanBeOpened()
{
    FakePagesWindow fixture;
    fixture.window.show();
    QVERIFY(fixture.welcomePage()->isVisible());
    QVERIFY(fixture.tool("tb_open")->isEnabled());
    QVERIFY(!fixture.tool("tb_save")->isEnabled());
    QVERIFY(!fixture.pageButton(fixture.first)->isEnabled());
    QVERIFY(!fixture.first->m_page);
    fixture.window.RefreshStackLayoutWidget();
    QVERIFY(fixture.shows(fixture.welcomePage()));
}

void tst_MainWindow::aProfileNeedsNoFileBeforeThePagesCanBeUsed()
{
    FakePagesWindow fixture(true, PCW_CONFIG_PROFILE);
    QVERIFY(!fixture.first->m_page);
    fixture.window.show();
    QVERIFY(fixture.first->m_page);
    QCOMPARE(fixture.first->m_imports, 1);
    QVERIFY(fixture.pageButton(fixture.first)->isEnabled());
    fixture.window.hide();
    fixture.window.show();
    QCOMPARE(fixture.first->m_imports, 1);
}

void tst_MainWindow::theWaitingIndicatorStandsInTheMiddle()
{
    QWidget parent;
    parent.resize(301, 200);
    CPDF_Waiting waiting(&parent);
    parent.show();
    QVERIFY(!waiting.isVisible());
    waiting.start();
    QVERIFY(waiting.isVisible());
    QCOMPARE(waiting.size(), QSize(64, 64));
    QCOMPARE(waiting.pos(), QPoint(150 - 32, 99 - 32));
    parent.resize(401, 300);
    waiting.setpos();
    QCOMPARE(waiting.pos(), QPoint(200 - 32, 149 - 32));
    waiting.stop();
    QVERIFY(!waiting.isVisible());
}

void tst_MainWindow::theWaitingIndicatorStandsStillWithReducedMotion()
{
    const QTemporaryDir folder;
    qputenv("XDG_CONFIG_HOME", QFile::encodeName(folder.path()));
    QWidget parent;
    CPDF_Waiting waiting(&parent);
    parent.show();
    const QMovie *movie = waiting.findChild<QLabel *>()->movie();
    waiting.start();
    QCOMPARE(movie->state(), QMovie::Running);
    waiting.stop();
    TestFiles::write(folder.filePath(QStringLiteral("gtk-3.0/settings.ini")),
                     "[Settings]\ngtk-enable-animations=false\n");
    waiting.start();
    QCOMPARE(movie->state(), QMovie::NotRunning);
    QVERIFY(!movie->currentPixmap().isNull());
    qunsetenv("XDG_CONFIG_HOME");
}

void tst_MainWindow::escapeDoesNotCloseTheWindow()
{
    FakePagesWindow fixture;
    fixture.window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&fixture.window));
    QTest::keyClick(&fixture.window, Qt::Key_Escape);
    QVERIFY(fixture.window.isVisible());
}

void tst_MainWindow::theWindowControlClosesTheWindow()
{
    FakePagesWindow fixture;
    fixture.window.show();
    QVERIFY(fixture.window.close());
    QVERIFY(!fixture.window.isVisible());
}

QTEST_MAIN(tst_MainWindow)
#include "tst_MainWindow.moc"
