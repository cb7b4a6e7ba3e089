// SPDX-License-Identifier: Apache-2.0
#include "config/ConfigDocument.h"
#include "config/EditorXmlData.h"
#include "config/Product.h"
#include "config/UnreadSettings.h"
#include "config/XmlTree.h"
#include "tests/support/ProblemText.h"

#include <QDomDocument>
#include <QtTest>

namespace {

QStringList unreadIn(const QByteArray &xml)
{
    const Result<QDomDocument> document = XmlTree::read(xml);
    if (!document)
        qFatal("%s", qPrintable(problemText(document)));
    QStringList texts;
    const auto unread = unreadSettings(*document);
    for (const UnreadSetting &setting : unread)
        texts += setting.text;
    return texts;
}

QByteArray inProfstore(const QByteArray &sections)
{
    return "<PelixPDFEditor version='1' Edition='Biz' XMLversion='2'><Profstore>" + sections +
           "</Profstore></PelixPDFEditor>";
}

} // namespace

class tst_UnreadSettings : public QObject
{
    Q_OBJECT

private slots:
    void tellsWhatNobodyReads_data();
    void tellsWhatNobodyReads();
    void hasNothingAgainstADocumentOfOurs_data();
    void hasNothingAgainstADocumentOfOurs();
    void longNamesAreCut();
};

void tst_UnreadSettings::tellsWhatNobodyReads_data()
{
    QTest::addColumn<QByteArray>("sections");
    QTest::addColumn<QStringList>("unread");
    const auto row = [](const char *name, const QByteArray &sections, const QStringList &unread) {
        QTest::newRow(name) << sections << unread;
    };
    const auto text = [](const char *literal) { return QString::fromUtf8(literal); };
    row("nothing", "", {});
    row("key in other case", "<Preferences><Preference Text='Startpage' Mode='0'/></Preferences>",
        {text("Preference \"Startpage\"")});
    row("attribute in other case", "<Preferences><Preference Text='StartPage' mode='0'/></Preferences>",
        {text("attribute \"mode\" of Preference \"StartPage\"")});
    row("attribute of another key",
        "<Preferences><Preference Text='Advertise' Mode='1' Disable='1'/></Preferences>",
        {text("attribute \"Mode\" of Preference \"Advertise\"")});
    row("several attributes, by name",
        "<Preferences><Preference Text='StartPage' b='' Mode='1' a=''/></Preferences>",
        {text("attribute \"a\" of Preference \"StartPage\""),
         text("attribute \"b\" of Preference \"StartPage\"")});
    row("item without a key", "<Preferences><Preference Mode='0'/></Preferences>",
        {text("Preference in Preferences")});
    row("every key under any tag", "<Preferences><x Text='LoginDomain' String='1'/></Preferences>", {});
    row("section in other case", "<preferences><Preference Text='StartPage' Mode='0'/></preferences>",
        {text("preferences in Profstore")});
    row("section a second time", "<Plugins/><Plugins><Plugin UnloadPluginArray='a'/></Plugins>",
        {text("Plugins in Profstore")});
    row("section somewhere else",
        "<a><b><Preferences><Preference Text='HideMyApps' Mode='1'/></Preferences></b></a>", {});
    row("beside a section somewhere else", "<a c=''><b/><Preferences/></a>",
        {text("b in a"), text("attribute \"c\" of a in Profstore")});
    row("attribute of a section", "<Preferences Text='x'/>",
        {text("attribute \"Text\" of Preferences \"x\"")});
    row("plug-in", "<Plugins><Plugin Text='Plugin' UnloadPluginArray='a' UnloadPlugin='b'/></Plugins>",
        {text("attribute \"UnloadPlugin\" of Plugin \"Plugin\"")});
    row("installation option",
        "<Installation_Options><Installation_Option Text='SetAsDefaultViewer' Disable='0' Enable='1'/>"
        "<Installation_Option Text='SetAsDefault' Disable='0'/></Installation_Options>",
        {text("attribute \"Enable\" of Installation_Option \"SetAsDefaultViewer\""),
         text("Installation_Option \"SetAsDefault\"")});
    row("ribbon that is in its place",
        "<RibbonSetRibbonCategory><RibbonUI a=''><b/></RibbonUI></RibbonSetRibbonCategory>"
        "<RibbonSetTabElements><QuickAccessBar><control action='a'/></QuickAccessBar></RibbonSetTabElements>",
        {});
    row("ribbon in the other's place", "<RibbonSetRibbonCategory><QuickAccessBar/></RibbonSetRibbonCategory>",
        {text("QuickAccessBar in RibbonSetRibbonCategory")});
    row("quick-access bar with other elements and attributes",
        "<RibbonSetTabElements><QuickAccessBar><Control action='a'/><control action='a' page='b' Group='c'/>"
        "</QuickAccessBar></RibbonSetTabElements>",
        {text("Control in QuickAccessBar"), text("attribute \"Group\" of control in QuickAccessBar")});
    row("quick-access bar without its section", "<QuickAccessBar><control/></QuickAccessBar>",
        {text("QuickAccessBar in Profstore")});
    row("quick-access bar a second time",
        "<RibbonSetTabElements><QuickAccessBar/><QuickAccessBar/></RibbonSetTabElements>",
        {text("QuickAccessBar in RibbonSetTabElements")});
    row("what lies below is not told", "<a b=''><c d=''/><e/></a>", {text("a in Profstore")});
}

void tst_UnreadSettings::tellsWhatNobodyReads()
{
    QFETCH(QByteArray, sections);
    QTEST(unreadIn(inProfstore(sections)), "unread");
}

void tst_UnreadSettings::hasNothingAgainstADocumentOfOurs_data()
{
    QTest::addColumn<bool>("editor");
    QTest::newRow("editor") << true;
    QTest::newRow("reader") << false;
}

void tst_UnreadSettings::hasNothingAgainstADocumentOfOurs()
{
    QFETCH(bool, editor);
    const QDomDocument document =
        ConfigDocument::fromSettings(EditorXmlData(), Product::of(editor), QStringLiteral("13.1"));
    QVERIFY(unreadSettings(document).isEmpty());
}

void tst_UnreadSettings::longNamesAreCut()
{
    const QByteArray key(100000, 'k');
    const QStringList unread =
        unreadIn(inProfstore("<Preferences><Preference Text='" + key + "'/></Preferences>"));
    QCOMPARE(unread, QStringList{QStringLiteral("Preference \"") + QString(64, QLatin1Char('k')) +
                                 QChar(0x2026) + QLatin1Char('"')});
}

QTEST_GUILESS_MAIN(tst_UnreadSettings)
#include "tst_UnreadSettings.moc"
