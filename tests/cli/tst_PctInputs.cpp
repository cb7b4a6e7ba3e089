// SPDX-License-Identifier: Apache-2.0
#include "tests/cli/BuildCommand.h"
#include "tests/cli/ProfileRunner.h"
#include "tests/support/TestFiles.h"

#include <QDir>
#include <QJsonArray>
#include <QtTest>

#include <sys/stat.h>
#include <unistd.h>

namespace {

QString text(const char *literal)
{
    return QString::fromUtf8(literal);
}

/// The command lines that read a file, with FILE in its place; all other files are good ones.
const QVector<QPair<const char *, const char *>> places = {
    {"check", "check --product editor FILE"},
    {"build --input", "build --product editor --input FILE --output out"},
    {"build --config", "build --product editor --input good.pkg --output out --config FILE"},
    {"profile --config", "profile --product editor --output out --config FILE"},
    {"profile --from", "profile --product editor --output out --from FILE"},
    {"show", "show FILE"},
    {"diff, first", "diff FILE good.xml"},
    {"diff, second", "diff good.xml FILE"},
};

QStringList lineWith(const QString &file, const QString &line)
{
    QStringList words = line.split(QLatin1Char(' '));
    return words.replaceInStrings(text("FILE"), file);
}

/// Runs pct without the right of root to read everything.
PctResult runAsUser(const PctRunner &runner, const QStringList &arguments)
{
    if (geteuid() != 0)
        return runner.run(arguments);
    QProcess process;
    process.setProcessEnvironment(runner.environment());
    process.setWorkingDirectory(runner.file(QString()));
    process.start(text("setpriv"),
                  QStringList{text("--bounding-set=-dac_override,-dac_read_search"), text(PCT_EXECUTABLE)} +
                      arguments);
    return PctRunner::waitFor(process);
}

void makeGoodFiles(const PctRunner &runner)
{
    runner.samplePackage(true, text("good.pkg"));
    runner.document("PelixPDFEditor", "", text("good.xml"));
}

void makeBadFiles(const PctRunner &runner)
{
    const QDir files(runner.file(QString()));
    QVERIFY(files.mkdir(text("folder")) && files.mkdir(text("closed")));
    QVERIFY(QFile::link(text("nowhere"), files.filePath(text("dangling"))));
    QVERIFY(QFile::link(text("circle"), files.filePath(text("circle"))));
    QCOMPARE(mkfifo(QFile::encodeName(files.filePath(text("pipe"))).constData(), 0600), 0);
    TestFiles::write(files.filePath(text("secret")), "xar!");
    QVERIFY(QFile::setPermissions(files.filePath(text("secret")), {}));
    TestFiles::write(files.filePath(text("closed/file")), "xar!");
    QVERIFY(QFile::setPermissions(files.filePath(text("closed")), {}));
}

} // namespace

/// What every verb says of a file that it cannot read or that is for another option.
class tst_PctInputs : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void saysWhatIsInTheWayOfReadingAFile_data();
    void saysWhatIsInTheWayOfReadingAFile();
    void namesTheOptionThatTakesAFileOfThisKind_data();
    void namesTheOptionThatTakesAFileOfThisKind();
    void anInstallerOfAnotherProgramIsOfNeitherProduct();
    void whatNothingReadsInADocumentIsWarnedAbout_data();
    void whatNothingReadsInADocumentIsWarnedAbout();
    void ofManySettingsThatNothingReadsOnlyTheFirstAreNamed();
    void aRibbonThatAProfileCannotCarryIsWarnedAbout();
    void aFolderThatCannotBeEnteredIsNoPlaceForAnOutput_data();
    void aFolderThatCannotBeEnteredIsNoPlaceForAnOutput();

private:
    ProfileRunner m_runner; ///< with a good file of each kind
};

void tst_PctInputs::initTestCase()
{
    makeGoodFiles(m_runner);
    m_runner.samplePackage(true, text("other.pkg"));
    m_runner.addIdentity(text("Somebody"));
    QCOMPARE(m_runner.makeProfile(true).exitCode, 0);
    QVERIFY(QFile::rename(m_runner.output(), m_runner.file(text("good.mobileconfig"))));
    QCOMPARE(m_runner.makeProfile(true, {text("--sign"), text("Somebody")}).exitCode, 0);
    QVERIFY(QFile::rename(m_runner.output(), m_runner.file(text("signed.mobileconfig"))));
}

void tst_PctInputs::saysWhatIsInTheWayOfReadingAFile_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("file");
    QTest::addColumn<QByteArray>("message");
    const QVector<QPair<const char *, const char *>> files = {
        {"missing", "does not exist; give "},
        {"good.pkg/below", "does not exist; give "},
        {"dangling", "is a link to what does not exist; give "},
        {"folder", "is a folder; give "},
        {"pipe", "is not a regular file; give "},
        {"secret", "cannot be read (Permission denied); check its permissions and those of its folders\n"},
        {"closed/file",
         "cannot be read (Permission denied); check its permissions and those of its folders\n"},
        {"circle", "cannot be read (Too many levels of symbolic links); give "},
    };
    for (const auto &place : places) {
        for (const auto &file : files)
            QTest::addRow("%s: %s", place.first, file.first)
                << text(place.second) << text(file.first) << QByteArray(file.second);
    }
}

void tst_PctInputs::saysWhatIsInTheWayOfReadingAFile()
{
    QFETCH(QString, line);
    QFETCH(QString, file);
    QFETCH(QByteArray, message);
    const PctRunner runner;
    makeGoodFiles(runner);
    makeBadFiles(runner);
    const QStringList before = runner.files();
    const PctResult result = runAsUser(runner, lineWith(file, line));
    QCOMPARE(result.exitCode, line.startsWith(text("diff")) ? 2 : 1);
    QCOMPARE(result.out, QByteArray());
    const QByteArray start = "pct: " + runner.file(file).toUtf8() + ": " + message;
    QVERIFY2(result.err.startsWith(start), result.err.constData());
    QCOMPARE(result.messages().size(), 1);
    QCOMPARE(runner.files(), before);
    QVERIFY(QFile::setPermissions(runner.file(text("closed")), QFile::ReadOwner | QFile::ExeOwner));
}

void tst_PctInputs::namesTheOptionThatTakesAFileOfThisKind_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("file");
    QTest::addColumn<QByteArray>("message");
    const QByteArray document =
        "is a configuration document, which \"pct build\" and \"pct profile\" take as --config; give ";
    const QByteArray profile = "is a configuration profile, which \"pct profile\" takes as --from; give ";
    const QByteArray package = "is an installer package, which \"pct build\" takes as --input; give ";
    const QByteArray wantsPackage = "the vendor's installer package\n";
    const QByteArray wantsDocument = "a configuration document\n";
    const QByteArray wantsProfile = "a configuration profile\n";
    const auto row = [](int place, const char *file, const QByteArray &message) {
        QTest::addRow("%s %s", places.at(place).first, file)
            << text(places.at(place).second) << text(file) << message;
    };
    for (const int place : {0, 1}) {
        row(place, "good.xml", document + wantsPackage);
        row(place, "good.mobileconfig", profile + wantsPackage);
        row(place, "signed.mobileconfig", profile + wantsPackage);
    }
    for (const int place : {2, 3}) {
        row(place, "good.mobileconfig", profile + wantsDocument);
        row(place, "signed.mobileconfig", profile + wantsDocument);
        row(place, "other.pkg", package + wantsDocument);
    }
    row(4, "good.xml", document + wantsProfile);
    row(4, "good.pkg", package + wantsProfile);
}

void tst_PctInputs::namesTheOptionThatTakesAFileOfThisKind()
{
    QFETCH(QString, line);
    QFETCH(QString, file);
    QFETCH(QByteArray, message);
    const PctResult result = m_runner.run(lineWith(file, line));
    QVERIFY2(result.isOneLineRefusal(), result.err.constData());
    QCOMPARE(result.err, "pct: " + m_runner.file(file).toUtf8() + ": " + message);
}

void tst_PctInputs::anInstallerOfAnotherProgramIsOfNeitherProduct()
{
    const PctRunner runner;
    const QString package = runner.file(text("other.pkg"));
    TestFiles::outputOf(text("/usr/bin/python3"), {text(PCT_MAKE_XAR_VARIANT), text("plain"), package});
    const PctResult shown = runner.run({text("show"), package});
    QVERIFY2(shown.isOneLineRefusal(), shown.err.constData());
    QCOMPARE(shown.err,
             "pct: " + package.toUtf8() +
                 ": is the installer of neither the Pelix PDF Editor nor the Pelix PDF Reader; give a "
                 "package that this tool has made\n");
}

void tst_PctInputs::whatNothingReadsInADocumentIsWarnedAbout_data()
{
    QTest::addColumn<QString>("line");
    QTest::newRow("build") << text(
        "build --product editor --input good.pkg --output out --config FILE --json");
    QTest::newRow("profile") << text("profile --product editor --output out --config FILE --json");
    QTest::newRow("show") << text("show --json FILE");
    QTest::newRow("diff") << text("diff --json FILE good.xml");
}

void tst_PctInputs::whatNothingReadsInADocumentIsWarnedAbout()
{
    QFETCH(QString, line);
    const PctRunner runner;
    makeGoodFiles(runner);
    const QString document =
        runner.document("PelixPDFEditor", "<Preferences><Preference Text='Startpage' Mode='0'/>"
                                          "<Preference Text='StartPage' mode='0'/></Preferences>");
    const PctResult result = runner.run(lineWith(document, line));
    QVERIFY2(result.exitCode == (line.startsWith(text("diff")) ? 1 : 0), result.err.constData());
    const QStringList texts{text("nothing reads the Preference \"Startpage\"; correct its name or remove it"),
                            text("nothing reads the attribute \"mode\" of Preference \"StartPage\"; correct "
                                 "its name or remove it")};
    QJsonArray expected;
    QStringList messages;
    for (const QString &warning : texts) {
        expected.append(QJsonObject{
            {text("code"), text("setting-not-read")}, {text("file"), document}, {text("text"), warning}});
        messages.append(text("pct: ") + document + text(": warning: ") + warning);
    }
    QCOMPARE(result.json().value(text("warnings")).toArray(), expected);
    QCOMPARE(result.messages(), messages);
}

void tst_PctInputs::ofManySettingsThatNothingReadsOnlyTheFirstAreNamed()
{
    const PctRunner runner;
    const QString document = runner.document("PelixPDFEditor", QByteArray("<Unknown/>").repeated(50000));
    const PctResult result = runner.run({text("show"), document});
    QCOMPARE(result.exitCode, 0);
    QCOMPARE(result.messages().size(), 11);
    QVERIFY2(result.messages().last().endsWith(text("there is more in it that nothing reads")),
             result.err.constData());
}

void tst_PctInputs::aRibbonThatAProfileCannotCarryIsWarnedAbout()
{
    const ProfileRunner runner;
    const auto warned = [&runner](const QByteArray &bar) {
        const QString document =
            runner.document("PelixPDFEditor", "<RibbonSetTabElements><QuickAccessBar>" + bar +
                                                  "</QuickAccessBar></RibbonSetTabElements>");
        return runner.makeProfile(true, {text("--config"), document, text("--force"), text("--json")})
            .json()
            .value(text("warnings"))
            .toArray();
    };
    const QByteArray control = "<control action='a' group='Other' page='Other'/>";
    QCOMPARE(warned(control + control), QJsonArray());
    const QVector<QByteArray> lost = {control + "text", "<control action='a'><action/></control>",
                                      "<control><![CDATA[ ]]></control>"};
    for (const QByteArray &bar : lost) {
        const QJsonArray warnings = warned(bar);
        QCOMPARE(warnings.size(), 1);
        QCOMPARE(warnings.first().toObject().value(text("code")).toString(), text("ribbon-not-carried"));
        QVERIFY(warnings.first()
                    .toObject()
                    .value(text("text"))
                    .toString()
                    .startsWith(text("its quick-access bar holds a text")));
    }
}

void tst_PctInputs::aFolderThatCannotBeEnteredIsNoPlaceForAnOutput_data()
{
    QTest::addColumn<QString>("line");
    QTest::newRow("build") << text("build --product editor --input good.pkg --output FILE");
    QTest::newRow("build, kept document")
        << text("build --product editor --input good.pkg --output out --keep-config FILE");
    QTest::newRow("profile") << text("profile --product editor --output FILE");
}

void tst_PctInputs::aFolderThatCannotBeEnteredIsNoPlaceForAnOutput()
{
    QFETCH(QString, line);
    const PctRunner runner;
    makeGoodFiles(runner);
    makeBadFiles(runner);
    for (const auto *file : {"closed/new", "closed/deeper/new"}) {
        const PctResult result = runAsUser(runner, lineWith(text(file), line));
        QVERIFY2(result.isOneLineRefusal(), result.err.constData());
        QVERIFY2(result.err.contains("/new: its folder cannot be written; "), result.err.constData());
    }
    QVERIFY(QFile::setPermissions(runner.file(text("closed")), QFile::ReadOwner | QFile::ExeOwner));
}

QTEST_GUILESS_MAIN(tst_PctInputs)
#include "tst_PctInputs.moc"
