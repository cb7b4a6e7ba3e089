// SPDX-License-Identifier: Apache-2.0
#include "app/CPDF_Waiting.h"
#include "app/StartUp.h"
#include "config/EditorXmlData.h"
#include "pages/PXCheckBox.h"
#include "resources/Resources.h"
#include "tests/app/BuildFlow.h"
#include "tests/app/Unpacked.h"
#include "tests/app/WindowDriver.h"
#include "tests/support/DialogDriver.h"
#include "welcome/tab_import_xml.h"
#include "welcome/tab_welcome.h"

#include <QCheckBox>
#include <QComboBox>
#include <QListWidget>
#include <QPushButton>
#include <QToolButton>
#include <QtTest>

using namespace BuildMessages;

namespace {

using Window = DlgCustomizationTool_v2;

PXCheckBox *plugin(const Window &window, int row)
{
    auto *list = window.findChild<QListWidget *>(QStringLiteral("listWidget_pluginList"));
    return qobject_cast<PXCheckBox *>(list->itemWidget(list->item(row)));
}

QString pluginPath(const Window &window, int row)
{
    const auto *list = window.findChild<QListWidget *>(QStringLiteral("listWidget_pluginList"));
    return list->item(row)->data(Qt::UserRole + 1).toString();
}

QString xpath(const QString &document, const char *expression)
{
    return QString::fromUtf8(
               TestFiles::outputOf(QStringLiteral("xmllint"),
                                   {QStringLiteral("--xpath"), QLatin1String(expression), document}))
        .trimmed();
}

} // namespace

class tst_PackageFlow : public QObject
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

    void fromTheChooserToTheCustomizedPackage_data();
    void fromTheChooserToTheCustomizedPackage();
    void whileBuildingTheWindowIsDisabledUnderTheWaitingIndicator();
    void whileBuildingNothingIsOpenedAndTheWindowStays();
    void withoutTheBoxNoDocumentIsKept();
    void oneWindowBuildsSeveralTimes();
    void anotherBuildEndsTheOneThatRuns();

private:
    std::unique_ptr<Window> chooseProduct(bool editor);
    void openAsUser(Window &window, const QString &input, bool editor);
    void importAsUser(Window &window, const QString &root);
    void tickAsUser(Window &window);
    void checkDocument(const Window &window, const QString &root);
    void checkPackage(const QString &input, bool editor);

    std::unique_ptr<BuildFlow> m_flow;
};

void tst_PackageFlow::fromTheChooserToTheCustomizedPackage_data()
{
    QTest::addColumn<bool>("editor");
    QTest::addColumn<QString>("root");
    QTest::newRow("Editor") << true << QStringLiteral("PelixPDFEditor");
    QTest::newRow("Reader") << false << QStringLiteral("PelixPDFReader");
}

void tst_PackageFlow::fromTheChooserToTheCustomizedPackage()
{
    QFETCH(bool, editor);
    QFETCH(QString, root);
    const QString input = m_flow->sample(editor);
    const std::unique_ptr<Window> window = chooseProduct(editor);
    QVERIFY(window);
    openAsUser(*window, input, editor);
    importAsUser(*window, root);
    tickAsUser(*window);
    QVERIFY(!QTest::currentTestFailed());

    const ShownMessage shown = m_flow->save(*window, m_flow->output(), true);
    QCOMPARE(shown.text, packageAndDocumentMade);
    QCOMPARE(shown.title, QString());
    QCOMPARE(shown.icon, QMessageBox::Information);
    QCOMPARE(shown.buttons, QMessageBox::Ok);
    QCOMPARE(shown.parent.data(), window.get());
    QVERIFY(!QFileInfo::exists(m_flow->workFolder(input)));

    checkDocument(*window, root);
    checkPackage(input, editor);
}

std::unique_ptr<Window> tst_PackageFlow::chooseProduct(bool editor)
{
    DialogDriver::onNextModal(this, [editor](QDialog *chooser) {
        chooser->findChild<QComboBox *>(QStringLiteral("comboBox"))->setCurrentIndex(editor ? 0 : 1);
        chooser->findChild<QPushButton *>(QStringLiteral("pushButton_OK"))->click();
    });
    std::unique_ptr<Window> window(makeChosenWindow());
    if (window)
        window->show();
    return window;
}

/// One product by the dialog, the other by a drop.
void tst_PackageFlow::openAsUser(Window &window, const QString &input, bool editor)
{
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    if (editor) {
        DialogDriver::chooseFile(this, input);
        QTest::mouseClick(window.findChild<QPushButton *>(QStringLiteral("btnBrowse")), Qt::LeftButton);
    } else {
        QVERIFY(WindowDriver::dropFiles(window.findChild<tab_welcome *>(), {input}));
    }
    QTRY_VERIFY_WITH_TIMEOUT(window.findChild<tab_import_xml *>(), 20'000);
    QTRY_VERIFY(window.findChild<tab_import_xml *>()->isVisible());
}

/// Imports a document that names the first plug-in and does not want the default viewer.
void tst_PackageFlow::importAsUser(Window &window, const QString &root)
{
    const QString text =
        QStringLiteral("<%1><Plugins><Item UnloadPluginArray=\"%2;\"/></Plugins>"
                       "<Installation_Options><Item Text=\"SetAsDefaultViewer\" Disable=\"1\"/>"
                       "</Installation_Options></%1>");
    const QString document = m_flow->path("wanted.xml");
    TestFiles::write(document, text.arg(root, pluginPath(window, 0)).toUtf8());
    DialogDriver::chooseFile(this, document);
    QTest::mouseClick(window.findChild<QPushButton *>(QStringLiteral("btnImport")), Qt::LeftButton);
    const auto *defaultViewer = window.findChild<QCheckBox *>(QStringLiteral("cb_defaultpdf"));
    QTRY_VERIFY(defaultViewer->isVisible());
    QVERIFY(!defaultViewer->isChecked());
}

/// Wants the default viewer after all, and the third plug-in off as well.
void tst_PackageFlow::tickAsUser(Window &window)
{
    auto *defaultViewer = window.findChild<QCheckBox *>(QStringLiteral("cb_defaultpdf"));
    QTest::mouseClick(defaultViewer, Qt::LeftButton, {}, {10, defaultViewer->height() / 2});
    QVERIFY(defaultViewer->isChecked());
    QTest::mouseClick(tool(window, "Plugins"), Qt::LeftButton);
    QTRY_VERIFY(plugin(window, 2)->isVisible());
    QCOMPARE(plugin(window, 0)->checkState(), Qt::Checked);
    QTest::mouseClick(plugin(window, 2), Qt::LeftButton);
    QCOMPARE(plugin(window, 2)->checkState(), Qt::Checked);
}

void tst_PackageFlow::checkDocument(const Window &window, const QString &root)
{
    const QString document = m_flow->path("out/ProfStore.xml");
    QCOMPARE(xpath(document, "name(/*)"), root);
    QCOMPARE(xpath(document, "string(//Plugins/*/@UnloadPluginArray)"),
             QStringLiteral("%1;%2;").arg(pluginPath(window, 0), pluginPath(window, 2)));
    QCOMPARE(xpath(document, "string(//*[@Text='SetAsDefaultViewer']/@Disable)"), QStringLiteral("0"));
}

void tst_PackageFlow::checkPackage(const QString &input, bool editor)
{
    const Unpacked before(input, editor);
    const Unpacked after(m_flow->output(), editor);
    for (const char *name : {"Payload", "Bom", "PackageInfo"})
        QVERIFY2(equalFiles(before.member(name), after.member(name)), name);
    QStringList scripts =
        before.scripts() + QStringList({QStringLiteral("ProfStore.xml"), QStringLiteral("duti")});
    scripts.sort();
    QCOMPARE(after.scripts(), scripts);
    QVERIFY(equalFiles(after.script("ProfStore.xml"), m_flow->path("out/ProfStore.xml")));
    QVERIFY(QFileInfo(after.script("duti")).isExecutable());
    const QByteArray postinstall = TestFiles::read(after.script("postinstall"));
    QVERIFY(postinstall.contains("editorXmlFileCopy=1"));
    QVERIFY(postinstall.contains("setdefaultpdf=1"));
    QVERIFY(postinstall != TestFiles::read(before.script("postinstall")));
    QVERIFY(!equalFiles(before.script("preinstall"), after.script("preinstall")));
}

void tst_PackageFlow::whileBuildingTheWindowIsDisabledUnderTheWaitingIndicator()
{
    const auto window = m_flow->openWindow(m_flow->sample(true));
    const auto *waiting = window->findChild<CPDF_Waiting *>();
    WindowDriver::saveAs(this, m_flow->output(), false, [] {});
    tool(*window, "tb_save")->click();
    QVERIFY(!window->isEnabled());
    QVERIFY(waiting->isVisible());
    QCOMPARE(window->childAt(waiting->geometry().center())->parentWidget(), waiting);
    QCOMPARE(waiting->pos(), QPoint((window->width() - 1) / 2 - 32, (window->height() - 1) / 2 - 32));

    ShownMessage shown;
    WindowDriver::acceptMessage(this, &shown);
    QTRY_COMPARE_WITH_TIMEOUT(shown.count, 1, 60'000);
    QVERIFY(window->isEnabled());
    QVERIFY(!waiting->isVisible());
    QVERIFY(tool(*window, "tb_save")->isEnabled());
}

void tst_PackageFlow::whileBuildingNothingIsOpenedAndTheWindowStays()
{
    const QString input = m_flow->sample(true);
    const auto window = m_flow->openWindow(input);
    WindowDriver::saveAs(this, m_flow->output(), false, [] {});
    tool(*window, "tb_save")->click();
    QVERIFY(!window->isEnabled());
    window->close();
    QVERIFY(window->isVisible());
    QVERIFY(!window->on_fileloaded(input));

    ShownMessage shown;
    WindowDriver::acceptMessage(this, &shown);
    QTRY_COMPARE_WITH_TIMEOUT(shown.text, packageMade, 60'000);
    QTRY_VERIFY(window->close());
}

void tst_PackageFlow::withoutTheBoxNoDocumentIsKept()
{
    const auto window = m_flow->openWindow(m_flow->sample(false), false);
    QCOMPARE(m_flow->save(*window, m_flow->output()).text, packageMade);
    QCOMPARE(QDir(m_flow->path("out")).entryList(QDir::Files), QStringList(QStringLiteral("custom.pkg")));
    QVERIFY(QFileInfo::exists(Unpacked(m_flow->output(), false).script("ProfStore.xml")));
}

void tst_PackageFlow::oneWindowBuildsSeveralTimes()
{
    const auto window = m_flow->openWindow(m_flow->sample(true));
    auto *defaultViewer = window->findChild<QCheckBox *>(QStringLiteral("cb_defaultpdf"));
    defaultViewer->setChecked(true);
    QCOMPARE(m_flow->save(*window, m_flow->output("out/with.pkg")).text, packageMade);
    defaultViewer->setChecked(false);
    QCOMPARE(m_flow->save(*window, m_flow->output("out/without.pkg")).text, packageMade);
    QVERIFY(QFileInfo::exists(Unpacked(m_flow->output("out/with.pkg"), true).script("duti")));
    QVERIFY(!QFileInfo::exists(Unpacked(m_flow->output("out/without.pkg"), true).script("duti")));
}

/// The window is disabled while it builds, so only code can start a second build. The first one hangs in
/// its first command, which a later build finds working again.
void tst_PackageFlow::anotherBuildEndsTheOneThatRuns()
{
    const QByteArray path = qgetenv("PATH");
    const auto restorePath = qScopeGuard([&path] { qputenv("PATH", path); });
    const QString started = m_flow->path("started");
    const QString pkgutil = QStandardPaths::findExecutable(QStringLiteral("pkgutil"));
    TestFiles::writeScript(m_flow->path("slow/pkgutil"), QStringLiteral("test -e '%1' && exec '%2' \"$@\"\n"
                                                                        "touch '%1'\nexec sleep 300\n")
                                                             .arg(started, pkgutil)
                                                             .toUtf8());
    const QByteArray slowFirst = QFile::encodeName(m_flow->path("slow")) + ':' + path;
    qputenv("PATH", slowFirst);

    const auto window = m_flow->openWindow(m_flow->sample(true));
    WindowDriver::saveAs(this, m_flow->output("out/first.pkg"), false, [] {});
    window->On_SavePackage();
    QTRY_VERIFY(QFileInfo::exists(started));
    WindowDriver::saveAs(this, m_flow->output("out/second.pkg"), false, [] {});
    window->On_SavePackage();
    ShownMessage shown;
    WindowDriver::acceptMessage(this, &shown);
    QTRY_COMPARE_WITH_TIMEOUT(shown.text, packageMade, 60'000);
    QVERIFY(!QFileInfo::exists(m_flow->output("out/first.pkg")));
    QVERIFY(QFileInfo::exists(m_flow->output("out/second.pkg")));
    QTRY_VERIFY(window->isEnabled());
}

QTEST_MAIN(tst_PackageFlow)
#include "tst_PackageFlow.moc"
