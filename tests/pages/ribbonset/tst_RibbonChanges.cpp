// SPDX-License-Identifier: Apache-2.0
#include "config/RibbonChanges.h"

#include "config/KeptElement.h"
#include "config/Product.h"
#include "pages/ribbonset/tab_ribbonset_ribcate.h"
#include "pages/ribbonset/tab_ribbonset_tabelem.h"
#include "resources/Resources.h"
#include "RibbonItems.h"

#include <QRandomGenerator>
#include <QTreeWidget>
#include <QtTest>

namespace {

using RibbonCommands::Command;

QTreeWidgetItem *rootOf(const QWidget &page)
{
    return page.findChild<QTreeWidget *>(QStringLiteral("treeWidget"))->invisibleRootItem();
}

Qt::CheckState tick(bool hidden)
{
    return hidden ? Qt::Checked : Qt::Unchecked;
}

QVector<Command> commandsOf(bool editor)
{
    QVector<Command> commands;
    for (const Command &command : RibbonCommands::all()) {
        if (RibbonCommands::has(Product::of(editor), command))
            commands.append(command);
    }
    return commands;
}

/// The item of a command in the tree of the bar, which has no panels.
QTreeWidgetItem *barItem(QTreeWidgetItem *root, const Command &command)
{
    return itemAt(root, {command.path.first(), command.path.last()});
}

QDomElement asXml(const char *xml)
{
    QDomDocument document;
    return keptElement(parsed(document, QString::fromUtf8(xml)));
}

} // namespace

/// What changes without a window is what the pages write when a person ticks the same.
class tst_RibbonChanges : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { initPctResources(); }
    void bothProducts();
    void bothProducts_data();
    void everyCommandHidesWhatItsTickHides_data() { bothProducts_data(); }
    void everyCommandHidesWhatItsTickHides();
    void anyNumberOfChangesIsThatOfTheTicks_data() { bothProducts_data(); }
    void anyNumberOfChangesIsThatOfTheTicks();
    void theBarTakesWhatItsTicksTake_data() { bothProducts_data(); }
    void theBarTakesWhatItsTicksTake();
    void whatTheRibbonDoesNotKnowStays();
    void namesAreEndsOfPathsAndMeanOneAction();
};

void tst_RibbonChanges::bothProducts_data()
{
    QTest::addColumn<bool>("editor");
    QTest::newRow("editor") << true;
    QTest::newRow("reader") << false;
}

/// The commands are all items of the pages' trees, and nothing else.
void tst_RibbonChanges::bothProducts()
{
    QFETCH(bool, editor);
    configureProduct(editor);
    const tab_ribbonset_ribcate page;
    const tab_ribbonset_tabelem bar;
    int onBar = 0;
    const QVector<Command> commands = commandsOf(editor);
    QCOMPARE(commands.size(), itemsBelow(rootOf(page)).size());
    for (const Command &command : commands) {
        QVERIFY(itemAt(rootOf(page), command.path));
        onBar += command.canBeOnBar ? 1 : 0;
        QCOMPARE(command.canBeOnBar,
                 command.element.tagName() == QLatin1String("Control") && barItem(rootOf(bar), command));
    }
    QVERIFY(onBar > 50);
}

void tst_RibbonChanges::everyCommandHidesWhatItsTickHides()
{
    QFETCH(bool, editor);
    configureProduct(editor);
    tab_ribbonset_ribcate page;
    for (const Command &command : commandsOf(editor)) {
        QTreeWidgetItem *item = itemAt(rootOf(page), command.path);
        item->setCheckState(0, Qt::Checked);
        const QDomElement hidden = withHidden({}, command, true, Product::of(editor));
        QVERIFY2(sameElement(hidden, page.SaveToXml().documentElement()), qPrintable(elementText(hidden)));
        item->setCheckState(0, Qt::Unchecked);
        QVERIFY(sameElement(withHidden(hidden, command, false, Product::of(editor)),
                            page.SaveToXml().documentElement()));
        QCOMPARE(elementText(page.SaveToXml().documentElement()), QStringLiteral("<RibbonUI/>"));
    }
}

void tst_RibbonChanges::anyNumberOfChangesIsThatOfTheTicks()
{
    QFETCH(bool, editor);
    configureProduct(editor);
    const QVector<Command> commands = commandsOf(editor);
    for (quint32 seed = 0; seed < 20; ++seed) {
        QRandomGenerator random(seed);
        tab_ribbonset_ribcate page;
        QDomElement ribbon;
        for (int i = 0; i < 40; ++i) {
            const Command &command = commands.at(random.bounded(static_cast<int>(commands.size())));
            const bool hidden = random.bounded(3) > 0;
            itemAt(rootOf(page), command.path)->setCheckState(0, tick(!hidden));
            itemAt(rootOf(page), command.path)->setCheckState(0, tick(hidden));
            ribbon = withHidden(withHidden(ribbon, command, !hidden, Product::of(editor)), command, hidden,
                                Product::of(editor));
        }
        QCOMPARE(elementText(ribbon), elementText(page.SaveToXml().documentElement()));
    }
}

void tst_RibbonChanges::theBarTakesWhatItsTicksTake()
{
    QFETCH(bool, editor);
    configureProduct(editor);
    const QVector<Command> commands = commandsOf(editor);
    tab_ribbonset_tabelem page;
    QDomElement bar;
    QRandomGenerator random(7);
    for (int i = 0; i < 300; ++i) {
        const Command &command = commands.at(random.bounded(static_cast<int>(commands.size())));
        const bool takenOff = random.bounded(3) > 0;
        const Result<QDomElement> changed = withTakenOff(bar, command, takenOff, Product::of(editor));
        if (!command.canBeOnBar)
            continue;
        QVERIFY(changed);
        bar = *changed;
        barItem(rootOf(page), command)->setCheckState(0, tick(takenOff));
        QCOMPARE(elementText(bar), elementText(page.SaveToXml().documentElement()));
    }
}

void tst_RibbonChanges::whatTheRibbonDoesNotKnowStays()
{
    const Result<Command> home = RibbonCommands::named(QStringLiteral("Ribbon_Page_Home"), Product::editor());
    QVERIFY(home);
    const char ribbon[] = "<RibbonUI old=\"1\"><Category Hidden=\"1\" Text=\"Gone\"/></RibbonUI>";
    const QDomElement hidden = withHidden(asXml(ribbon), *home, true, Product::editor());
    QCOMPARE(hidden.attribute(QStringLiteral("old")), QStringLiteral("1"));
    QCOMPARE(hidden.firstChildElement().attribute(QStringLiteral("Text")), QStringLiteral("Gone"));
    QCOMPARE(elementText(withHidden(hidden, *home, false, Product::editor())), QString::fromLatin1(ribbon));
}

void tst_RibbonChanges::namesAreEndsOfPathsAndMeanOneAction()
{
    QVERIFY(RibbonCommands::named(QStringLiteral("PDF/A-1b"), Product::editor()));
    QVERIFY(!RibbonCommands::named(QStringLiteral("A-1b"), Product::editor()));
    QVERIFY(RibbonCommands::named(QStringLiteral("Open/Computer"), Product::editor())); // titles
    QVERIFY(RibbonCommands::named(QStringLiteral("Ribbon_Action_RotateView"),
                                  Product::editor())); // twice, but one action
    const Result<Command> several = RibbonCommands::named(QStringLiteral("Computer"), Product::editor());
    QVERIFY(!several &&
            several.problem().text.contains(QLatin1String("Ribbon_Action_FilePage_SaveAs/Computer")));
    const Result<Command> unknown =
        RibbonCommands::named(QStringLiteral("Ribbon_Page_Hom"), Product::editor());
    QVERIFY(!unknown && unknown.problem().text.contains(QLatin1String("nearest is \"Ribbon_Page_Home\"")));
    QVERIFY(RibbonCommands::named(QStringLiteral("Ribbon_Page_Convert"), Product::editor()));
    QVERIFY(!RibbonCommands::named(QStringLiteral("Ribbon_Page_Convert"), Product::reader()));
}

QTEST_MAIN(tst_RibbonChanges)
#include "tst_RibbonChanges.moc"
