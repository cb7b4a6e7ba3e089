// SPDX-License-Identifier: Apache-2.0
#include "core/PathRules.h"
#include "tests/support/TestFiles.h"

#include <QtTest>

#include <memory>
#include <sys/stat.h>
#include <unistd.h>

namespace {

QString text(const char *literal)
{
    return QString::fromUtf8(literal);
}

} // namespace

class tst_PathRules : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        TestFiles::write(at("file"), "x");
        TestFiles::write(at("other"), "x");
        QVERIFY(QDir().mkpath(at("folder/below")));
        QVERIFY(QFile::link(at("file"), at("link")));
        QVERIFY(QFile::link(at("folder"), at("way")));
        QVERIFY(QFile::link(at("nowhere"), at("dangling")));
        QCOMPARE(::link(QFile::encodeName(at("file")).constData(), QFile::encodeName(at("hard")).constData()),
                 0);
        QCOMPARE(::mkfifo(QFile::encodeName(at("pipe")).constData(), 0600), 0);
    }

    void placesAreTheSame_data()
    {
        QTest::addColumn<QString>("first");
        QTest::addColumn<QString>("second");
        QTest::addColumn<bool>("same");
        const auto row = [](const char *first, const char *second, bool same) {
            QTest::addRow("%s, %s", first, second) << text(first) << text(second) << same;
        };
        row("file", "file", true);
        row("file", "folder/../file", true);
        row("file", "link", true);
        row("file", "hard", true);
        row("file", "other", false);
        row("file", "new", false);
        row("new", "new", true);
        row("new", "newer", false);
        row("new", "folder/new", false);
        row("folder/new", "way/new", true);
        row("new.pkg", "NEW.Pkg", true);
        row("folder/new", "way/New", true);
        // One letter, or a letter and its accent.
        row("G\u00fcte", "Gu\u0308te", true);
        row("no/such/folder", "no/such/folder", true);
        row("no/such/folder", "no/./such/folder", true);
        row("no/such/folder", "no/other/folder", false);
    }

    void placesAreTheSame()
    {
        QFETCH(QString, first);
        QFETCH(QString, second);
        QFETCH(bool, same);
        QCOMPARE(PathRules::samePlace(at(first), at(second)), same);
        QCOMPARE(PathRules::samePlace(at(second), at(first)), same);
    }

    void filesThatDifferOnlyInCaseAndExistAreTwo()
    {
        TestFiles::write(at("case"), "1");
        TestFiles::write(at("CASE"), "2");
        const bool areTwo = TestFiles::read(at("case")) == "1";
        QCOMPARE(PathRules::samePlace(at("case"), at("CASE")), !areTwo);
    }

    void aPathLiesInAFolderByWhateverWay_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<bool>("inside");
        const auto row = [](const char *path, bool inside) { QTest::newRow(path) << text(path) << inside; };
        row("folder/new", true);
        row("folder/below/new", true);
        row("folder/no/such/new", true);
        row("way/new", true);
        row("way/below/../new", true);
        row("folder", false);
        row("file", false);
        row("folder2/new", false);
        row("folder/../new", false);
        row("inward", true);
        row("folder/outward", true);
    }

    void aPathLiesInAFolderByWhateverWay()
    {
        QFETCH(QString, path);
        QFETCH(bool, inside);
        TestFiles::write(at("folder/kept"), "x");
        QVERIFY(QFile::link(at("folder/kept"), at("inward")));
        QVERIFY(QFile::link(at("file"), at("folder/outward")));
        QCOMPARE(PathRules::liesIn(at("folder"), at(path)), inside);
    }

    void noPathLiesNowhere() { QVERIFY(!PathRules::liesIn(at("folder"), QString())); }

    void filesThatAreOneAreNamedWithTheirRoles()
    {
        const NamedPath input{text("input"), at("file")};
        const NamedPath none{text("configuration"), QString()};
        QVERIFY(PathRules::allDiffer({input, none, none, {text("output"), at("new")}}));
        const Result<> refused = PathRules::allDiffer({input, none, {text("output"), at("hard")}});
        QVERIFY(!refused);
        QCOMPARE(refused.problem().line(),
                 at("hard") + text(": is both the input and the output; give two files"));
    }

    void onlyADoubleQuoteEndsQuotes_data()
    {
        QTest::addColumn<bool>("fits");
        QTest::newRow("/a b/c.pkg") << true;
        QTest::newRow("/a'b$(c)`d`\\e;f.pkg") << true;
        QTest::newRow("/%1.pkg") << true;
        QTest::newRow("/a\"b.pkg") << false;
        QTest::newRow("/a\"\"\"b.pkg") << false;
    }

    void onlyADoubleQuoteEndsQuotes()
    {
        QFETCH(bool, fits);
        const Result<> result = PathRules::quotable(text(QTest::currentDataTag()));
        QCOMPARE(bool(result), fits);
        QVERIFY(fits || result.problem().text.startsWith(text("holds a double quote")));
    }

    void onlyAFileIsWritable_data()
    {
        QTest::addColumn<QString>("problem");
        const auto row = [](const char *path, const char *problem) { QTest::newRow(path) << text(problem); };
        row("new", "");
        row("file", "");
        row("link", "is a link");
        row("dangling", "is a link");
        row("folder", "is a folder");
        row("folder/", "is a folder");
        row("folder/..", "is a folder");
        row("pipe", "is not a regular file");
        row("missing/new", "its folder does not exist");
        row("file/new", "its folder does not exist");
    }

    void onlyAFileIsWritable()
    {
        QFETCH(QString, problem);
        const QString path = at(text(QTest::currentDataTag()));
        const Result<> result = PathRules::writable(path);
        QCOMPARE(bool(result), problem.isEmpty());
        if (problem.isEmpty())
            return;
        QCOMPARE(result.problem().file, path);
        QVERIFY2(result.problem().text.startsWith(problem), qPrintable(result.problem().text));
    }

    void aFolderThatCannotBeWrittenIsNamed()
    {
        if (::geteuid() == 0)
            QSKIP("root may write everywhere");
        QVERIFY(QFile::setPermissions(at("folder"), QFile::ReadOwner | QFile::ExeOwner));
        const Result<> result = PathRules::writable(at("folder/new"));
        QVERIFY(QFile::setPermissions(at("folder"), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
        QVERIFY(!result);
        QVERIFY(result.problem().text.contains(text("cannot be written")));
    }

private:
    QString at(const QString &name) const { return m_folder->path() + QLatin1Char('/') + name; }
    QString at(const char *name) const { return at(text(name)); }

    std::unique_ptr<QTemporaryDir> m_folder;
};

QTEST_GUILESS_MAIN(tst_PathRules)
#include "tst_PathRules.moc"
