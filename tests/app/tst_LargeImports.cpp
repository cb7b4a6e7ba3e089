// SPDX-License-Identifier: Apache-2.0
#include "app/DlgCustomizationTool_v2.h"
#include "app/RegisterPages.h"
#include "config/CCommon.h"
#include "config/ConfigDocument.h"
#include "config/EditorXmlData.h"
#include "resources/Resources.h"
#include "tests/app/PrivatePlace.h"
#include "tests/support/TestFiles.h"

#include <QtTest>

#include <ctime>
#include <memory>

namespace {

/// Pieces of a list, as many as the largest import holds.
QByteArray filled(const QByteArray &piece)
{
    return piece.repeated(int(ConfigDocument::maximumImportBytes - 1024) / piece.size());
}

QByteArray document(const QByteArray &preference, const QByteArray &more = QByteArray())
{
    return "<PelixPDFEditor><Profstore><Preferences>" + preference + "</Preferences>" + more +
           "</Profstore></PelixPDFEditor>";
}

} // namespace

/// The window reads on the thread that answers the user, whatever somebody put into the file.
class tst_LargeImports : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { initPctResources(); }
    void theWindowShowsThemAtOnce_data();
    void theWindowShowsThemAtOnce();

private:
    PrivatePlace m_place;
};

void tst_LargeImports::theWindowShowsThemAtOnce_data()
{
    QTest::addColumn<QByteArray>("xml");
    QTest::newRow("domains") << document("<Preference Text='LoginDomainList' String='1;" + filled("a.b;") +
                                         "'/>");
    QTest::newRow("file types") << document(
        "<Preference Text='DefaultLaunchAttachmentPerms' BuiltInPermList='" + filled(".a:1|") + "'/>");
    QTest::newRow("references") << document(
        "<Preference Text='DefaultLaunchAttachmentPerms' BuiltInPermList='" + filled("&lt;") + "'/>");
    QTest::newRow("plug-ins") << document({}, "<Plugins><Plugin UnloadPluginArray='" + filled("a;") +
                                                  "'/></Plugins>");
    QTest::newRow("items") << document(filled("<Preference/>"));
    QTest::newRow("ribbon") << document({}, "<RibbonSetRibbonCategory><RibbonUI>" + filled("<a Text='b'/>") +
                                                "</RibbonUI></RibbonSetRibbonCategory>");
    QTest::newRow("quick access") << document({}, "<RibbonSetTabElements><QuickAccessBar>" +
                                                      filled("<control action='a'/>") +
                                                      "</QuickAccessBar></RibbonSetTabElements>");
}

void tst_LargeImports::theWindowShowsThemAtOnce()
{
    QFETCH(QByteArray, xml);
    theEditorXmlData = EditorXmlData();
    DlgCustomizationTool_v2 window(true, PCW_CONFIG_PACKAGE);
    registerPages(window);
    window.InitTabWidgets();
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    const QString path = m_place.path("document.xml");
    TestFiles::write(path, xml);

    const std::clock_t start = std::clock();
    QVERIFY(CCommon::ParseXml(path, &theEditorXmlData));
    window.UpdateTabWidgets();
    QCoreApplication::processEvents();
    const double seconds = double(std::clock() - start) / CLOCKS_PER_SEC;
    QVERIFY2(seconds < 20, qPrintable(QStringLiteral("%1 s").arg(seconds)));
}

QTEST_MAIN(tst_LargeImports)
#include "tst_LargeImports.moc"
