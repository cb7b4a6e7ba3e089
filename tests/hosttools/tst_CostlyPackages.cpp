// SPDX-License-Identifier: Apache-2.0
#include "tests/hosttools/ToolRun.h"
#include "tests/support/TestFiles.h"

#include <QTemporaryDir>
#include <QTest>

#include <sys/resource.h>

/// Small packages that were made to be much work are read or refused with little.
class tst_CostlyPackages : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void takesLittleTimeForThem_data();
    void takesLittleTimeForThem();

private:
    QTemporaryDir m_folder;
};

void tst_CostlyPackages::initTestCase()
{
    // Inherited by what is started from here. Readers whose work grows with the square need many minutes;
    // this is enough for a sanitizer.
    const rlimit seconds = {60, 60};
    QCOMPARE(setrlimit(RLIMIT_CPU, &seconds), 0);
}

void tst_CostlyPackages::takesLittleTimeForThem_data()
{
    QTest::addColumn<QString>("variant");
    QTest::addColumn<QString>("tool");
    QTest::addColumn<int>("exitCode");
    QTest::addColumn<QByteArray>("errors");
    const auto row = [](const char *variant, const char *tool, int exitCode, const QByteArray &errors = {}) {
        QTest::addRow("%s: %s", tool, variant)
            << QString::fromLatin1(variant) << QString::fromLatin1(tool) << exitCode << errors;
    };
    for (const auto *tool : {"installer", "pkgutil"}) {
        row("toc-attributes", tool, 1, "its table of contents has a tag or a comment that is too long");
        row("toc-less-than", tool, 0);
        row("toc-quotes", tool, 1, "its table of contents has a tag or a comment that is too long");
        row("toc-elements", tool, 1, "its table of contents has too many elements");
        row("toc-attribute-list", tool, 1, "its table of contents has a document type definition");
    }
    row("distribution-attributes", "installer", 1, "Distribution: has a tag or a comment that is too long");
    row("distribution-less-than", "installer", 0);
    row("distribution-quotes", "installer", 1, "Distribution: has a tag or a comment that is too long");
    row("distribution-elements", "installer", 1, "Distribution: has too many elements");
    row("distribution-attribute-list", "installer", 1, "Distribution: has a document type definition");
    row("languages-that-share-texts", "installer", 1, "Distribution: its texts are too large together");
    row("many-languages", "installer", 0);
    row("many-language-folders", "installer", 0);
    row("many-components", "installer", 0);
    row("scripts-empty-members", "pkgutil", 1,
        "Sample.pkg/Scripts: is not a cpio archive of the portable form");
}

void tst_CostlyPackages::takesLittleTimeForThem()
{
    QFETCH(QString, variant);
    QFETCH(QString, tool);
    QFETCH(int, exitCode);
    QFETCH(QByteArray, errors);
    const QString package = m_folder.filePath(variant);
    const QString folder = m_folder.filePath(QStringLiteral("out"));
    if (!QFile::exists(package))
        ToolRun::makeVariant(variant, package);
    const ToolRun::Result result =
        tool == QLatin1String("pkgutil")
            ? ToolRun::run(tool, {QStringLiteral("--expand"), package, folder})
            : ToolRun::run(tool, {QStringLiteral("-pkginfo"), QStringLiteral("-pkg"), package});
    QDir(folder).removeRecursively();
    QVERIFY2(result.errors.contains(errors), result.errors.constData());
    QCOMPARE(result.exitCode, exitCode);
}

QTEST_GUILESS_MAIN(tst_CostlyPackages)
#include "tst_CostlyPackages.moc"
