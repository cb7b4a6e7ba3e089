// SPDX-License-Identifier: Apache-2.0
#include "config/EditorXmlData.h"
#include "pages/PXCheckBox.h"
#include "resources/Resources.h"
#include "tests/app/BuildFlow.h"
#include "tests/app/Unpacked.h"
#include "welcome/tab_import_xml.h"

#include <QAbstractButton>
#include <QListWidget>
#include <QtTest>

using namespace BuildMessages;

namespace {

using Window = DlgCustomizationTool_v2;

const QString documentInPackage = QStringLiteral("scripts/ProfStore.xml");

/// The tree of a document as bytes that two equal trees share, whatever the order of attributes.
QByteArray canonical(const QString &document)
{
    return TestFiles::outputOf(QStringLiteral("xmllint"), {QStringLiteral("--c14n"), document});
}

/// Turns over what the product's pages offer of these; the Reader has fewer.
int toggleOptions(const Window &window)
{
    int toggled = 0;
    for (const char *name : {"cb_defaultpdf", "checkBox_showStartPg", "checkBox_removeAdvertise",
                             "cb_hidemyapps", "cb_biManageLogin", "cb_UseExternalBrowserForSSO"}) {
        if (auto *box = window.findChild<QAbstractButton *>(QLatin1String(name))) {
            box->toggle();
            ++toggled;
        }
    }
    return toggled;
}

void tickPlugins(const Window &window, const QList<int> &rows)
{
    const auto *list = window.findChild<QListWidget *>(QStringLiteral("listWidget_pluginList"));
    for (int row : rows)
        qobject_cast<PXCheckBox *>(list->itemWidget(list->item(row)))->setCheckState(Qt::Checked);
}

/// A document as somebody writes it by hand: every setting with a value that the window offers, in an order
/// and a form of its own, and things that nobody reads.
QByteArray handWritten(const QByteArray &root)
{
    return "<?xml version='1.0'?>\n<!-- by hand -->\n<" + root +
           "><extra a='b'/><RibbonSetTabElements><QuickAccessBar><control page='Other' group='Other' "
           "action='Ribbon_Action_Bar_Open'/></QuickAccessBar></RibbonSetTabElements>"
           "<RibbonSetRibbonCategory><RibbonUI><Category Text='Ribbon_Page_Bar' Hidden='0'>"
           "<Panel Text='Ribbon_Group_FilePage' Hidden='0'><Control Hidden='0' "
           "Text='Ribbon_Action_FilePage_Properties'><SubItem Text='Description' "
           "Hidden='1'/></Control></Panel>"
           "</Category></RibbonUI></RibbonSetRibbonCategory><Plugins><Plugin "
           "UnloadPluginArray='PelixFormFill.dylib;PelixComments.dylib;'/></Plugins><Preferences>"
           "<Preference Mode='1' Text='SupportExtSSO'/><Preference Text='LoginDomain' String='2'/>"
           "<Preference String='@a.example.com;@b.example.org' Text='LoginDomainList'/>"
           "<Preference Text='iManage10loginMethod' UseOAuth2='1'/><Preference Text='HideMyApps' Mode='1'/>"
           "<Preference Text='DefaultLaunchAttachmentPerms' Mode='1' "
           "BuiltInPermList='&#xFEFF;version:1|.&lt;&#x1F600;&gt;:3|'/><Preference Text='AuthLibrary' "
           "Mode='1'/>"
           "<Preference Text='bMIPCheckPolicyOnDocSave' Mode='1'/><Preference Text='Advertise' Disable='1'/>"
           "<Preference Text='StartPage' Mode='true'/></Preferences><Installation_Options>"
           "<Installation_Option Text='SetAsDefaultViewer' Disable='1'/></Installation_Options></" +
           root + ">\n";
}

QByteArray withPreference(const QByteArray &item)
{
    return "<PelixPDFEditor><Preferences><Preference " + item + "/></Preferences></PelixPDFEditor>";
}

/// The text of the document that the XPath expression leads to.
QString textIn(const QString &document, const QString &xpath)
{
    const QByteArray text = TestFiles::outputOf(
        QStringLiteral("xmllint"),
        {QStringLiteral("--xpath"), QStringLiteral("concat(%1, '|')").arg(xpath), document});
    return QString::fromUtf8(text.left(text.lastIndexOf('|')));
}

} // namespace

/// The same settings make the same package, whoever builds it.
class tst_WindowAndPctAgree : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { initPctResources(); }
    void init()
    {
        theEditorXmlData = EditorXmlData();
        m_flow = std::make_unique<BuildFlow>();
    }
    void cleanup() { m_flow.reset(); }

    void theSameSettingsMakeTheSamePackage_data();
    void theSameSettingsMakeTheSamePackage();
    void otherSettingsMakeAnotherPackage();
    void aHandWrittenDocumentMakesTheSamePackage_data();
    void aHandWrittenDocumentMakesTheSamePackage();
    void whatTheWindowNormalizesIsCarriedOnByPct_data();
    void whatTheWindowNormalizesIsCarriedOnByPct();

private:
    void buildInWindow(const QString &input, bool editor, bool otherSettings);
    void buildFromDocument(const QByteArray &document, bool editor);
    void buildWithPct(const QString &input, bool editor, const QString &document);
    void compareCarriedFiles(const Unpacked &first, const Unpacked &second);

    std::unique_ptr<BuildFlow> m_flow;
};

void tst_WindowAndPctAgree::theSameSettingsMakeTheSamePackage_data()
{
    QTest::addColumn<bool>("editor");
    QTest::addColumn<bool>("otherSettings");
    QTest::newRow("Editor, defaults") << true << false;
    QTest::newRow("Editor, other settings") << true << true;
    QTest::newRow("Reader, defaults") << false << false;
    QTest::newRow("Reader, other settings") << false << true;
}

void tst_WindowAndPctAgree::theSameSettingsMakeTheSamePackage()
{
    QFETCH(bool, editor);
    QFETCH(bool, otherSettings);
    const QString input = m_flow->sample(editor);
    buildInWindow(input, editor, otherSettings);
    buildWithPct(input, editor, m_flow->path("out/ProfStore.xml"));
    QVERIFY(!QTest::currentTestFailed());

    const Unpacked byWindow(m_flow->output("out/window.pkg"), editor);
    const Unpacked byPct(m_flow->output("out/pct.pkg"), editor);
    QCOMPARE(byWindow.scripts().contains(QStringLiteral("duti")), !otherSettings);
    compareCarriedFiles(byWindow, byPct);
}

/// Leaves the package and the document with its settings.
void tst_WindowAndPctAgree::buildInWindow(const QString &input, bool editor, bool otherSettings)
{
    const auto window = m_flow->openWindow(input, editor);
    if (otherSettings) {
        QVERIFY(toggleOptions(*window) >= 3);
        tickPlugins(*window, {0, 2});
    }
    const QString output = m_flow->output("out/window.pkg");
    QCOMPARE(m_flow->save(*window, output, true).text, packageAndDocumentMade);
}

void tst_WindowAndPctAgree::buildWithPct(const QString &input, bool editor, const QString &document)
{
    const QString product = editor ? QStringLiteral("editor") : QStringLiteral("reader");
    TestFiles::outputOf(QStringLiteral(PCT_EXECUTABLE),
                        {QStringLiteral("build"), QStringLiteral("--product"), product,
                         QStringLiteral("--input"), input, QStringLiteral("--output"),
                         m_flow->output("out/pct.pkg"), QStringLiteral("--config"), document});
}

void tst_WindowAndPctAgree::compareCarriedFiles(const Unpacked &first, const Unpacked &second)
{
    const QStringList files = first.files();
    QVERIFY(files.contains(documentInPackage));
    QVERIFY(files.contains(QStringLiteral("scripts/postinstall")));
    QCOMPARE(second.files(), files);
    for (const QString &name : files) {
        QVERIFY2(name == documentInPackage || equalFiles(first.file(name), second.file(name)),
                 qPrintable(name));
        QVERIFY2(QFileInfo(first.file(name)).permissions() == QFileInfo(second.file(name)).permissions(),
                 qPrintable(name));
    }
    QCOMPARE(canonical(second.file(documentInPackage)), canonical(first.file(documentInPackage)));
}

/// The comparison sees a difference where there is one.
void tst_WindowAndPctAgree::otherSettingsMakeAnotherPackage()
{
    const QString input = m_flow->sample(true);
    buildInWindow(input, true, true);
    const QString document = m_flow->path("out/ProfStore.xml");
    const QByteArray kept = TestFiles::read(document);
    QByteArray changed = kept;
    TestFiles::write(document, changed.replace("UnloadPluginArray=\"", "UnloadPluginArray=\"other;"));
    QVERIFY(changed != kept);
    buildWithPct(input, true, document);
    QVERIFY(!QTest::currentTestFailed());

    const Unpacked byWindow(m_flow->output("out/window.pkg"), true);
    const Unpacked byPct(m_flow->output("out/pct.pkg"), true);
    QVERIFY(canonical(byWindow.file(documentInPackage)) != canonical(byPct.file(documentInPackage)));
}

void tst_WindowAndPctAgree::aHandWrittenDocumentMakesTheSamePackage_data()
{
    QTest::addColumn<bool>("editor");
    QTest::addColumn<QByteArray>("document");
    QTest::newRow("Editor, nothing said") << true << QByteArray("<PelixPDFEditor/>");
    QTest::newRow("Reader, nothing said") << false << QByteArray("<PelixPDFReader/>");
    QTest::newRow("Editor, everything said") << true << handWritten("PelixPDFEditor");
    QTest::newRow("Reader, everything said") << false << handWritten("PelixPDFReader");
    QTest::newRow("Editor, no ribbon")
        << true << QByteArray("<PelixPDFEditor><RibbonSetRibbonCategory/></PelixPDFEditor>");
}

void tst_WindowAndPctAgree::aHandWrittenDocumentMakesTheSamePackage()
{
    QFETCH(bool, editor);
    QFETCH(QByteArray, document);
    buildFromDocument(document, editor);
    QVERIFY(!QTest::currentTestFailed());
    compareCarriedFiles(Unpacked(m_flow->output("out/window.pkg"), editor),
                        Unpacked(m_flow->output("out/pct.pkg"), editor));
}

/// Imports the document into a window, which builds "window.pkg", and gives it to pct, which builds
/// "pct.pkg".
void tst_WindowAndPctAgree::buildFromDocument(const QByteArray &document, bool editor)
{
    const QString input = m_flow->sample(editor);
    const QString path = m_flow->path("in/document.xml");
    TestFiles::write(path, document);
    const auto window = m_flow->openWindow(input, editor);
    emit window->findChild<tab_import_xml *>()->sig_fileloaded(path);
    QCoreApplication::processEvents();
    QCOMPARE(m_flow->save(*window, m_flow->output("out/window.pkg")).text, packageMade);
    buildWithPct(input, editor, path);
}

void tst_WindowAndPctAgree::whatTheWindowNormalizesIsCarriedOnByPct_data()
{
    QTest::addColumn<QByteArray>("document");
    QTest::addColumn<QString>("xpath");
    QTest::addColumn<QString>("byWindow");
    QTest::addColumn<QString>("byPct");
    const QString attachments = QStringLiteral("string(//@DisableOpenSaveFileAttach)");
    for (const char *mode : {"0", "1", "7"})
        QTest::addRow("attachments %s", mode)
            << withPreference(QByteArray("Text='DefaultLaunchAttachmentPerms' DisableOpenSaveFileAttach='") +
                              mode + "'")
            << attachments << QString() << QString::fromLatin1(mode);
    QTest::newRow("attachments by a word")
        << withPreference("Text='DefaultLaunchAttachmentPerms' DisableOpenSaveFileAttach='Disabled'")
        << attachments << QString() << QStringLiteral("1");
    QTest::newRow("MIP policy") << withPreference("Text='bMIPCheckPolicyOnDocSave' Mode='7'")
                                << QStringLiteral("string(//*[@Text='bMIPCheckPolicyOnDocSave']/@Mode)")
                                << QString() << QStringLiteral("7");
    QTest::newRow("login domain mode") << withPreference("Text='LoginDomain' String='0'")
                                       << QStringLiteral("string(//*[@Text='LoginDomain']/@String)")
                                       << QStringLiteral("2") << QStringLiteral("0");
    QTest::newRow("empty domains") << withPreference(
                                          "Text='LoginDomainList' String=';@a.example;;@b.example;'")
                                   << QStringLiteral("string(//*[@Text='LoginDomainList']/@String)")
                                   << QStringLiteral("@a.example;@b.example")
                                   << QStringLiteral(";@a.example;;@b.example;");
    const QString fileTypes = QStringLiteral("string(//@BuiltInPermList)");
    QTest::newRow("white space around file types")
        << withPreference("Text='DefaultLaunchAttachmentPerms' BuiltInPermList=' .a:3&#10; '") << fileTypes
        << QStringLiteral(".a:3") << QStringLiteral(" .a:3\n ");
    QTest::newRow("line ends and hard blanks in file types")
        << withPreference("Text='DefaultLaunchAttachmentPerms' BuiltInPermList='.a:3&#13;&#10;.b:&#160;1'")
        << fileTypes << QStringLiteral(".a:3\n.b: 1") << QStringLiteral(".a:3\r\n.b:\u00a01");
    QTest::newRow("unknown plug-ins")
        << QByteArray("<PelixPDFEditor><Plugins><Plugin UnloadPluginArray='Own.dylib;PelixComments.dylib;"
                      "PelixFormFill.dylib'/></Plugins></PelixPDFEditor>")
        << QStringLiteral("string(//@UnloadPluginArray)")
        << QStringLiteral("PelixFormFill.dylib;PelixComments.dylib;")
        << QStringLiteral("PelixFormFill.dylib;PelixComments.dylib;Own.dylib;");
    QTest::newRow("unknown ribbon")
        << QByteArray("<PelixPDFEditor><RibbonSetRibbonCategory><RibbonUI><Category Text='Own' Hidden='1'/>"
                      "</RibbonUI></RibbonSetRibbonCategory></PelixPDFEditor>")
        << QStringLiteral("string(//RibbonUI/Category/@Text)") << QString() << QStringLiteral("Own");
    QTest::newRow("unknown quick access")
        << QByteArray("<PelixPDFEditor><RibbonSetTabElements><QuickAccessBar><control action='Own'/>"
                      "</QuickAccessBar></RibbonSetTabElements></PelixPDFEditor>")
        << QStringLiteral("string(//QuickAccessBar/control/@action)") << QString() << QStringLiteral("Own");
}

void tst_WindowAndPctAgree::whatTheWindowNormalizesIsCarriedOnByPct()
{
    QFETCH(QByteArray, document);
    QFETCH(QString, xpath);
    buildFromDocument(document, true);
    QVERIFY(!QTest::currentTestFailed());
    QTEST(textIn(Unpacked(m_flow->output("out/window.pkg"), true).file(documentInPackage), xpath),
          "byWindow");
    QTEST(textIn(Unpacked(m_flow->output("out/pct.pkg"), true).file(documentInPackage), xpath), "byPct");
}

QTEST_MAIN(tst_WindowAndPctAgree)
#include "tst_WindowAndPctAgree.moc"
