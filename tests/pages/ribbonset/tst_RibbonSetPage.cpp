// SPDX-License-Identifier: Apache-2.0
#include "config/EditorXmlData.h"
#include "pages/ISubPageHandler.h"
#include "pages/ribbonset/RibbonTree.h"
#include "pages/ribbonset/tab_ribbonset.h"
#include "resources/Resources.h"
#include "RibbonItems.h"

#include <QPointer>
#include <QSplitter>
#include <QToolButton>
#include <QTreeWidget>
#include <QtTest>

namespace {

/// A sub-page as a test wants it, which notes in what order it is called.
class FakeSubPage : public IRibbonSetHandler
{
public:
    explicit FakeSubPage(int id, bool onlyEditor = false)
        : m_id(id)
        , m_onlyEditor(onlyEditor)
    {
    }

    int GetTabId() override { return m_id; }
    QString GetTabTitle() const override { return QStringLiteral("Sub-page %1").arg(m_id); }
    QString GetTabTooltip() override { return {}; }
    bool IsOnlyForEditor() override { return m_onlyEditor; }
    bool ImportProperty(QWidget *page, const EditorXmlData *data) override
    {
        calls.append(QStringLiteral("import %1").arg(m_id));
        return page == m_page && data;
    }
    QWidget *GetWidget(bool create) override
    {
        if (create && !m_page && !hasNoPage)
            m_page = new QWidget;
        return m_page;
    }
    QString GetInfoAnchorId() override { return {}; }
    void OnBeforeSave() override { calls.append(QStringLiteral("save %1").arg(m_id)); }

    bool hasNoPage = false;
    static QStringList calls;

private:
    const int m_id;
    const bool m_onlyEditor;
    QPointer<QWidget> m_page;
};

QStringList FakeSubPage::calls;

QToolButton *buttonOf(const QWidget &page, const QString &text)
{
    for (QToolButton *button : page.findChildren<QToolButton *>()) {
        if (button->text() == text)
            return button;
    }
    return nullptr;
}

/// The page as the main window shows it, active so that it takes keys.
struct ShownPage
{
    ShownPage()
    {
        qobject_cast<tab_ribbonset *>(widget.get())->Splitter();
        widget->show();
        widget->activateWindow();
        if (!QTest::qWaitForWindowActive(widget.get()))
            qFatal("the page does not become active");
    }

    CHandler_RibbonSet handler{true};
    const std::unique_ptr<QWidget> widget{handler.GetWidget(true)};
};

const QString ribbonCategory = QStringLiteral("Ribbon Category");
const QString quickAccess = QStringLiteral("Quick Access Toolbar");

} // namespace

class tst_RibbonSetPage : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        initPctResources();
        configureProduct(true);
    }
    void cleanup()
    {
        FakeSubPage::calls.clear();
        theEditorXmlData = EditorXmlData();
    }

    void saysWhereItGoesAndHowItsButtonLooks()
    {
        CHandler_RibbonSet handler(true);
        QCOMPARE(handler.GetTabId(), 4);
        QCOMPARE(handler.GetTabName(), QStringLiteral("Ribbon Set"));
        QCOMPARE(handler.GetTabTitle(), QStringLiteral("Ribbon Set"));
        QCOMPARE(handler.GetTabTooltip(), QStringLiteral("Allow you to hide features from the Ribbon."));
        QCOMPARE(handler.GetTabIcon(), QStringLiteral(":/img/ribbon-set.png"));
        QVERIFY(QFile::exists(handler.GetTabIcon()));
        QVERIFY(!handler.IsOnlyForEditor());
        QVERIFY(handler.SupportsProfile());
        QCOMPARE(handler.GetInfoName(), QString());
    }

    void widgetIsMadeOnDemandOnly()
    {
        CHandler_RibbonSet handler(true);
        QCOMPARE(handler.GetWidget(false), nullptr);
        const std::unique_ptr<QWidget> page(handler.GetWidget(true));
        QVERIFY(qobject_cast<tab_ribbonset *>(page.get()));
        QCOMPARE(page->parent(), nullptr);
        QCOMPARE(handler.GetWidget(true), page.get());
    }

    void deletedWidgetIsMadeAfreshWithItsSubPages()
    {
        CHandler_RibbonSet handler(true);
        delete handler.GetWidget(true);
        handler.OnBeforeSave();
        QVERIFY(theEditorXmlData.elemRibbonCategory.isNull());
        const std::unique_ptr<QWidget> page(handler.GetWidget(true));
        QCOMPARE(page->findChildren<QTreeWidget *>().size(), 2);
    }

    void bothSubPagesHaveAButtonAndTheFirstIsShown()
    {
        CHandler_RibbonSet handler(true);
        const std::unique_ptr<QWidget> page(handler.GetWidget(true));
        page->show();
        const QToolButton *first = buttonOf(*page, ribbonCategory);
        const QToolButton *second = buttonOf(*page, quickAccess);
        QVERIFY(first && first->isChecked() && first->isVisible());
        QVERIFY(second && !second->isChecked() && second->isVisible());
        QVERIFY(first->x() < second->x());
        QCOMPARE(shownTree(*page)->accessibleName(), ribbonCategory);
    }

    void buttonsSwitchBetweenTheSubPages()
    {
        CHandler_RibbonSet handler(true);
        const std::unique_ptr<QWidget> widget(handler.GetWidget(true));
        auto *page = qobject_cast<tab_ribbonset *>(widget.get());
        page->Splitter();
        page->show();
        for (const QString &title : {quickAccess, ribbonCategory, quickAccess}) {
            QTest::mouseClick(buttonOf(*page, title), Qt::LeftButton);
            QCOMPARE(page->GetCurrentHandler()->GetTabTitle(), title);
            QCOMPARE(shownTree(*page)->accessibleName(), title);
        }
    }

    void arrowKeysSwitchBetweenTheSubPages()
    {
        const ShownPage page;
        buttonOf(*page.widget, ribbonCategory)->setFocus();
        QTest::keyClick(page.widget->focusWidget(), Qt::Key_Right);
        QCOMPARE(page.widget->focusWidget(), buttonOf(*page.widget, quickAccess));
        QCOMPARE(shownTree(*page.widget)->accessibleName(), quickAccess);
        QTest::keyClick(page.widget->focusWidget(), Qt::Key_Left);
        QCOMPARE(shownTree(*page.widget)->accessibleName(), ribbonCategory);
    }

    void tabGoesFromTheButtonsToTheFilterAndTheTree_data()
    {
        QTest::addColumn<QString>("title");
        QTest::newRow("first") << ribbonCategory;
        QTest::newRow("second") << quickAccess;
    }

    void tabGoesFromTheButtonsToTheFilterAndTheTree()
    {
        QFETCH(QString, title);
        const ShownPage page;
        QTest::mouseClick(buttonOf(*page.widget, title), Qt::LeftButton);
        buttonOf(*page.widget, title)->setFocus();
        QStringList visited;
        for (int i = 0; i < 3; ++i) {
            QTest::keyClick(page.widget->focusWidget(), Qt::Key_Tab);
            visited.append(page.widget->focusWidget()->objectName());
        }
        QCOMPARE(visited,
                 (QStringList{QStringLiteral("lineEdit_filter"), QStringLiteral("treeWidget"), title}));
    }

    void bothSubPagesAreFilledAndSaved()
    {
        CHandler_RibbonSet handler(true);
        const std::unique_ptr<QWidget> page(handler.GetWidget(true));
        QDomDocument ribbon;
        QDomDocument bar;
        EditorXmlData data;
        data.elemRibbonCategory = parsed(
            ribbon, QStringLiteral("<RibbonUI><Category Text='Ribbon_Page_Help' Hidden='1'/></RibbonUI>"));
        data.elemQuickAccessBar = parsed(
            bar, QStringLiteral("<QuickAccessBar><control action='Ribbon_Action_Bar_Undo' page='Other' "
                                "group='Other'/></QuickAccessBar>"));
        QVERIFY(handler.ImportProperty(page.get(), &data));
        handler.OnBeforeSave();
        QVERIFY(theEditorXmlData == data);
    }

    void importFailsWithoutPageOrRecord()
    {
        CHandler_RibbonSet handler(true);
        tab_ribbonset other(true);
        const EditorXmlData data;
        QVERIFY(!handler.ImportProperty(&other, &data));
        const std::unique_ptr<QWidget> page(handler.GetWidget(true));
        CTabWidget wrong;
        QVERIFY(!handler.ImportProperty(&wrong, &data));
        QVERIFY(!handler.ImportProperty(page.get(), nullptr));
    }

    void unwantedSubPagesAreRefused()
    {
        tab_ribbonset page(false);
        QVERIFY(!page.Register(nullptr));
        QVERIFY(!page.Register(std::make_shared<FakeSubPage>(0, true)));
        QVERIFY(!page.Register(std::make_shared<FakeSubPage>(2)));
        QVERIFY(!page.Register(std::make_shared<FakeSubPage>(-1)));
        const auto without = std::make_shared<FakeSubPage>(0);
        without->hasNoPage = true;
        QVERIFY(!page.Register(without));
        QVERIFY(page.findChildren<QToolButton *>().isEmpty());
        QCOMPARE(page.GetCurrentHandler(), nullptr);
    }

    void editorHasSubPagesThatAreOnlyForIt()
    {
        tab_ribbonset page(true);
        QVERIFY(page.Register(std::make_shared<FakeSubPage>(0, true)));
    }

    void secondSubPageOfAnIdIsRefusedAndTheFirstStays()
    {
        tab_ribbonset page(true);
        const auto first = std::make_shared<FakeSubPage>(1);
        QVERIFY(page.Register(first));
        QVERIFY(!page.Register(std::make_shared<FakeSubPage>(1)));
        QCOMPARE(page.GetCurrentHandler(), first);
        QCOMPARE(page.findChildren<QToolButton *>().size(), 1);
    }

    void subPageBelongsToThePage()
    {
        tab_ribbonset page(true);
        const auto handler = std::make_shared<FakeSubPage>(0);
        QVERIFY(page.Register(handler));
        QCOMPARE(handler->GetWidget(false)->parentWidget(), &page);
    }

    void subPagesAreCalledInTheOrderOfTheirIds()
    {
        tab_ribbonset page(true);
        QVERIFY(page.Register(std::make_shared<FakeSubPage>(1)));
        QVERIFY(page.Register(std::make_shared<FakeSubPage>(0)));
        page.ImportProperty(EditorXmlData());
        page.OnBeforeSave();
        QCOMPARE(FakeSubPage::calls.join(QLatin1Char('|')),
                 QStringLiteral("import 0|import 1|save 0|save 1"));
    }

private:
    /// The one tree that can be seen.
    static QTreeWidget *shownTree(const QWidget &page)
    {
        QVector<QTreeWidget *> shown;
        for (QTreeWidget *tree : page.findChildren<QTreeWidget *>()) {
            if (tree->isVisible())
                shown.append(tree);
        }
        if (shown.size() != 1)
            qFatal("not one tree is shown");
        return shown.first();
    }
};

QTEST_MAIN(tst_RibbonSetPage)
#include "tst_RibbonSetPage.moc"
