// SPDX-License-Identifier: Apache-2.0
#include "profile/signing/dlg_sign_profile.h"

#include "resources/Resources.h"
#include "tests/profile/StandIns.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QDir>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QTextDocument>
#include <QtTest>

namespace {

const QString security = QStringLiteral("security");

QPushButton *buttonOf(dlg_sign_profile &dialog, QDialogButtonBox::ButtonRole role)
{
    const auto buttons = dialog.findChild<QDialogButtonBox *>()->buttons();
    for (QAbstractButton *button : buttons) {
        if (dialog.findChild<QDialogButtonBox *>()->buttonRole(button) == role)
            return qobject_cast<QPushButton *>(button);
    }
    return nullptr;
}

/// What the reader of a tool tip sees, be it rich text or plain.
QString shownText(const QString &toolTip)
{
    if (!Qt::mightBeRichText(toolTip))
        return toolTip;
    QTextDocument document;
    document.setHtml(toolTip);
    return document.toPlainText();
}

QPushButton *signButton(dlg_sign_profile &dialog)
{
    return buttonOf(dialog, QDialogButtonBox::AcceptRole);
}

} // namespace

class tst_SignDialog : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        if (QFileInfo::exists(QStringLiteral("/usr/bin/security")))
            QSKIP("this system has the command itself");
        initPctResources();
        // A private folder of this test, so that what is left behind can be seen.
        QVERIFY(QDir(m_folder.path()).mkdir(QStringLiteral("tmp")));
        qputenv("TMPDIR", QFile::encodeName(m_folder.filePath(QStringLiteral("tmp"))));
    }

    void init()
    {
        TestFiles::write(m_path, "unsigned");
        QVERIFY(QFile::setPermissions(m_path, m_permissions));
    }

    void looksAsPrescribed()
    {
        dlg_sign_profile dialog(m_path, {QStringLiteral("Jane"), QStringLiteral("Joe")}, nullptr);
        QCOMPARE(dialog.windowTitle(), QStringLiteral("Signing Profile"));
        QCOMPARE(dialog.size(), QSize(523, 166));
        QVERIFY(!(dialog.windowFlags() & Qt::WindowMinMaxButtonsHint));
        QVERIFY(!(dialog.windowFlags() & Qt::WindowContextHelpButtonHint));
        QCOMPARE(signButton(dialog)->text(), QStringLiteral("Sign"));
        QCOMPARE(buttonOf(dialog, QDialogButtonBox::RejectRole)->text(), QStringLiteral("Don't Sign"));
        QCOMPARE(dialog.findChild<QLabel *>(QStringLiteral("label_img"))->styleSheet(),
                 QStringLiteral("background-image: url(:/img/question.png);\nbackground-position: "
                                "center;\nbackground-repeat: no-repeat;"));
        QVERIFY(QFile::exists(QStringLiteral(":/img/question.png")));
        const auto *info = dialog.findChild<QLabel *>(QStringLiteral("label_info"));
        QVERIFY(info->wordWrap());
        QVERIFY(info->text().contains(QStringLiteral(
            "Signing a profile prevents modifications and verifies the original author. Once signed, a "
            "profile can no longer be modified.")));
        QCOMPARE(dialog.findChild<QLabel *>(QStringLiteral("label_identity"))->text(),
                 QStringLiteral("Signing Identity:"));
    }

    void identitiesStandInListOrderTheFirstSelected()
    {
        dlg_sign_profile dialog(m_path, {QStringLiteral("b"), QStringLiteral("a")}, nullptr);
        const auto *box = dialog.findChild<QComboBox *>();
        QCOMPARE(box->count(), 2);
        QCOMPARE(box->currentText(), QStringLiteral("b"));
        QCOMPARE(box->itemText(1), QStringLiteral("a"));
        QVERIFY(signButton(dialog)->isEnabled());
    }

    void aLongNameCanBeReadInFull()
    {
        const QString name = QStringLiteral("Developer ID Application: <b>Long</b> & ") +
                             QStringLiteral("Longer ").repeated(2) + QStringLiteral("(0123456789)");
        dlg_sign_profile dialog(m_path, {QStringLiteral("short"), name}, nullptr);
        dialog.show();
        auto *box = dialog.findChild<QComboBox *>();
        QCOMPARE(shownText(box->toolTip()), QStringLiteral("short"));
        box->setCurrentIndex(1);
        QCOMPARE(shownText(box->toolTip()), name);
        QVERIFY(box->fontMetrics().horizontalAdvance(name) > box->width());
        QCOMPARE(dialog.minimumSizeHint(),
                 dlg_sign_profile(m_path, {QStringLiteral("short")}, nullptr).minimumSizeHint());

        box->showPopup();
        QAbstractItemView *list = box->view();
        QCOMPARE(list->textElideMode(), Qt::ElideNone);
        QVERIFY(list->viewport()->width() >= list->fontMetrics().horizontalAdvance(name));
        box->hidePopup();
    }

    void aNameWiderThanTheScreenKeepsTheListOnIt()
    {
        dlg_sign_profile dialog(m_path, {QString(5000, QLatin1Char('w'))}, nullptr);
        dialog.show();
        auto *box = dialog.findChild<QComboBox *>();
        box->showPopup();
        QVERIFY(box->view()->window()->width() <= box->screen()->availableGeometry().width());
        box->hidePopup();
    }

    void withoutIdentitiesThereIsNoneAndNoSigning()
    {
        dlg_sign_profile dialog(m_path, {}, nullptr);
        QCOMPARE(dialog.findChild<QComboBox *>()->count(), 1);
        QCOMPARE(dialog.findChild<QComboBox *>()->currentText(), QStringLiteral("None"));
        QVERIFY(!signButton(dialog)->isEnabled());
    }

    void anIdentityNamedNoneOrNothingDoesNothing_data()
    {
        QTest::addColumn<QString>("identity");
        QTest::newRow("None") << QStringLiteral("None");
        QTest::newRow("empty") << QString();
    }

    void anIdentityNamedNoneOrNothingDoesNothing()
    {
        QFETCH(QString, identity);
        const StandIns commands;
        dlg_sign_profile dialog(m_path, {identity}, nullptr);
        dialog.show();
        signButton(dialog)->click();
        QVERIFY(dialog.isVisible());
        QVERIFY(!dialog.IsSignedSuccess());
    }

    void dontSignRejects()
    {
        dlg_sign_profile dialog(m_path, {QStringLiteral("Jane")}, nullptr);
        QSignalSpy rejected(&dialog, &QDialog::rejected);
        buttonOf(dialog, QDialogButtonBox::RejectRole)->click();
        QCOMPARE(rejected.count(), 1);
        QVERIFY(!dialog.IsSignedSuccess());
        QCOMPARE(TestFiles::read(m_path), QByteArray("unsigned"));
    }

    void signReplacesTheProfile()
    {
        StandIns commands;
        commands.set(security, "if [ \"$2\" = -S ]; then printf 'signed: unsigned' > \"$8\"\n"
                               "else sed 's/^signed: //' \"$4\"; fi\n");
        QVERIFY(signedWith(QStringLiteral("Jane")));
        QCOMPARE(TestFiles::read(m_path), QByteArray("signed: unsigned"));
        QCOMPARE(temporaryEntries(), 1); // the stand-ins' own folder
    }

    void aFailedSigningPutsTheProfileBack_data()
    {
        QTest::addColumn<QByteArray>("script");
        QTest::newRow("nothing done") << QByteArray("exit 1\n");
        QTest::newRow("truncated") << QByteArray(": > \"$8\"\nexit 1\n");
        QTest::newRow("removed") << QByteArray("rm -f \"$8\"\nexit 1\n");
        QTest::newRow("other permissions") << QByteArray("chmod 777 \"$8\"; echo x > \"$8\"\nexit 1\n");
        QTest::newRow("replaced by a link") << QByteArray("rm \"$8\"; ln -s /nowhere \"$8\"\nexit 1\n");
        QTest::newRow("written, but not valid")
            << QByteArray("[ \"$2\" = -D ] && exit 1\necho junk > \"$8\"\n");
        QTest::newRow("written, but something else")
            << QByteArray("if [ \"$2\" = -S ]; then echo junk > \"$8\"; else cat \"$4\"; fi\n");
        QTest::newRow("killed") << QByteArray("echo x > \"$8\"; kill -9 $$\n");
    }

    void aFailedSigningPutsTheProfileBack()
    {
        QFETCH(QByteArray, script);
        StandIns commands;
        commands.set(security, script);
        QVERIFY(!signedWith(QStringLiteral("Jane")));
        QCOMPARE(TestFiles::read(m_path), QByteArray("unsigned"));
        QVERIFY(!QFileInfo(m_path).isSymLink());
        QCOMPARE(QFile::permissions(m_path), m_permissions);
        QCOMPARE(temporaryEntries(), 1); // the stand-ins' own folder
    }

    void aFileOfThatNameInTheTemporaryFolderIsLeftAlone()
    {
        const QString neighbour = QDir::tempPath() + QStringLiteral("/a.mobileconfig");
        TestFiles::write(neighbour, "somebody else's");
        StandIns commands;
        commands.set(security, ": > \"$8\"\nexit 1\n");
        QVERIFY(!signedWith(QStringLiteral("Jane")));
        QCOMPARE(TestFiles::read(m_path), QByteArray("unsigned"));
        QCOMPARE(TestFiles::read(neighbour), QByteArray("somebody else's"));
        QVERIFY(QFile::remove(neighbour));
    }

    void whatCannotBeKeptIsNotSigned()
    {
        StandIns commands;
        commands.set(security, "echo signed > \"$8\"\n");
        QVERIFY(QFile::remove(m_path));
        QVERIFY(!signedWith(QStringLiteral("Jane")));
        QVERIFY(!QFile::exists(m_path));
    }

private:
    /// Presses "Sign"; the dialog is accepted whatever comes of it.
    bool signedWith(const QString &identity)
    {
        dlg_sign_profile dialog(m_path, {identity}, nullptr);
        signButton(dialog)->click();
        return dialog.result() == QDialog::Accepted && dialog.IsSignedSuccess();
    }

    static int temporaryEntries()
    {
        return QDir(QDir::tempPath())
            .entryList(QDir::AllEntries | QDir::System | QDir::Hidden | QDir::NoDotAndDotDot)
            .size();
    }

    QTemporaryDir m_folder;
    QString m_path = m_folder.filePath(QStringLiteral("a.mobileconfig"));
    const QFile::Permissions m_permissions =
        QFile::ReadOwner | QFile::WriteOwner | QFile::ReadUser | QFile::WriteUser | QFile::ReadGroup;
};

QTEST_MAIN(tst_SignDialog)
#include "tst_SignDialog.moc"
