// SPDX-License-Identifier: Apache-2.0
// What the window says of itself beside its pages: which file, what happened, what is not saved.
#include "app/Messages.h"
#include "app/MessagesView.h"
#include "app/StatusArea.h"
#include "core/Logging.h"
#include "resources/Resources.h"
#include "tests/app/BuildFlow.h"
#include "tests/app/DialogScript.h"
#include "tests/app/PageControls.h"
#include "tests/app/ProfileFlow.h"
#include "tests/support/DialogDriver.h"

#include <QCheckBox>
#include <QDesktopServices>
#include <QLabel>
#include <QLineEdit>
#include <QTextBrowser>
#include <QToolButton>
#include <QtTest>
#include <QtWidgets>

namespace {

using Window = DlgCustomizationTool_v2;

QString textIn(const Window &window, const char *label)
{
    return window.findChild<StatusArea *>()->findChild<QLabel *>(QLatin1String(label))->text();
}

/// What the view shows, opened by its button.
QString shownMessages(Window &window)
{
    tool(window, "tb_messages")->click();
    return window.findChild<MessagesView *>()->findChild<QTextBrowser *>()->toPlainText();
}

QCheckBox *startPage(const Window &window)
{
    return window.findChild<QCheckBox *>(QStringLiteral("checkBox_showStartPg"));
}

bool isListed(const QString &wanted)
{
    for (const Message &message : Messages::ofThisRun().all()) {
        if (message.text.contains(wanted))
            return true;
    }
    return false;
}

} // namespace

/// Takes the place of what opens folders.
class FolderOpener : public QObject
{
    Q_OBJECT

public:
    FolderOpener() { QDesktopServices::setUrlHandler(QStringLiteral("file"), this, "open"); }
    ~FolderOpener() override { QDesktopServices::unsetUrlHandler(QStringLiteral("file")); }

    QUrl m_opened;

public slots:
    void open(const QUrl &address) { m_opened = address; }
};

class tst_WindowState : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { initPctResources(); }
    void init() { theEditorXmlData = EditorXmlData(); }

    void productOutputAndFileStandBelowThePages();
    void aLongFileNameEndsInTheMiddle();
    void theButtonSaysThatThereIsSomethingNew();
    void aSaveIsSummedUpAndItsFolderShown();
    void aFailedBuildSaysWhy();
    void aPackageThatWillNotBuildIsToldWhenItIsOpened_data();
    void aPackageThatWillNotBuildIsToldWhenItIsOpened();
    void aRefusedDocumentSaysWhy();
    void aRefusedProfileSaysWhy_data();
    void aRefusedProfileSaysWhy();
    void nothingIsAskedWhenNothingChanged();
    void closingAsksForWhatIsNotSaved();
    void savingFromTheQuestionClosesTheWindow();
    void openingAnotherPackageAsksNothing();
    void lookingAtThePagesChangesNoRecord();

private:
    ShownMessage m_message;
};

void tst_WindowState::productOutputAndFileStandBelowThePages()
{
    const BuildFlow flow;
    const QString package = flow.sample(true);
    const auto window = flow.openWindow(package);
    QCOMPARE(textIn(*window, "label_output"), QStringLiteral("Pelix PDF Editor: installer package"));
    QCOMPARE(textIn(*window, "label_file"), QStringLiteral("Pelix PDF Editor.pkg"));
    QCOMPARE(window->findChild<QLabel *>(QStringLiteral("label_file"))->toolTip(), package);
    QCOMPARE(window->windowFilePath(), package);
    QCOMPARE(window->windowTitle(), QStringLiteral("Pelix Customization Tool"));

    const ProfileFlow profiles;
    const auto profileWindow = profiles.openWindow(false);
    QCOMPARE(textIn(*profileWindow, "label_output"),
             QStringLiteral("Pelix PDF Reader: configuration profile"));
    QVERIFY(!profileWindow->findChild<QLabel *>(QStringLiteral("label_file"))->isVisible());
}

void tst_WindowState::aLongFileNameEndsInTheMiddle()
{
    StatusArea area(QStringLiteral("Output"), nullptr);
    area.resize(200, 100);
    area.show();
    const QString name = QString(200, QLatin1Char('m')) + QStringLiteral(".pkg");
    area.setFile(QStringLiteral("/somewhere/") + name);
    const auto *label = area.findChild<QLabel *>(QStringLiteral("label_file"));
    QVERIFY(label->text().contains(QChar(0x2026)));
    QVERIFY(label->text().endsWith(QStringLiteral(".pkg")));
    QVERIFY(label->fontMetrics().horizontalAdvance(label->text()) <= label->width());
    QCOMPARE(label->accessibleName(), QStringLiteral("/somewhere/") + name);
}

void tst_WindowState::theButtonSaysThatThereIsSomethingNew()
{
    Window window(true, PCW_CONFIG_PACKAGE);
    window.show();
    const QToolButton *button = tool(window, "tb_messages");
    QCOMPARE(button->text(), QStringLiteral("Messages"));
    qCWarning(logApp, "something\nwent wrong");
    QCOMPARE(button->text(), QStringLiteral("Messages (1 new)"));
    qCDebug(logApp, "only for who debugs");
    QCOMPARE(button->text(), QStringLiteral("Messages (1 new)"));
    QVERIFY(shownMessages(window).contains(QStringLiteral("something\nwent wrong")));
    QCOMPARE(button->text(), QStringLiteral("Messages"));
    qCWarning(logApp, "seen at once");
    QCOMPARE(button->text(), QStringLiteral("Messages"));
    QVERIFY(!shownMessages(window).contains(QStringLiteral("only for who debugs")));
}

void tst_WindowState::aSaveIsSummedUpAndItsFolderShown()
{
    BuildFlow flow;
    const auto window = flow.openWindow(flow.sample(true));
    startPage(*window)->setChecked(false);
    QCOMPARE(flow.save(*window, flow.output()).text, BuildMessages::packageMade);
    const QString shown = shownMessages(*window);
    QVERIFY2(shown.contains(QStringLiteral("Saved: ") + flow.output()), qPrintable(shown));
    QVERIFY2(shown.contains(QStringLiteral("differ from the defaults: Show Start Page\n")),
             qPrintable(shown));
    QVERIFY2(shown.contains(QLocale().formattedDataSize(QFileInfo(flow.output()).size())), qPrintable(shown));

    const FolderOpener opener;
    emit window->findChild<QTextBrowser *>()->anchorClicked(QUrl::fromLocalFile(flow.output()));
    QCOMPARE(opener.m_opened, QUrl::fromLocalFile(QFileInfo(flow.output()).absolutePath()));
}

void tst_WindowState::aFailedBuildSaysWhy()
{
    BuildFlow flow;
    const QString input = flow.sample(true);
    const auto window = flow.openWindow(input);
    const auto replace = [this] {
        DialogDriver::onNextModal(this, [](QDialog *dialog) {
            qobject_cast<QMessageBox *>(dialog)->button(QMessageBox::Yes)->click();
        });
    };
    QCOMPARE(flow.save(*window, input, false, replace).text, BuildMessages::buildFailed);
    const QString shown = shownMessages(*window);
    QVERIFY2(shown.contains(QStringLiteral("Failed to check the paths:")), qPrintable(shown));
    QVERIFY2(shown.contains(QStringLiteral("input")), qPrintable(shown));
}

void tst_WindowState::aPackageThatWillNotBuildIsToldWhenItIsOpened_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("reason");
    QTest::newRow("customized before")
        << QStringLiteral("out/custom.pkg") << QStringLiteral("was customized before");
    QTest::newRow("in the temporary folder")
        << QStringLiteral("tmp/there.pkg") << QStringLiteral("work folder");
    QTest::newRow("a quote in its name") << QStringLiteral("in/a\"b.pkg") << QStringLiteral("quot");
}

void tst_WindowState::aPackageThatWillNotBuildIsToldWhenItIsOpened()
{
    QFETCH(QString, name);
    QFETCH(QString, reason);
    BuildFlow flow;
    const QString sample = flow.sample(true);
    const QString package = flow.path(qPrintable(name));
    if (name.startsWith(QLatin1String("out/"))) {
        const auto first = flow.openWindow(sample);
        QCOMPARE(flow.save(*first, package).text, BuildMessages::packageMade);
    } else {
        QVERIFY(QFile::copy(sample, package));
    }
    Window window(true, PCW_CONFIG_PACKAGE);
    window.show();
    QVERIFY(window.on_fileloaded(package));
    const QString shown =
        shownMessages(window).section(QStringLiteral("No package can be made from this one"), -1);
    QVERIFY2(shown.contains(reason), qPrintable(shown));
    QVERIFY2(shown.contains(package), qPrintable(shown));
}

void tst_WindowState::aRefusedDocumentSaysWhy()
{
    const BuildFlow flow;
    const auto window = flow.openWindow(flow.sample(true));
    const QString document = flow.path("in/broken.xml");
    TestFiles::write(document, "<PelixPDFEditor><Pref");
    QVERIFY(WindowDriver::dropFiles(window.get(), {document}));
    QTRY_VERIFY(isListed(document + QStringLiteral(": was not imported: ")));
}

void tst_WindowState::aRefusedProfileSaysWhy_data()
{
    QTest::addColumn<QByteArray>("contents");
    QTest::addColumn<QString>("reason");
    QTest::newRow("no profile") << QByteArray("{ a = ") << QStringLiteral("is no property list");
    QTest::newRow("another application")
        << QByteArray(
               "<?xml version=\"1.0\"?><plist version=\"1.0\"><dict><key>PayloadContent</key><array><dict>"
               "<key>PayloadIdentifier</key><string>org.example.app</string></dict></array></dict></plist>")
        << QStringLiteral("is a profile of another application (\"org.example.app\")");
}

void tst_WindowState::aRefusedProfileSaysWhy()
{
    QFETCH(QByteArray, contents);
    QFETCH(QString, reason);
    const ProfileFlow flow;
    const auto window = flow.openWindow();
    const QString profile = flow.path("refused.mobileconfig");
    TestFiles::write(profile, contents);
    window->on_profileload(profile);
    const QString shown = shownMessages(*window);
    QVERIFY2(shown.contains(profile + QStringLiteral(": ") + reason), qPrintable(shown));
}

void tst_WindowState::nothingIsAskedWhenNothingChanged()
{
    const ProfileFlow flow;
    const auto window = flow.openWindow();
    startPage(*window)->click();
    startPage(*window)->click();
    QVERIFY(!window->hasUnsavedSettings());
    const DialogScript none({});
    QVERIFY(window->close());
}

void tst_WindowState::closingAsksForWhatIsNotSaved()
{
    const ProfileFlow flow;
    const auto window = flow.openWindow();
    startPage(*window)->click();
    {
        const DialogScript cancelled({Answers::press(QStringLiteral("Cancel"))});
        QVERIFY(!window->close());
        QVERIFY(window->isVisible());
    }
    ShownMessage box;
    DialogDriver::onNextModal(this, [&box](QDialog *dialog) {
        auto *question = qobject_cast<QMessageBox *>(dialog);
        box = {
            question->windowTitle(), question->text(), question->icon(), question->standardButtons(), {}, 1};
        question->button(QMessageBox::Discard)->click();
    });
    QVERIFY(window->close());
    QCOMPARE(box.title, QString());
    QCOMPARE(box.text, QStringLiteral("\nThere are settings that are not saved."));
    QCOMPARE(box.buttons, QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel);
}

void tst_WindowState::savingFromTheQuestionClosesTheWindow()
{
    const ProfileFlow flow;
    const auto window = flow.openWindow();
    startPage(*window)->click();
    const DialogScript answers(
        {Answers::press(QStringLiteral("Save")), Answers::choose(flow.output()), Answers::read(&m_message)});
    QVERIFY(window->close());
    QVERIFY(QFileInfo::exists(flow.output()));
}

void tst_WindowState::openingAnotherPackageAsksNothing()
{
    BuildFlow flow;
    const QString package = flow.sample(true);
    const auto window = flow.openWindow(package);
    startPage(*window)->setChecked(false);
    const DialogScript none({});
    QVERIFY(window->on_fileloaded(package));
    QVERIFY(!startPage(*window)->isChecked());
    QVERIFY(window->hasUnsavedSettings());
}

void tst_WindowState::lookingAtThePagesChangesNoRecord()
{
    const ProfileFlow flow;
    const auto window = flow.openWindow();
    startPage(*window)->click();
    const EditorXmlData before = theEditorXmlData;
    QCOMPARE(window->settingsOnPages().bShowStartPage, false);
    QVERIFY(theEditorXmlData == before);
    QCOMPARE(theEditorXmlData.payloadInfo.PayloadIdentifier, QString());
}

QTEST_MAIN(tst_WindowState)
#include "tst_WindowState.moc"
