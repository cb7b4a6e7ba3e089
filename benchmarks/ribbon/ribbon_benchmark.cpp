// SPDX-License-Identifier: Apache-2.0
// How long the ribbon pages take, as a multiple of what Qt needs to fill equal trees that have no logic from
// rows in memory. Prints the best times, which the other work of the machine disturbs least, and their ratio.
#include "config/CCommon.h"
#include "config/EditorXmlData.h"
#include "pages/ribbonset/RibbonTree.h"
#include "pages/ribbonset/tab_ribbonset_ribcate.h"
#include "pages/ribbonset/tab_ribbonset_tabelem.h"
#include "resources/Resources.h"

#include <QApplication>
#include <QDomDocument>
#include <QElapsedTimer>
#include <QFile>
#include <QTextStream>
#include <QTreeWidget>

#include <algorithm>
#include <functional>
#include <vector>

namespace {

constexpr int rounds = 51;

using Work = std::function<void()>;

/// The pages under test.
struct Pages
{
    tab_ribbonset_ribcate categories;
    tab_ribbonset_tabelem bar;
};

QTreeWidget *treeOf(const QWidget &page)
{
    return page.findChild<QTreeWidget *>(QStringLiteral("treeWidget"));
}

qint64 nanoseconds(const Work &work)
{
    QElapsedTimer timer;
    timer.start();
    work();
    return timer.nsecsElapsed();
}

double bestMilliseconds(const std::vector<qint64> &times)
{
    return static_cast<double>(*std::min_element(times.begin(), times.end())) / 1e6;
}

/// A row of a tree that needs no definition any more.
struct Row
{
    QString title;
    QString name;
    std::vector<Row> below;
};

std::vector<Row> rowsBelow(const QTreeWidgetItem *parent)
{
    std::vector<Row> rows;
    for (int i = 0; i < parent->childCount(); ++i) {
        const QTreeWidgetItem *item = parent->child(i);
        rows.push_back({item->text(0), RibbonTree::nameOf(item), rowsBelow(item)});
    }
    return rows;
}

void fill(QTreeWidgetItem *parent, const std::vector<Row> &rows)
{
    for (const Row &row : rows) {
        auto *item = new QTreeWidgetItem(parent);
        item->setText(0, row.title);
        item->setData(0, RibbonTree::nameRole, row.name);
        item->setCheckState(0, Qt::Unchecked);
        fill(item, row.below);
    }
}

void tickTopItems(QTreeWidget *tree, Qt::CheckState state)
{
    for (int i = 0; i < tree->topLevelItemCount(); ++i)
        tree->topLevelItem(i)->setCheckState(0, state);
}

/// What happens once in a process, before the first page is built.
void readDefinition()
{
    QFile file(QStringLiteral(":/EditorXml/EditorXml/RibbonQuintorUI_Init.xml"));
    QDomDocument document;
    if (!file.open(QIODevice::ReadOnly) || !document.setContent(&file))
        qFatal("there is no ribbon definition");
}

/// Alternates the two, so that both meet the same state of the machine.
void compare(const QString &name, const Work &ours, const Work &fillEqualTrees)
{
    std::vector<qint64> ourTimes;
    std::vector<qint64> fillTimes;
    for (int i = 0; i < rounds; ++i) {
        fillTimes.push_back(nanoseconds(fillEqualTrees));
        ourTimes.push_back(nanoseconds(ours));
    }
    const double our = bestMilliseconds(ourTimes);
    const double fill = bestMilliseconds(fillTimes);
    QTextStream(stdout) << QStringLiteral("%1 %2 ms; Qt fills in %3 ms; ratio %4\n")
                               .arg(name, -36)
                               .arg(our, 6, 'f', 2)
                               .arg(fill, 6, 'f', 2)
                               .arg(our / fill, 5, 'f', 2);
}

/// Fills fresh trees with the rows of these.
Work filling(const std::vector<const QTreeWidget *> &trees)
{
    std::vector<std::vector<Row>> rows;
    for (const QTreeWidget *tree : trees)
        rows.push_back(rowsBelow(tree->invisibleRootItem()));
    return [rows] {
        for (const std::vector<Row> &treeRows : rows) {
            QTreeWidget tree;
            fill(tree.invisibleRootItem(), treeRows);
        }
    };
}

void compareAll(Pages &pages)
{
    const Work both = filling({treeOf(pages.categories), treeOf(pages.bar)});
    const Work build = [] {
        const tab_ribbonset_ribcate categories;
        const tab_ribbonset_tabelem bar;
    };
    compare(QStringLiteral("build both pages"), build, both);
    compare(
        QStringLiteral("read the definition and build both"),
        [&] {
            readDefinition();
            build();
        },
        both);

    QTreeWidget *categories = treeOf(pages.categories);
    Qt::CheckState state = Qt::Unchecked;
    compare(
        QStringLiteral("tick or untick each category in turn"),
        [&] {
            state = state == Qt::Checked ? Qt::Unchecked : Qt::Checked;
            tickTopItems(categories, state);
        },
        filling({categories}));

    tickTopItems(categories, Qt::Checked);
    tickTopItems(treeOf(pages.bar), Qt::Checked);
    compare(
        QStringLiteral("save a ribbon that is all hidden"),
        [&] {
            pages.categories.OnBeforeSave();
            pages.bar.OnBeforeSave();
        },
        both);

    compare(
        QStringLiteral("import a ribbon that is all hidden"),
        [&] {
            pages.categories.showHidden(theEditorXmlData.elemRibbonCategory);
            pages.bar.showHidden(theEditorXmlData.elemQuickAccessBar);
        },
        both);
}

} // namespace

int main(int argc, char *argv[])
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    initPctResources();
    const QApplication application(argc, argv);
    CCommon::SetPCWAppType(PCW_APP_EDITOR);
    Pages pages;
    compareAll(pages);
    return 0;
}
