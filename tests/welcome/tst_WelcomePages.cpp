// SPDX-License-Identifier: Apache-2.0
#include "profile/CProfileGenerator.h"
#include "resources/Resources.h"
#include "tests/support/DialogDriver.h"
#include "tests/support/TestFiles.h"
#include "tests/welcome/DraggedFiles.h"
#include "welcome/tab_import_xml.h"
#include "welcome/tab_welcome.h"

#include <QFileDialog>
#include <QLabel>
#include <QMimeData>
#include <QPushButton>
#include <QTextDocument>
#include <QtTest>
#include <QUrl>

using namespace DraggedFiles;

namespace {

QString styleOf(const QWidget &page, const char *name)
{
    return page.findChild<QWidget *>(QLatin1String(name))->styleSheet();
}

QString plainTextOf(const QWidget &page, const char *name)
{
    QTextDocument document;
    document.setHtml(page.findChild<QLabel *>(QLatin1String(name))->text());
    return document.toPlainText();
}

} // namespace

class tst_WelcomePages : public QObject
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
        QVERIFY(m_folder.isValid());
        for (const QString &name : {QStringLiteral("a.pkg"), QStringLiteral("a.xml")})
            TestFiles::write(inFolder(name), "contents");
    }

    void init() { CProfileGenerator::SyncLastOpenDirectory(QDir::rootPath() + QStringLiteral("x")); }

    void packagePageHasThePrescribedForm()
    {
        const tab_welcome page;
        QCOMPARE(page.objectName(), QStringLiteral("tab_welcome"));
        QCOMPARE(page.windowTitle(), QStringLiteral("Welcome"));
        QCOMPARE(styleOf(page, "widget"),
                 QStringLiteral("QWidget#widget{\nbackground-color: rgb(255, 255, 255);\n}\n"));
        QCOMPARE(styleOf(page, "label_icon"),
                 QStringLiteral("background-image: url(:/img/pkg.png);\nbackground-position: center;\n"
                                "background-repeat: no-repeat;\n"));
        QCOMPARE(styleOf(page, "label_desc"),
                 QStringLiteral("color: #131313;\ntext-align: center;\nfont-family: \"SF Pro Text\";\n"
                                "font-size: 14px;\nfont-style: normal;\nfont-weight: 400;\n"
                                "line-height: 20px;"));
    }

    void packagePageSaysWhatToDo()
    {
        const tab_welcome page;
        const auto *description = page.findChild<QLabel *>(QStringLiteral("label_desc"));
        QCOMPARE(description->text(),
                 QStringLiteral("To open a file, click the Browse button or drag and drop "
                                "it into this window."));
        QVERIFY(description->wordWrap());
        QVERIFY(description->alignment() & Qt::AlignHCenter);
        const auto *browse = page.findChild<QPushButton *>(QStringLiteral("btnBrowse"));
        QCOMPARE(browse->text(), QStringLiteral("Browse"));
        QVERIFY(browse->isDefault());
        QVERIFY(page.acceptDrops());
    }

    void packagePageTakesEveryDragOfUrls()
    {
        tab_welcome page;
        QVERIFY(acceptsDrag(page, *dragged({QStringLiteral("/d/b.txt")})));
        QMimeData remote;
        remote.setUrls({QUrl(QStringLiteral("https://pelix.example/a.pkg"))});
        QVERIFY(acceptsDrag(page, remote));
    }

    void packagePageRefusesADragWithoutUrls()
    {
        tab_welcome page;
        QSignalSpy loaded(&page, &tab_welcome::sig_fileloaded);
        QMimeData text;
        text.setText(QStringLiteral("/d/a.pkg"));
        QVERIFY(!acceptsDrag(page, text));
        QVERIFY(!acceptsDrop(page, text, QStringLiteral("/d/a.pkg")));
        QCOMPARE(loaded.count(), 0);
    }

    void droppingThreeFilesOnThePackagePageEmitsOneSignalWithTheThird()
    {
        tab_welcome page;
        QSignalSpy loaded(&page, &tab_welcome::sig_fileloaded);
        for (const char *path : {"/d/a.pkg", "/d/b b.txt", "/d/c.xml"})
            expectDropLogged(path);
        QVERIFY(acceptsDrop(
            page,
            *dragged({QStringLiteral("/d/a.pkg"), QStringLiteral("/d/b b.txt"), QStringLiteral("/d/c.xml")}),
            QStringLiteral("/d/a.pkg")));
        QCOMPARE(pathsOf(loaded), QStringList{QStringLiteral("/d/c.xml")});
    }

    void importPageHasThePrescribedForm()
    {
        const tab_import_xml page;
        QCOMPARE(page.objectName(), QStringLiteral("tab_import_xml"));
        QCOMPARE(page.windowTitle(), QStringLiteral("Welcome"));
        QCOMPARE(styleOf(page, "widget"),
                 QStringLiteral("QWidget#widget{\nbackground-color: rgb(255, 255, 255);\n}\n"));
        for (const char *card : {"widget_init", "widget_import"})
            QCOMPARE(styleOf(page, card), QStringLiteral("border-radius: 4px;\nborder: 1px solid #E6E9F0;"));
        QVERIFY(styleOf(page, "label_icon_init").contains(QLatin1String(":/img/welcome_init.png")));
        QVERIFY(styleOf(page, "label_icon_import").contains(QLatin1String(":/img/welcome_import.png")));
    }

    void importPageSaysWhatCanBeDone()
    {
        const tab_import_xml page;
        QCOMPARE(
            plainTextOf(page, "label_desc"),
            QStringLiteral("Installation package imported successfully. Select one of the following options "
                           "to proceed:"));
        QCOMPARE(plainTextOf(page, "label_desc_init"),
                 QStringLiteral("Initialize New Setup\nStart from the scratch using left panel."));
        QCOMPARE(
            plainTextOf(page, "label_desc_import"),
            QStringLiteral("Modify Existing Configuration\nTo modify the settings, import or drag and drop "
                           "an XML configuration file."));
        QCOMPARE(page.findChild<QPushButton *>(QStringLiteral("btnImport"))->text(),
                 QStringLiteral("Import"));
        QCOMPARE(page.findChildren<QPushButton *>().size(), 1);
        QVERIFY(page.acceptDrops());
    }

    void importPageTakesTheFirstXmlFile()
    {
        tab_import_xml page;
        QSignalSpy loaded(&page, &tab_import_xml::sig_fileloaded);
        const auto data =
            dragged({QStringLiteral("/d/b.txt"), QStringLiteral("/d/a.xml"), QStringLiteral("/d/c.xml")});
        QVERIFY(acceptsDrag(page, *data));
        expectDropLogged("/d/a.xml");
        QVERIFY(acceptsDrop(page, *data, QStringLiteral("/d/a.xml")));
        QCOMPARE(pathsOf(loaded), QStringList{QStringLiteral("/d/a.xml")});
    }

    void importPageRefusesFilesWithoutTheExactSuffix()
    {
        tab_import_xml page;
        QSignalSpy loaded(&page, &tab_import_xml::sig_fileloaded);
        const auto data = dragged({QStringLiteral("/d/Document.XML"), QStringLiteral("/d/b.txt")});
        QVERIFY(!acceptsDrag(page, *data));
        QVERIFY(!acceptsDrop(page, *data, QStringLiteral("/d/a.xml")));
        QCOMPARE(loaded.count(), 0);
    }

    void choosingAFileEmitsItsPathAndRemembersItsFolder_data() { pagesWithButtons(); }

    void choosingAFileEmitsItsPathAndRemembersItsFolder()
    {
        QFETCH(QString, button);
        QFETCH(QString, file);
        const auto page = shownPageWith(button);
        QSignalSpy loaded(page.get(), SIGNAL(sig_fileloaded(QString)));
        DialogDriver::chooseFile(this, inFolder(file));
        QTest::mouseClick(page->findChild<QPushButton *>(button), Qt::LeftButton);
        QCOMPARE(pathsOf(loaded), QStringList{inFolder(file)});
        QCOMPARE(CProfileGenerator::GetLastOpenDirectory(), m_folder.path());
    }

    void cancellingTheDialogEmitsNothingAndKeepsTheRememberedFolder_data() { pagesWithButtons(); }

    void cancellingTheDialogEmitsNothingAndKeepsTheRememberedFolder()
    {
        QFETCH(QString, button);
        CProfileGenerator::SyncLastOpenDirectory(inFolder(QStringLiteral("any")));
        const auto page = shownPageWith(button);
        QSignalSpy loaded(page.get(), SIGNAL(sig_fileloaded(QString)));
        DialogDriver::onNextModal(this, [](QDialog *dialog) {
            static_cast<QFileDialog *>(dialog)->setDirectory(QDir::rootPath());
            dialog->reject();
        });
        QTest::mouseClick(page->findChild<QPushButton *>(button), Qt::LeftButton);
        QCOMPARE(loaded.count(), 0);
        QCOMPARE(CProfileGenerator::GetLastOpenDirectory(), m_folder.path());
    }

    void theDialogStartsInTheRememberedFolderWithItsFilter_data() { pagesWithButtons(); }

    void theDialogStartsInTheRememberedFolderWithItsFilter()
    {
        QFETCH(QString, button);
        CProfileGenerator::SyncLastOpenDirectory(inFolder(QStringLiteral("any")));
        const auto page = shownPageWith(button);
        QString folder;
        QStringList filters;
        DialogDriver::onNextModal(this, [&folder, &filters](QDialog *dialog) {
            const auto *files = static_cast<QFileDialog *>(dialog);
            folder = files->directory().absolutePath();
            filters = files->nameFilters();
            dialog->reject();
        });
        QTest::mouseClick(page->findChild<QPushButton *>(button), Qt::LeftButton);
        QCOMPARE(folder, m_folder.path());
        QFETCH(QString, filter);
        QCOMPARE(filters, QStringList{filter});
    }

    void theSpaceKeyOpensTheDialog_data() { pagesWithButtons(); }

    void theSpaceKeyOpensTheDialog()
    {
        QFETCH(QString, button);
        const auto page = shownPageWith(button);
        auto *focused = page->findChild<QPushButton *>(button);
        QVERIFY(focused->focusPolicy() & Qt::TabFocus);
        bool opened = false;
        DialogDriver::onNextModal(this, [&opened](QDialog *dialog) {
            opened = true;
            dialog->reject();
        });
        QTest::keyClick(focused, Qt::Key_Space);
        QVERIFY(opened);
    }

private:
    static void pagesWithButtons()
    {
        QTest::addColumn<QString>("button");
        QTest::addColumn<QString>("file");
        QTest::addColumn<QString>("filter");
        QTest::newRow("package page") << QStringLiteral("btnBrowse") << QStringLiteral("a.pkg")
                                      << QStringLiteral("Package files (*.pkg)");
        QTest::newRow("import page") << QStringLiteral("btnImport") << QStringLiteral("a.xml")
                                     << QStringLiteral("xml files (*.xml)");
    }

    static std::unique_ptr<QWidget> shownPageWith(const QString &button)
    {
        std::unique_ptr<QWidget> page;
        if (button == QLatin1String("btnBrowse"))
            page = std::make_unique<tab_welcome>();
        else
            page = std::make_unique<tab_import_xml>();
        page->show();
        return page;
    }

    QString inFolder(const QString &name) const { return m_folder.filePath(name); }

    const QTemporaryDir m_folder;
};

QTEST_MAIN(tst_WelcomePages)
#include "tst_WelcomePages.moc"
