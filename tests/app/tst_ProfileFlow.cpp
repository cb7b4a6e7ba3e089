// SPDX-License-Identifier: Apache-2.0
#include "app/IdentifierQuestion.h"
#include "profile/CProfileGenerator.h"
#include "resources/Resources.h"
#include "tests/app/ProfileFlow.h"

#include <QFileDialog>
#include <QPushButton>
#include <QTextDocument>
#include <QToolButton>
#include <QtTest>

using namespace Answers;

namespace {

const QRegularExpression freshIdentifier(
    QStringLiteral("^.+\\.[0-9A-F]{8}-[0-9A-F]{4}-4[0-9A-F]{3}-[89AB][0-9A-F]{3}-[0-9A-F]{12}$"));

ProfilePayloadInfo &identity()
{
    return theEditorXmlData.payloadInfo;
}

QToolButton *saveButton(const DlgCustomizationTool_v2 &window)
{
    return window.findChild<QToolButton *>(QStringLiteral("tb_save"));
}

void expectDebugLine(const QString &pattern)
{
    QTest::ignoreMessage(QtDebugMsg, QRegularExpression(pattern + QLatin1Char('$')));
}

} // namespace

/// Saving a profile, without an identity to sign it.
class tst_ProfileFlow : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { initPctResources(); }
    void init()
    {
        theEditorXmlData = EditorXmlData();
        m_flow = std::make_unique<ProfileFlow>();
    }
    void cleanup() { m_flow.reset(); }

    void withNoProfileInstalledNothingIsAskedAndTheIdentifierIsFresh_data() { products(); }
    void withNoProfileInstalledNothingIsAskedAndTheIdentifierIsFresh();
    void theProfileIsAcceptedByAnotherReader_data() { products(); }
    void theProfileIsAcceptedByAnotherReader();
    void theProductsFileNameIsProposedInTheLastFolder_data() { products(); }
    void theProductsFileNameIsProposedInTheLastFolder();
    void aNameWithoutSuffixGetsOne();
    void cancellingTheFileDialogWritesAndShowsNothing();
    void theFolderOfTheFileIsRememberedForTheNextDialog();
    void theSecondSaveOfARunKeepsTheIdentifier();
    void theProfileHoldsWhatThePagesShow();
    void theProfileOfTheOtherProductDoesNotMatter();
    void withTheSameIdentifierInstalledNothingIsAsked();
    void anotherIdentifierIsAskedAbout();
    void useCurrentMakesAnIdentifierThatIsNew();
    void keepSystemTakesTheInstalledIdentifier();
    void keepSystemMakesAProfileThatReplacesTheInstalledOne();
    void closingTheQuestionWritesNothing_data();
    void closingTheQuestionWritesNothing();
    void aFileThatCannotBeWrittenIsReported();
    void saveIsDisabledForTheWholeSave();

private:
    static void products();
    QString proposedFile(DlgCustomizationTool_v2 &window);

    std::unique_ptr<ProfileFlow> m_flow;
};

void tst_ProfileFlow::products()
{
    QTest::addColumn<bool>("editor");
    QTest::addColumn<QString>("product");
    QTest::newRow("Editor") << true << QStringLiteral("Pelix PDF Editor");
    QTest::newRow("Reader") << false << QStringLiteral("Pelix PDF Reader");
}

void tst_ProfileFlow::withNoProfileInstalledNothingIsAskedAndTheIdentifierIsFresh()
{
    QFETCH(bool, editor);
    const auto window = m_flow->openWindow(editor);
    ShownMessage shown;
    m_flow->save(*window, {choose(m_flow->output()), read(&shown)});
    QCOMPARE(shown.text, ProfileMessages::made);
    QCOMPARE(shown.title, QString());
    QCOMPARE(shown.icon, QMessageBox::Information);
    QCOMPARE(shown.buttons, QMessageBox::Ok);
    QCOMPARE(shown.parent.data(), window.get());

    const QString identifier = valueIn(m_flow->output(), "PayloadIdentifier");
    QVERIFY2(freshIdentifier.match(identifier).hasMatch(), qPrintable(identifier));
    QCOMPARE(identifier.section(QLatin1Char('.'), -1), valueIn(m_flow->output(), "PayloadUUID"));
    QTEST(valueIn(m_flow->output(), "PayloadDisplayName"), "product");
}

void tst_ProfileFlow::theProfileIsAcceptedByAnotherReader()
{
    QFETCH(bool, editor);
    const auto window = m_flow->openWindow(editor);
    ShownMessage shown;
    m_flow->save(*window, {choose(m_flow->output()), read(&shown)});
    TestFiles::outputOf(QStringLiteral("xmllint"),
                        {QStringLiteral("--nonet"), QStringLiteral("--noout"), m_flow->output()});
    const QByteArray binary =
        TestFiles::outputOf(QStringLiteral("plistutil"), {QStringLiteral("-i"), m_flow->output(),
                                                          QStringLiteral("-f"), QStringLiteral("bin")});
    QVERIFY(binary.startsWith("bplist00"));
}

QString tst_ProfileFlow::proposedFile(DlgCustomizationTool_v2 &window)
{
    QString proposed;
    m_flow->save(window, {[&proposed](QDialog *dialog) {
                     auto *files = qobject_cast<QFileDialog *>(dialog);
                     proposed = files->selectedFiles().value(0);
                     QCOMPARE(files->nameFilters(), QStringList(QStringLiteral("profile (*.mobileconfig)")));
                     QCOMPARE(files->acceptMode(), QFileDialog::AcceptSave);
                     dialog->reject();
                 }});
    return proposed;
}

void tst_ProfileFlow::theProductsFileNameIsProposedInTheLastFolder()
{
    QFETCH(bool, editor);
    QFETCH(QString, product);
    CProfileGenerator::SyncLastOpenDirectory(m_flow->path("out/any"));
    const auto window = m_flow->openWindow(editor);
    QCOMPARE(proposedFile(*window), m_flow->path("out/") + product + QStringLiteral(".mobileconfig"));
}

void tst_ProfileFlow::aNameWithoutSuffixGetsOne()
{
    const auto window = m_flow->openWindow();
    ShownMessage shown;
    m_flow->save(*window, {choose(m_flow->path("out/short")), read(&shown)});
    QCOMPARE(QDir(m_flow->path("out")).entryList(QDir::Files),
             QStringList(QStringLiteral("short.mobileconfig")));
}

void tst_ProfileFlow::cancellingTheFileDialogWritesAndShowsNothing()
{
    CProfileGenerator::SyncLastOpenDirectory(m_flow->path("out/any"));
    const auto window = m_flow->openWindow();
    m_flow->save(*window, {escape()});
    QVERIFY(QDir(m_flow->path("out")).isEmpty());
    QCOMPARE(identity(), ProfilePayloadInfo());
    QCOMPARE(CProfileGenerator::GetLastOpenDirectory(), m_flow->path("out"));
    QVERIFY(saveButton(*window)->isEnabled());
}

void tst_ProfileFlow::theFolderOfTheFileIsRememberedForTheNextDialog()
{
    const auto window = m_flow->openWindow();
    ShownMessage shown;
    m_flow->save(*window, {choose(m_flow->output()), read(&shown)});
    QCOMPARE(CProfileGenerator::GetLastOpenDirectory(), m_flow->path("out"));
}

void tst_ProfileFlow::theSecondSaveOfARunKeepsTheIdentifier()
{
    const auto window = m_flow->openWindow();
    ShownMessage shown;
    m_flow->save(*window, {choose(m_flow->output("out/first.mobileconfig")), read(&shown)});
    m_flow->save(*window, {choose(m_flow->output("out/second.mobileconfig")), read(&shown)});
    QCOMPARE(shown.count, 2);
    for (const char *key : {"PayloadIdentifier", "PayloadUUID"})
        QCOMPARE(valueIn(m_flow->output("out/second.mobileconfig"), key),
                 valueIn(m_flow->output("out/first.mobileconfig"), key));
}

void tst_ProfileFlow::theProfileHoldsWhatThePagesShow()
{
    const auto window = m_flow->openWindow();
    const QString plugin = offeredPlugin(*window, 1);
    window->on_profileload(m_flow->makeProfile("out/source.mobileconfig", true, plugin + QLatin1Char(';')));
    QVERIFY(isPluginTicked(*window, 1));
    ShownMessage shown;
    m_flow->save(*window, {choose(m_flow->output()), read(&shown)});

    EditorXmlData saved;
    QVERIFY(CProfileGenerator::ImportProfile(m_flow->output(), &saved, true));
    QCOMPARE(saved.strUnloadPluginArray, plugin + QLatin1Char(';'));
    QVERIFY(TestFiles::read(m_flow->output()).contains(plugin.toUtf8()));
}

void tst_ProfileFlow::theProfileOfTheOtherProductDoesNotMatter()
{
    m_flow->install(m_flow->makeProfile("reader.mobileconfig", false));
    const auto window = m_flow->openWindow(true);
    ShownMessage shown;
    m_flow->save(*window, {choose(m_flow->output()), read(&shown)});
    QCOMPARE(shown.text, ProfileMessages::made);
}

void tst_ProfileFlow::withTheSameIdentifierInstalledNothingIsAsked()
{
    const QString installed = m_flow->makeProfile("installed.mobileconfig");
    m_flow->install(installed);
    identity().PayloadIdentifier = valueIn(installed, "PayloadIdentifier");
    identity().PayloadUUID = valueIn(installed, "PayloadUUID");
    const auto window = m_flow->openWindow();
    ShownMessage shown;
    m_flow->save(*window, {choose(m_flow->output()), read(&shown)});
    QCOMPARE(shown.text, ProfileMessages::made);
    for (const char *key : {"PayloadIdentifier", "PayloadUUID"})
        QCOMPARE(valueIn(m_flow->output(), key), valueIn(installed, key));
}

void tst_ProfileFlow::anotherIdentifierIsAskedAbout()
{
    const IdentifierQuestion question(nullptr);
    QCOMPARE(question.windowTitle(), QString());
    QCOMPARE(question.icon(), QMessageBox::Warning);
    QCOMPARE(question.standardButtons(), QMessageBox::Yes | QMessageBox::No);
    QCOMPARE(question.button(QMessageBox::Yes)->text(), QStringLiteral("Use Current"));
    QCOMPARE(question.button(QMessageBox::No)->text(), QStringLiteral("Keep System"));
    QCOMPARE(question.defaultButton()->text(), QStringLiteral("Use Current"));
    for (const char *declaration :
         {"margin: 5px 10px 10px 10px;", "font-family: \"SF Pro Text\";", "font-size: 13px;",
          "font-style: normal;", "font-weight: 400;", "line-height: 20px;", "<p class=\"content\">"})
        QVERIFY2(question.text().contains(QLatin1String(declaration)), declaration);
    QTextDocument text;
    text.setHtml(question.text());
    QCOMPARE(text.toPlainText(),
             QStringLiteral("The current profile identifier doesn't match the one in your system "
                            "configuration. This may cause errors. Which identifier would you like to use?"));
}

void tst_ProfileFlow::useCurrentMakesAnIdentifierThatIsNew()
{
    const QString installed = m_flow->makeProfile("installed.mobileconfig");
    m_flow->install(installed);
    const QString held = QStringLiteral("mac.11111111-2222-4333-8444-555555555555");
    identity().PayloadIdentifier = held;
    const auto window = m_flow->openWindow();
    expectDebugLine(
        QStringLiteral("\\[debug\\] ==== generate ProfileIdentifier:.+, ProfileUUID:[-0-9A-F]{36}\\."));
    ShownMessage shown;
    m_flow->save(*window, {choose(m_flow->output()), press(QStringLiteral("Use Current")), read(&shown)});
    QCOMPARE(shown.text, ProfileMessages::made);

    const QString identifier = valueIn(m_flow->output(), "PayloadIdentifier");
    QVERIFY(freshIdentifier.match(identifier).hasMatch());
    QVERIFY(identifier != held);
    QVERIFY(identifier != valueIn(installed, "PayloadIdentifier"));
    QCOMPARE(identity().PayloadIdentifier, identifier);
    QCOMPARE(identity().PayloadUUID, identifier.section(QLatin1Char('.'), -1));
    QCOMPARE(valueIn(m_flow->output(), "PayloadUUID"), identity().PayloadUUID);
}

void tst_ProfileFlow::keepSystemTakesTheInstalledIdentifier()
{
    const QString installed = m_flow->makeProfile("installed.mobileconfig");
    m_flow->install(installed);
    const QString identifier = valueIn(installed, "PayloadIdentifier");
    const QString uuid = valueIn(installed, "PayloadUUID");
    const auto window = m_flow->openWindow();
    expectDebugLine(QRegularExpression::escape(
        QStringLiteral("[debug] ==== follow system ProfileIdentifier:%1, ProfileUUID:%2.")
            .arg(identifier, uuid)));
    ShownMessage shown;
    m_flow->save(*window, {choose(m_flow->output()), press(QStringLiteral("Keep System")), read(&shown)});
    QCOMPARE(shown.text, ProfileMessages::made);
    QCOMPARE(valueIn(m_flow->output(), "PayloadIdentifier"), identifier);
    QCOMPARE(valueIn(m_flow->output(), "PayloadUUID"), uuid);

    // Settled for the rest of the run.
    m_flow->save(*window, {choose(m_flow->output("out/again.mobileconfig")), read(&shown)});
    QCOMPARE(valueIn(m_flow->output("out/again.mobileconfig"), "PayloadIdentifier"), identifier);
}

void tst_ProfileFlow::keepSystemMakesAProfileThatReplacesTheInstalledOne()
{
    m_flow->install(m_flow->makeProfile("installed.mobileconfig"));
    const QStringList before = QDir(m_flow->path("profiles")).entryList(QDir::Files);
    const auto window = m_flow->openWindow();
    ShownMessage shown;
    m_flow->save(*window, {choose(m_flow->output()), press(QStringLiteral("Keep System")), read(&shown)});
    m_flow->install(m_flow->output());
    QCOMPARE(QDir(m_flow->path("profiles")).entryList(QDir::Files), before);
}

void tst_ProfileFlow::closingTheQuestionWritesNothing_data()
{
    QTest::addColumn<bool>("byKey");
    QTest::newRow("with Escape") << true;
    QTest::newRow("with the window's control") << false;
}

void tst_ProfileFlow::closingTheQuestionWritesNothing()
{
    QFETCH(bool, byKey);
    m_flow->install(m_flow->makeProfile("installed.mobileconfig"));
    identity().PayloadIdentifier = QStringLiteral("mac.11111111-2222-4333-8444-555555555555");
    const ProfilePayloadInfo held = identity();
    const auto window = m_flow->openWindow();
    ShownMessage shown;
    m_flow->save(*window, {choose(m_flow->output()), byKey ? escape() : closeWindow(), read(&shown)});
    QCOMPARE(shown.text, ProfileMessages::failed);
    QCOMPARE(shown.icon, QMessageBox::Warning);
    QCOMPARE(shown.title, QString());
    QCOMPARE(shown.buttons, QMessageBox::Ok);
    QVERIFY(!QFileInfo::exists(m_flow->output()));
    QCOMPARE(identity(), held);
}

void tst_ProfileFlow::aFileThatCannotBeWrittenIsReported()
{
    const auto window = m_flow->openWindow();
    ShownMessage shown;
    m_flow->save(*window, {choose(m_flow->path("missing/saved.mobileconfig")), read(&shown)});
    QCOMPARE(shown.text, ProfileMessages::failed);
    QCOMPARE(shown.icon, QMessageBox::Warning);
    QVERIFY(!QFileInfo::exists(m_flow->path("missing")));
}

void tst_ProfileFlow::saveIsDisabledForTheWholeSave()
{
    const auto window = m_flow->openWindow();
    QVERIFY(saveButton(*window)->isEnabled());
    QList<bool> enabled;
    const auto note = [&](const DialogScript::Answer &answer) -> DialogScript::Answer {
        return [&enabled, &window, answer](QDialog *dialog) {
            enabled << saveButton(*window)->isEnabled();
            answer(dialog);
        };
    };
    ShownMessage shown;
    m_flow->save(*window, {note(choose(m_flow->output())), note(read(&shown))});
    QCOMPARE(enabled, QList<bool>({false, false}));
    QVERIFY(saveButton(*window)->isEnabled());
}

QTEST_MAIN(tst_ProfileFlow)
#include "tst_ProfileFlow.moc"
