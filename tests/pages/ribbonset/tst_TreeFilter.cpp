// SPDX-License-Identifier: Apache-2.0
#include "pages/ribbonset/HiddenItemDelegate.h"
#include "pages/ribbonset/RibbonTree.h"
#include "pages/ribbonset/tab_ribbonset_ribcate.h"
#include "resources/Resources.h"
#include "RibbonItems.h"

#include <QLabel>
#include <QLineEdit>
#include <QTreeWidget>
#include <QtTest>

namespace {

/// The Ribbon Category page, shown.
struct Page
{
    Page()
    {
        configureProduct(true);
        page.resize(400, 400);
        page.show();
        page.activateWindow();
    }

    QStringList shownTitles() const
    {
        QStringList titles;
        for (const QTreeWidgetItem *item : itemsBelow(root)) {
            if (!item->isHidden())
                titles.append(item->text(0));
        }
        return titles;
    }

    QSet<QTreeWidgetItem *> expanded() const
    {
        QSet<QTreeWidgetItem *> items;
        for (QTreeWidgetItem *item : itemsBelow(root)) {
            if (item->isExpanded())
                items.insert(item);
        }
        return items;
    }

    tab_ribbonset_ribcate page;
    QLineEdit *const line = page.findChild<QLineEdit *>(QStringLiteral("lineEdit_filter"));
    QTreeWidget *const tree = page.findChild<QTreeWidget *>(QStringLiteral("treeWidget"));
    QTreeWidgetItem *const root = tree->invisibleRootItem();
};

class OpenDelegate : public HiddenItemDelegate
{
public:
    using HiddenItemDelegate::initStyleOption;
};

} // namespace

class tst_TreeFilter : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { initPctResources(); }

    void aTickThatReachesBelowTheFilterSaysSo()
    {
        const Page page;
        const auto *label = page.page.findChild<QLabel *>(QStringLiteral("label_unseen"));
        QTreeWidgetItem *first = page.root->child(1);
        page.line->setText(first->child(0)->child(0)->text(0));
        first->setCheckState(0, Qt::Checked);
        QVERIFY(label->isVisible());
        page.line->clear();
        QVERIFY(!label->isVisible());
        first->setCheckState(0, Qt::Unchecked);
        QVERIFY(!label->isVisible());
    }

    void whatIsHiddenIsPaintedAsHidden()
    {
        const Page page;
        QTreeWidgetItem *category = page.root->child(1);
        category->child(0)->child(0)->setCheckState(0, Qt::Checked);
        const auto paintedOf = [&page](QTreeWidgetItem *item) {
            QStyleOptionViewItem option;
            option.initFrom(page.tree);
            const OpenDelegate delegate;
            delegate.initStyleOption(&option, page.tree->model()->index(page.root->indexOfChild(item), 0));
            return option;
        };
        QVERIFY(paintedOf(category).font.italic());
        QVERIFY(paintedOf(category).text.endsWith(QStringLiteral(" hidden)")));
        QCOMPARE(category->text(0), QStringLiteral("File"));
        category->setCheckState(0, Qt::Checked);
        QVERIFY(paintedOf(category).font.strikeOut());
        QVERIFY(!paintedOf(page.root->child(2)).font.strikeOut());
    }

    void lineSaysWhatItIsFor()
    {
        const Page page;
        QCOMPARE(page.line->placeholderText(), QStringLiteral("Filter"));
        QVERIFY(page.line->y() < page.tree->y());
    }

    void matchingItemsAndThoseAboveThemRemain()
    {
        const Page page;
        page.line->setText(QStringLiteral("watermark"));
        QCOMPARE(page.shownTitles(), (QStringList{QStringLiteral("Organize"), QStringLiteral("Page Marks"),
                                                  QStringLiteral("Watermark")}));
        QVERIFY(itemAt(page.root, {QStringLiteral("Ribbon_Page_Organize")})->isExpanded());
    }

    void everyShownItemMatchesOrLeadsToOneThatDoes()
    {
        const Page page;
        const QString text = QStringLiteral("sea");
        page.line->setText(text);
        int matches = 0;
        for (QTreeWidgetItem *item : itemsBelow(page.root)) {
            const QVector<QTreeWidgetItem *> below = itemsBelow(item);
            const auto matching = [&](const QTreeWidgetItem *one) {
                return one->text(0).contains(text, Qt::CaseInsensitive);
            };
            QCOMPARE(!item->isHidden(), matching(item) || std::any_of(below.begin(), below.end(), matching));
            matches += matching(item) ? 1 : 0;
        }
        QVERIFY(matches > 5);
    }

    void caseAndOuterBlanksDoNotMatter()
    {
        const Page page;
        page.line->setText(QStringLiteral("QUICK ocr"));
        const QStringList shown = page.shownTitles();
        QVERIFY(shown.contains(QStringLiteral("Quick OCR")));
        page.line->setText(QStringLiteral("  Quick OCR "));
        QCOMPARE(page.shownTitles(), shown);
    }

    void internalNamesDoNotMatch()
    {
        const Page page;
        page.line->setText(QStringLiteral("Ribbon_Action_"));
        QVERIFY(page.shownTitles().isEmpty());
    }

    void checkStatesStayAsTheyAre()
    {
        const Page page;
        itemAt(page.root, {QStringLiteral("Ribbon_Page_Home")})->setCheckState(0, Qt::Checked);
        const QSet<QString> before = hiddenPaths(page.root);
        for (const char *text : {"w", "watermark", "no such item", ""}) {
            page.line->setText(QLatin1String(text));
            QCOMPARE(hiddenPaths(page.root), before);
        }
    }

    void clearingShowsEverythingExpandedAsBefore()
    {
        const Page page;
        itemAt(page.root, {QStringLiteral("Ribbon_Page_Home")})->setExpanded(true);
        const QSet<QTreeWidgetItem *> before = page.expanded();
        page.line->setText(QStringLiteral("rotate"));
        QVERIFY(page.expanded() != before);
        page.line->setText(QStringLiteral("rotate view"));
        page.line->clear();
        QCOMPARE(page.expanded(), before);
        QCOMPARE(page.shownTitles().size(), itemsBelow(page.root).size());
    }

    void ticksOfNarrowedTreesReachWhatIsNotShown()
    {
        const Page page;
        page.line->setText(QStringLiteral("watermark"));
        QTreeWidgetItem *panel = itemAt(page.root, {QStringLiteral("Ribbon_Page_Organize"),
                                                    QStringLiteral("Ribbon_Group_Organize_Marks")});
        panel->setCheckState(0, Qt::Checked);
        for (const QTreeWidgetItem *item : itemsBelow(panel))
            QVERIFY(RibbonTree::isChecked(item));
    }

    void downAndReturnGoIntoTheTree_data()
    {
        QTest::addColumn<Qt::Key>("key");
        QTest::newRow("Down") << Qt::Key_Down;
        QTest::newRow("Return") << Qt::Key_Return;
        QTest::newRow("Enter") << Qt::Key_Enter;
    }

    void downAndReturnGoIntoTheTree()
    {
        QFETCH(Qt::Key, key);
        const Page page;
        page.line->setFocus();
        QTest::keyClicks(page.line, QStringLiteral("watermark"));
        QTest::keyClick(page.line, key);
        QCOMPARE(page.page.focusWidget(), page.tree);
        QCOMPARE(page.tree->currentItem()->text(0), QStringLiteral("Organize"));
        QTest::keyClick(page.tree, Qt::Key_Down);
        QTest::keyClick(page.tree, Qt::Key_Down);
        QCOMPARE(page.tree->currentItem()->text(0), QStringLiteral("Watermark"));
        QTest::keyClick(page.tree, Qt::Key_Space);
        QVERIFY(RibbonTree::isChecked(page.tree->currentItem()));
    }

    void downReturnsToTheItemThatWasCurrent()
    {
        const Page page;
        QTreeWidgetItem *home = itemAt(page.root, {QStringLiteral("Ribbon_Page_Home")});
        page.tree->setCurrentItem(home);
        QTest::keyClick(page.line, Qt::Key_Down);
        QCOMPARE(page.tree->currentItem(), home);
    }

    void downStaysInTheLineWhenNothingMatches()
    {
        const Page page;
        page.line->setFocus();
        page.line->setText(QStringLiteral("no such item"));
        QTest::keyClick(page.line, Qt::Key_Down);
        QCOMPARE(page.page.focusWidget(), page.line);
    }

    void tabGoesFromTheLineToTheTreeAndOut()
    {
        const Page page;
        page.line->setFocus();
        QTest::keyClick(page.line, Qt::Key_Tab);
        QCOMPARE(page.page.focusWidget(), page.tree);
        QTest::keyClick(page.tree, Qt::Key_Tab);
        QVERIFY(page.page.focusWidget() != page.tree);
    }

    void escapeEmptiesTheLineAndIsLeftToOthersWhenItIsEmpty()
    {
        const Page page;
        page.line->setText(QStringLiteral("watermark"));
        QTest::keyClick(page.line, Qt::Key_Escape);
        QVERIFY(page.line->text().isEmpty());
        QKeyEvent escape(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
        escape.ignore();
        QApplication::sendEvent(page.line, &escape);
        QVERIFY(!escape.isAccepted());
    }

    void keysForFindingLeadToTheLine()
    {
        const Page page;
        QVERIFY(QTest::qWaitForWindowActive(page.page.windowHandle()));
        page.tree->setFocus();
        QTest::keySequence(page.tree, QKeySequence::Find);
        QCOMPARE(page.page.focusWidget(), page.line);
    }
};

QTEST_MAIN(tst_TreeFilter)
#include "tst_TreeFilter.moc"
