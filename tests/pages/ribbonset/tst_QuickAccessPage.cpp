// SPDX-License-Identifier: Apache-2.0
#include "config/EditorXmlData.h"
#include "pages/ribbonset/QuickAccessBar.h"
#include "pages/ribbonset/RibbonTree.h"
#include "pages/ribbonset/tab_ribbonset_tabelem.h"
#include "resources/Resources.h"
#include "RibbonItems.h"

#include <QTreeWidget>
#include <QtTest>

namespace {

const QString bar = QStringLiteral("TabElements");
const QString file = QStringLiteral("Ribbon_Page_Bar");
const QString home = QStringLiteral("Ribbon_Page_Home");

/// A handler with its page, as the Ribbon Set page has it.
struct Page
{
    explicit Page(bool editor)
        : handler((configureProduct(editor), editor))
        , widget(handler.GetWidget(true))
        , tree(widget->findChild<QTreeWidget *>(QStringLiteral("treeWidget")))
        , root(tree->invisibleRootItem())
    {
    }

    bool import(const QString &controls)
    {
        QDomDocument document;
        EditorXmlData data;
        data.elemQuickAccessBar =
            parsed(document, QStringLiteral("<QuickAccessBar>%1</QuickAccessBar>").arg(controls));
        return handler.ImportProperty(widget.get(), &data);
    }

    void tick(const QString &parent, const QString &name) const
    {
        itemAt(root, {parent, name})->setCheckState(0, Qt::Checked);
    }

    /// "action page group" of each control that is saved.
    QStringList saved()
    {
        handler.OnBeforeSave();
        QStringList controls;
        for (QDomElement control = theEditorXmlData.elemQuickAccessBar.firstChildElement(); !control.isNull();
             control = control.nextSiblingElement()) {
            controls.append(control.attribute(QStringLiteral("action")) % QLatin1Char(' ') %
                            control.attribute(QStringLiteral("page")) % QLatin1Char(' ') %
                            control.attribute(QStringLiteral("group")));
        }
        return controls;
    }

    CHandler_RibbonSet_TabElem handler;
    const std::unique_ptr<QWidget> widget;
    QTreeWidget *const tree;
    QTreeWidgetItem *const root;
};

QString control(const QString &action, const QString &page, const QString &group)
{
    return QStringLiteral("<control action='%1' page='%2' group='%3'/>").arg(action, page, group);
}

QTreeWidgetItem *addItem(QTreeWidgetItem *parent, const QString &name, const QString &group = {})
{
    QDomDocument document;
    auto *item = RibbonTree::newItem(parsed(document, QStringLiteral("<Item Name='%1'/>").arg(name)));
    item->setData(0, RibbonTree::ownRole, group);
    parent->addChild(item);
    return item;
}

} // namespace

class tst_QuickAccessPage : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { initPctResources(); }
    void cleanup()
    {
        configureProduct(true);
        theEditorXmlData = EditorXmlData();
    }

    void saysWhereItGoes()
    {
        CHandler_RibbonSet_TabElem handler(true);
        QCOMPARE(handler.GetTabId(), 1);
        QCOMPARE(handler.GetTabTitle(), QStringLiteral("Quick Access Toolbar"));
        QCOMPARE(handler.GetTabTooltip(), QString());
        QCOMPARE(handler.GetInfoAnchorId(), QString());
        QVERIFY(!handler.IsOnlyForEditor());
        QCOMPARE(handler.GetWidget(false), nullptr);
    }

    void treeHasOneColumn()
    {
        const Page page(true);
        QCOMPARE(page.tree->columnCount(), 1);
        QCOMPARE(page.tree->headerItem()->text(0), QStringLiteral("1"));
    }

    void treeHasTwoLevelsAndNoPanels()
    {
        const Page page(true);
        for (int i = 0; i < page.root->childCount(); ++i) {
            const QTreeWidgetItem *top = page.root->child(i);
            QVERIFY2(top->childCount() > 0, qPrintable(top->text(0)));
            for (int j = 0; j < top->childCount(); ++j) {
                const QTreeWidgetItem *item = top->child(j);
                QCOMPARE(item->childCount(), 0);
                QVERIFY(!RibbonTree::nameOf(item).startsWith(QLatin1String("Ribbon_Group_")));
                QCOMPARE(item->checkState(0), Qt::Unchecked);
            }
        }
        QCOMPARE(page.root->childCount(), 17);
    }

    void searchAndAccountAreNotOffered()
    {
        const Page page(true);
        QVERIFY(!itemAt(page.root, {bar, QStringLiteral("Ribbonbar_Search")}));
        QVERIFY(!itemAt(page.root, {bar, QStringLiteral("PelixAccount")}));
        QCOMPARE(itemAt(page.root, {bar})->childCount(), 6);
    }

    void controlsKeepTheNameOfTheirPanel()
    {
        const Page page(true);
        QCOMPARE(itemAt(page.root, {home, QStringLiteral("Ribbon_Action_Hand")})->data(0, Qt::UserRole + 1),
                 QVariant(QStringLiteral("Ribbon_Group_Home_Tools")));
    }

    void readerHasNoEditorControlsAndItsOwnEditCategory()
    {
        const Page page(false);
        QCOMPARE(page.root->childCount(), 13);
        QVERIFY(!itemAt(page.root, {bar, QStringLiteral("Ribbon_Action_Bar_Blank")}));
        QVERIFY(!itemAt(page.root, {home, QStringLiteral("Ribbon_Action_EditText")}));
        const QString edit = QStringLiteral("Ribbon_Page_Edit");
        QVERIFY(itemAt(page.root, {edit, QStringLiteral("Ribbon_Action_EditReader_Copy")}));
        QVERIFY(!itemAt(page.root, {edit, QStringLiteral("Ribbon_Action_EditText")}));
    }

    void nothingTickedSavesAnEmptyBar()
    {
        Page page(true);
        QVERIFY(page.saved().isEmpty());
        QCOMPARE(theEditorXmlData.elemQuickAccessBar.tagName(), QStringLiteral("QuickAccessBar"));
    }

    void barAndFileCategoryAreSavedAsOther()
    {
        Page page(true);
        page.tick(bar, QStringLiteral("Ribbon_Action_Bar_Undo"));
        page.tick(file, QStringLiteral("Ribbon_Action_FilePage_Print"));
        page.tick(home, QStringLiteral("Ribbon_Action_Hand"));
        QCOMPARE(page.saved(), (QStringList{QStringLiteral("Ribbon_Action_Bar_Undo Other Other"),
                                            QStringLiteral("Ribbon_Action_FilePage_Print Other Other"),
                                            QStringLiteral("Ribbon_Action_Hand Ribbon_Page_Home "
                                                           "Ribbon_Group_Home_Tools")}));
    }

    void savedControlsHaveTheThreeAttributesOnly()
    {
        Page page(true);
        page.tick(home, QStringLiteral("Ribbon_Action_Hand"));
        page.handler.OnBeforeSave();
        const QDomElement saved = theEditorXmlData.elemQuickAccessBar.firstChildElement();
        QCOMPARE(saved.tagName(), QStringLiteral("control"));
        QCOMPARE(saved.attributes().count(), 3);
        QVERIFY(!saved.hasChildNodes());
    }

    void tickingACategoryTicksItsControlsWhichAloneAreSaved()
    {
        Page page(true);
        itemAt(page.root, {bar})->setCheckState(0, Qt::Checked);
        QCOMPARE(page.saved().size(), 6);
        itemAt(page.root, {bar, QStringLiteral("Ribbon_Action_Bar_Undo")})->setCheckState(0, Qt::Unchecked);
        QCOMPARE(itemAt(page.root, {bar})->checkState(0), Qt::PartiallyChecked);
        QCOMPARE(page.saved().size(), 5);
    }

    void tickReachesNoControlOfThatNameElsewhere()
    {
        Page page(true);
        page.tick(home, QStringLiteral("Ribbon_Action_RotateView"));
        QCOMPARE(page.saved(), QStringList{QStringLiteral("Ribbon_Action_RotateView Ribbon_Page_Home "
                                                          "Ribbon_Group_Home_Rotate")});
    }

    void emptyCategoryIsNeverSaved()
    {
        QTreeWidget tree;
        addItem(tree.invisibleRootItem(), home)->setCheckState(0, Qt::Checked);
        QVERIFY(!quickAccessFragment(tree.invisibleRootItem()).documentElement().hasChildNodes());
    }

    void importTicksTheControlAndExpandsItsCategory()
    {
        Page page(true);
        QVERIFY(page.import(control(QStringLiteral("Ribbon_Action_RotateView"),
                                    QStringLiteral("Ribbon_Page_View"), QStringLiteral("any"))));
        QCOMPARE(hiddenPaths(page.root),
                 QSet<QString>{QStringLiteral("Ribbon_Page_View/Ribbon_Action_RotateView")});
        QVERIFY(itemAt(page.root, {QStringLiteral("Ribbon_Page_View")})->isExpanded());
        QVERIFY(!itemAt(page.root, {home})->isExpanded());
        QCOMPARE(itemAt(page.root, {QStringLiteral("Ribbon_Page_View")})->checkState(0),
                 Qt::PartiallyChecked);
    }

    void importMatches_data()
    {
        QTest::addColumn<QString>("controls");
        QTest::addColumn<QStringList>("hidden");
        const QString undo = QStringLiteral("Ribbon_Action_Bar_Undo");
        const QString print = QStringLiteral("Ribbon_Action_FilePage_Print");
        const QString hand = QStringLiteral("Ribbon_Action_Hand");
        const QString other = QStringLiteral("Other");
        const QString group = QStringLiteral("Ribbon_Group_Home_Tools");
        const QStringList none;
        const QStringList theHand{QStringLiteral("Ribbon_Page_Home/Ribbon_Action_Hand")};
        QTest::newRow("the bar as Other")
            << control(undo, other, other)
            << QStringList{QStringLiteral("TabElements/Ribbon_Action_Bar_Undo")};
        QTest::newRow("File as Other") << control(print, other, other)
                                       << QStringList{QStringLiteral("Ribbon_Page_Bar/"
                                                                     "Ribbon_Action_FilePage_Print")};
        QTest::newRow("Other whatever the page")
            << control(print, home, other)
            << QStringList{QStringLiteral("Ribbon_Page_Bar/"
                                          "Ribbon_Action_FilePage_Print")};
        QTest::newRow("no Other elsewhere") << control(hand, other, other) << none;
        QTest::newRow("page") << control(hand, home, group) << theHand;
        QTest::newRow("page alone") << control(hand, home, QString()) << theHand;
        QTest::newRow("group that names the category") << control(hand, QString(), home) << theHand;
        QTest::newRow("another page") << control(hand, QStringLiteral("Ribbon_Page_View"), group) << none;
        QTest::newRow("another case") << control(hand, home.toUpper(), group) << none;
        QTest::newRow("unknown action") << control(QStringLiteral("x"), home, group) << none;
        QTest::newRow("a category is no action") << control(home, QString(), QString()) << none;
        QTest::newRow("twice") << control(hand, home, group) + control(hand, home, group) << theHand;
        QTest::newRow("no attributes") << QStringLiteral("<control/>") << none;
        QTest::newRow("another tag") << QStringLiteral("<Control action='%1' page='%2'/>").arg(hand, home)
                                     << none;
        QTest::newRow("unknown, then known")
            << control(QStringLiteral("x"), home, group) + control(hand, home, group) << theHand;
    }

    void importMatches()
    {
        QFETCH(QString, controls);
        QFETCH(QStringList, hidden);
        Page page(true);
        QVERIFY(page.import(controls));
        QCOMPARE(hiddenPaths(page.root), QSet<QString>(hidden.begin(), hidden.end()));
    }

    void deeperItemsMatchByGroupAndPage()
    {
        QTreeWidget tree;
        QTreeWidgetItem *top = addItem(tree.invisibleRootItem(), QStringLiteral("page"));
        QTreeWidgetItem *first = addItem(addItem(top, QStringLiteral("first")), QStringLiteral("action"));
        QTreeWidgetItem *second = addItem(addItem(top, QStringLiteral("second")), QStringLiteral("action"));
        QDomDocument document;
        applyQuickAccessFragment(
            tree.invisibleRootItem(),
            parsed(document, QStringLiteral("<QuickAccessBar><control action='action' "
                                            "page='page' group='second'/></QuickAccessBar>")));
        QVERIFY(!RibbonTree::isChecked(first));
        QVERIFY(RibbonTree::isChecked(second));
        QVERIFY(top->isExpanded());
        QVERIFY(second->parent()->isExpanded());
    }

    void firstMatchInTreeOrderIsTheOne()
    {
        QTreeWidget tree;
        QTreeWidgetItem *top = addItem(tree.invisibleRootItem(), QStringLiteral("page"));
        QTreeWidgetItem *first = addItem(top, QStringLiteral("action"));
        QTreeWidgetItem *second = addItem(top, QStringLiteral("action"));
        QDomDocument document;
        applyQuickAccessFragment(tree.invisibleRootItem(),
                                 parsed(document, QStringLiteral("<QuickAccessBar><control action='action' "
                                                                 "page='page'/></QuickAccessBar>")));
        QVERIFY(RibbonTree::isChecked(first));
        QVERIFY(!RibbonTree::isChecked(second));
    }

    void importWithoutABarUnticksEverything_data()
    {
        QTest::addColumn<QString>("xml");
        QTest::newRow("none") << QString();
        QTest::newRow("does not parse") << QStringLiteral("<QuickAccessBar><control");
        QTest::newRow("another root") << QStringLiteral("<RibbonUI>%1</RibbonUI>")
                                             .arg(control(QStringLiteral("Ribbon_Action_Hand"), home, home));
    }

    void importWithoutABarUnticksEverything()
    {
        QFETCH(QString, xml);
        Page page(true);
        itemAt(page.root, {home})->setCheckState(0, Qt::Checked);
        QDomDocument document;
        EditorXmlData data;
        data.elemQuickAccessBar = parsed(document, xml);
        QVERIFY(page.handler.ImportProperty(page.widget.get(), &data));
        QVERIFY(hiddenPaths(page.root).isEmpty());
        QCOMPARE(itemAt(page.root, {home})->checkState(0), Qt::Unchecked);
    }

    void tellsScreenReadersWhatItIs()
    {
        QCOMPARE(Page(true).tree->accessibleName(), QStringLiteral("Quick Access Toolbar"));
    }
};

QTEST_MAIN(tst_QuickAccessPage)
#include "tst_QuickAccessPage.moc"
