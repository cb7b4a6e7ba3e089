// SPDX-License-Identifier: Apache-2.0
#include "app/DlgCustomizationTool_v2.h"
#include "app/RegisterPages.h"
#include "config/CCommon.h"
#include "config/DefaultPlugins.h"
#include "config/Settings.h"
#include "pages/CTabWidget.h"
#include "pages/ribbonset/tab_ribbonset_ribcate.h"
#include "resources/Resources.h"
#include "tests/resources/GuidePages.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QDomDocument>
#include <QFile>
#include <QListView>
#include <QToolButton>
#include <QtTest>

namespace {

using Window = DlgCustomizationTool_v2;

/// A window with every page that the product has; packages have all of them.
std::unique_ptr<Window> windowWithPages(bool editor)
{
    auto window = std::make_unique<Window>(editor, PCW_CONFIG_PACKAGE);
    registerPages(*window);
    window->InitTabWidgets();
    window->EnableButtons(true);
    return window;
}

QList<QToolButton *> pageButtons(const Window &window)
{
    return window.findChild<QWidget *>(QStringLiteral("widget_category"))->findChildren<QToolButton *>();
}

/// The help that the window asks for at each row of a page's list of sub-pages.
QStringList topicsOfRows(Window &window, QListView *list)
{
    QStringList topics;
    for (int row = 0; row < list->model()->rowCount(); ++row) {
        list->setCurrentIndex(list->model()->index(row, 0));
        topics.append(window.InfoName());
    }
    return topics;
}

QStringList topicsOf(Window &window)
{
    QStringList topics = {window.InfoName()};
    for (QToolButton *button : pageButtons(window)) {
        button->click();
        topics.append(window.InfoName());
        if (button->objectName() == QLatin1String("Preferences"))
            topics += topicsOfRows(window, window.findChild<QListView *>(QStringLiteral("listView")));
    }
    return topics;
}

/// What the pages about the window's pages say together.
QString textAboutPages(const Window &window)
{
    QString text;
    for (const QToolButton *button : pageButtons(window)) {
        if (const GuidePage *page = GuidePages::find(button->objectName() + QStringLiteral(".html")))
            text += GuidePages::text(*page) + QLatin1Char(' ');
    }
    return text;
}

/// The texts by which people know the settings: of boxes and choices, of lists and of what lists offer.
QStringList namesOfControls(const Window &window)
{
    QStringList names;
    for (const CTabWidget *page : window.findChildren<CTabWidget *>()) {
        for (const QAbstractButton *button : page->findChildren<QAbstractButton *>()) {
            if (button->isCheckable())
                names.append(button->text().simplified());
        }
        for (const QComboBox *list : page->findChildren<QComboBox *>()) {
            names.append(list->accessibleName());
            for (int row = 0; row < list->count(); ++row)
                names.append(list->itemText(row));
        }
    }
    names.removeDuplicates();
    names.removeAll(QString());
    return names;
}

} // namespace

/// What the guide has to say: everything that the window can ask it for.
class tst_HelpTopics : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { initPctResources(); }
    void everyTopicThatTheWindowAsksForExists_data() { addProducts(); }
    void everyTopicThatTheWindowAsksForExists();
    void everyPageOfTheWindowHasAPageOfItsName();
    void everyControlIsNamed_data() { addProducts(); }
    void everyControlIsNamed();
    void everyFieldOfTheRecordIsNamed();
    void everyPluginIsListed_data() { addProducts(); }
    void everyPluginIsListed();
    void theRibbonPageListsWhatIsLinkedAndTheCategories();

private:
    static void addProducts();
};

void tst_HelpTopics::addProducts()
{
    QTest::addColumn<bool>("editor");
    QTest::newRow("Editor") << true;
    QTest::newRow("Reader") << false;
}

void tst_HelpTopics::everyTopicThatTheWindowAsksForExists()
{
    QFETCH(bool, editor);
    const auto window = windowWithPages(editor);
    QStringList topics = topicsOf(*window);
    topics.removeDuplicates();
    // Welcome, three pages of their own, and the anchors of Preferences.
    QVERIFY2(topics.size() >= (editor ? 10 : 6), qUtf8Printable(topics.join(QLatin1Char(' '))));
    for (const QString &topic : topics) {
        const QString link = QUrl::fromPercentEncoding(topic.toUtf8());
        QVERIFY2(GuidePages::leadsSomewhere(GuidePages::all().first(), link), qUtf8Printable(topic));
    }
}

/// Also the one that asks for none: the window then shows the first page, which leads there.
void tst_HelpTopics::everyPageOfTheWindowHasAPageOfItsName()
{
    const auto window = windowWithPages(true);
    const QStringList first = GuidePages::links(*GuidePages::find(QStringLiteral("Welcome.html")));
    const QList<QToolButton *> buttons = pageButtons(*window);
    QCOMPARE(buttons.size(), 4);
    for (const QToolButton *button : buttons)
        QVERIFY2(first.contains(button->objectName() + QStringLiteral(".html")),
                 qUtf8Printable(button->objectName()));
}

void tst_HelpTopics::everyControlIsNamed()
{
    QFETCH(bool, editor);
    const auto window = windowWithPages(editor);
    const QString guide = textAboutPages(*window);
    const QStringList names = namesOfControls(*window);
    QVERIFY2(names.size() >= (editor ? 19 : 13), qUtf8Printable(names.join(QLatin1Char('|'))));
    for (const QString &name : names)
        QVERIFY2(guide.contains(name), qUtf8Printable(name));
}

void tst_HelpTopics::everyFieldOfTheRecordIsNamed()
{
    for (const Setting &setting : settings()) {
        int pages = 0;
        for (const GuidePage &page : GuidePages::all()) {
            // The sample of what pct prints names many and explains none.
            if (page.name != QLatin1String("Command line.html") &&
                GuidePages::text(page).contains(QString(setting.name)))
                ++pages;
        }
        QVERIFY2(pages > 0, setting.name.data());
    }
}

void tst_HelpTopics::everyPluginIsListed()
{
    QFETCH(bool, editor);
    const QString text = GuidePages::text(*GuidePages::find(QStringLiteral("Plugins.html")));
    const auto plugins = CCommon::EditorXmlReadPluginsTemplate(editor);
    QVERIFY(!plugins.isEmpty());
    for (const _EditorXmlPuginData_ &plugin : plugins) {
        QVERIFY2(text.contains(plugin.name), qUtf8Printable(plugin.name));
        QVERIFY2(text.contains(plugin.path), qUtf8Printable(plugin.path));
    }
}

void tst_HelpTopics::theRibbonPageListsWhatIsLinkedAndTheCategories()
{
    const QString text = GuidePages::text(*GuidePages::find(QStringLiteral("Ribbon Set.html")));
    QStringList names = tab_ribbonset_ribcate::InitCommonActions();
    QFile file(QStringLiteral(":/EditorXml/EditorXml/RibbonQuintorUI_Init.xml"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    QDomDocument definition;
    QVERIFY(definition.setContent(file.readAll()));
    const QDomNodeList categories = definition.elementsByTagName(QStringLiteral("Category"));
    QVERIFY(categories.count() > 0);
    for (int i = 0; i < categories.count(); ++i)
        names.append(categories.at(i).toElement().attribute(QStringLiteral("Name")));
    for (const QString &name : names)
        QVERIFY2(text.contains(name), qUtf8Printable(name));
}

QTEST_MAIN(tst_HelpTopics)
#include "tst_HelpTopics.moc"
