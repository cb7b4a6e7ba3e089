// SPDX-License-Identifier: Apache-2.0
#include "config/RibbonDefinition.h"
#include "pages/ribbonset/tab_ribbonset_ribcate.h"
#include "resources/Resources.h"
#include "RibbonItems.h"

#include <QtTest>

#include <utility>

namespace {

const QString nameAttribute = QStringLiteral("Name");
const QString titleAttribute = QStringLiteral("Title");

QVector<QDomElement> childrenOf(const QDomElement &parent)
{
    QVector<QDomElement> children;
    for (QDomElement child = parent.firstChildElement(); !child.isNull(); child = child.nextSiblingElement())
        children.append(child);
    return children;
}

QVector<QDomElement> all(const QDomDocument &definition)
{
    QVector<QDomElement> elements = childrenOf(definition.documentElement());
    for (int i = 0; i < elements.size(); ++i)
        elements += childrenOf(elements.at(i));
    return elements;
}

QSet<QString> attributeNames(const QDomElement &element)
{
    QSet<QString> names;
    for (int i = 0; i < element.attributes().count(); ++i)
        names.insert(element.attributes().item(i).nodeName());
    return names;
}

/// The element's place in the tree, for messages.
QByteArray placeOf(const QDomElement &element)
{
    const QDomElement parent = element.parentNode().toElement();
    return (parent.attribute(nameAttribute) % QLatin1Char('/') % element.attribute(nameAttribute)).toUtf8();
}

QStringList expectedChildren(const QString &tag)
{
    static const QHash<QString, QStringList> children{
        {QStringLiteral("RibbonUI"), {QStringLiteral("TabElements"), QStringLiteral("Category")}},
        {QStringLiteral("TabElements"), {QStringLiteral("Control")}},
        {QStringLiteral("Category"), {QStringLiteral("Panel")}},
        {QStringLiteral("Panel"), {QStringLiteral("Control")}},
        {QStringLiteral("Control"), {QStringLiteral("SubItem")}}};
    return children.value(tag);
}

QString topLevelNameOf(QDomElement element)
{
    while (element.parentNode().parentNode().isElement())
        element = element.parentNode().toElement();
    return element.attribute(nameAttribute);
}

/// What a product has of an element's children.
QVector<QDomElement> inProduct(const QDomElement &parent)
{
    QVector<QDomElement> children = childrenOf(parent);
    children.erase(std::remove_if(children.begin(), children.end(),
                                  [](const QDomElement &child) { return !existsInProduct(child); }),
                   children.end());
    return children;
}

/// The first element whose children share a name within the product; empty when there is none.
QByteArray placeWithRepeatedName(const QDomElement &parent)
{
    QSet<QString> names;
    for (const QDomElement &child : inProduct(parent)) {
        if (names.contains(child.attribute(nameAttribute)))
            return placeOf(child);
        names.insert(child.attribute(nameAttribute));
        const QByteArray below = placeWithRepeatedName(child);
        if (!below.isEmpty())
            return below;
    }
    return {};
}

} // namespace

class tst_RibbonDefinition : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        initPctResources();
        m_definition = ribbonDefinition();
        QVERIFY(!m_definition.isNull());
        m_all = all(m_definition);
    }

    void cleanup() { configureProduct(true); }

    void hasTheRowsOfTheRibbon_data()
    {
        QTest::addColumn<QString>("tag");
        QTest::addColumn<int>("count");
        QTest::newRow("bars") << QStringLiteral("TabElements") << 1;
        QTest::newRow("categories") << QStringLiteral("Category") << 17;
        QTest::newRow("panels") << QStringLiteral("Panel") << 86;
        QTest::newRow("controls") << QStringLiteral("Control") << 262;
        QTest::newRow("sub-items") << QStringLiteral("SubItem") << 256;
    }

    void hasTheRowsOfTheRibbon()
    {
        QFETCH(QString, tag);
        QFETCH(int, count);
        QCOMPARE(m_definition.elementsByTagName(tag).count(), count);
    }

    void elementsStandWhereTheyBelong()
    {
        QCOMPARE(m_definition.documentElement().tagName(), QStringLiteral("RibbonUI"));
        QVERIFY(m_definition.documentElement().attributes().isEmpty());
        for (const QDomElement &element : std::as_const(m_all)) {
            const QString parentTag = element.parentNode().toElement().tagName();
            QVERIFY2(expectedChildren(parentTag).contains(element.tagName()), placeOf(element).constData());
        }
    }

    void everyElementHasANameATitleAndKnownAttributesOnly()
    {
        const QSet<QString> known{nameAttribute, titleAttribute, QStringLiteral("OnlyEditor"),
                                  QStringLiteral("OnlyReader")};
        for (const QDomElement &element : std::as_const(m_all)) {
            QVERIFY2(known.contains(attributeNames(element)), placeOf(element).constData());
            QVERIFY2(!element.attribute(nameAttribute).isEmpty(), placeOf(element).constData());
            QVERIFY2(!element.attribute(titleAttribute).isEmpty(), placeOf(element).constData());
        }
    }

    void marksAreOneOrEmptyAndNeverBoth()
    {
        for (const QDomElement &element : std::as_const(m_all)) {
            const QString editor = element.attribute(QStringLiteral("OnlyEditor"));
            const QString reader = element.attribute(QStringLiteral("OnlyReader"));
            QVERIFY2(editor.isEmpty() || editor == QLatin1String("1"), placeOf(element).constData());
            QVERIFY2(reader.isEmpty() || reader == QLatin1String("1"), placeOf(element).constData());
            QVERIFY2(editor.isEmpty() || reader.isEmpty(), placeOf(element).constData());
        }
    }

    void namesFollowTheirKind()
    {
        const QHash<QString, QString> prefixes{{QStringLiteral("Category"), QStringLiteral("Ribbon_Page_")},
                                               {QStringLiteral("Panel"), QStringLiteral("Ribbon_Group_")}};
        for (const QDomElement &element : std::as_const(m_all)) {
            const QString prefix = prefixes.value(element.tagName());
            QVERIFY2(element.attribute(nameAttribute).startsWith(prefix), placeOf(element).constData());
        }
    }

    void categoriesComeInTheirOrder()
    {
        QStringList titles;
        for (const QDomElement &top : childrenOf(m_definition.documentElement()))
            titles.append(top.attribute(titleAttribute) + mark(top));
        QCOMPARE(titles.join(QLatin1Char('|')),
                 QStringLiteral("Quick Access Toolbar|File|Home|Convert+E|Edit+E|Edit+R|Organize+E|Comment|"
                                "View|Form|Protect|Pelix eSign|Share|Accessibility+E|Help|Fill & Sign|"
                                "Join & Split+E|Portfolio"));
    }

    void bothEditCategoriesHaveTheSameName()
    {
        const QVector<QDomElement> top = childrenOf(m_definition.documentElement());
        QCOMPARE(top.at(4).attribute(nameAttribute), top.at(5).attribute(nameAttribute));
    }

    void quickAccessBarHasItsControls()
    {
        const QDomElement bar = m_definition.documentElement().firstChildElement();
        QCOMPARE(bar.attribute(nameAttribute), QStringLiteral("TabElements"));
        QCOMPARE(namesBelow(bar),
                 QStringLiteral("Ribbonbar_Search|Ribbon_Action_Bar_Open|Ribbon_Action_Bar_Blank+E|"
                                "Ribbon_Action_Bar_Undo|Ribbon_Action_Bar_Redo|Ribbon_Action_MenuBar_Save|"
                                "Ribbon_Action_MenuBar_Print|PelixAccount"));
        QCOMPARE(bar.lastChildElement().attribute(titleAttribute), QStringLiteral("Sign in"));
        QCOMPARE(bar.firstChildElement().attribute(titleAttribute), QStringLiteral("Search"));
        QCOMPARE(namesBelow(bar.firstChildElement()),
                 QStringLiteral("Ribbonbar_CommandSearch|RibbonBar_Find|RibbonBar_FindSearch|"
                                "Ribbon_Action_SearchReplace+E|Ribbon_Action_SearchRedact+E|"
                                "Ribbon_Action_SearchHighlight"));
    }

    void fileCategoryStartsWithPropertiesAndCreate()
    {
        const QDomElement file = childrenOf(m_definition.documentElement()).at(1);
        QCOMPARE(file.attribute(nameAttribute), QStringLiteral("Ribbon_Page_Bar"));
        QCOMPARE(namesBelow(file), QStringLiteral("Ribbon_Group_FilePage"));
        const QDomElement panel = file.firstChildElement();
        QCOMPARE(panel.attribute(titleAttribute), QStringLiteral("Main Panel"));
        QVERIFY(namesBelow(panel).startsWith(
            QStringLiteral("Ribbon_Action_FilePage_Properties|Ribbon_Action_FilePage_Create+E|")));
        const QDomElement properties = panel.firstChildElement();
        QCOMPARE(namesBelow(properties),
                 QStringLiteral("Description|Initial View+E|Security|Advanced|Fonts"));
        QVERIFY(namesBelow(properties.nextSiblingElement())
                    .startsWith(
                        QStringLiteral("Blank|From Template|From File|From Multiple Files|From Scanner")));
    }

    void everyCommonActionIsInAtLeastTwoCategories()
    {
        for (const QString &action : tab_ribbonset_ribcate::InitCommonActions()) {
            QSet<QString> categories;
            for (const QDomElement &element : std::as_const(m_all)) {
                const QString top = topLevelNameOf(element);
                if (element.attribute(nameAttribute) == action && top != QLatin1String("TabElements"))
                    categories.insert(top);
            }
            QVERIFY2(categories.size() >= 2, qPrintable(action));
        }
    }

    void siblingsHaveDifferentNamesInEachProduct_data() { productRows(); }

    void siblingsHaveDifferentNamesInEachProduct()
    {
        QFETCH(bool, editor);
        configureProduct(editor);
        QCOMPARE(placeWithRepeatedName(m_definition.documentElement()), QByteArray());
    }

    void nothingThatContainsOthersIsEmptyInEitherProduct_data() { productRows(); }

    void nothingThatContainsOthersIsEmptyInEitherProduct()
    {
        QFETCH(bool, editor);
        configureProduct(editor);
        for (const QDomElement &top : inProduct(m_definition.documentElement())) {
            QVERIFY2(!inProduct(top).isEmpty(), placeOf(top).constData());
            for (const QDomElement &panel : inProduct(top)) {
                const bool isPanel = panel.tagName() == QLatin1String("Panel");
                QVERIFY2(!isPanel || !inProduct(panel).isEmpty(), placeOf(panel).constData());
            }
        }
    }

    void controlsOfACategoryHaveDifferentNames()
    {
        for (const QDomElement &top : childrenOf(m_definition.documentElement())) {
            const QDomNodeList controls = top.elementsByTagName(QStringLiteral("Control"));
            QSet<QString> names;
            for (int i = 0; i < controls.count(); ++i)
                names.insert(controls.at(i).toElement().attribute(nameAttribute));
            QVERIFY2(names.size() == controls.count(), placeOf(top).constData());
        }
    }

    void onlyTheMarkOfTheOtherProductExcludes_data()
    {
        QTest::addColumn<QString>("xml");
        QTest::addColumn<bool>("inEditor");
        QTest::addColumn<bool>("inReader");
        QTest::newRow("no marks") << QStringLiteral("<a/>") << true << true;
        QTest::newRow("empty marks") << QStringLiteral("<a OnlyEditor='' OnlyReader=''/>") << true << true;
        QTest::newRow("editor") << QStringLiteral("<a OnlyEditor='1'/>") << true << false;
        QTest::newRow("reader") << QStringLiteral("<a OnlyReader='1'/>") << false << true;
        QTest::newRow("zero") << QStringLiteral("<a OnlyEditor='0' OnlyReader='0'/>") << true << true;
        QTest::newRow("a word") << QStringLiteral("<a OnlyEditor='true'/>") << true << true;
        QTest::newRow("both") << QStringLiteral("<a OnlyEditor='1' OnlyReader='1'/>") << false << false;
    }

    void onlyTheMarkOfTheOtherProductExcludes()
    {
        QFETCH(QString, xml);
        QDomDocument document;
        const QDomElement element = parsed(document, xml);
        configureProduct(true);
        QTEST(existsInProduct(element), "inEditor");
        configureProduct(false);
        QTEST(existsInProduct(element), "inReader");
    }

private:
    static void productRows()
    {
        QTest::addColumn<bool>("editor");
        QTest::newRow("Editor") << true;
        QTest::newRow("Reader") << false;
    }

    static QString mark(const QDomElement &element)
    {
        if (element.attribute(QStringLiteral("OnlyEditor")) == QLatin1String("1"))
            return QStringLiteral("+E");
        return element.attribute(QStringLiteral("OnlyReader")) == QLatin1String("1") ? QStringLiteral("+R")
                                                                                     : QString();
    }

    static QString namesBelow(const QDomElement &parent)
    {
        QStringList names;
        for (const QDomElement &child : childrenOf(parent))
            names.append(child.attribute(nameAttribute) + mark(child));
        return names.join(QLatin1Char('|'));
    }

    QDomDocument m_definition;
    QVector<QDomElement> m_all;
};

QTEST_GUILESS_MAIN(tst_RibbonDefinition)
#include "tst_RibbonDefinition.moc"
