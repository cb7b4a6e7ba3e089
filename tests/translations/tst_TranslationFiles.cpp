// SPDX-License-Identifier: Apache-2.0
#include "tests/support/TestFiles.h"

#include <QDir>
#include <QDomDocument>
#include <QTemporaryDir>
#include <QtTest>

namespace {

const QString sourceFolder = QStringLiteral(PCT_SOURCE_DIR);

/// What a translation has to take over from its source, in the order in which it stands there: placeholders,
/// file patterns, tags, and the line feeds that keep a message off the window's edge.
QStringList fixedParts(const QString &text)
{
    static const QRegularExpression part(QStringLiteral(R"(%\d|\*\.\w+|<[^>]+>|\n)"));
    QStringList parts;
    for (auto match = part.globalMatch(text); match.hasNext();)
        parts += match.next().captured();
    return parts;
}

} // namespace

/// The files that translators work on.
class tst_TranslationFiles : public QObject
{
    Q_OBJECT

private slots:
    void everyTextIsTranslated_data() { addFiles(); }
    void everyTextIsTranslated();
    void translationsKeepWhatIsNoLanguage_data() { addFiles(); }
    void translationsKeepWhatIsNoLanguage();
    void noTextOfTheSourcesIsMissing_data() { addFiles(); }
    void noTextOfTheSourcesIsMissing();

private:
    static void addFiles();
    static QDomNodeList messagesIn(const QString &file, QDomDocument &document);
};

void tst_TranslationFiles::addFiles()
{
    QTest::addColumn<QString>("file");
    const QDir folder(sourceFolder + QStringLiteral("/translations"));
    const QFileInfoList files = folder.entryInfoList({QStringLiteral("pct_*.ts")});
    QVERIFY(!files.isEmpty());
    for (const QFileInfo &file : files)
        QTest::newRow(qUtf8Printable(file.fileName())) << file.filePath();
}

QDomNodeList tst_TranslationFiles::messagesIn(const QString &file, QDomDocument &document)
{
    if (!document.setContent(TestFiles::read(file)))
        QTest::qFail("the file is no XML", __FILE__, __LINE__);
    return document.elementsByTagName(QStringLiteral("message"));
}

void tst_TranslationFiles::everyTextIsTranslated()
{
    QFETCH(QString, file);
    QDomDocument document;
    const QDomNodeList messages = messagesIn(file, document);
    QVERIFY(messages.count() > 100);
    for (int i = 0; i < messages.count(); ++i) {
        const QString source = messages.at(i).firstChildElement(QStringLiteral("source")).text();
        const QDomElement translation = messages.at(i).firstChildElement(QStringLiteral("translation"));
        QVERIFY2(!translation.text().isEmpty(), qUtf8Printable(source));
        // "unfinished", "vanished" or "obsolete"
        QVERIFY2(!translation.hasAttribute(QStringLiteral("type")), qUtf8Printable(source));
    }
}

void tst_TranslationFiles::translationsKeepWhatIsNoLanguage()
{
    QFETCH(QString, file);
    QDomDocument document;
    const QDomNodeList messages = messagesIn(file, document);
    for (int i = 0; i < messages.count(); ++i) {
        const QString source = messages.at(i).firstChildElement(QStringLiteral("source")).text();
        const QString translation = messages.at(i).firstChildElement(QStringLiteral("translation")).text();
        QCOMPARE(fixedParts(translation), fixedParts(source));
    }
}

/// Nor does the file hold a text that the sources no longer have.
void tst_TranslationFiles::noTextOfTheSourcesIsMissing()
{
    QFETCH(QString, file);
    const QTemporaryDir folder;
    const QString copy = folder.filePath(QFileInfo(file).fileName());
    QVERIFY(QFile::copy(file, copy));
    TestFiles::outputOf(sourceFolder + QStringLiteral("/scripts/update-translations.sh"),
                        {QStringLiteral(PCT_LUPDATE), copy});
    QVERIFY2(TestFiles::read(copy) == TestFiles::read(file),
             "run cmake --build --target translations-update and translate what is new");
}

QTEST_GUILESS_MAIN(tst_TranslationFiles)
#include "tst_TranslationFiles.moc"
