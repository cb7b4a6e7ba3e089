// SPDX-License-Identifier: Apache-2.0
#include "resources/Resources.h"
#include "tests/app/BuildFlow.h"
#include "tests/app/GermanTexts.h"
#include "tests/app/PageControls.h"
#include "tests/app/ProfileFlow.h"

#include <QFileDialog>
#include <QtTest>

namespace {

using Window = DlgCustomizationTool_v2;

/// What one run leaves behind, and under which name it offered to.
struct Outputs
{
    QString proposedName;
    QByteArray file;
    QByteArray document;
    QString message;
};

void setEverything(const Window &window, bool editor)
{
    for (const PageControls::Entry &entry : PageControls::entriesOf(editor)) {
        // Profile mode has no Installation Options page.
        const bool offered = window.findChild<QWidget *>(QLatin1String(entry.control)) ||
                             qstrncmp(entry.control, "tree ", 5) == 0;
        if (offered)
            QVERIFY2(PageControls::give(window, entry), entry.control);
    }
}

/// Identifiers are made anew in every run.
QByteArray withoutIdentifiers(const QByteArray &profile)
{
    static const QRegularExpression uuid(
        QStringLiteral("[0-9A-Fa-f]{8}(-[0-9A-Fa-f]{4}){3}-[0-9A-Fa-f]{12}"));
    return QString::fromUtf8(profile).replace(uuid, QStringLiteral("UUID")).toUtf8();
}

Outputs packageOutputs(bool editor)
{
    theEditorXmlData = EditorXmlData();
    BuildFlow flow;
    const auto window = flow.openWindow(flow.sample(editor), editor);
    setEverything(*window, editor);
    Outputs outputs;
    outputs.message = flow.save(*window, flow.output(), true).text;
    outputs.proposedName = QDir(flow.path("out")).entryList(QDir::Files).join(QLatin1Char(' '));
    outputs.file = TestFiles::read(flow.output());
    outputs.document = TestFiles::read(flow.path("out/ProfStore.xml"));
    return outputs;
}

Outputs profileOutputs(bool editor)
{
    theEditorXmlData = EditorXmlData();
    ProfileFlow flow;
    const auto window = flow.openWindow(editor);
    setEverything(*window, editor);
    Outputs outputs;
    ShownMessage shown;
    const auto choose = [&](QDialog *dialog) {
        outputs.proposedName =
            QFileInfo(qobject_cast<QFileDialog *>(dialog)->selectedFiles().value(0)).fileName();
        Answers::choose(flow.output())(dialog);
    };
    flow.save(*window, {choose, Answers::read(&shown)});
    outputs.message = shown.text;
    outputs.file = withoutIdentifiers(TestFiles::read(flow.output()));
    return outputs;
}

} // namespace

/// The language of the window is only the window's: what it writes is the same in all of them.
class tst_TranslatedOutputs : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        initPctResources();
        // The same settings are then the same bytes.
        qputenv("SOURCE_DATE_EPOCH", "1700000000");
    }
    void aPackageIsTheSame_data() { products(); }
    void aPackageIsTheSame();
    void aProfileIsTheSame_data() { products(); }
    void aProfileIsTheSame();

private:
    static void products();
    static void compare(const Outputs &german, const Outputs &english);
};

void tst_TranslatedOutputs::products()
{
    QTest::addColumn<bool>("editor");
    QTest::newRow("Editor") << true;
    QTest::newRow("Reader") << false;
}

void tst_TranslatedOutputs::compare(const Outputs &german, const Outputs &english)
{
    QVERIFY(german.message != english.message);
    QVERIFY(!english.proposedName.isEmpty());
    QCOMPARE(german.proposedName, english.proposedName);
    QCOMPARE(german.document, english.document);
    QVERIFY(!english.file.isEmpty());
    QVERIFY(german.file == english.file);
}

void tst_TranslatedOutputs::aPackageIsTheSame()
{
    QFETCH(bool, editor);
    const Outputs english = packageOutputs(editor);
    const GermanTexts texts;
    const Outputs german = packageOutputs(editor);
    QCOMPARE(german.message, QStringLiteral("\nAusgabepaket und Konfigurationsdatei wurden erstellt."));
    QVERIFY(english.document.contains("example.org") == editor);
    compare(german, english);
}

void tst_TranslatedOutputs::aProfileIsTheSame()
{
    QFETCH(bool, editor);
    const Outputs english = profileOutputs(editor);
    const GermanTexts texts;
    const Outputs german = profileOutputs(editor);
    QCOMPARE(german.message, QStringLiteral("\nDas Konfigurationsprofil wurde erstellt."));
    compare(german, english);
}

QTEST_MAIN(tst_TranslatedOutputs)
#include "tst_TranslatedOutputs.moc"
