// SPDX-License-Identifier: Apache-2.0
#include "tests/support/TestFiles.h"

#include <QDir>
#include <QDomDocument>
#include <QProcess>
#include <QTemporaryDir>
#include <QTranslator>
#include <QtTest>

namespace {

const QString sourceFolder = QStringLiteral(PCT_SOURCE_DIR);

/// What a translation has to take over from its source, in the order in which it stands there: placeholders,
/// file patterns, tags, and the line feeds that keep a message off the window's edge.
QStringList fixedParts(const QString &text)
{
    static const QRegularExpression part(QStringLiteral(R"(%[\dn]|\*\.\w+|<[^>]+>|\n)"));
    QStringList parts;
    for (auto match = part.globalMatch(text); match.hasNext();)
        parts += match.next().captured();
    return parts;
}

/// A translation, or each of its forms for different numbers.
QStringList formsOf(const QDomElement &translation)
{
    QStringList forms;
    const QDomNodeList byNumber = translation.elementsByTagName(QStringLiteral("numerusform"));
    for (int i = 0; i < byNumber.count(); ++i)
        forms += byNumber.at(i).toElement().text();
    return byNumber.isEmpty() ? QStringList(translation.text()) : forms;
}

/// The German file, without the translation of one text and with that of another marked as unfinished.
QByteArray incompleteGerman()
{
    QByteArray file = TestFiles::read(sourceFolder + QStringLiteral("/translations/pct_de.ts"));
    file.replace("<translation>Plug-ins</translation>", "<translation type=\"unfinished\"></translation>");
    file.replace("<translation>Installationsoptionen</translation>",
                 "<translation type=\"unfinished\">Installation</translation>");
    return file;
}

} // namespace

/// The files that translators work on.
class tst_TranslationFiles : public QObject
{
    Q_OBJECT

private slots:
    void translationsKeepWhatIsNoLanguage_data();
    void translationsKeepWhatIsNoLanguage();
    void whatIsNotTranslatedStaysEnglish();
    void theStateTellsWhatStaysEnglish();
    void anIncompleteTranslationIsNoErrorUnlessAskedFor();

private:
    QString writeIncompleteGerman() const;
    QProcess::ExitStatus runState(const QStringList &arguments);

    QTemporaryDir m_folder;
    int m_exitCode = -1;
    QString m_output;
};

QString tst_TranslationFiles::writeIncompleteGerman() const
{
    const QString path = m_folder.filePath(QStringLiteral("pct_de.ts"));
    TestFiles::write(path, incompleteGerman());
    return path;
}

QProcess::ExitStatus tst_TranslationFiles::runState(const QStringList &arguments)
{
    QProcess process;
    process.start(sourceFolder + QStringLiteral("/scripts/translation-state.py"), arguments);
    process.waitForFinished(-1);
    m_exitCode = process.exitCode();
    m_output = QString::fromUtf8(process.readAllStandardOutput());
    return process.exitStatus();
}

void tst_TranslationFiles::translationsKeepWhatIsNoLanguage_data()
{
    QTest::addColumn<QString>("file");
    const QDir folder(sourceFolder + QStringLiteral("/translations"));
    const QFileInfoList files = folder.entryInfoList({QStringLiteral("pct_*.ts")});
    QVERIFY(!files.isEmpty());
    for (const QFileInfo &file : files)
        QTest::newRow(qUtf8Printable(file.fileName())) << file.filePath();
}

void tst_TranslationFiles::translationsKeepWhatIsNoLanguage()
{
    QFETCH(QString, file);
    QDomDocument document;
    QVERIFY(document.setContent(TestFiles::read(file)));
    const QDomNodeList messages = document.elementsByTagName(QStringLiteral("message"));
    QVERIFY(messages.count() > 100);
    for (int i = 0; i < messages.count(); ++i) {
        const QString source = messages.at(i).firstChildElement(QStringLiteral("source")).text();
        for (const QString &form : formsOf(messages.at(i).firstChildElement(QStringLiteral("translation")))) {
            if (!form.isEmpty())
                QCOMPARE(fixedParts(form), fixedParts(source));
        }
    }
}

void tst_TranslationFiles::whatIsNotTranslatedStaysEnglish()
{
    const QString catalogue = m_folder.filePath(QStringLiteral("pct_de.qm"));
    TestFiles::outputOf(QStringLiteral(PCT_LRELEASE), {QStringLiteral("-silent"), writeIncompleteGerman(),
                                                       QStringLiteral("-qm"), catalogue});
    QTranslator translator;
    QVERIFY(translator.load(catalogue));
    QVERIFY(QCoreApplication::installTranslator(&translator));
    const auto shown = [](const char *context, const char *text) {
        return QCoreApplication::translate(context, text);
    };
    QCOMPARE(shown("CHandler_Plugins", "Plugins"), QStringLiteral("Plugins"));
    QCOMPARE(shown("CHandler_Plugins", "Allow you to configure settings regarding plugins."),
             QStringLiteral("Einstellungen zu Plug-ins festlegen."));
}

void tst_TranslationFiles::theStateTellsWhatStaysEnglish()
{
    QCOMPARE(runState({QStringLiteral(PCT_LUPDATE), writeIncompleteGerman()}), QProcess::NormalExit);
    QCOMPARE(m_exitCode, 0);
    QStringList lines = m_output.split(QLatin1Char('\n'));
    const QRegularExpression counts(
        QStringLiteral("^de: (\\d+) of (\\d+) texts are translated, these stay English:$"));
    const QRegularExpressionMatch match = counts.match(lines.takeFirst());
    QVERIFY2(match.hasMatch(), qUtf8Printable(m_output));
    QVERIFY(match.captured(1).toInt() > 100);
    QCOMPARE(match.captured(2).toInt() - match.captured(1).toInt(), lines.size() - 1);
    QVERIFY2(lines.contains(QStringLiteral("    Plugins")), qUtf8Printable(m_output));
    QVERIFY2(lines.contains(QStringLiteral("    Installation Options")), qUtf8Printable(m_output));
    QCOMPARE(TestFiles::read(m_folder.filePath(QStringLiteral("pct_de.ts"))), incompleteGerman());
}

void tst_TranslationFiles::anIncompleteTranslationIsNoErrorUnlessAskedFor()
{
    const QString file = writeIncompleteGerman();
    runState({QStringLiteral(PCT_LUPDATE), file});
    QCOMPARE(m_exitCode, 0);
    runState({QStringLiteral("--complete"), QStringLiteral(PCT_LUPDATE), file});
    QCOMPARE(m_exitCode, 1);
}

QTEST_GUILESS_MAIN(tst_TranslationFiles)
#include "tst_TranslationFiles.moc"
