// SPDX-License-Identifier: Apache-2.0
#include "core/HostPaths.h"
#include "profile/signing/dlg_sign_profile.h"
#include "resources/Resources.h"
#include "tests/app/ProfileFlow.h"

#include <QComboBox>
#include <QtTest>

using namespace Answers;

namespace {

const QString signer = QStringLiteral("Pelix Test Signer");

/// What a signed profile carries, as OpenSSL takes it out.
QString contentOf(const QString &signedProfile)
{
    const QString content = signedProfile + QStringLiteral(".content");
    TestFiles::outputOf(QStringLiteral("openssl"),
                        {QStringLiteral("cms"), QStringLiteral("-verify"), QStringLiteral("-inform"),
                         QStringLiteral("DER"), QStringLiteral("-noverify"), QStringLiteral("-binary"),
                         QStringLiteral("-in"), signedProfile, QStringLiteral("-out"), content});
    return content;
}

/// The signing command replaced for a while by a script, which finds the real one in $real.
class OtherSecurity
{
public:
    OtherSecurity(const QString &script, const QByteArray &text)
        : m_hostTools(qgetenv("PCT_HOSTTOOLS"))
    {
        const QString real = HostPaths::command(QStringLiteral("/usr/bin/security"));
        for (const QFileInfo &tool : QFileInfo(real).dir().entryInfoList(QDir::Files))
            QFile::link(tool.filePath(), QFileInfo(script).dir().filePath(tool.fileName()));
        QFile::remove(script);
        TestFiles::writeScript(script, "real='" + QFile::encodeName(real) + "'\n" + text);
        qputenv("PCT_HOSTTOOLS", QFile::encodeName(QFileInfo(script).path()));
    }
    ~OtherSecurity() { qputenv("PCT_HOSTTOOLS", m_hostTools); }

private:
    const QByteArray m_hostTools;
};

} // namespace

/// Saving a profile when there are identities to sign it.
class tst_ProfileFlowSigning : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { initPctResources(); }
    void init()
    {
        theEditorXmlData = EditorXmlData();
        m_flow = std::make_unique<ProfileFlow>();
        m_flow->addIdentity(signer);
    }
    void cleanup() { m_flow.reset(); }

    void withoutAnIdentityTheProfileIsMadeAndNoSigningOffered();
    void theIdentitiesAreOffered();
    void signingReplacesTheProfileByItsSignedForm_data();
    void signingReplacesTheProfileByItsSignedForm();
    void aCommandThatTruncatesItsOutputFirstSignsTheProfile();
    void aSignedMessageThatIsNotTheProfileIsNoSuccess();
    void dontSignIsSilentAndLeavesTheUnsignedProfile();
    void closingTheSigningDialogIsSilentToo();
    void aSigningThatFailsLeavesTheUnsignedProfileAsItWas_data();
    void aSigningThatFailsLeavesTheUnsignedProfileAsItWas();

private:
    std::unique_ptr<ProfileFlow> m_flow;
};

void tst_ProfileFlowSigning::withoutAnIdentityTheProfileIsMadeAndNoSigningOffered()
{
    m_flow.reset();
    m_flow = std::make_unique<ProfileFlow>(); // whose place has no identity yet
    const auto window = m_flow->openWindow();
    ShownMessage shown;
    m_flow->save(*window, {choose(m_flow->output()), read(&shown)});
    QCOMPARE(shown.text, ProfileMessages::made);
    QVERIFY(TestFiles::read(m_flow->output()).startsWith("<?xml"));
}

void tst_ProfileFlowSigning::theIdentitiesAreOffered()
{
    m_flow->addIdentity(QStringLiteral("Another Signer"));
    const auto window = m_flow->openWindow();
    QStringList offered;
    QWidget *parent = nullptr;
    const auto look = [&](QDialog *dialog) {
        const auto *box = dialog->findChild<QComboBox *>();
        for (int index = 0; index < box->count(); ++index)
            offered << box->itemText(index);
        QCOMPARE(box->currentIndex(), 0);
        QVERIFY(qobject_cast<dlg_sign_profile *>(dialog));
        parent = dialog->parentWidget();
        dialog->reject();
    };
    m_flow->save(*window, {choose(m_flow->output()), look});
    QCOMPARE(offered, QStringList({QStringLiteral("Another Signer"), signer}));
    QCOMPARE(parent, window.get());
}

void tst_ProfileFlowSigning::signingReplacesTheProfileByItsSignedForm_data()
{
    QTest::addColumn<bool>("editor");
    QTest::newRow("Editor") << true;
    QTest::newRow("Reader") << false;
}

void tst_ProfileFlowSigning::signingReplacesTheProfileByItsSignedForm()
{
    QFETCH(bool, editor);
    const auto window = m_flow->openWindow(editor);
    ShownMessage shown;
    m_flow->save(*window, {choose(m_flow->output()), press(QStringLiteral("Sign")), read(&shown)});
    QCOMPARE(shown.text, ProfileMessages::isSigned);
    QCOMPARE(shown.icon, QMessageBox::Information);
    QCOMPARE(shown.title, QString());
    QVERIFY(!TestFiles::read(m_flow->output()).startsWith("<?xml"));
    QCOMPARE(valueIn(contentOf(m_flow->output()), "PayloadIdentifier"),
             theEditorXmlData.payloadInfo.PayloadIdentifier);
}

void tst_ProfileFlowSigning::aCommandThatTruncatesItsOutputFirstSignsTheProfile()
{
    const OtherSecurity security(m_flow->path("tools/security"),
                                 "test \"$2\" != -S || : > \"$8\"\nexec \"$real\" \"$@\"\n");
    const auto window = m_flow->openWindow();
    ShownMessage shown;
    m_flow->save(*window, {choose(m_flow->output()), press(QStringLiteral("Sign")), read(&shown)});
    QCOMPARE(shown.text, ProfileMessages::isSigned);
    QCOMPARE(valueIn(contentOf(m_flow->output()), "PayloadIdentifier"),
             theEditorXmlData.payloadInfo.PayloadIdentifier);
}

void tst_ProfileFlowSigning::aSignedMessageThatIsNotTheProfileIsNoSuccess()
{
    const OtherSecurity security(m_flow->path("tools/security"),
                                 "test \"$2\" = -S || exec \"$real\" \"$@\"\n: > \"$0.empty\"\n"
                                 "exec \"$real\" cms -S -N \"$4\" -i \"$0.empty\" -o \"$8\"\n");
    const auto window = m_flow->openWindow();
    ShownMessage shown;
    m_flow->save(*window, {choose(m_flow->output()), press(QStringLiteral("Sign")), read(&shown)});
    QCOMPARE(shown.text, ProfileMessages::notSigned);
    QCOMPARE(valueIn(m_flow->output(), "PayloadIdentifier"), theEditorXmlData.payloadInfo.PayloadIdentifier);
}

void tst_ProfileFlowSigning::dontSignIsSilentAndLeavesTheUnsignedProfile()
{
    const auto window = m_flow->openWindow();
    m_flow->save(*window, {choose(m_flow->output()), press(QStringLiteral("Don't Sign"))});
    QCOMPARE(valueIn(m_flow->output(), "PayloadIdentifier"), theEditorXmlData.payloadInfo.PayloadIdentifier);
}

void tst_ProfileFlowSigning::closingTheSigningDialogIsSilentToo()
{
    const auto window = m_flow->openWindow();
    m_flow->save(*window, {choose(m_flow->output()), closeWindow()});
    QVERIFY(TestFiles::read(m_flow->output()).startsWith("<?xml"));
}

void tst_ProfileFlowSigning::aSigningThatFailsLeavesTheUnsignedProfileAsItWas_data()
{
    QTest::addColumn<QByteArray>("damage");
    QTest::newRow("refused at once") << QByteArray();
    QTest::newRow("truncated") << QByteArray(": > \"$8\"\n");
    QTest::newRow("half written") << QByteArray("echo half > \"$8\"\n");
    QTest::newRow("removed") << QByteArray("rm \"$8\"\n");
}

void tst_ProfileFlowSigning::aSigningThatFailsLeavesTheUnsignedProfileAsItWas()
{
    QFETCH(QByteArray, damage);
    const QString unsignedCopy = m_flow->path("unsigned");
    const OtherSecurity security(m_flow->path("tools/security"),
                                 "test \"$2\" = -S || exec \"$real\" \"$@\"\n"
                                 "cp \"$6\" '" +
                                     QFile::encodeName(unsignedCopy) + "'\n" + damage +
                                     "echo 'the identity is refused' >&2\nexit 1\n");
    const auto window = m_flow->openWindow();
    ShownMessage shown;
    m_flow->save(*window, {choose(m_flow->output()), press(QStringLiteral("Sign")), read(&shown)});
    QCOMPARE(shown.text, ProfileMessages::notSigned);
    QCOMPARE(shown.icon, QMessageBox::Information);
    QVERIFY(TestFiles::read(unsignedCopy).startsWith("<?xml"));
    TestFiles::outputOf(QStringLiteral("cmp"), {unsignedCopy, m_flow->output()});
}

QTEST_MAIN(tst_ProfileFlowSigning)
#include "tst_ProfileFlowSigning.moc"
