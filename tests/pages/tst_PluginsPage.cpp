// SPDX-License-Identifier: Apache-2.0
#include "config/CCommon.h"
#include "config/DefaultPlugins.h"
#include "config/EditorXmlData.h"
#include "pages/plugins/tab_plugins.h"
#include "pages/PXCheckBox.h"
#include "resources/Resources.h"

#include <QAction>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QScrollArea>
#include <QScrollBar>
#include <QSplitter>
#include <QtTest>

namespace {

const QString listName = QStringLiteral("listWidget_pluginList");

/// A handler with its page, as the main window has it.
struct Page
{
    explicit Page(bool editor)
        : handler(editor)
        , widget(handler.GetWidget(true))
        , list(widget->findChild<QListWidget *>(listName))
    {
    }

    PXCheckBox *box(int row) const { return qobject_cast<PXCheckBox *>(list->itemWidget(list->item(row))); }

    QString path(int row) const { return list->item(row)->data(Qt::UserRole + 1).toString(); }

    bool import(const QString &unloaded)
    {
        EditorXmlData data;
        data.strUnloadPluginArray = unloaded;
        return handler.ImportProperty(widget.get(), &data);
    }

    QString marked() { return handler.GetProperty(listName).toString(); }

    CHandler_Plugins handler;
    const std::unique_ptr<QWidget> widget;
    QListWidget *const list;
};

} // namespace

class tst_PluginsPage : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        initPctResources();
        // Qt reports each property of the check boxes' style that it does not know.
        QLoggingCategory::setFilterRules(QStringLiteral("default.debug=false"));
    }

    void saysWhereItGoesAndHowItsButtonLooks()
    {
        CHandler_Plugins handler(true);
        QCOMPARE(handler.GetTabId(), 5);
        QCOMPARE(handler.GetTabName(), QStringLiteral("Plugins"));
        QCOMPARE(handler.GetTabTitle(), QStringLiteral("Plugins"));
        QCOMPARE(handler.GetTabTooltip(),
                 QStringLiteral("Allow you to configure settings regarding plugins."));
        QCOMPARE(handler.GetTabIcon(), QStringLiteral(":/img/plugins.png"));
        QVERIFY(!handler.IsOnlyForEditor());
        QCOMPARE(handler.GetInfoName(), QStringLiteral("Plugins.html"));
    }

    void isThereWhenAProfileIsMade() { QVERIFY(CHandler_Plugins(true).SupportsProfile()); }

    void formHasThePrescribedTexts()
    {
        const Page page(true);
        QCOMPARE(page.widget->windowTitle(), QStringLiteral("Form"));
        QCOMPARE(page.widget->findChild<QLabel *>(QStringLiteral("label_title"))->text(),
                 QStringLiteral("Plugins"));
        const auto *scrollArea = page.widget->findChild<QScrollArea *>(QStringLiteral("scrollArea"));
        QCOMPARE(scrollArea->widget()->objectName(), QStringLiteral("scrollAreaWidgetContents"));
        QCOMPARE(scrollArea->widget()->findChild<QLabel *>(QStringLiteral("label"))->text(),
                 QStringLiteral("Mark the plugin to disable:"));
    }

    void listsThePluginsOfTheProductInFileOrder_data()
    {
        QTest::addColumn<bool>("editor");
        QTest::addColumn<int>("count");
        QTest::newRow("Editor") << true << 23;
        QTest::newRow("Reader") << false << 16;
    }

    void listsThePluginsOfTheProductInFileOrder()
    {
        QFETCH(bool, editor);
        const Page page(editor);
        const QList<_EditorXmlPuginData_> plugins = CCommon::EditorXmlReadPluginsTemplate(editor);
        QTEST(page.list->count(), "count");
        for (int row = 0; row < page.list->count(); ++row) {
            QCOMPARE(page.box(row)->text(), plugins.at(row).name);
            QCOMPARE(page.path(row), plugins.at(row).path);
            QCOMPARE(page.list->item(row)->toolTip(), plugins.at(row).description);
        }
    }

    void rowsAreAsWideAsTheListAnd28High()
    {
        const Page page(true);
        QCOMPARE(page.list->item(0)->sizeHint(), QSize(page.list->viewport()->width(), 28));
    }

    void aPluginWithoutADescriptionIsListedLikeAnyOther()
    {
        Page page(true);
        const int row = rowOf(page, QStringLiteral("PelixReadAloud.dylib"));
        QVERIFY(page.list->item(row)->toolTip().isEmpty());
        QVERIFY(!page.box(row)->text().isEmpty());
        QVERIFY(page.import(page.path(row)));
        QCOMPARE(page.marked(), QString(page.path(row) + QLatin1Char(';')));
    }

    void aLineCountsWhatIsNotLoaded()
    {
        Page page(true);
        const auto *count = page.widget->findChild<QLabel *>(QStringLiteral("label_count"));
        QCOMPARE(count->text(), QStringLiteral("0 of 23 are not loaded"));
        page.box(3)->setCheckState(Qt::Checked);
        page.box(8)->setCheckState(Qt::Checked);
        QCOMPARE(count->text(), QStringLiteral("2 of 23 are not loaded"));
        page.box(8)->setCheckState(Qt::Unchecked);
        QCOMPARE(count->text(), QStringLiteral("1 of 23 are not loaded"));
        QCOMPARE(page.list->item(3)->data(Qt::AccessibleDescriptionRole).toString(),
                 QStringLiteral("not loaded"));
        QCOMPARE(page.list->item(3)->data(Qt::AccessibleTextRole).toString(), page.box(3)->text());
    }

    void allNoneAndTheOthersAreMarkedAmongWhatTheFilterShows()
    {
        Page page(true);
        page.widget->show();
        const QList<QAction *> actions = page.widget->actions();
        QCOMPARE(actions.size(), 3);
        auto *filter = page.widget->findChild<QLineEdit *>(QStringLiteral("lineEdit_filter"));
        filter->setText(page.box(0)->text());
        QVERIFY(!page.list->item(0)->isHidden());
        QVERIFY(page.list->item(1)->isHidden());
        actions.at(0)->trigger();
        QCOMPARE(page.marked(), QString(page.path(0) + QLatin1Char(';')));
        QTest::keyClick(filter, Qt::Key_Escape);
        QCOMPARE(filter->text(), QString());
        QVERIFY(!page.list->item(1)->isHidden());
        actions.at(2)->trigger();
        QCOMPARE(page.marked().count(QLatin1Char(';')), 22);
        QVERIFY(!page.marked().contains(page.path(0)));
        actions.at(1)->trigger();
        QCOMPARE(page.marked(), QString());
    }

    void nothingIsMarkedAtFirst()
    {
        Page page(false);
        const QVariant marked = page.handler.GetProperty(listName);
        QVERIFY(marked.isValid());
        QCOMPARE(marked.toString(), QString());
    }

    void readingBackGivesListOrderWhateverTheRecordsOrder()
    {
        Page page(true);
        const QStringList names{page.path(7), page.path(0), page.path(3)};
        QVERIFY(page.import(names.join(QLatin1Char(';'))));
        QCOMPARE(page.marked(), QString(names.at(1) + QLatin1Char(';') + names.at(2) + QLatin1Char(';') +
                                        names.at(0) + QLatin1Char(';')));
    }

    void anUnknownLibraryTicksNothing()
    {
        Page page(true);
        QVERIFY(page.import(QStringLiteral("PelixNoSuchThing.dylib")));
        QCOMPARE(page.marked(), QString());
    }

    void libraryNamesAreComparedWithCase()
    {
        Page page(true);
        QVERIFY(page.import(page.path(0).toUpper()));
        QCOMPARE(page.marked(), QString());
    }

    void twoSeparatorsInARowAreAsGoodAsOne()
    {
        Page one(true);
        Page two(true);
        QVERIFY(one.import(one.path(1) + QLatin1Char(';') + one.path(2)));
        QVERIFY(two.import(two.path(1) + QStringLiteral(";;") + two.path(2)));
        QVERIFY(!one.marked().isEmpty());
        QCOMPARE(two.marked(), one.marked());
    }

    void importOnlyTicks()
    {
        Page page(true);
        QVERIFY(page.import(page.path(4)));
        QVERIFY(page.import(page.path(5)));
        QCOMPARE(page.marked(), QString(page.path(4) + QLatin1Char(';') + page.path(5) + QLatin1Char(';')));
    }

    void aMarkedRowWithoutATextIsSkipped()
    {
        Page page(true);
        QVERIFY(page.import(page.path(0) + QLatin1Char(';') + page.path(1)));
        page.box(0)->setText(QString());
        QCOMPARE(page.marked(), QString(page.path(1) + QLatin1Char(';')));
    }

    void aMarkedRowWithoutALibraryNameIsSkipped()
    {
        Page page(true);
        page.box(0)->setCheckState(Qt::Checked);
        page.list->item(0)->setData(Qt::UserRole + 1, QVariant());
        page.box(1)->setCheckState(Qt::Checked);
        page.list->item(1)->setData(Qt::UserRole + 1, QVariantMap());
        QCOMPARE(page.marked(), QString());
    }

    void importFailsWithoutPageOrRecord()
    {
        Page page(true);
        QVERIFY(!page.handler.ImportProperty(page.widget.get(), nullptr));
        CTabWidget other;
        const EditorXmlData data;
        QVERIFY(!page.handler.ImportProperty(&other, &data));
        QVERIFY(!CHandler_Plugins(true).ImportProperty(page.widget.get(), &data));
    }

    void valuesAreInvalidWithoutAPage() { QVERIFY(!CHandler_Plugins(true).GetProperty(listName).isValid()); }

    void otherNamesAreNoPropertiesOfThePage()
    {
        Page page(true);
        QVERIFY(!page.handler.GetProperty(QStringLiteral("cb_defaultpdf")).isValid());
    }

    void rowsFollowTheWidthThatAHelpPanelLeaves()
    {
        const Page page(true);
        page.widget->resize(800, 400);
        page.widget->show();
        QSplitter *splitter = static_cast<CTabWidget *>(page.widget.get())->Splitter();
        splitter->addWidget(new QWidget);
        splitter->setSizes({500, 300});
        QTRY_VERIFY(page.list->isVisible() && page.list->viewport()->width() < 500);
        QTRY_COMPARE(page.box(0)->width(), page.list->viewport()->width());
        QCOMPARE(page.list->item(0)->sizeHint(), QSize(page.list->viewport()->width(), 28));
    }

    void everyPluginIsReachedWithTheKeyboard()
    {
        const Page page(true);
        page.widget->resize(500, 300);
        page.widget->show();
        QVERIFY(QTest::qWaitForWindowActive(page.widget.get()));
        page.box(0)->setFocus();
        for (int row = 1; row < page.list->count(); ++row)
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        PXCheckBox *last = page.box(page.list->count() - 1);
        QCOMPARE(QApplication::focusWidget(), last->focusProxy());
        const QRect seen = last->visibleRegion().boundingRect();
        QCOMPARE(seen, last->rect());
    }

private:
    static int rowOf(const Page &page, const QString &path)
    {
        int row = 0;
        while (row < page.list->count() && page.path(row) != path)
            ++row;
        return row;
    }
};

QTEST_MAIN(tst_PluginsPage)
#include "tst_PluginsPage.moc"
