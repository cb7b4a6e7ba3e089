// SPDX-License-Identifier: Apache-2.0
// What the window does for keys, drops and the focus, and what its marks show.
#include "app/PageButton.h"
#include "app/WindowActions.h"
#include "resources/Resources.h"
#include "tests/app/BuildFlow.h"
#include "tests/app/DialogScript.h"
#include "tests/app/ProfileFlow.h"
#include "tests/support/DialogDriver.h"

#include <QtTest>
#include <QtWidgets>

namespace {

using Window = DlgCustomizationTool_v2;

QCheckBox *startPage(const Window &window)
{
    return window.findChild<QCheckBox *>(QStringLiteral("checkBox_showStartPg"));
}

/// Keys work in the active window.
bool isActive(Window &window)
{
    window.activateWindow();
    return QTest::qWaitForWindowActive(&window);
}

} // namespace

class tst_WindowKeys : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        initPctResources();
        // What help says is not looked at here.
        qputenv("PCT_MODULES", "/nowhere");
    }
    void init() { theEditorXmlData = EditorXmlData(); }

    void keysTurnThePages();
    void f1OpensAndClosesHelp();
    void theMenusHaveTheSameActions();
    void theFocusStaysAfterASave();
    void tabLandsOnTheChosenPage();
    void aKeptDocumentGetsItsSuffix();
    void whatDiffersFromItsDefaultIsMarkedAndReset();
    void aRibbonThatDiffersIsMarked();
    void aDropOnASettingsPageIsRefused();

private:
    ShownMessage m_message;
};

void tst_WindowKeys::aDropOnASettingsPageIsRefused()
{
    const BuildFlow flow;
    const QString package = flow.sample(true);
    const auto window = flow.openWindow(package);
    window->findChild<QToolButton *>(QStringLiteral("Preferences"))->click();
    QVERIFY(!WindowDriver::dropFiles(window.get(), {package}));
    auto *field = window->findChild<QTextEdit *>(QStringLiteral("tt_defaultLaunchAttachmentPerms"));
    QVERIFY(!WindowDriver::dropFiles(field->viewport(), {package}));
    QCOMPARE(field->toPlainText(), QString());
}

void tst_WindowKeys::keysTurnThePages()
{
    const ProfileFlow flow;
    const auto window = flow.openWindow();
    QVERIFY(isActive(*window));
    QStringList shown;
    for (const Qt::Key key :
         {Qt::Key_PageDown, Qt::Key_PageDown, Qt::Key_PageDown, Qt::Key_PageDown, Qt::Key_PageUp}) {
        QTest::keyClick(window.get(), key, Qt::ControlModifier);
        for (const char *page : {"Preferences", "Ribbon Set", "Plugins"}) {
            if (tool(*window, page)->isChecked())
                shown += QLatin1String(page);
        }
    }
    QCOMPARE(shown, QStringList({QStringLiteral("Preferences"), QStringLiteral("Ribbon Set"),
                                 QStringLiteral("Plugins"), QStringLiteral("Preferences"),
                                 QStringLiteral("Plugins")}));
}

void tst_WindowKeys::f1OpensAndClosesHelp()
{
    const ProfileFlow flow;
    const auto window = flow.openWindow();
    QVERIFY(isActive(*window));
    QTest::keyClick(window.get(), Qt::Key_PageDown, Qt::ControlModifier);
    auto *list = window->findChild<QListView *>(QStringLiteral("listView"));
    list->setFocus();
    QTest::keyClick(window.get(), Qt::Key_F1);
    QVERIFY(tool(*window, "tb_info")->isChecked());
    QCOMPARE(window->Splitter()->sizes().last(), 285);
    // Somebody reads in the panel and closes it there.
    window->Splitter()->widget(1)->setFocusPolicy(Qt::StrongFocus);
    window->Splitter()->widget(1)->setFocus();
    auto *inPanel = new QLineEdit(window->Splitter()->widget(1));
    inPanel->show();
    inPanel->setFocus();
    QTest::keyClick(window.get(), Qt::Key_F1);
    QVERIFY(!tool(*window, "tb_info")->isChecked());
    QCOMPARE(window->focusWidget(), list);
}

void tst_WindowKeys::theMenusHaveTheSameActions()
{
    QWidget window;
    QStringList done;
    WindowActions::Deeds deeds;
    deeds.open = [&done] { done += QStringLiteral("open"); };
    deeds.showAbout = [&done] { done += QStringLiteral("about"); };
    WindowActions actions(deeds, window);
    QStringList titles;
    QStringList entries;
    for (const QMenu *menu : actions.menus()) {
        titles += menu->title();
        for (QAction *action : menu->actions()) {
            entries += action->text();
            if (action->text() == QLatin1String("About PCT") ||
                action->text().startsWith(QLatin1String("Open")))
                action->trigger();
        }
    }
    QCOMPARE(titles, QStringList({QStringLiteral("File"), QStringLiteral("Edit"), QStringLiteral("Window"),
                                  QStringLiteral("Help")}));
    QCOMPARE(done, QStringList({QStringLiteral("open"), QStringLiteral("about")}));
    for (const QAction *action : window.actions())
        QVERIFY2(entries.contains(action->text()), qPrintable(action->text()));
    QVERIFY(entries.filter(QStringLiteral("&")).isEmpty());
}

void tst_WindowKeys::theFocusStaysAfterASave()
{
    const ProfileFlow flow;
    const auto window = flow.openWindow();
    QVERIFY(isActive(*window));
    QTest::keyClick(window.get(), Qt::Key_PageDown, Qt::ControlModifier);
    tool(*window, "tb_save")->setFocus();
    ProfileFlow::save(*window, {Answers::choose(flow.output()), Answers::read(&m_message)});
    QCOMPARE(window->focusWidget(), tool(*window, "tb_save"));
}

void tst_WindowKeys::tabLandsOnTheChosenPage()
{
    const ProfileFlow flow;
    const auto window = flow.openWindow();
    for (const char *page : {"Ribbon Set", "Preferences", "Plugins"}) {
        tool(*window, page)->setChecked(true);
        for (const char *other : {"Ribbon Set", "Preferences", "Plugins"})
            QCOMPARE(tool(*window, other)->focusPolicy() == Qt::TabFocus, qstrcmp(other, page) == 0);
    }
}

void tst_WindowKeys::aKeptDocumentGetsItsSuffix()
{
    BuildFlow flow;
    const auto window = flow.openWindow(flow.sample(true));
    TestFiles::write(flow.path("out/ProfStore.xml"), "there already");
    const QString kept = flow.path("out/kept");
    const auto answerName = [this, kept] { DialogDriver::chooseFile(this, kept); };
    QCOMPARE(flow.save(*window, flow.output(), true, answerName).text, BuildMessages::packageAndDocumentMade);
    QVERIFY(QFileInfo::exists(flow.path("out/kept.xml")));
}

void tst_WindowKeys::whatDiffersFromItsDefaultIsMarkedAndReset()
{
    const ProfileFlow flow;
    const auto window = flow.openWindow();
    QVERIFY(isActive(*window));
    QTest::keyClick(window.get(), Qt::Key_PageDown, Qt::ControlModifier);
    const auto *button = window->findChild<PageButton *>(QStringLiteral("Preferences"));
    QCOMPARE(button->count(), 0);
    QCheckBox *box = startPage(*window);
    box->setChecked(false);
    QTRY_COMPARE(button->count(), 1);
    QCOMPARE(button->accessibleDescription(), QStringLiteral("1 setting(s) differ from the defaults"));
    const auto *dot = box->parentWidget()->findChild<QWidget *>(QStringLiteral("changed"));
    QVERIFY(!dot->isHidden());
    QVERIFY(dot->geometry().right() < box->geometry().left());

    QTimer::singleShot(0, this, [] {
        auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
        menu->actions().last()->trigger();
        menu->close();
    });
    QContextMenuEvent asks(QContextMenuEvent::Keyboard, QPoint(), box->mapToGlobal(QPoint()));
    QApplication::sendEvent(box, &asks);
    QVERIFY(box->isChecked());
    QTRY_COMPARE(button->count(), 0);
    QVERIFY(dot->isHidden());
}

void tst_WindowKeys::aRibbonThatDiffersIsMarked()
{
    const ProfileFlow flow;
    const auto window = flow.openWindow();
    const auto *button = window->findChild<PageButton *>(QStringLiteral("Ribbon Set"));
    const auto trees =
        window->findChild<QWidget *>(QStringLiteral("tab_ribbonset"))->findChildren<QTreeWidget *>();
    QCOMPARE(trees.size(), 2);
    QCOMPARE(button->count(), 0);
    for (int marked = 0; marked < 2; ++marked) {
        trees.at(marked)->topLevelItem(1)->setCheckState(0, Qt::Checked);
        QTRY_COMPARE(button->count(), marked + 1);
    }
}

QTEST_MAIN(tst_WindowKeys)
#include "tst_WindowKeys.moc"
