// SPDX-License-Identifier: Apache-2.0
#include "tests/hosttools/ToolRun.h"
#include "tests/support/TestFiles.h"

#include <QDir>
#include <QTemporaryDir>
#include <QtEndian>
#include <QTest>

namespace {

/// The text's UTF-16 units in the byte order that `inOrder` gives.
QByteArray utf16(const QString &text, quint16 (*inOrder)(quint16))
{
    QByteArray bytes;
    for (const QChar character : text) {
        const quint16 unit = inOrder(character.unicode());
        bytes.append(reinterpret_cast<const char *>(&unit), sizeof unit);
    }
    return bytes;
}

QByteArray utf16Be(const QString &text)
{
    return utf16(text, [](quint16 unit) { return qToBigEndian(unit); });
}

QByteArray utf16Le(const QString &text)
{
    return utf16(text, [](quint16 unit) { return qToLittleEndian(unit); });
}

} // namespace

/// What `installer -pkginfo` tells of a package.
class tst_Installer : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void printsTheTitleAndThenTheComponents();
    void resolvesALocalizedTitle_data();
    void resolvesALocalizedTitle();
    void resolvesATitleFromTheDistributionItself();
    void printsATitleThatIsNoKeyAsItStands();
    void printsTheIdentifierOfAPlainComponentPackage();
    void knowsTheSampleInstallers_data();
    void knowsTheSampleInstallers();
    void neverReadsThePayload();
    void printsControlCharactersVisibly();
    void refusesWhatIsNoPackage_data();
    void refusesWhatIsNoPackage();
    void saysHowItIsUsed();

private:
    QString at(const char *name) const { return m_folder->path() + QLatin1Char('/') + QLatin1String(name); }
    ToolRun::Result info(const QString &package) const
    {
        return ToolRun::run(QStringLiteral("installer"),
                            {QStringLiteral("-pkginfo"), QStringLiteral("-pkg"), package});
    }
    /// Makes "in.pkg" of the folder "tree", with another archiver than ours.
    void pack() const
    {
        QStringList arguments = {QStringLiteral("-cf"), at("in.pkg"),         QStringLiteral("--format"),
                                 QStringLiteral("xar"), QStringLiteral("-C"), at("tree")};
        TestFiles::outputOf(QStringLiteral("bsdtar"), arguments + ToolRun::namesIn(at("tree")));
    }
    void writeDistribution(const QByteArray &contents) const
    {
        TestFiles::write(at("tree/Distribution"),
                         "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<installer-gui-script>" + contents +
                             "</installer-gui-script>");
    }

    QScopedPointer<QTemporaryDir> m_folder;
};

void tst_Installer::init()
{
    m_folder.reset(new QTemporaryDir);
    QVERIFY(QDir().mkdir(at("tree")));
}

void tst_Installer::printsTheTitleAndThenTheComponents()
{
    writeDistribution("<title>Two &amp; More</title><pkg-ref id='x'>#Two.pkg</pkg-ref>");
    TestFiles::write(at("tree/One.pkg/PackageInfo"), "<pkg-info identifier='one'/>");
    TestFiles::write(at("tree/Two.pkg/PackageInfo"), "<pkg-info identifier='two'/>");
    TestFiles::write(at("tree/Resources/PackageNote"), "no component");
    pack();
    const ToolRun::Result result = info(at("in.pkg"));
    QCOMPARE(result.exitCode, 0);
    QCOMPARE(result.output, QByteArray("Two & More\nOne.pkg\nTwo.pkg\n"));
    QCOMPARE(result.errors, QByteArray());
}

void tst_Installer::resolvesALocalizedTitle_data()
{
    const QString english = QStringLiteral("/* title */ \"KEY\" = \"The \\\"Title\\\"\";\n");
    QTest::addColumn<QString>("language");
    QTest::addColumn<QByteArray>("strings");
    QTest::newRow("UTF-8") << QStringLiteral("en") << english.toUtf8();
    QTest::newRow("UTF-8 with a mark") << QStringLiteral("en") << "\xEF\xBB\xBF" + english.toUtf8();
    QTest::newRow("UTF-16 big endian") << QStringLiteral("en") << "\xFE\xFF" + utf16Be(english);
    QTest::newRow("UTF-16 little endian") << QStringLiteral("en") << "\xFF\xFE" + utf16Le(english);
    QTest::newRow("UTF-16 big endian, no mark") << QStringLiteral("en") << utf16Be(english);
    QTest::newRow("UTF-16 little endian, no mark") << QStringLiteral("en") << utf16Le(english);
    QTest::newRow("the old name of the language") << QStringLiteral("English") << english.toUtf8();
    QTest::newRow("a regional form") << QStringLiteral("en_GB") << english.toUtf8();
}

void tst_Installer::resolvesALocalizedTitle()
{
    QFETCH(QString, language);
    QFETCH(QByteArray, strings);
    writeDistribution("<title>KEY</title>");
    TestFiles::write(at("tree/Resources/de.lproj/Localizable.strings"), "\"KEY\" = \"Der Titel\";");
    TestFiles::write(at("tree/Resources/") + language + QStringLiteral(".lproj/Localizable.strings"),
                     strings);
    pack();
    QCOMPARE(info(at("in.pkg")).output, QByteArray("The \"Title\"\n"));
}

void tst_Installer::resolvesATitleFromTheDistributionItself()
{
    writeDistribution(
        "<title>KEY</title><localization>"
        "<strings language=\"de\">\"KEY\" = \"Der Titel\";</strings>"
        "<strings language=\"en\">\"OTHER\" = \"x\"; KEY = \"The Title\";</strings></localization>");
    pack();
    QCOMPARE(info(at("in.pkg")).output, QByteArray("The Title\n"));
}

void tst_Installer::printsATitleThatIsNoKeyAsItStands()
{
    writeDistribution("<title> A Title </title>");
    TestFiles::write(at("tree/Resources/en.lproj/Localizable.strings"), "\"KEY\" = \"unused\";");
    pack();
    QCOMPARE(info(at("in.pkg")).output, QByteArray("A Title\n"));
}

void tst_Installer::printsTheIdentifierOfAPlainComponentPackage()
{
    TestFiles::write(at("tree/PackageInfo"), "<pkg-info identifier=\"com.example.plain\" version=\"1\"/>");
    pack();
    const ToolRun::Result result = info(at("in.pkg"));
    QCOMPARE(result.exitCode, 0);
    QCOMPARE(result.output, QByteArray("com.example.plain\n"));
}

void tst_Installer::knowsTheSampleInstallers_data()
{
    QTest::addColumn<QString>("product");
    QTest::newRow("editor") << QStringLiteral("Pelix PDF Editor");
    QTest::newRow("reader") << QStringLiteral("Pelix PDF Reader");
}

void tst_Installer::knowsTheSampleInstallers()
{
    QFETCH(QString, product);
    const ToolRun::Result result =
        info(QStringLiteral(PCT_SAMPLES_DIR "/") + product + QStringLiteral(".pkg"));
    QCOMPARE(result.exitCode, 0);
    const QString component = QString(product).replace(QLatin1Char(' '), QLatin1Char('_'));
    QCOMPARE(QString::fromUtf8(result.output),
             product + QLatin1Char('\n') + component + QStringLiteral(".pkg\n"));
}

void tst_Installer::neverReadsThePayload()
{
    ToolRun::makeVariant(QStringLiteral("wrong-extracted"), at("damaged.pkg"));
    QCOMPARE(info(at("damaged.pkg")).output, QByteArray("Sample Product\nSample.pkg\n"));
}

void tst_Installer::printsControlCharactersVisibly()
{
    writeDistribution("<title>Reader&#10;Pelix PDF Editor</title>");
    pack();
    QCOMPARE(info(at("in.pkg")).output, QByteArray("Reader\\u000aPelix PDF Editor\n"));
}

void tst_Installer::refusesWhatIsNoPackage_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("text") << QByteArray("Pelix PDF Editor\n").repeated(100);
    QTest::newRow("the magic number alone") << QByteArray("xar!");
    QTest::newRow("an archive without a package") << QByteArray("other archive");
    QTest::newRow("a malformed Distribution") << QByteArray("malformed");
}

void tst_Installer::refusesWhatIsNoPackage()
{
    QFETCH(QByteArray, bytes);
    TestFiles::write(at("in.pkg"), bytes);
    if (bytes == "other archive" || bytes == "malformed") {
        TestFiles::write(at("tree/") + QLatin1String(bytes == "malformed" ? "Distribution" : "file"), "<a>");
        pack();
    }
    const ToolRun::Result result = info(at("in.pkg"));
    QCOMPARE(result.exitCode, 1);
    QCOMPARE(result.output, QByteArray());
    QVERIFY2(ToolRun::hasOneMessage(result, QStringLiteral("installer")), result.errors.constData());
}

void tst_Installer::saysHowItIsUsed()
{
    QCOMPARE(ToolRun::run(QStringLiteral("installer"), {}).exitCode, 2);
    QCOMPARE(ToolRun::run(QStringLiteral("installer"), {QStringLiteral("-pkg"), at("x"), at("y")}).exitCode,
             2);
}

QTEST_GUILESS_MAIN(tst_Installer)
#include "tst_Installer.moc"
