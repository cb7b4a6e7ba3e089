// SPDX-License-Identifier: Apache-2.0
#include "profile/CProfileGenerator.h"
#include "resources/Resources.h"
#include "tests/app/FakePagesWindow.h"
#include "tests/app/ProfileFlow.h"
#include "welcome/tab_welcome_profile.h"

#include <QFileDialog>
#include <QPushButton>
#include <QSplitter>
#include <QStackedLayout>
#include <QTableView>
#include <QTextEdit>
#include <QToolButton>
#include <QtTest>

using namespace Answers;

namespace {

using Window = DlgCustomizationTool_v2;

tab_welcome_profile *welcomeOf(const Window &window)
{
    return window.findChild<tab_welcome_profile *>();
}

template <typename Button> Button *buttonOf(const Window &window, const char *name)
{
    return window.findChild<Button *>(QLatin1String(name));
}

/// Presses a button whose flow is over when it returns or, when it is queued, shortly afterwards.
void pressAndAnswer(QAbstractButton *button, const QList<DialogScript::Answer> &answers)
{
    const DialogScript script(answers);
    button->click();
    QTest::qWait(100);
}

void refuse(const QString &path, bool editor = true)
{
    EditorXmlData untouched;
    QVERIFY(!CProfileGenerator::ImportProfile(path, &untouched, editor));
}

} // namespace

/// Starting in profile mode and filling the pages from a profile.
class tst_ProfileFlowOpen : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { initPctResources(); }
    void init()
    {
        theEditorXmlData = EditorXmlData();
        m_flow = std::make_unique<ProfileFlow>();
        m_window = m_flow->openWindow();
        m_firstPlugin = offeredPlugin(*m_window, 0) + QLatin1Char(';');
    }
    void cleanup()
    {
        m_window.reset();
        m_flow.reset();
    }

    void theFirstShowIsReadyAndStaysOnTheWelcomePage();
    void withoutAFileAPageCanBeChosen();
    void openingByTheToolBarFillsThePages();
    void theToolBarsDialogHasTheProfileFilter();
    void cancellingTheToolBarsDialogReadsNothing();
    void openingByTheImportButtonFillsThePages();
    void openingByADropFillsThePages();
    void aProfileDroppedTogetherWithAnotherFileIsLoaded();
    void aSuffixInCapitalsIsRefused();
    void retrieveFillsThePagesFromTheInstalledProfile();
    void retrieveWithNoInstalledProfileSaysSo();
    void retrieveIgnoresTheOtherProductsProfile();
    void aReaderProfileInTheEditorChangesNothing();
    void aFileThatIsNoProfileChangesNothing_data();
    void aFileThatIsNoProfileChangesNothing();
    void theIdentityOfTheLoadedProfileIsKeptInTheNextSave();
    void whatNoFileCanHoldIsShownAsItStandsAndSavedNowhere();
    void afterALoadTheFirstPageOfTheProductIsShown_data();
    void afterALoadTheFirstPageOfTheProductIsShown();
    void reloadingTheInformationFollowsItsButton();

private:
    QString sample(const char *name = "in/sample.mobileconfig") const
    {
        return m_flow->makeProfile(name, true, m_firstPlugin);
    }
    void verifyLoaded();
    void verifyNothingChanged();

    std::unique_ptr<ProfileFlow> m_flow;
    std::unique_ptr<Window> m_window;
    QString m_firstPlugin;
};

void tst_ProfileFlowOpen::verifyLoaded()
{
    QTRY_VERIFY(isPluginTicked(*m_window, 0));
    QVERIFY(!isPluginTicked(*m_window, 1));
    QCOMPARE(theEditorXmlData.strUnloadPluginArray, m_firstPlugin);
    QVERIFY(!welcomeOf(*m_window)->isVisible());
}

void tst_ProfileFlowOpen::verifyNothingChanged()
{
    QTest::qWait(100);
    QVERIFY(!isPluginTicked(*m_window, 0));
    QVERIFY(theEditorXmlData == EditorXmlData());
    QVERIFY(welcomeOf(*m_window)->isVisible());
}

void tst_ProfileFlowOpen::theFirstShowIsReadyAndStaysOnTheWelcomePage()
{
    QVERIFY(welcomeOf(*m_window)->isVisible());
    for (const char *name : {"tb_open", "tb_save", "Plugins"})
        QVERIFY2(buttonOf<QToolButton>(*m_window, name)->isEnabled(), name);
    m_window->RefreshStackLayoutWidget();
    QVERIFY(welcomeOf(*m_window)->isVisible());
}

void tst_ProfileFlowOpen::withoutAFileAPageCanBeChosen()
{
    QTest::mouseClick(buttonOf<QToolButton>(*m_window, "Plugins"), Qt::LeftButton);
    QVERIFY(!welcomeOf(*m_window)->isVisible());
    QVERIFY(m_window->findChild<QWidget *>(QStringLiteral("listWidget_pluginList"))->isVisible());
}

void tst_ProfileFlowOpen::openingByTheToolBarFillsThePages()
{
    const QString file = sample();
    pressAndAnswer(buttonOf<QToolButton>(*m_window, "tb_open"), {choose(file)});
    verifyLoaded();
    QCOMPARE(CProfileGenerator::GetLastOpenDirectory(), m_flow->path("in"));
}

void tst_ProfileFlowOpen::theToolBarsDialogHasTheProfileFilter()
{
    QStringList filters;
    const auto look = [&filters](QDialog *dialog) {
        filters = qobject_cast<QFileDialog *>(dialog)->nameFilters();
        dialog->reject();
    };
    pressAndAnswer(buttonOf<QToolButton>(*m_window, "tb_open"), {look});
    QCOMPARE(filters, QStringList(QStringLiteral("configration profiles (*.mobileconfig)")));
}

/// An empty path would stand for the installed profile.
void tst_ProfileFlowOpen::cancellingTheToolBarsDialogReadsNothing()
{
    m_flow->install(sample());
    pressAndAnswer(buttonOf<QToolButton>(*m_window, "tb_open"), {escape()});
    verifyNothingChanged();
}

void tst_ProfileFlowOpen::openingByTheImportButtonFillsThePages()
{
    pressAndAnswer(buttonOf<QPushButton>(*m_window, "btnImport"), {choose(sample())});
    verifyLoaded();
}

void tst_ProfileFlowOpen::openingByADropFillsThePages()
{
    QVERIFY(WindowDriver::dropFiles(welcomeOf(*m_window), {sample()}));
    verifyLoaded();
}

void tst_ProfileFlowOpen::aProfileDroppedTogetherWithAnotherFileIsLoaded()
{
    const QString text = m_flow->path("in/b.txt");
    TestFiles::write(text, "text");
    const QString profile = sample("in/a.mobileconfig");
    QVERIFY(WindowDriver::dropFiles(welcomeOf(*m_window), {text, profile}));
    verifyLoaded();
}

void tst_ProfileFlowOpen::aSuffixInCapitalsIsRefused()
{
    QVERIFY(!WindowDriver::dropFiles(welcomeOf(*m_window), {sample("in/Profile.MOBILECONFIG")}));
    verifyNothingChanged();
}

void tst_ProfileFlowOpen::retrieveFillsThePagesFromTheInstalledProfile()
{
    const QString profile = sample();
    m_flow->install(profile);
    pressAndAnswer(buttonOf<QPushButton>(*m_window, "btnRetrieve"), {});
    verifyLoaded();
    QCOMPARE(theEditorXmlData.payloadInfo.PayloadIdentifier, valueIn(profile, "PayloadIdentifier"));
    QCOMPARE(theEditorXmlData.payloadInfo.PayloadUUID, valueIn(profile, "PayloadUUID"));
}

void tst_ProfileFlowOpen::retrieveWithNoInstalledProfileSaysSo()
{
    ShownMessage shown;
    pressAndAnswer(buttonOf<QPushButton>(*m_window, "btnRetrieve"), {read(&shown)});
    QCOMPARE(shown.text, ProfileMessages::noneInstalled);
    QCOMPARE(shown.icon, QMessageBox::Warning);
    QCOMPARE(shown.title, QString());
    QCOMPARE(shown.buttons, QMessageBox::Ok);
    verifyNothingChanged();
}

void tst_ProfileFlowOpen::retrieveIgnoresTheOtherProductsProfile()
{
    m_flow->install(m_flow->makeProfile("reader.mobileconfig", false));
    ShownMessage shown;
    pressAndAnswer(buttonOf<QPushButton>(*m_window, "btnRetrieve"), {read(&shown)});
    QCOMPARE(shown.text, ProfileMessages::noneInstalled);
    verifyNothingChanged();
}

void tst_ProfileFlowOpen::aReaderProfileInTheEditorChangesNothing()
{
    const QString profile = m_flow->makeProfile("reader.mobileconfig", false, m_firstPlugin);
    refuse(profile);
    pressAndAnswer(buttonOf<QPushButton>(*m_window, "btnImport"), {choose(profile)});
    verifyNothingChanged();
}

void tst_ProfileFlowOpen::aFileThatIsNoProfileChangesNothing_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("text") << QByteArray("no profile");
    QTest::newRow("other document") << QByteArray("<?xml version='1.0'?><PelixPDFEditor/>");
    QTest::newRow("list without content") << QByteArray("<?xml version='1.0'?><plist version='1.0'><dict>"
                                                        "<key>PayloadType</key><string>Configuration"
                                                        "</string></dict></plist>");
}

void tst_ProfileFlowOpen::aFileThatIsNoProfileChangesNothing()
{
    QFETCH(QByteArray, bytes);
    const QString file = m_flow->path("in/other.mobileconfig");
    TestFiles::write(file, bytes);
    refuse(file);
    pressAndAnswer(buttonOf<QPushButton>(*m_window, "btnImport"), {choose(file)});
    verifyNothingChanged();
    QCOMPARE(TestFiles::read(file), bytes);
}

void tst_ProfileFlowOpen::theIdentityOfTheLoadedProfileIsKeptInTheNextSave()
{
    const QString profile = sample();
    m_window->on_profileload(profile);
    ShownMessage shown;
    m_flow->save(*m_window, {choose(m_flow->output()), read(&shown)});
    for (const char *key : {"PayloadIdentifier", "PayloadUUID"})
        QCOMPARE(valueIn(m_flow->output(), key), valueIn(profile, key));
}

/// Old-style lists can hold control characters, profiles and documents cannot.
void tst_ProfileFlowOpen::whatNoFileCanHoldIsShownAsItStandsAndSavedNowhere()
{
    const QString path = m_flow->path("old.mobileconfig");
    TestFiles::write(path, "{PayloadContent=({PayloadIdentifier=\"com.pelix-software.Pelix.PDF.Editor\";"
                           "Preferences=({Preference={Text=DefaultLaunchAttachmentPerms;"
                           "BuiltInPermList=\".a\001:3\";};},{Preference={Text=LoginDomainList;"
                           "String=\"@a\002.example\";};});});}");
    m_window->on_profileload(path);
    const auto *fileTypes =
        m_window->findChild<QTextEdit *>(QStringLiteral("tt_defaultLaunchAttachmentPerms"));
    const auto *domains = m_window->findChild<QTableView *>(QStringLiteral("tableView_domains"));
    QCOMPARE(fileTypes->toPlainText(), QStringLiteral(".a\u0001:3"));
    QCOMPARE(domains->model()->index(0, 0).data().toString(), QStringLiteral("@a\u0002.example"));
    ShownMessage shown;
    m_flow->save(*m_window, {choose(m_flow->output()), read(&shown)});
    QCOMPARE(shown.text, ProfileMessages::failed);
    QVERIFY(!QFileInfo::exists(m_flow->output()));
}

void tst_ProfileFlowOpen::afterALoadTheFirstPageOfTheProductIsShown_data()
{
    QTest::addColumn<bool>("editor");
    QTest::addColumn<int>("shown");
    QTest::newRow("Editor") << true << 1;
    QTest::newRow("Reader") << false << 5;
}

void tst_ProfileFlowOpen::afterALoadTheFirstPageOfTheProductIsShown()
{
    QFETCH(bool, editor);
    QFETCH(int, shown);
    FakePagesWindow fixture(editor, PCW_CONFIG_PROFILE);
    fixture.window.show();
    fixture.window.on_profileload(m_flow->makeProfile("own.mobileconfig", editor));
    const FakePagesWindow::Handler first = shown == 1 ? fixture.first : fixture.last;
    QCOMPARE(fixture.current(), first->m_page);
    QVERIFY(fixture.pageButton(first)->isChecked());
    QCOMPARE(fixture.first->m_imports, 2);
}

void tst_ProfileFlowOpen::reloadingTheInformationFollowsItsButton()
{
    auto *information = buttonOf<QToolButton>(*m_window, "tb_info");
    information->setChecked(true);
    QVERIFY(QMetaObject::invokeMethod(m_window.get(), "On_ReloadInformation"));
    QVERIFY(m_window->Splitter()->sizes().value(1) > 0);
    information->setChecked(false);
    QVERIFY(QMetaObject::invokeMethod(m_window.get(), "On_ReloadInformation"));
    QCOMPARE(m_window->Splitter()->sizes().value(1), 0);
}

QTEST_MAIN(tst_ProfileFlowOpen)
#include "tst_ProfileFlowOpen.moc"
