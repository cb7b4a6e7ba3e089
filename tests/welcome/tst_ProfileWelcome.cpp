// SPDX-License-Identifier: Apache-2.0
#include "config/EditorXmlData.h"
#include "profile/CProfileGenerator.h"
#include "resources/Resources.h"
#include "tests/support/DialogDriver.h"
#include "tests/support/TestFiles.h"
#include "tests/welcome/DraggedFiles.h"
#include "welcome/tab_welcome_profile.h"

#include <QFileDialog>
#include <QLabel>
#include <QMimeData>
#include <QPushButton>
#include <QTextDocument>
#include <QtTest>
#include <QUrl>

using namespace DraggedFiles;

namespace {

const QString welcomeFile = QStringLiteral("/d/a.mobileconfig");

QString plainText(const QString &html)
{
    QTextDocument document;
    document.setHtml(html);
    return document.toPlainText();
}

} // namespace

class tst_ProfileWelcome : public QObject
{
    Q_OBJECT

public:
    /// File dialogs keep their state in the user's settings, which are none of a test's business.
    static void initMain()
    {
        static const QTemporaryDir settings;
        qputenv("XDG_CONFIG_HOME", QFile::encodeName(settings.path()));
    }

private slots:
    void initTestCase()
    {
        QVERIFY2(qEnvironmentVariableIsSet("GNUSTEP_CONFIG_FILE"), "run this test through ctest");
        initPctResources();
        TestFiles::write(inFolder("a.mobileconfig"), "contents");
    }

    void init()
    {
        CProfileGenerator::SyncLastOpenDirectory(QDir::rootPath() + QStringLiteral("x"));
        m_page = std::make_unique<tab_welcome_profile>(&m_record);
        m_page->show();
    }

    void thePageHasThePrescribedForm()
    {
        QCOMPARE(m_page->objectName(), QStringLiteral("tab_welcome_profile"));
        QCOMPARE(find<QWidget>("widget")->styleSheet(),
                 QStringLiteral("QWidget#widget{\nbackground-color: rgb(255, 255, 255);\n}\n"));
        for (const char *card : {"widget_init", "widget_retrieve", "widget_import"})
            QCOMPARE(find<QWidget>(card)->styleSheet(),
                     QStringLiteral("border-radius: 4px;\nborder: 1px solid #E6E9F0;"));
        QVERIFY(m_page->acceptDrops());
        QCOMPARE(m_page->findChildren<QPushButton *>().size(), 2);
        QCOMPARE(find<QPushButton>("btnRetrieve")->text(), QStringLiteral("Retrieve"));
        QCOMPARE(find<QPushButton>("btnImport")->text(), QStringLiteral("Import"));
    }

    void theIntroductionSaysWhatProfilesAre()
    {
        const QString text = find<QLabel>("label")->text();
        QCOMPARE(plainText(text),
                 QStringLiteral("Configuration profiles are files that standardize settings for the macOS "
                                "system. On your Mac, you can use the Device Management settings to install, "
                                "view, or remove configuration profiles."));
        for (const char *part : {"color:#131313", "font-size:14px", "'SF Pro Text'", "line-height:20px"})
            QVERIFY2(text.contains(QLatin1String(part)), part);
    }

    void theCardsStandBelowEachOtherInTheirOrder()
    {
        QVERIFY(find<QWidget>("label")->y() < find<QWidget>("widget_init")->y());
        QVERIFY(find<QWidget>("widget_init")->y() < find<QWidget>("widget_retrieve")->y());
        QVERIFY(find<QWidget>("widget_retrieve")->y() < find<QWidget>("widget_import")->y());
    }

    void eachCardShowsItsPictureAndText_data()
    {
        QTest::addColumn<QString>("card");
        QTest::addColumn<QString>("picture");
        QTest::addColumn<QString>("label");
        QTest::addColumn<QString>("text");
        QTest::newRow("init") << QStringLiteral("widget_init") << QStringLiteral("init")
                              << QStringLiteral("label_desc_init")
                              << QStringLiteral(
                                     "Initialize New Setup\nStart from the scratch using left panel.");
        QTest::newRow("retrieve")
            << QStringLiteral("widget_retrieve") << QStringLiteral("retrieve")
            << QStringLiteral("label_desc_retrive")
            << QStringLiteral(
                   "Retrieve from Your Mac\nIf configuration profiles are already installed on your Mac "
                   "device,click the \"Retrieve\" button to automatically import them.");
        QTest::newRow("import")
            << QStringLiteral("widget_import") << QStringLiteral("import")
            << QStringLiteral("label_desc_import")
            << QStringLiteral("Modify Existing Configuration\nImport or drag and drop a .mobileconfig "
                              "file to modify the settings.");
    }

    void eachCardShowsItsPictureAndText()
    {
        QFETCH(QString, card);
        QFETCH(QString, picture);
        QFETCH(QString, label);
        const auto *parent = m_page->findChild<QWidget *>(card);
        const auto *icon = parent->findChild<QLabel *>(QStringLiteral("label_icon_") + picture);
        const QString image = QStringLiteral(":/img/welcome_%1.png").arg(picture);
        QVERIFY(icon->styleSheet().contains(image));
        QVERIFY(!QPixmap(image).isNull());
        const QString text = parent->findChild<QLabel *>(label)->text();
        QTEST(plainText(text), "text");
        QVERIFY(text.contains(QLatin1String("color:#131313")) &&
                text.contains(QLatin1String("color:#515151")));
    }

    void retrieveAsksForTheInstalledProfile()
    {
        QSignalSpy wanted(m_page.get(), &tab_welcome_profile::sig_systemprofileloaded);
        QSignalSpy loaded(m_page.get(), &tab_welcome_profile::sig_profileloaded);
        QTest::mouseClick(find<QPushButton>("btnRetrieve"), Qt::LeftButton);
        QCOMPARE(wanted.count(), 1);
        QCOMPARE(loaded.count(), 0);
    }

    void importEmitsTheChosenFileAndRemembersItsFolder()
    {
        QSignalSpy loaded(m_page.get(), &tab_welcome_profile::sig_profileloaded);
        DialogDriver::chooseFile(this, inFolder("a.mobileconfig"));
        QTest::mouseClick(find<QPushButton>("btnImport"), Qt::LeftButton);
        QCOMPARE(pathsOf(loaded), QStringList{inFolder("a.mobileconfig")});
        QCOMPARE(CProfileGenerator::GetLastOpenDirectory(), m_folder.path());
    }

    void cancellingTheDialogEmitsNothingAndKeepsTheRememberedFolder()
    {
        CProfileGenerator::SyncLastOpenDirectory(inFolder("any"));
        QSignalSpy loaded(m_page.get(), &tab_welcome_profile::sig_profileloaded);
        QStringList filters;
        QString folder;
        DialogDriver::onNextModal(this, [&](QDialog *dialog) {
            auto *files = static_cast<QFileDialog *>(dialog);
            filters = files->nameFilters();
            folder = files->directory().absolutePath();
            files->setDirectory(QDir::rootPath());
            dialog->reject();
        });
        QTest::mouseClick(find<QPushButton>("btnImport"), Qt::LeftButton);
        QCOMPARE(filters, QStringList(QStringLiteral("profile files (*.mobileconfig)")));
        QCOMPARE(folder, m_folder.path());
        QCOMPARE(loaded.count(), 0);
        QCOMPARE(CProfileGenerator::GetLastOpenDirectory(), m_folder.path());
    }

    void theFirstProfileOfADropIsTaken()
    {
        QSignalSpy loaded(m_page.get(), &tab_welcome_profile::sig_profileloaded);
        const auto data = dragged({QStringLiteral("/d/b.txt"), QStringLiteral("/d/a.mobileconfig"),
                                   QStringLiteral("/d/c.mobileconfig")});
        QVERIFY(acceptsDrag(*m_page, *data));
        expectDropLogged("/d/a.mobileconfig");
        QVERIFY(acceptsDrop(*m_page, *data, welcomeFile));
        QCOMPARE(pathsOf(loaded), QStringList{QStringLiteral("/d/a.mobileconfig")});
    }

    void otherFilesAreRefused_data()
    {
        QTest::addColumn<QUrl>("url");
        QTest::newRow("suffix in capitals") << QUrl::fromLocalFile(QStringLiteral("/d/Profile.MOBILECONFIG"));
        QTest::newRow("longer suffix") << QUrl::fromLocalFile(QStringLiteral("/d/a.mobileconfig.txt"));
        QTest::newRow("no suffix") << QUrl::fromLocalFile(QStringLiteral("/d/mobileconfig"));
        QTest::newRow("not local") << QUrl(QStringLiteral("https://pelix.example/a.mobileconfig"));
    }

    void otherFilesAreRefused()
    {
        QFETCH(QUrl, url);
        QSignalSpy loaded(m_page.get(), &tab_welcome_profile::sig_profileloaded);
        QMimeData data;
        data.setUrls({url});
        QVERIFY(!acceptsDrag(*m_page, data));
        QVERIFY(!acceptsDrop(*m_page, data, welcomeFile));
        QCOMPARE(loaded.count(), 0);
    }

    void theRecordIsLeftAlone()
    {
        QTest::mouseClick(find<QPushButton>("btnRetrieve"), Qt::LeftButton);
        expectDropLogged("/d/a.mobileconfig");
        QVERIFY(acceptsDrop(*m_page, *dragged({welcomeFile}), welcomeFile));
        QVERIFY(m_record == EditorXmlData());
    }

private:
    template <typename Widget> Widget *find(const char *name) const
    {
        return m_page->findChild<Widget *>(QLatin1String(name));
    }

    QString inFolder(const char *name) const { return m_folder.filePath(QLatin1String(name)); }

    const QTemporaryDir m_folder;
    EditorXmlData m_record;
    std::unique_ptr<tab_welcome_profile> m_page;
};

QTEST_MAIN(tst_ProfileWelcome)
#include "tst_ProfileWelcome.moc"
