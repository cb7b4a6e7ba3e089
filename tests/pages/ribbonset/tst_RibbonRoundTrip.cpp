// SPDX-License-Identifier: Apache-2.0
#include "config/CCommon.h"
#include "config/EditorXmlData.h"
#include "pages/ribbonset/CommonActions.h"
#include "pages/ribbonset/RibbonTree.h"
#include "pages/ribbonset/tab_ribbonset_ribcate.h"
#include "pages/ribbonset/tab_ribbonset_tabelem.h"
#include "resources/Resources.h"
#include "RibbonItems.h"

#include <QRandomGenerator>
#include <QTreeWidget>
#include <QtTest>

namespace {

QTreeWidgetItem *rootOf(const QWidget &page)
{
    return page.findChild<QTreeWidget *>(QStringLiteral("treeWidget"))->invisibleRootItem();
}

/// Ticks and unticks like a person who cannot decide; ticks more often than unticks.
void changeAtRandom(QTreeWidgetItem *root, QRandomGenerator &random, int changes)
{
    const QVector<QTreeWidgetItem *> items = itemsBelow(root);
    for (int i = 0; i < changes; ++i) {
        QTreeWidgetItem *item = items.at(random.bounded(items.size()));
        item->setCheckState(0, random.bounded(3) > 0 ? Qt::Checked : Qt::Unchecked);
    }
}

/// The tick of an item that has others below it says the same as theirs.
bool isConsistent(QTreeWidgetItem *root)
{
    const QVector<QTreeWidgetItem *> items = itemsBelow(root);
    return std::all_of(items.begin(), items.end(), [](const QTreeWidgetItem *item) {
        if (item->childCount() == 0)
            return item->checkState(0) != Qt::PartiallyChecked;
        int checked = 0;
        int unchecked = 0;
        for (int i = 0; i < item->childCount(); ++i) {
            checked += item->child(i)->checkState(0) == Qt::Checked ? 1 : 0;
            unchecked += item->child(i)->checkState(0) == Qt::Unchecked ? 1 : 0;
        }
        const Qt::CheckState expected = checked == item->childCount()     ? Qt::Checked
                                        : unchecked == item->childCount() ? Qt::Unchecked
                                                                          : Qt::PartiallyChecked;
        return item->checkState(0) == expected;
    });
}

/// A control whose twin has the same menu may differ from it, because each menu may hold items that are in
/// no pair; what has nothing below it may not.
bool twinsAgree(QTreeWidgetItem *root)
{
    const QVector<QTreeWidgetItem *> items = itemsBelow(root);
    return std::all_of(items.begin(), items.end(), [](const QTreeWidgetItem *item) {
        const QTreeWidgetItem *twin = twinOf(item);
        return !twin || item->childCount() > 0 || twin->checkState(0) == item->checkState(0);
    });
}

/// All check states, from top to bottom.
QByteArray states(QTreeWidgetItem *root)
{
    QByteArray text;
    for (const QTreeWidgetItem *item : itemsBelow(root))
        text += char('0' + int(item->checkState(0)));
    return text;
}

} // namespace

/// What is hidden survives a document. There are two exceptions by design, which the cases below state: a
/// document with a quick access bar needs a ribbon definition beside it, and one made for the other
/// product hides only what this product has.
class tst_RibbonRoundTrip : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        initPctResources();
        // Reading logs each ribbon element as XML.
        QLoggingCategory::setFilterRules(QStringLiteral("pct.config.debug=false"));
        QVERIFY(m_place.isValid());
    }
    void cleanup()
    {
        configureProduct(true);
        theEditorXmlData = EditorXmlData();
    }

    void randomTicksSurviveADocument_data()
    {
        QTest::addColumn<bool>("editor");
        QTest::addColumn<int>("seed");
        for (int seed = 1; seed <= 12; ++seed) {
            QTest::addRow("Editor, seed %d", seed) << true << seed;
            QTest::addRow("Reader, seed %d", seed) << false << seed;
        }
    }

    void randomTicksSurviveADocument()
    {
        QFETCH(bool, editor);
        QFETCH(int, seed);
        configureProduct(editor);
        QRandomGenerator random(static_cast<quint32>(seed));
        tab_ribbonset_ribcate categories;
        tab_ribbonset_tabelem bar;
        changeAtRandom(rootOf(categories), random, seed * 10);
        changeAtRandom(rootOf(bar), random, seed * 5);
        QVERIFY(isConsistent(rootOf(categories)));
        QVERIFY(isConsistent(rootOf(bar)));
        QVERIFY(!hiddenPaths(rootOf(categories)).isEmpty());

        const EditorXmlData read = throughADocument(categories, bar, editor);
        tab_ribbonset_ribcate freshCategories;
        tab_ribbonset_tabelem freshBar;
        freshCategories.showHidden(read.elemRibbonCategory);
        freshBar.showHidden(read.elemQuickAccessBar);
        QCOMPARE(states(rootOf(freshCategories)), states(rootOf(categories)));
        QCOMPARE(states(rootOf(freshBar)), states(rootOf(bar)));
    }

    void twinsAgreeAfterEveryChange()
    {
        QRandomGenerator random(7);
        tab_ribbonset_ribcate categories;
        for (int i = 0; i < 300; ++i) {
            changeAtRandom(rootOf(categories), random, 1);
            QVERIFY(twinsAgree(rootOf(categories)));
            QVERIFY(isConsistent(rootOf(categories)));
        }
    }

    void documentForTheOtherProductHidesWhatBothHave()
    {
        QRandomGenerator random(11);
        tab_ribbonset_ribcate editor;
        changeAtRandom(rootOf(editor), random, 80);
        configureProduct(false);
        tab_ribbonset_ribcate reader;
        const QSet<QString> expected = hiddenPaths(rootOf(editor)).intersect(allPaths(rootOf(reader)));
        reader.showHidden(editor.SaveToXml().documentElement());
        QVERIFY(!expected.isEmpty());
        QCOMPARE(hiddenPaths(rootOf(reader)), expected);
    }

    void quickAccessBarIsLostWithoutARibbonDefinition()
    {
        tab_ribbonset_tabelem bar;
        rootOf(bar)->child(0)->setCheckState(0, Qt::Checked);
        bar.OnBeforeSave();
        theEditorXmlData.elemRibbonCategory = {};
        QVERIFY(savedAndRead(true).elemQuickAccessBar.isNull());
    }

private:
    EditorXmlData throughADocument(tab_ribbonset_ribcate &categories, tab_ribbonset_tabelem &bar, bool editor)
    {
        categories.OnBeforeSave();
        bar.OnBeforeSave();
        return savedAndRead(editor);
    }

    /// The record as it is after its document was written to a file and read again.
    EditorXmlData savedAndRead(bool editor)
    {
        QDomDocument document;
        CCommon::EditorXmlCreateEmptyXml(document, editor);
        CCommon::EditorXmlSavePreferences(document, QStringLiteral("1.0"));
        CCommon::EditorXmlSaveRibbonSet(document);
        QFile file(m_place.filePath(QStringLiteral("ProfStore.xml")));
        EditorXmlData read;
        if (!file.open(QIODevice::WriteOnly) || file.write(document.toByteArray(4)) < 0)
            qFatal("the document cannot be written");
        file.close();
        if (!CCommon::ParseXml(file.fileName(), &read))
            qFatal("the document cannot be read");
        return read;
    }

    static QSet<QString> allPaths(QTreeWidgetItem *root)
    {
        RibbonTree::updateChildItems(root, Qt::Checked);
        const QSet<QString> paths = hiddenPaths(root);
        RibbonTree::updateChildItems(root, Qt::Unchecked);
        return paths;
    }

    const QTemporaryDir m_place;
};

QTEST_MAIN(tst_RibbonRoundTrip)
#include "tst_RibbonRoundTrip.moc"
