// SPDX-License-Identifier: Apache-2.0
#include "app/CPDF_Waiting.h"
#include "config/EditorXmlData.h"
#include "resources/Resources.h"
#include "tests/app/FakePackages.h"
#include "tests/app/FakePagesWindow.h"
#include "tests/support/DialogDriver.h"

#include <QCheckBox>
#include <QFileDialog>
#include <QLineEdit>
#include <QtTest>

class tst_SaveDialog : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        initPctResources();
        m_packages.useAsInstaller();
    }
    void init() { theEditorXmlData = EditorXmlData(); }

    void saveIsDisabledForTheWholeSave();
    void theSaveDialogProposesAName_data();
    void theSaveDialogProposesAName();
    void theSaveDialogCarriesItsCheckBox();
    void cancellingTheSaveDialogChangesNothing();

private:
    FakePackages m_packages;
};

void tst_SaveDialog::saveIsDisabledForTheWholeSave()
{
    FakePagesWindow fixture;
    QVERIFY(fixture.window.on_fileloaded(m_packages.make(editorTitle)));
    QToolButton *save = fixture.tool("tb_save");
    int dialogs = 0;
    bool enabled = true;
    DialogDriver::onNextModal(this, [&](QDialog *dialog) {
        ++dialogs;
        enabled = save->isEnabled();
        save->click();
        dialog->reject();
    });
    save->click();
    QCOMPARE(dialogs, 1);
    QVERIFY(!enabled);
    QVERIFY(save->isEnabled());
}

void tst_SaveDialog::theSaveDialogProposesAName_data()
{
    QTest::addColumn<QString>("input");
    QTest::addColumn<QString>("proposed");
    QTest::newRow("plain") << QStringLiteral("A.pkg") << QStringLiteral("A_Untitled.pkg");
    QTest::newRow("blanks") << QStringLiteral("My App.pkg") << QStringLiteral("My App_Untitled.pkg");
    QTest::newRow("twice") << QStringLiteral("a.pkg.pkg") << QStringLiteral("a.pkg_Untitled.pkg");
    QTest::newRow("upper case") << QStringLiteral("A.PKG") << QStringLiteral("A.PKG");
    QTest::newRow("no suffix") << QStringLiteral("A") << QStringLiteral("A");
}

void tst_SaveDialog::theSaveDialogProposesAName()
{
    QFETCH(QString, input);
    FakePagesWindow fixture;
    const QString path = m_packages.make(editorTitle, input);
    QVERIFY(fixture.window.on_fileloaded(path));
    QString proposed;
    QString folder;
    DialogDriver::onNextModal(this, [&](QDialog *dialog) {
        proposed = dialog->findChild<QLineEdit *>(QStringLiteral("fileNameEdit"))->text();
        folder = qobject_cast<QFileDialog *>(dialog)->directory().absolutePath();
        dialog->reject();
    });
    fixture.tool("tb_save")->click();
    QTEST(proposed, "proposed");
    QCOMPARE(folder, QFileInfo(path).absolutePath());
}

void tst_SaveDialog::theSaveDialogCarriesItsCheckBox()
{
    FakePagesWindow fixture;
    QVERIFY(fixture.window.on_fileloaded(m_packages.make(editorTitle)));
    bool asked = false;
    DialogDriver::onNextModal(this, [&](QDialog *dialog) {
        asked = true;
        const auto *files = qobject_cast<QFileDialog *>(dialog);
        const auto *box = dialog->findChild<QCheckBox *>();
        QCOMPARE(files->acceptMode(), QFileDialog::AcceptSave);
        QCOMPARE(files->nameFilters(), QStringList(QStringLiteral("Package files (*.pkg)")));
        QCOMPARE(files->parentWidget(), &fixture.window);
        QCOMPARE(box->text(), QStringLiteral("Save config file for future modification"));
        QVERIFY(box->isEnabled() && box->isVisible() && !box->isChecked());
        dialog->reject();
    });
    fixture.tool("tb_save")->click();
    QVERIFY(asked);
}

void tst_SaveDialog::cancellingTheSaveDialogChangesNothing()
{
    FakePagesWindow fixture;
    const QString input = m_packages.make(editorTitle);
    QVERIFY(fixture.window.on_fileloaded(input));
    const QStringList before = QFileInfo(input).dir().entryList();
    const QStringList askedBefore = fixture.first->m_asked;
    DialogDriver::cancel(this);
    fixture.tool("tb_save")->click();
    QVERIFY(fixture.window.isEnabled());
    QVERIFY(!fixture.window.findChild<CPDF_Waiting *>()->isVisibleTo(&fixture.window));
    QCOMPARE(QFileInfo(input).dir().entryList(), before);
    QCOMPARE(fixture.first->m_asked, askedBefore);
}

QTEST_MAIN(tst_SaveDialog)
#include "tst_SaveDialog.moc"
