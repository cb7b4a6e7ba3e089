// SPDX-License-Identifier: Apache-2.0
#include "tests/resources/GuidePages.h"
#include "tests/support/TestFiles.h"

#include <QRegularExpression>
#include <QtTest>

namespace {

/// The list of all pages; the one of a page's own sections stands before it.
QDomElement listOfPages(const GuidePage &page)
{
    return GuidePages::elements(page, QStringLiteral("nav")).value(1);
}

QStringList hrefsIn(const QDomElement &list)
{
    QStringList hrefs;
    const QDomNodeList anchors = list.elementsByTagName(QStringLiteral("a"));
    for (int i = 0; i < anchors.count(); ++i)
        hrefs.append(
            QUrl::fromPercentEncoding(anchors.at(i).toElement().attribute(QStringLiteral("href")).toUtf8()));
    return hrefs;
}

/// 1 for h1 and so on; 0 for what is no heading.
int headingLevel(const QDomElement &element)
{
    static const QRegularExpression heading(QStringLiteral("^h([1-6])$"));
    return heading.match(element.tagName()).captured(1).toInt();
}

QString read(const QString &name)
{
    return QString::fromUtf8(TestFiles::read(GuidePages::path(name)));
}

} // namespace

/// The form of the pages: what holds for each of them, whatever it says.
class tst_HelpPages : public QObject
{
    Q_OBJECT

private slots:
    void thereIsTheFirstPage();
    void isWellFormed_data() { addPages(); }
    void isWellFormed();
    void saysItsLanguageAndTitle_data() { addPages(); }
    void saysItsLanguageAndTitle();
    void idsAreUnique_data() { addPages(); }
    void idsAreUnique();
    void everyLinkLeadsSomewhere_data() { addPages(); }
    void everyLinkLeadsSomewhere();
    void headingsSkipNoLevel_data() { addPages(); }
    void headingsSkipNoLevel();
    void everySectionIsInTheContents_data() { addPages(); }
    void everySectionIsInTheContents();
    void everyPageListsAllPages_data() { addPages(); }
    void everyPageListsAllPages();
    void loadsNothingFromElsewhere_data() { addPages(); }
    void loadsNothingFromElsewhere();
    void holdsNoScriptOrStyleOfItsOwn_data() { addPages(); }
    void holdsNoScriptOrStyleOfItsOwn();
    void imagesHaveATextAndASize_data() { addPages(); }
    void imagesHaveATextAndASize();
    void canBeClosed_data() { addPages(); }
    void canBeClosed();
    void sharedFilesLoadNothing();
    void theScriptAsksTheToolToClose();

private:
    static void addPages();
    static const GuidePage &page();
};

void tst_HelpPages::addPages()
{
    QTest::addColumn<QString>("name");
    for (const GuidePage &page : GuidePages::all())
        QTest::newRow(qUtf8Printable(page.name)) << page.name;
}

const GuidePage &tst_HelpPages::page()
{
    QFETCH(QString, name);
    return *GuidePages::find(name);
}

void tst_HelpPages::thereIsTheFirstPage()
{
    QVERIFY(GuidePages::find(QStringLiteral("Welcome.html")));
}

void tst_HelpPages::isWellFormed()
{
    QVERIFY2(page().problem.isEmpty(), qUtf8Printable(page().problem));
}

void tst_HelpPages::saysItsLanguageAndTitle()
{
    QCOMPARE(page().document.documentElement().attribute(QStringLiteral("lang")), QStringLiteral("en"));
    const QList<QDomElement> titles = GuidePages::elements(page(), QStringLiteral("title"));
    QCOMPARE(titles.size(), 1);
    const QString heading = GuidePages::elements(page(), QStringLiteral("h1")).value(0).text().trimmed();
    QVERIFY(!heading.isEmpty());
    QVERIFY2(titles.first().text().startsWith(heading), qUtf8Printable(titles.first().text()));
}

void tst_HelpPages::idsAreUnique()
{
    QStringList ids = GuidePages::ids(page());
    QVERIFY(!ids.isEmpty());
    ids.sort();
    for (int i = 1; i < ids.size(); ++i)
        QVERIFY2(ids.at(i) != ids.at(i - 1), qUtf8Printable(ids.at(i)));
}

void tst_HelpPages::everyLinkLeadsSomewhere()
{
    const QStringList links = GuidePages::links(page());
    QVERIFY(!links.isEmpty());
    for (const QString &link : links)
        QVERIFY2(GuidePages::leadsSomewhere(page(), link), qUtf8Printable(link));
}

void tst_HelpPages::headingsSkipNoLevel()
{
    // The lists of contents stand beside the text and begin at the second level again.
    int last = 0;
    for (const QDomElement &element : GuidePages::elements(page())) {
        const int level = headingLevel(element);
        if (level == 0)
            continue;
        QVERIFY2(level <= last + 1, qUtf8Printable(element.text()));
        last = level;
    }
    QCOMPARE(GuidePages::elements(page(), QStringLiteral("h1")).size(), 1);
}

void tst_HelpPages::everySectionIsInTheContents()
{
    QStringList sections;
    const QDomElement main = GuidePages::elements(page(), QStringLiteral("main")).value(0);
    for (QDomElement section = main.firstChildElement(QStringLiteral("section")); !section.isNull();
         section = section.nextSiblingElement(QStringLiteral("section")))
        sections.append(QLatin1Char('#') + section.attribute(QStringLiteral("id")));
    QVERIFY(!sections.isEmpty());
    QCOMPARE(hrefsIn(GuidePages::elements(page(), QStringLiteral("nav")).value(0)), sections);
}

void tst_HelpPages::everyPageListsAllPages()
{
    QStringList listed = hrefsIn(listOfPages(page()));
    QCOMPARE(listed, hrefsIn(listOfPages(GuidePages::all().first())));
    listed.sort();
    QStringList names;
    for (const GuidePage &other : GuidePages::all())
        names.append(other.name);
    QCOMPARE(listed, names);

    QStringList current;
    for (const QDomElement &anchor : GuidePages::elements(page(), QStringLiteral("a"))) {
        if (anchor.hasAttribute(QStringLiteral("aria-current")))
            current.append(QUrl::fromPercentEncoding(anchor.attribute(QStringLiteral("href")).toUtf8()));
    }
    QCOMPARE(current, QStringList(page().name));
}

void tst_HelpPages::loadsNothingFromElsewhere()
{
    for (const QString &link : GuidePages::links(page()))
        QVERIFY2(QUrl(link).isRelative() && !link.startsWith(QLatin1String("//")), qUtf8Printable(link));
    QString policy;
    for (const QDomElement &meta : GuidePages::elements(page(), QStringLiteral("meta"))) {
        if (meta.attribute(QStringLiteral("http-equiv")) == QLatin1String("Content-Security-Policy"))
            policy = meta.attribute(QStringLiteral("content"));
    }
    QCOMPARE(policy, QStringLiteral("default-src 'none'; style-src 'self' file:; script-src 'self' file:; "
                                    "img-src 'self' file: data:"));
}

void tst_HelpPages::holdsNoScriptOrStyleOfItsOwn()
{
    for (const QDomElement &element : GuidePages::elements(page())) {
        QVERIFY(element.tagName() != QLatin1String("style"));
        QVERIFY(element.tagName() != QLatin1String("script") || element.text().isEmpty());
        const QDomNamedNodeMap attributes = element.attributes();
        for (int i = 0; i < attributes.count(); ++i) {
            const QString name = attributes.item(i).nodeName();
            QVERIFY2(!name.startsWith(QLatin1String("on")) && name != QLatin1String("style"),
                     qUtf8Printable(name));
        }
    }
}

void tst_HelpPages::imagesHaveATextAndASize()
{
    for (const QDomElement &image : GuidePages::elements(page(), QStringLiteral("img"))) {
        for (const auto &name : {QStringLiteral("alt"), QStringLiteral("width"), QStringLiteral("height")})
            QVERIFY2(image.hasAttribute(name), qUtf8Printable(image.attribute(QStringLiteral("src"))));
    }
}

void tst_HelpPages::canBeClosed()
{
    const QList<QDomElement> buttons = GuidePages::elements(page(), QStringLiteral("button"));
    QCOMPARE(buttons.size(), 1);
    QCOMPARE(buttons.first().attribute(QStringLiteral("id")), QStringLiteral("close"));
    QVERIFY(buttons.first().hasAttribute(QStringLiteral("hidden")));
    QVERIFY(GuidePages::links(page()).contains(QStringLiteral("help.js")));
}

void tst_HelpPages::sharedFilesLoadNothing()
{
    const QString sheet = read(QStringLiteral("help.css"));
    QVERIFY(!sheet.contains(QLatin1String("url(")));
    QVERIFY(!sheet.contains(QLatin1String("@import")));
    const QString script = read(QStringLiteral("help.js"));
    for (const auto &word : {QStringLiteral("http"), QStringLiteral("fetch"), QStringLiteral("eval")})
        QVERIFY2(!script.contains(word), qUtf8Printable(word));
}

void tst_HelpPages::theScriptAsksTheToolToClose()
{
    const QString script = read(QStringLiteral("help.js"));
    QVERIFY(script.contains(
        QLatin1String("window.external.DispatchFun(\"closeguidfun\", \"closeguid\", \"\");")));
    QVERIFY(script.contains(QLatin1String("typeof window.external.DispatchFun === \"function\"")));
}

QTEST_APPLESS_MAIN(tst_HelpPages)
#include "tst_HelpPages.moc"
