// SPDX-License-Identifier: Apache-2.0
#include "config/EditorXmlData.h"
#include "config/RibbonDefinition.h"
#include "pages/ribbonset/CommonActions.h"
#include "pages/ribbonset/RibbonTree.h"
#include "pages/ribbonset/tab_ribbonset_ribcate.h"
#include "resources/Resources.h"
#include "RibbonItems.h"

#include <QLineEdit>
#include <QTreeWidget>
#include <QtTest>

namespace {

const QString searchHighlight = QStringLiteral("Ribbon_Action_SearchHighlight");

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

    bool import(const QString &fragment)
    {
        QDomDocument document;
        EditorXmlData data;
        data.elemRibbonCategory = parsed(document, fragment);
        return handler.ImportProperty(widget.get(), &data);
    }

    QTreeWidgetItem *item(const QString &category, const QString &name) const
    {
        QTreeWidgetItem *found = itemIn(root, category, name);
        if (!found)
            qFatal("no such item");
        return found;
    }

    CHandler_RibbonSet_RibCate handler;
    const std::unique_ptr<QWidget> widget;
    QTreeWidget *const tree;
    QTreeWidgetItem *const root;
};

/// How many elements below this one the configured product has.
int countInProduct(const QDomElement &parent)
{
    int count = 0;
    for (QDomElement child = parent.firstChildElement(); !child.isNull(); child = child.nextSiblingElement())
        count += existsInProduct(child) ? 1 + countInProduct(child) : 0;
    return count;
}

QStringList titlesOf(const QTreeWidgetItem *root)
{
    QStringList titles;
    for (int i = 0; i < root->childCount(); ++i)
        titles.append(root->child(i)->text(0));
    return titles;
}

} // namespace

class tst_RibbonCategoryPage : public QObject
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
        CHandler_RibbonSet_RibCate handler(true);
        QCOMPARE(handler.GetTabId(), 0);
        QCOMPARE(handler.GetTabTitle(), QStringLiteral("Ribbon Category"));
        QCOMPARE(handler.GetTabTooltip(), QString());
        QCOMPARE(handler.GetInfoAnchorId(), QString());
        QVERIFY(!handler.IsOnlyForEditor());
        QCOMPARE(handler.GetWidget(false), nullptr);
    }

    void treeHoldsAllThatTheProductHas_data() { productRows(); }

    void treeHoldsAllThatTheProductHas()
    {
        QFETCH(bool, editor);
        const Page page(editor);
        QCOMPARE(itemsBelow(page.root).size(), countInProduct(ribbonDefinition().documentElement()));
        QVERIFY(itemsBelow(page.root).size() > 200);
        QVERIFY(hiddenPaths(page.root).isEmpty());
    }

    void readerHasNoEditorItemsAndItsOwnEditCategory()
    {
        const Page page(false);
        QCOMPARE(titlesOf(page.root).join(QLatin1Char('|')),
                 QStringLiteral("Quick Access Toolbar|File|Home|Edit|Comment|View|Form|Protect|Pelix eSign|"
                                "Share|Help|Fill & Sign|Portfolio"));
        QVERIFY(!itemIn(page.root, QStringLiteral("Ribbon_Page_Bar"), QStringLiteral("Initial View")));
        QVERIFY(itemIn(page.root, QStringLiteral("Ribbon_Page_Edit"),
                       QStringLiteral("Ribbon_Group_EditReader_Select")));
        QVERIFY(!itemIn(page.root, QStringLiteral("Ribbon_Page_Edit"),
                        QStringLiteral("Ribbon_Group_Edit_Content")));
    }

    void editorHasNoReaderItemsAndItsOwnEditCategory()
    {
        const Page page(true);
        QCOMPARE(titlesOf(page.root).join(QLatin1Char('|')),
                 QStringLiteral("Quick Access Toolbar|File|Home|Convert|Edit|Organize|Comment|View|Form|"
                                "Protect|Pelix eSign|Share|Accessibility|Help|Fill & Sign|Join & Split|"
                                "Portfolio"));
        QVERIFY(itemIn(page.root, QStringLiteral("Ribbon_Page_Bar"), QStringLiteral("Initial View")));
        QVERIFY(itemIn(page.root, QStringLiteral("Ribbon_Page_Edit"),
                       QStringLiteral("Ribbon_Group_Edit_Content")));
        QVERIFY(!itemIn(page.root, QStringLiteral("Ribbon_Page_Edit"),
                        QStringLiteral("Ribbon_Group_EditReader_Select")));
    }

    void tickingAPanelTicksAllBelowAndUntickingASubItemMakesItPartial()
    {
        const Page page(true);
        QTreeWidgetItem *category = itemAt(page.root, {QStringLiteral("Ribbon_Page_Bar")});
        QTreeWidgetItem *panel = category->child(0);
        panel->setCheckState(0, Qt::Checked);
        for (const QTreeWidgetItem *item : itemsBelow(panel))
            QVERIFY2(RibbonTree::isChecked(item), qPrintable(item->text(0)));
        QCOMPARE(category->checkState(0), Qt::Checked);

        page.item(QStringLiteral("Ribbon_Page_Bar"), QStringLiteral("Fonts"))
            ->setCheckState(0, Qt::Unchecked);
        QTreeWidgetItem *properties = panel->child(0);
        QCOMPARE(properties->checkState(0), Qt::PartiallyChecked);
        QCOMPARE(panel->checkState(0), Qt::PartiallyChecked);
        QCOMPARE(category->checkState(0), Qt::PartiallyChecked);
        QCOMPARE(panel->child(1)->checkState(0), Qt::Checked);
    }

    void tickingSearchHighlightTicksItsTwinAndRecomputesTheTwinsParents_data()
    {
        QTest::addColumn<bool>("editor");
        QTest::addColumn<QString>("category");
        QTest::newRow("Editor") << true << QStringLiteral("Ribbon_Page_Home");
        QTest::newRow("Reader") << false << QStringLiteral("Ribbon_Page_Comment");
    }

    void tickingSearchHighlightTicksItsTwinAndRecomputesTheTwinsParents()
    {
        QFETCH(bool, editor);
        QFETCH(QString, category);
        const Page page(editor);
        const QTreeWidgetItem *twin = page.item(QStringLiteral("TabElements"), searchHighlight);
        QTreeWidgetItem *item = page.item(category, searchHighlight);
        QCOMPARE(twinOf(item), twin);
        item->setCheckState(0, Qt::Checked);
        QCOMPARE(twin->checkState(0), Qt::Checked);
        QCOMPARE(twin->parent()->checkState(0), Qt::PartiallyChecked);
        QCOMPARE(twin->parent()->parent()->checkState(0), Qt::PartiallyChecked);
        item->setCheckState(0, Qt::Unchecked);
        QCOMPARE(twin->checkState(0), Qt::Unchecked);
        QCOMPARE(twin->parent()->parent()->checkState(0), Qt::Unchecked);
    }

    void tickingACategoryTicksTheTwinsOfItsActions()
    {
        const Page page(true);
        itemAt(page.root, {QStringLiteral("Ribbon_Page_Edit")})->setCheckState(0, Qt::Checked);
        for (const char *name : {"Ribbon_Action_EditText", "Ribbon_Action_EditPageObject",
                                 "Ribbon_Action_EditPageObject_Shading"}) {
            const QTreeWidgetItem *twin = page.item(QStringLiteral("Ribbon_Page_Home"), QLatin1String(name));
            QCOMPARE(twin->checkState(0), Qt::Checked);
        }
        QCOMPARE(
            itemAt(page.root, {QStringLiteral("Ribbon_Page_Home"), QStringLiteral("Ribbon_Group_Home_Edit")})
                ->checkState(0),
            Qt::Checked);
        QCOMPARE(itemAt(page.root, {QStringLiteral("Ribbon_Page_Home")})->checkState(0),
                 Qt::PartiallyChecked);
    }

    void everyCommonActionOfAProductHasATwinOfItsName_data() { productRows(); }

    void everyCommonActionOfAProductHasATwinOfItsName()
    {
        QFETCH(bool, editor);
        const Page page(editor);
        const QStringList names = tab_ribbonset_ribcate::InitCommonActions();
        int linked = 0;
        for (const QTreeWidgetItem *item : itemsBelow(page.root)) {
            const QTreeWidgetItem *twin = twinOf(item);
            QCOMPARE(twin != nullptr, names.contains(RibbonTree::nameOf(item)));
            if (!twin)
                continue;
            QCOMPARE(RibbonTree::nameOf(twin), RibbonTree::nameOf(item));
            QCOMPARE(twinOf(twin), item);
            ++linked;
        }
        QVERIFY(linked >= 12);
    }

    void commonActionsComeInTheirOrder()
    {
        QCOMPARE(tab_ribbonset_ribcate::InitCommonActions().join(QLatin1Char(' ')),
                 QStringLiteral("Ribbon_Action_SearchHighlight Ribbon_Action_EditPageObject "
                                "Ribbon_Action_EditPageObject_Text Ribbon_Action_EditPageObject_Image "
                                "Ribbon_Action_EditPageObject_Shape Ribbon_Action_EditPageObject_Shading "
                                "Ribbon_Action_EditPageObject_All Ribbon_Action_EditText "
                                "Ribbon_Action_Bookmark Ribbon_Action_QuickOcr Ribbon_Action_RotateView "
                                "Ribbon_Menu_Item_RotateLeft Ribbon_Action_Typewriter "
                                "Ribbon_Action_FillandSign"));
    }

    void savingWithNothingTickedGivesAnEmptyRibbonUI()
    {
        Page page(true);
        page.handler.OnBeforeSave();
        QCOMPARE(theEditorXmlData.elemRibbonCategory.tagName(), QStringLiteral("RibbonUI"));
        QVERIFY(!theEditorXmlData.elemRibbonCategory.hasChildNodes());
    }

    void quickAccessToolbarIsWrittenAsACategory()
    {
        Page page(true);
        itemAt(page.root, {QStringLiteral("TabElements")})->setCheckState(0, Qt::Checked);
        page.handler.OnBeforeSave();
        const QDomElement bar = theEditorXmlData.elemRibbonCategory.firstChildElement();
        QCOMPARE(bar.tagName(), QStringLiteral("Category"));
        QCOMPARE(bar.attribute(QStringLiteral("Text")), QStringLiteral("TabElements"));
        QCOMPARE(bar.firstChildElement().tagName(), QStringLiteral("Panel"));
    }

    void savedFragmentOutlivesThePage()
    {
        {
            Page page(true);
            page.item(QStringLiteral("Ribbon_Page_Bar"), QStringLiteral("Fonts"))
                ->setCheckState(0, Qt::Checked);
            page.handler.OnBeforeSave();
        }
        Page fresh(true);
        QVERIFY(fresh.handler.ImportProperty(fresh.widget.get(), &theEditorXmlData));
        QCOMPARE(hiddenPaths(fresh.root),
                 QSet<QString>{QStringLiteral("Ribbon_Page_Bar/Ribbon_Group_FilePage/"
                                              "Ribbon_Action_FilePage_Properties/Fonts")});
        QCOMPARE(itemAt(fresh.root, {QStringLiteral("Ribbon_Page_Bar")})->checkState(0),
                 Qt::PartiallyChecked);
    }

    void importUnticksWhatTheRecordDoesNotName()
    {
        Page page(true);
        page.item(QStringLiteral("Ribbon_Page_Bar"), QStringLiteral("Fonts"))->setCheckState(0, Qt::Checked);
        QVERIFY(page.import(QString()));
        QVERIFY(hiddenPaths(page.root).isEmpty());
        QCOMPARE(itemAt(page.root, {QStringLiteral("Ribbon_Page_Bar")})->checkState(0), Qt::Unchecked);
    }

    void importTicksNothingThatTheFragmentDoesNotName()
    {
        Page page(true);
        QVERIFY(page.import(QStringLiteral(
            "<RibbonUI><Category Text='Ribbon_Page_Home' Hidden='0'><Panel Text='Ribbon_Group_Home_Rotate' "
            "Hidden='0'><Control Text='Ribbon_Action_RotateView' "
            "Hidden='1'/></Panel></Category></RibbonUI>")));
        QCOMPARE(hiddenPaths(page.root),
                 QSet<QString>{
                     QStringLiteral("Ribbon_Page_Home/Ribbon_Group_Home_Rotate/Ribbon_Action_RotateView")});
    }

    void editCategoryOfOneProductIsNotAppliedToThatOfTheOther()
    {
        Page editor(true);
        itemAt(editor.root, {QStringLiteral("Ribbon_Page_Edit"), QStringLiteral("Ribbon_Group_Edit_Content")})
            ->setCheckState(0, Qt::Checked);
        editor.handler.OnBeforeSave();
        Page reader(false);
        QVERIFY(reader.handler.ImportProperty(reader.widget.get(), &theEditorXmlData));
        QVERIFY(hiddenPaths(reader.root).isEmpty());
        QCOMPARE(itemAt(reader.root, {QStringLiteral("Ribbon_Page_Edit")})->checkState(0), Qt::Unchecked);
    }

    void importFailsWithoutPageOrRecord()
    {
        CHandler_RibbonSet_RibCate without(true);
        tab_ribbonset_ribcate other;
        const EditorXmlData data;
        QVERIFY(!without.ImportProperty(&other, &data));
        Page page(true);
        CTabWidget wrong;
        QVERIFY(!page.handler.ImportProperty(&wrong, &data));
        QVERIFY(!page.handler.ImportProperty(page.widget.get(), nullptr));
    }

    void ticksFollowTheKeyboard()
    {
        const Page page(true);
        page.tree->setCurrentItem(itemAt(page.root, {QStringLiteral("Ribbon_Page_Bar")}));
        QTest::keyClick(page.tree, Qt::Key_Right);
        QVERIFY(page.tree->currentItem()->isExpanded());
        QTest::keyClick(page.tree, Qt::Key_Down);
        QCOMPARE(page.tree->currentItem()->text(0), QStringLiteral("Main Panel"));
        QTest::keyClick(page.tree, Qt::Key_Space);
        QCOMPARE(itemAt(page.root, {QStringLiteral("Ribbon_Page_Bar")})->checkState(0), Qt::Checked);
        QTest::keyClick(page.tree, Qt::Key_Space);
        QVERIFY(hiddenPaths(page.root).isEmpty());
    }

    void partlyTickedItemBecomesTickedByTheKeyboard()
    {
        const Page page(true);
        page.item(QStringLiteral("Ribbon_Page_Bar"), QStringLiteral("Fonts"))->setCheckState(0, Qt::Checked);
        QTreeWidgetItem *category = itemAt(page.root, {QStringLiteral("Ribbon_Page_Bar")});
        page.tree->setCurrentItem(category);
        QTest::keyClick(page.tree, Qt::Key_Space);
        QCOMPARE(category->checkState(0), Qt::Checked);
    }

    void tellsScreenReadersWhatItIs()
    {
        const Page page(true);
        QCOMPARE(page.tree->accessibleName(), QStringLiteral("Ribbon Category"));
        QCOMPARE(page.widget->findChild<QLineEdit *>(QStringLiteral("lineEdit_filter"))->accessibleName(),
                 QStringLiteral("Filter"));
    }

private:
    static void productRows()
    {
        QTest::addColumn<bool>("editor");
        QTest::newRow("Editor") << true;
        QTest::newRow("Reader") << false;
    }
};

QTEST_MAIN(tst_RibbonCategoryPage)
#include "tst_RibbonCategoryPage.moc"
