// SPDX-License-Identifier: Apache-2.0
#include "config/EditorXmlData.h"
#include "config/Product.h"
#include "pages/PageHandler.h"
#include "pages/preferences/advertisement/tab_prefer_advertisement.h"
#include "pages/preferences/startpage/tab_prefer_startpage.h"
#include "pages/preferences/tab_preference.h"
#include "resources/Resources.h"

#include <QtTest>
#include <QtWidgets>

namespace {

/// A sub-page with an id and title of the test's choice.
class SampleHandler : public PreferHandler<tab_prefer_startpage>
{
public:
    explicit SampleHandler(int id)
        : PreferHandler(Product::editor(), {id, QString::number(id)})
    {
    }
};

class HandlerWithoutForm : public SampleHandler
{
public:
    using SampleHandler::SampleHandler;
    QWidget *GetWidget(bool) override { return nullptr; }
};

/// Stands for the main window: known to pages by its object name and its slot only.
class Window : public QWidget
{
    Q_OBJECT

public:
    explicit Window(const QString &name = QStringLiteral("DlgCustomizationTool_v2")) { setObjectName(name); }

    int reloads = 0;

public slots:
    void On_ReloadInformation() { ++reloads; }
};

struct Page
{
    explicit Page(bool editor)
        : handler(editor)
        , widget(static_cast<tab_preference *>(handler.GetWidget(true)))
        , list(widget->findChild<QListView *>(QStringLiteral("listView")))
    {
    }

    QStringList titles() const { return qobject_cast<QStringListModel *>(list->model())->stringList(); }

    void clickRow(int row, Qt::KeyboardModifiers modifiers = Qt::NoModifier) const
    {
        const QRect rect = list->visualRect(list->model()->index(row, 0));
        QTest::mouseClick(list->viewport(), Qt::LeftButton, modifiers, rect.center());
    }

    QString shownTitle() const { return widget->GetCurrentHandler()->GetTabTitle(); }

    CHandler_Preference handler;
    const std::unique_ptr<tab_preference> widget;
    QListView *const list;
};

const QStringList editorTitles{QStringLiteral("Advertisement"),
                               QStringLiteral("Microsoft Information Protection (MIP)"),
                               QStringLiteral("Configure Login Domain"),
                               QStringLiteral("Enable iManage10 SSO Login"),
                               QStringLiteral("Hide My Apps"),
                               QStringLiteral("Security Setting"),
                               QStringLiteral("Start Page")};
const QStringList readerTitles{QStringLiteral("Microsoft Information Protection (MIP)"),
                               QStringLiteral("Security Setting"), QStringLiteral("Start Page")};

} // namespace

class tst_PreferencePage : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        initPctResources();
        QLoggingCategory::setFilterRules(QStringLiteral("default.debug=false"));
    }

    void saysWhereItGoesAndHowItsButtonLooks()
    {
        CHandler_Preference handler(true);
        QCOMPARE(handler.GetTabId(), 3);
        QCOMPARE(handler.GetTabName(), QStringLiteral("Preferences"));
        QCOMPARE(handler.GetTabTitle(), QStringLiteral("Preferences"));
        QCOMPARE(handler.GetTabTooltip(), QStringLiteral("Allow you to customize some basic settings."));
        QCOMPARE(handler.GetTabIcon(), QStringLiteral(":/img/preference.png"));
        QVERIFY(!handler.IsOnlyForEditor());
        QVERIFY(handler.SupportsProfile());
    }

    void theEditorShowsAllSevenInRegistrationOrder() { QCOMPARE(Page(true).titles(), editorTitles); }

    void theReaderShowsMipSecurityAndStartPageOnly() { QCOMPARE(Page(false).titles(), readerTitles); }

    void theNewRowIsSelectedAndShown()
    {
        tab_preference page(true);
        const auto *list = page.findChild<QListView *>(QStringLiteral("listView"));
        QVERIFY(!page.GetCurrentHandler());
        for (const int id : {5, 0, 7}) {
            const auto handler = std::make_shared<SampleHandler>(id);
            QVERIFY(page.Register(handler));
            const QModelIndexList selected = list->selectionModel()->selectedRows();
            QCOMPARE(selected.size(), 1);
            QCOMPARE(selected.first().data().toString(), QString::number(id));
            QCOMPARE(page.GetCurrentHandler()->GetTabId(), id);
            QVERIFY(page.isAncestorOf(handler->GetWidget(false)));
        }
    }

    void refusesWhatIsMissingOutOfRangeOrThereAlready()
    {
        tab_preference page(true);
        const auto first = std::make_shared<SampleHandler>(2);
        QVERIFY(page.Register(first));
        QVERIFY(!page.Register(std::make_shared<SampleHandler>(2)));
        QVERIFY(!page.Register(std::make_shared<SampleHandler>(8)));
        QVERIFY(!page.Register(std::make_shared<SampleHandler>(-1)));
        QVERIFY(!page.Register(std::make_shared<HandlerWithoutForm>(3)));
        QVERIFY(!page.Register(nullptr));
        QCOMPARE(page.GetCurrentHandler(), std::shared_ptr<IPreferenceHandler>(first));
        QCOMPARE(page.findChild<QListView *>(QStringLiteral("listView"))->model()->rowCount(), 1);
    }

    void refusesEditorSubPagesForTheReader()
    {
        tab_preference page(false);
        QVERIFY(!page.Register(std::make_shared<CHandler_Prefer_Advertisement>(false)));
        QVERIFY(page.Register(std::make_shared<CHandler_Prefer_StartPage>(false)));
    }

    void aClickedRowShowsItsSubPage_data()
    {
        QTest::addColumn<bool>("editor");
        QTest::newRow("Editor") << true;
        QTest::newRow("Reader") << false;
    }

    void aClickedRowShowsItsSubPage()
    {
        QFETCH(bool, editor);
        const Page page(editor);
        page.widget->resize(900, 700);
        page.widget->show();
        for (int row = 0; row < page.list->model()->rowCount(); ++row) {
            page.clickRow(row);
            QCOMPARE(page.shownTitle(), page.titles().at(row));
            QVERIFY(page.widget->GetCurrentHandler()->GetWidget(false)->isVisible());
        }
    }

    void aClickWithCtrlLeavesTheShownRowSelected()
    {
        const Page page(true);
        page.widget->resize(900, 700);
        page.widget->show();
        page.clickRow(2);
        page.clickRow(2, Qt::ControlModifier);
        QCOMPARE(page.list->selectionModel()->selectedRows().size(), 1);
        QCOMPARE(page.list->selectionModel()->selectedRows().first().row(), 2);
        QCOMPARE(page.shownTitle(), editorTitles.at(2));
    }

    void helpIsAtTheAnchorOfTheShownSubPage_data()
    {
        QTest::addColumn<int>("row");
        QTest::addColumn<QString>("help");
        const QString page = QStringLiteral("Preferences.html");
        QTest::newRow("Advertisement") << 0 << QString(page + QStringLiteral("#Advertisement"));
        QTest::newRow("MIP") << 1
                             << QString(page + QStringLiteral("#AIP%20Default%20and%20Mandatory%20Labeling"));
        QTest::newRow("Login Domain") << 2 << QString(page + QStringLiteral("#Configure%20Login%20Domain"));
        QTest::newRow("iManage") << 3 << QString(page + QStringLiteral("#Enable%20iManage10%20SSO%20Login"));
        QTest::newRow("My Apps") << 4 << page;
        QTest::newRow("Security") << 5 << QString(page + QStringLiteral("#Security%20Settings"));
        QTest::newRow("Start Page") << 6 << QString(page + QStringLiteral("#Start%20Page"));
    }

    void helpIsAtTheAnchorOfTheShownSubPage()
    {
        QFETCH(int, row);
        Page page(true);
        page.list->setCurrentIndex(page.list->model()->index(row, 0));
        QTEST(page.handler.GetInfoName(), "help");
    }

    void helpWithoutAPageIsThePlainOne()
    {
        QCOMPARE(CHandler_Preference(true).GetInfoName(), QStringLiteral("Preferences.html"));
    }

    void theMainWindowIsToldWhenAnotherSubPageIsShown()
    {
        Window window;
        auto *between = new QWidget(&window);
        Page page(true);
        page.widget->setParent(between);
        page.list->setCurrentIndex(page.list->model()->index(2, 0));
        QCOMPARE(window.reloads, 1);
        page.list->setCurrentIndex(page.list->model()->index(2, 0));
        QCOMPARE(window.reloads, 1);
        page.list->setCurrentIndex(page.list->model()->index(0, 0));
        QCOMPARE(window.reloads, 2);
        page.widget->setParent(nullptr);
    }

    void theMainWindowIsFoundWhenAParentOfThePageComesLater()
    {
        Page page(true);
        QWidget between;
        page.widget->setParent(&between);
        Window window;
        between.setParent(&window);
        window.show();
        page.list->setCurrentIndex(page.list->model()->index(1, 0));
        QCOMPARE(window.reloads, 1);
        page.widget->setParent(nullptr);
        between.setParent(nullptr);
    }

    void otherWindowsAreLeftAlone()
    {
        Window other(QStringLiteral("another"));
        QDialog withoutSlot;
        withoutSlot.setObjectName(QStringLiteral("DlgCustomizationTool_v2"));
        Page page(true);
        for (QWidget *window : {static_cast<QWidget *>(&other), static_cast<QWidget *>(&withoutSlot)}) {
            page.widget->setParent(window);
            page.list->setCurrentIndex(page.list->model()->index(0, 0));
            page.list->setCurrentIndex(page.list->model()->index(1, 0));
        }
        QCOMPARE(other.reloads, 0);
        page.widget->setParent(nullptr);
    }

    void layoutIsListAndSubPageTwoToTen()
    {
        const Page page(true);
        const auto *row = page.widget->findChild<QHBoxLayout *>(QStringLiteral("horizontalLayout"));
        QCOMPARE(row->count(), 2);
        QCOMPARE(row->itemAt(0)->widget(), page.list);
        QVERIFY(qobject_cast<QStackedLayout *>(row->itemAt(1)->layout()));
        QCOMPARE(row->stretch(0), 2);
        QCOMPARE(row->stretch(1), 10);
        QCOMPARE(row->contentsMargins(), QMargins(16, 16, 16, 16));
        QCOMPARE(page.widget->layout()->objectName(), QStringLiteral("verticalLayout"));
    }

    void scrollAreaAndTitleAreThePrescribedOnes()
    {
        const Page page(true);
        const auto *area = page.widget->findChild<QScrollArea *>(QStringLiteral("scrollArea"));
        QCOMPARE(area->styleSheet(), QStringLiteral("QScrollArea#scrollArea{\nborder:none;\n}"));
        QCOMPARE(area->widget()->objectName(), QStringLiteral("scrollAreaWidgetContents"));
        QCOMPARE(area->widget()->styleSheet(), QStringLiteral("QWidget#scrollAreaWidgetContents{\n\t"
                                                              "background-color: rgb(255, 255, 255);\n}"));
        QCOMPARE(page.widget->findChild<QLabel *>(QStringLiteral("label_title"))->text(),
                 QStringLiteral("Preferences"));
    }

    void importFailsWithoutPageOrRecord()
    {
        Page page(true);
        CTabWidget other;
        const EditorXmlData data;
        QVERIFY(page.handler.ImportProperty(page.widget.get(), &data));
        QVERIFY(!page.handler.ImportProperty(page.widget.get(), nullptr));
        QVERIFY(!page.handler.ImportProperty(&other, &data));
        QVERIFY(!CHandler_Preference(true).ImportProperty(page.widget.get(), &data));
    }

    void valuesAreInvalidWithoutAPageAndForUnknownNames()
    {
        Page page(true);
        QVERIFY(!page.handler.GetProperty(QStringLiteral("cb_defaultpdf")).isValid());
        QVERIFY(!CHandler_Preference(true).GetProperty(QStringLiteral("cb_hidemyapps")).isValid());
    }
};

QTEST_MAIN(tst_PreferencePage)
#include "tst_PreferencePage.moc"
