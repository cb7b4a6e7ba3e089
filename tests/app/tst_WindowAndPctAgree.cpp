// SPDX-License-Identifier: Apache-2.0
#include "config/EditorXmlData.h"
#include "pages/PXCheckBox.h"
#include "resources/Resources.h"
#include "tests/app/BuildFlow.h"
#include "tests/app/Unpacked.h"

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

private:
    void buildInWindow(const QString &input, bool editor, bool otherSettings);
    void buildWithPct(const QString &input, bool editor);
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
    buildWithPct(input, editor);
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

void tst_WindowAndPctAgree::buildWithPct(const QString &input, bool editor)
{
    const QString product = editor ? QStringLiteral("editor") : QStringLiteral("reader");
    TestFiles::outputOf(QStringLiteral(PCT_EXECUTABLE),
                        {QStringLiteral("build"), QStringLiteral("--product"), product,
                         QStringLiteral("--input"), input, QStringLiteral("--output"),
                         m_flow->output("out/pct.pkg"), QStringLiteral("--config"),
                         m_flow->path("out/ProfStore.xml")});
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
    buildWithPct(input, true);
    QVERIFY(!QTest::currentTestFailed());

    const Unpacked byWindow(m_flow->output("out/window.pkg"), true);
    const Unpacked byPct(m_flow->output("out/pct.pkg"), true);
    QVERIFY(canonical(byWindow.file(documentInPackage)) != canonical(byPct.file(documentInPackage)));
}

QTEST_MAIN(tst_WindowAndPctAgree)
#include "tst_WindowAndPctAgree.moc"
