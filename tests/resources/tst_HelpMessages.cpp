// SPDX-License-Identifier: Apache-2.0
#include "package/PackageInspection.h"
#include "package/ScriptLines.h"
#include "package/ScriptPatch.h"
#include "tests/resources/GuidePages.h"
#include "tests/support/TestFiles.h"

#include <QtTest>

namespace {

/// The messages that the guide quotes, by who says them.
QStringList quoted(const QString &speaker)
{
    QStringList messages;
    for (const GuidePage &page : GuidePages::all()) {
        for (const QDomElement &message : GuidePages::elements(page, QStringLiteral("samp"))) {
            if (message.attribute(QStringLiteral("class")) == speaker)
                messages.append(message.text().simplified());
        }
    }
    messages.removeDuplicates();
    return messages;
}

/// Every text of the window; a test of its own keeps the translation in step with the sources.
QString textsOfTheWindow()
{
    QDomDocument document;
    document.setContent(TestFiles::read(QStringLiteral(PCT_TRANSLATION)));
    QStringList texts;
    const QDomNodeList sources = document.elementsByTagName(QStringLiteral("source"));
    for (int i = 0; i < sources.count(); ++i)
        texts.append(sources.at(i).toElement().text());
    return texts.join(QLatin1Char('\n'));
}

} // namespace

/// The guide explains messages word by word, so that they can be searched for.
class tst_HelpMessages : public QObject
{
    Q_OBJECT

private slots:
    void theWindowSaysWhatTheGuideQuotes();
    void theInstallScriptsSayWhatTheGuideQuotes();
    void everyWarningOfAPackageIsExplained();
};

void tst_HelpMessages::theWindowSaysWhatTheGuideQuotes()
{
    const QString texts = textsOfTheWindow();
    const QStringList messages = quoted(QStringLiteral("window"));
    QVERIFY(messages.size() >= 8);
    for (const QString &message : messages)
        QVERIFY2(texts.contains(message), qUtf8Printable(message));
}

void tst_HelpMessages::theInstallScriptsSayWhatTheGuideQuotes()
{
    QStringList lines =
        scriptLines(QString::fromUtf8(TestFiles::read(QStringLiteral(PCT_VENDOR_PREINSTALL))));
    QVERIFY(patchPreinstallLines(lines));
    const QString script = lines.join(QLatin1Char('\n'));
    const QStringList messages = quoted(QStringLiteral("script"));
    QCOMPARE(messages.size(), 2);
    for (const QString &message : messages)
        QVERIFY2(script.contains(message), qUtf8Printable(message));
}

void tst_HelpMessages::everyWarningOfAPackageIsExplained()
{
    PackageInspection package;
    package.signedByVendor = true;
    package.scripts.preinstallProblem = QStringLiteral("a problem");
    package.scripts.postinstallProblem = QStringLiteral("a problem");
    const QList<BuildWarning> warnings = warningsAbout(package, true, true);
    QCOMPARE(warnings.size(), 6);
    const QString text = GuidePages::text(*GuidePages::find(QStringLiteral("Troubleshooting.html")));
    for (const BuildWarning &warning : warnings)
        QVERIFY2(text.contains(warning.code), qUtf8Printable(warning.code));
}

QTEST_APPLESS_MAIN(tst_HelpMessages)
#include "tst_HelpMessages.moc"
