// SPDX-License-Identifier: Apache-2.0
#include "pages/ribbonset/CommonActions.h"
#include "pages/ribbonset/RibbonFragment.h"
#include "pages/ribbonset/RibbonTree.h"
#include "RibbonItems.h"

#include <QtTest>

namespace {

QTreeWidgetItem *add(QTreeWidgetItem *parent, const char *name)
{
    QDomDocument document;
    const QString xml = QStringLiteral("<Item Name='%1' Title='%1'/>").arg(QLatin1String(name));
    auto *item = RibbonTree::newItem(parsed(document, xml));
    parent->addChild(item);
    return item;
}

/// Two categories; "shared" is in both, and once more at the end of the second.
struct Tree
{
    QTreeWidgetItem root;
    QTreeWidgetItem *first = add(&root, "first");
    QTreeWidgetItem *panel = add(first, "panel");
    QTreeWidgetItem *control = add(panel, "control");
    QTreeWidgetItem *subItem = add(control, "sub-item");
    QTreeWidgetItem *otherSubItem = add(control, "other sub-item");
    QTreeWidgetItem *shared1 = add(panel, "shared");
    QTreeWidgetItem *second = add(&root, "second");
    QTreeWidgetItem *shared2 = add(second, "shared");
    QTreeWidgetItem *below2 = add(shared2, "below");
    QTreeWidgetItem *sibling2 = add(second, "sibling");
};

QDomElement elementOf(const QTreeWidgetItem &root, QDomDocument &document)
{
    document = ribbonFragment(&root);
    return document.documentElement();
}

const CommonActions commonActions({QStringLiteral("shared")});

} // namespace

class tst_RibbonRules : public QObject
{
    Q_OBJECT

private slots:
    void newItemIsUntickedAndKnowsItsName()
    {
        QDomDocument document;
        const std::unique_ptr<QTreeWidgetItem> item(RibbonTree::newItem(
            parsed(document, QStringLiteral("<Panel Name='Internal' Title='Search &amp; Replace'/>"))));
        QCOMPARE(item->text(0), QStringLiteral("Search & Replace"));
        QCOMPARE(item->data(0, Qt::UserRole), QVariant(QStringLiteral("Internal")));
        QCOMPARE(item->data(0, Qt::CheckStateRole), QVariant(Qt::Unchecked));
        QVERIFY(item->flags() & Qt::ItemIsUserCheckable);
    }

    void stateReachesEveryItemBelow()
    {
        Tree tree;
        RibbonTree::updateChildItems(tree.first, Qt::Checked);
        for (const QTreeWidgetItem *item : itemsBelow(tree.first))
            QVERIFY(RibbonTree::isChecked(item));
        QVERIFY(!RibbonTree::isChecked(tree.second));
        QVERIFY(!RibbonTree::isChecked(tree.shared2));
    }

    void parentsFollowTheirChildren()
    {
        Tree tree;
        tree.subItem->setCheckState(0, Qt::Checked);
        RibbonTree::updateParentItems(tree.subItem);
        QCOMPARE(tree.control->checkState(0), Qt::PartiallyChecked);
        QCOMPARE(tree.panel->checkState(0), Qt::PartiallyChecked);
        QCOMPARE(tree.first->checkState(0), Qt::PartiallyChecked);
        tree.otherSubItem->setCheckState(0, Qt::Checked);
        RibbonTree::updateParentItems(tree.otherSubItem);
        QCOMPARE(tree.control->checkState(0), Qt::Checked);
        QCOMPARE(tree.panel->checkState(0), Qt::PartiallyChecked);
        RibbonTree::updateChildItems(tree.control, Qt::Unchecked);
        RibbonTree::updateParentItems(tree.subItem);
        QCOMPARE(tree.first->checkState(0), Qt::Unchecked);
    }

    void checkedItemsAreFoundAtAnyDepthBelowOnly()
    {
        Tree tree;
        tree.subItem->setCheckState(0, Qt::Checked);
        QVERIFY(RibbonTree::hasAnyCheckedChild(tree.first));
        QVERIFY(RibbonTree::hasAnyCheckedChild(tree.control));
        QVERIFY(!RibbonTree::hasAnyCheckedChild(tree.subItem));
        QVERIFY(!RibbonTree::hasAnyCheckedChild(tree.second));
    }

    void partlyCheckedIsNotChecked()
    {
        Tree tree;
        tree.control->setCheckState(0, Qt::PartiallyChecked);
        QVERIFY(!RibbonTree::hasAnyCheckedChild(tree.first));
    }

    void twinsAreLinkedInBothDirections()
    {
        Tree tree;
        commonActions.link(&tree.root);
        QCOMPARE(twinOf(tree.shared1), tree.shared2);
        QCOMPARE(twinOf(tree.shared2), tree.shared1);
        QCOMPARE(twinOf(tree.control), nullptr);
    }

    void laterPairOverwritesTheLinkOfTheFirstOfThree()
    {
        Tree tree;
        QTreeWidgetItem *shared3 = add(tree.second, "shared");
        commonActions.link(&tree.root);
        QCOMPARE(twinOf(tree.shared1), shared3);
        QCOMPARE(twinOf(shared3), tree.shared1);
        QCOMPARE(twinOf(tree.shared2), tree.shared1);
        tree.shared1->setCheckState(0, Qt::Checked);
        commonActions.UpdateCommonActionState(tree.shared1);
        QVERIFY(RibbonTree::isChecked(shared3));
        QVERIFY(!RibbonTree::isChecked(tree.shared2));
    }

    void twinTakesTheStateWithWhatIsBelowAndAboveIt()
    {
        Tree tree;
        commonActions.link(&tree.root);
        tree.shared1->setCheckState(0, Qt::Checked);
        commonActions.UpdateCommonActionState(tree.shared1);
        QCOMPARE(tree.shared2->checkState(0), Qt::Checked);
        QCOMPARE(tree.below2->checkState(0), Qt::Checked);
        QCOMPARE(tree.second->checkState(0), Qt::PartiallyChecked);
        QCOMPARE(tree.sibling2->checkState(0), Qt::Unchecked);
    }

    void twinsOfWhatIsBelowAnItemFollowToo()
    {
        Tree tree;
        commonActions.link(&tree.root);
        RibbonTree::updateChildItems(tree.first, Qt::Checked);
        commonActions.UpdateCommonActionState(tree.first);
        QCOMPARE(tree.shared2->checkState(0), Qt::Checked);
    }

    void treeWithNothingTickedSerialisesToAnEmptyRibbonUI()
    {
        Tree tree;
        QDomDocument document;
        const QDomElement ribbon = elementOf(tree.root, document);
        QCOMPARE(ribbon.tagName(), QStringLiteral("RibbonUI"));
        QVERIFY(!ribbon.hasChildNodes());
        QVERIFY(ribbon.attributes().isEmpty());
    }

    void partlyCheckedBranchIsWrittenWithItsTickedItemsOnly()
    {
        Tree tree;
        tree.subItem->setCheckState(0, Qt::Checked);
        RibbonTree::updateParentItems(tree.subItem);
        QCOMPARE(compact(ribbonFragment(&tree.root)),
                 QStringLiteral("Category first 0(Panel panel 0(Control control 0(SubItem sub-item 1)))"));
    }

    void checkedBranchIsWrittenAsAWhole()
    {
        Tree tree;
        tree.second->setCheckState(0, Qt::Checked);
        RibbonTree::updateChildItems(tree.second, Qt::Checked);
        QCOMPARE(compact(ribbonFragment(&tree.root)),
                 QStringLiteral("Category second 1(Panel shared 1(Control below 1)Panel sibling 1)"));
    }

    void topLevelTagFollowsTheTextAndNotTheName()
    {
        QTreeWidgetItem root;
        QTreeWidgetItem *byText = add(&root, "TabElements");
        QTreeWidgetItem *byName = add(&root, "TabElements");
        byName->setText(0, QStringLiteral("Quick Access Toolbar"));
        add(byText, "control")->setCheckState(0, Qt::Checked);
        add(byName, "control")->setCheckState(0, Qt::Checked);
        QCOMPARE(compact(ribbonFragment(&root)), QStringLiteral("TabElements TabElements 0(Control control 1)"
                                                                "Category TabElements 0(Panel control 1)"));
    }

    void applyingUnticksFirst()
    {
        Tree tree;
        RibbonTree::updateChildItems(&tree.root, Qt::Checked);
        QDomDocument document;
        applyRibbonFragment(&tree.root,
                            parsed(document, QStringLiteral("<RibbonUI><Category Text='second' "
                                                            "Hidden='0'><Panel Text='sibling' "
                                                            "Hidden='1'/></Category></RibbonUI>")));
        QCOMPARE(hiddenPaths(&tree.root), QSet<QString>{QStringLiteral("second/sibling")});
        QCOMPARE(tree.second->checkState(0), Qt::PartiallyChecked);
        QCOMPARE(tree.first->checkState(0), Qt::Unchecked);
    }

    void itemsAreMatchedUnderTheMatchingParentOnly()
    {
        Tree tree;
        QDomDocument document;
        applyRibbonFragment(&tree.root,
                            parsed(document, QStringLiteral("<RibbonUI><Category Text='second' "
                                                            "Hidden='0'><Panel Text='shared' "
                                                            "Hidden='1'/></Category></RibbonUI>")));
        QCOMPARE(hiddenPaths(&tree.root), QSet<QString>{QStringLiteral("second/shared")});
    }

    void malformedFragmentsHideNothingButWhatTheyName_data()
    {
        QTest::addColumn<QString>("xml");
        QTest::newRow("no element") << QString();
        QTest::newRow("does not parse") << QStringLiteral("<RibbonUI><Category Text='first' Hidden='1'>");
        QTest::newRow("another root") << QStringLiteral("<Other><Category Text='first' Hidden='1'/></Other>");
        QTest::newRow("nothing below") << QStringLiteral("<RibbonUI/>");
        QTest::newRow("unknown names")
            << QStringLiteral("<RibbonUI><Category Text='x' Hidden='1'/></RibbonUI>");
        QTest::newRow("no name") << QStringLiteral("<RibbonUI><Category Hidden='1'/></RibbonUI>");
        QTest::newRow("no state") << QStringLiteral("<RibbonUI><Category Text='first'/></RibbonUI>");
        QTest::newRow("a word") << QStringLiteral(
            "<RibbonUI><Category Text='first' Hidden='true'/></RibbonUI>");
        QTest::newRow("text") << QStringLiteral("<RibbonUI>first<!-- 1 --></RibbonUI>");
        QTest::newRow("wrong level") << QStringLiteral(
            "<RibbonUI><Panel Text='panel' Hidden='1'/></RibbonUI>");
        QTest::newRow("another case")
            << QStringLiteral("<RibbonUI><Category Text='First' Hidden='1'/></RibbonUI>");
    }

    void malformedFragmentsHideNothingButWhatTheyName()
    {
        QFETCH(QString, xml);
        Tree tree;
        RibbonTree::updateChildItems(&tree.root, Qt::Checked);
        QDomDocument document;
        applyRibbonFragment(&tree.root, parsed(document, xml));
        QCOMPARE(hiddenPaths(&tree.root), QSet<QString>());
    }

    void hiddenParentStaysHiddenWithoutWordOfItsChildren()
    {
        Tree tree;
        QDomDocument document;
        applyRibbonFragment(&tree.root, parsed(document, QStringLiteral("<RibbonUI><Category Text='first' "
                                                                        "Hidden='1'/></RibbonUI>")));
        QCOMPARE(hiddenPaths(&tree.root), QSet<QString>{QStringLiteral("first")});
    }

private:
    /// "Tag Text Hidden" of each element, those below it in brackets.
    static QString compact(const QDomElement &parent)
    {
        QString text;
        for (QDomElement child = parent.firstChildElement(); !child.isNull();
             child = child.nextSiblingElement()) {
            const QString below = compact(child);
            text += child.tagName() % QLatin1Char(' ') % child.attribute(QStringLiteral("Text")) %
                    QLatin1Char(' ') % child.attribute(QStringLiteral("Hidden"));
            if (!below.isEmpty())
                text += QLatin1Char('(') % below % QLatin1Char(')');
        }
        return text;
    }

    static QString compact(const QDomDocument &document) { return compact(document.documentElement()); }
};

QTEST_GUILESS_MAIN(tst_RibbonRules)
#include "tst_RibbonRules.moc"
