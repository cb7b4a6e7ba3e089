// SPDX-License-Identifier: Apache-2.0
#include "app/ApplicationLook.h"
#include "app/dlg_select_app_type.h"
#include "app/DlgCustomizationTool_v2.h"
#include "app/StartUp.h"
#include "config/CCommon.h"
#include "resources/Resources.h"
#include "tests/app/PrivatePlace.h"
#include "tests/support/DialogDriver.h"

#include <QComboBox>
#include <QLabel>
#include <QMessageBox>
#include <QProcess>
#include <QPushButton>
#include <QTranslator>
#include <QtTest>

namespace {

/// A language in which everything takes more room.
class LongWords : public QTranslator
{
public:
    QString translate(const char *, const char *source, const char *, int) const override
    {
        return QString::fromUtf8(source) + QStringLiteral(" ausführlich");
    }
    bool isEmpty() const override { return false; }
};

bool hasMainWindow()
{
    for (const QWidget *widget : QApplication::topLevelWidgets()) {
        if (qobject_cast<const DlgCustomizationTool_v2 *>(widget))
            return true;
    }
    return false;
}

/// The window of the program under test, once it is on the screen; empty when there is none in time.
QString windowOf(qint64 processId)
{
    QProcess search;
    search.start(QStringLiteral("xdotool"),
                 {QStringLiteral("search"), QStringLiteral("--all"), QStringLiteral("--onlyvisible"),
                  QStringLiteral("--pid"), QString::number(processId), QStringLiteral("--name"),
                  QStringLiteral("Pelix Customization Tool")});
    search.waitForFinished();
    return QString::fromLatin1(search.readAllStandardOutput()).section(QLatin1Char('\n'), 0, 0);
}

} // namespace

class tst_StartUp : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { initPctResources(); }

    void theChooserOffersFourEntriesInOrder();
    void theIndexSaysProductAndOutput_data();
    void theIndexSaysProductAndOutput();
    void theChooserCannotBeMadeTallerOrShorter();
    void theChooserHasItsTextsAndButtons();
    void longTranslationsFitTheChooser();
    void cancellingTheChooserBuildsNoMainWindow_data();
    void cancellingTheChooserBuildsNoMainWindow();
    void theChoiceDecidesTheModes_data();
    void theChoiceDecidesTheModes();
    void pressingOkAtOnceConfiguresAnEditorPackage();
    void aCancelledProgramEndsWithStatus1();
    void theLanguageIsChosenByTheVariableOrKeptForTheUser_data();
    void theLanguageIsChosenByTheVariableOrKeptForTheUser();
    void theWindowManagerCallsABoxWithoutATitleByTheToolsName();

private:
    PrivatePlace m_place;
};

void tst_StartUp::theChooserOffersFourEntriesInOrder()
{
    const dlg_select_app_type chooser;
    const auto *combo = chooser.findChild<QComboBox *>(QStringLiteral("comboBox"));
    const QStringList expected = {QStringLiteral("Pelix PDF Editor"), QStringLiteral("Pelix PDF Reader"),
                                  QStringLiteral("Configure Profile for Pelix PDF Editor"),
                                  QStringLiteral("Configure Profile for Pelix PDF Reader")};
    QStringList entries;
    for (int i = 0; i < combo->count(); ++i)
        entries << combo->itemText(i);
    QCOMPARE(entries, expected);
    QCOMPARE(combo->currentIndex(), 0);
    QCOMPARE(combo->minimumWidth(), 280);
}

void tst_StartUp::theIndexSaysProductAndOutput_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<bool>("editor");
    QTest::addColumn<bool>("profile");
    QTest::newRow("Editor package") << 0 << true << false;
    QTest::newRow("Reader package") << 1 << false << false;
    QTest::newRow("Editor profile") << 2 << true << true;
    QTest::newRow("Reader profile") << 3 << false << true;
}

void tst_StartUp::theIndexSaysProductAndOutput()
{
    QFETCH(int, index);
    dlg_select_app_type chooser;
    QCOMPARE(chooser.m_bEditor, true);
    QCOMPARE(chooser.m_bProfile, false);
    chooser.findChild<QComboBox *>(QStringLiteral("comboBox"))->setCurrentIndex(index);
    chooser.findChild<QPushButton *>(QStringLiteral("pushButton_OK"))->click();
    QCOMPARE(chooser.result(), int(QDialog::Accepted));
    QTEST(chooser.m_bEditor, "editor");
    QTEST(chooser.m_bProfile, "profile");
}

void tst_StartUp::theChooserCannotBeMadeTallerOrShorter()
{
    dlg_select_app_type chooser;
    QCOMPARE(chooser.size(), QSize(525, 355));
    chooser.show();
    QVERIFY(QTest::qWaitForWindowExposed(&chooser));
    QCOMPARE(chooser.size(), QSize(525, 355));
    chooser.resize(900, 600);
    QCOMPARE(chooser.size(), QSize(900, 355));
    chooser.resize(100, 100);
    QCOMPARE(chooser.size(), QSize(525, 355));
}

void tst_StartUp::theChooserHasItsTextsAndButtons()
{
    const dlg_select_app_type chooser;
    QCOMPARE(chooser.objectName(), QStringLiteral("dlg_select_app_type"));
    QCOMPARE(chooser.windowTitle(), QStringLiteral("Pelix Customization Tool"));
    QCOMPARE(chooser.findChild<QLabel *>(QStringLiteral("label_title"))->text(),
             QStringLiteral("Pelix Customization Tool"));
    QCOMPARE(chooser.findChild<QLabel *>(QStringLiteral("label_subtitle"))->text(),
             QStringLiteral("Please select an option to begin."));
    QCOMPARE(chooser.findChild<QLabel *>(QStringLiteral("label_img"))->minimumHeight(), 137);
    const auto *cancel = chooser.findChild<QPushButton *>(QStringLiteral("pushButton_Cancel"));
    const auto *ok = chooser.findChild<QPushButton *>(QStringLiteral("pushButton_OK"));
    QCOMPARE(cancel->text(), QStringLiteral("Cancel"));
    QCOMPARE(cancel->minimumSize(), QSize(92, 20));
    QVERIFY(!cancel->autoDefault());
    QCOMPARE(ok->text(), QStringLiteral("OK"));
    QCOMPARE(ok->minimumSize(), QSize(92, 20));
    QVERIFY(ok->autoDefault());
}

void tst_StartUp::longTranslationsFitTheChooser()
{
    LongWords language;
    QVERIFY(QCoreApplication::installTranslator(&language));
    dlg_select_app_type chooser;
    chooser.show();
    QVERIFY(QTest::qWaitForWindowExposed(&chooser));
    for (const QWidget *widget : chooser.findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly)) {
        QVERIFY2(widget->width() >= widget->minimumSizeHint().width(), qPrintable(widget->objectName()));
        QVERIFY2(widget->height() >= widget->minimumSizeHint().height(), qPrintable(widget->objectName()));
        QVERIFY2(chooser.rect().contains(widget->geometry()), qPrintable(widget->objectName()));
    }
}

void tst_StartUp::cancellingTheChooserBuildsNoMainWindow_data()
{
    QTest::addColumn<QString>("how");
    QTest::newRow("cancel button") << QStringLiteral("button");
    QTest::newRow("window control") << QStringLiteral("close");
    QTest::newRow("escape key") << QStringLiteral("escape");
}

void tst_StartUp::cancellingTheChooserBuildsNoMainWindow()
{
    QFETCH(QString, how);
    DialogDriver::onNextModal(this, [how](QDialog *chooser) {
        if (how == QLatin1String("button"))
            chooser->findChild<QPushButton *>(QStringLiteral("pushButton_Cancel"))->click();
        else if (how == QLatin1String("close"))
            chooser->close();
        else
            QTest::keyClick(chooser, Qt::Key_Escape);
    });
    QVERIFY(!makeChosenWindow());
    QVERIFY(!hasMainWindow());
}

void tst_StartUp::theChoiceDecidesTheModes_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<int>("configType");
    QTest::addColumn<int>("appType");
    QTest::newRow("Editor package") << 0 << 0 << 0;
    QTest::newRow("Reader package") << 1 << 0 << 1;
    QTest::newRow("Editor profile") << 2 << 1 << 0;
    QTest::newRow("Reader profile") << 3 << 1 << 1;
}

void tst_StartUp::theChoiceDecidesTheModes()
{
    QFETCH(int, index);
    DialogDriver::onNextModal(this, [index](QDialog *chooser) {
        chooser->findChild<QComboBox *>(QStringLiteral("comboBox"))->setCurrentIndex(index);
        chooser->findChild<QPushButton *>(QStringLiteral("pushButton_OK"))->click();
    });
    const std::unique_ptr<DlgCustomizationTool_v2> window(makeChosenWindow());
    QVERIFY(window);
    QTEST(int(CCommon::GetPCWConfigType()), "configType");
    QTEST(int(CCommon::GetPCWAppType()), "appType");
    QVERIFY(!window->isVisible());
}

void tst_StartUp::pressingOkAtOnceConfiguresAnEditorPackage()
{
    DialogDriver::onNextModal(this, [](QDialog *chooser) { QTest::keyClick(chooser, Qt::Key_Return); });
    const std::unique_ptr<DlgCustomizationTool_v2> window(makeChosenWindow());
    QVERIFY(window);
    QCOMPARE(CCommon::GetPCWConfigType(), PCW_CONFIG_PACKAGE);
    QCOMPARE(CCommon::GetPCWAppType(), PCW_APP_EDITOR);
}

void tst_StartUp::aCancelledProgramEndsWithStatus1()
{
    QProcess program;
    program.setProcessChannelMode(QProcess::MergedChannels);
    program.start(QStringLiteral(PCT_WINDOW_PROGRAM), QStringList());
    QVERIFY(program.waitForStarted());
    QTRY_VERIFY_WITH_TIMEOUT(!windowOf(program.processId()).isEmpty(), 30'000);
    const QString window = windowOf(program.processId());
    TestFiles::outputOf(QStringLiteral("xdotool"), {QStringLiteral("windowfocus"), QStringLiteral("--sync"),
                                                    window, QStringLiteral("key"), QStringLiteral("Escape")});
    QVERIFY(program.waitForFinished());
    QCOMPARE(program.exitStatus(), QProcess::NormalExit);
    QCOMPARE(program.exitCode(), 1);
    QVERIFY(program.readAll().contains("dlg_select_app_type destructor"));
}

void tst_StartUp::theLanguageIsChosenByTheVariableOrKeptForTheUser_data()
{
    QTest::addColumn<QString>("variable");
    QTest::addColumn<QString>("kept");
    QTest::addColumn<QByteArray>("reported");
    QTest::newRow("by the variable") << QStringLiteral("xx") << QString()
                                     << QByteArray("no translation into \"xx\"");
    QTest::newRow("kept") << QString() << QStringLiteral("yy") << QByteArray("no translation into \"yy\"");
    QTest::newRow("the variable wins")
        << QStringLiteral("xx") << QStringLiteral("yy") << QByteArray("no translation into \"xx\"");
}

/// A language without a translation is reported, which shows what was chosen.
void tst_StartUp::theLanguageIsChosenByTheVariableOrKeptForTheUser()
{
    QFETCH(QString, variable);
    QFETCH(QString, kept);
    QFETCH(QByteArray, reported);
    const PrivatePlace place;
    if (!kept.isEmpty())
        TestFiles::write(place.path("pelix-customization-tool.plist"),
                         "{ Language = " + kept.toLatin1() + "; }");
    QProcess program;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    if (!variable.isEmpty())
        environment.insert(QStringLiteral("PCT_LANGUAGE"), variable);
    program.setProcessEnvironment(environment);
    program.setProcessChannelMode(QProcess::MergedChannels);
    program.start(QStringLiteral(PCT_WINDOW_PROGRAM), QStringList());
    QVERIFY(program.waitForStarted());
    QByteArray said;
    QTRY_VERIFY_WITH_TIMEOUT((said += program.readAll()).contains(reported), 30'000);
    program.kill();
    QVERIFY(program.waitForFinished());
}

void tst_StartUp::theWindowManagerCallsABoxWithoutATitleByTheToolsName()
{
    useApplicationLook();
    QMessageBox box(QMessageBox::Information, QString(), QStringLiteral("\nDone"), QMessageBox::Ok);
    box.show();
    QVERIFY(QTest::qWaitForWindowExposed(&box));
    QProcess xdotool;
    xdotool.start(QStringLiteral("xdotool"), {QStringLiteral("getwindowname"), QString::number(box.winId())});
    QVERIFY(xdotool.waitForFinished());
    QCOMPARE(QString::fromUtf8(xdotool.readAllStandardOutput()).trimmed(),
             QStringLiteral("Pelix Customization Tool"));
    QCOMPARE(box.windowTitle(), QString());
}

QTEST_MAIN(tst_StartUp)
#include "tst_StartUp.moc"
