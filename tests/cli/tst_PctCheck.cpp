// SPDX-License-Identifier: Apache-2.0
#include "tests/cli/BuildCommand.h"
#include "tests/cli/PctRunner.h"
#include "tests/support/TestFiles.h"

#include <QJsonArray>
#include <QtTest>

namespace {

QString text(const char *literal)
{
    return QString::fromUtf8(literal);
}

PctResult check(const PctRunner &runner, const char *product, const QString &package,
                const QStringList &more = {})
{
    return runner.run(QStringList{text("check"), text("--product"), text(product)} + more +
                      QStringList{package});
}

QJsonObject checkJson(const PctRunner &runner, const char *product, const QString &package)
{
    return check(runner, product, package, {text("--json"), text("-q")}).json();
}

QStringList warningCodes(const QJsonObject &json)
{
    QStringList codes;
    for (const QJsonValue &warning : json.value(text("warnings")).toArray())
        codes.append(warning.toObject().value(text("code")).toString());
    return codes;
}

} // namespace

class tst_PctCheck : public QObject
{
    Q_OBJECT

private slots:
    void acceptsTheInstallersOfBothProducts_data();
    void acceptsTheInstallersOfBothProducts();
    void acceptsARelativePath();
    void refusesTheOtherProductsInstaller();
    void refusesWhatIsNoPackage_data();
    void refusesWhatIsNoPackage();
    void refusesATruncatedPackage();
    void refusesAPackageThatWasCustomizedBefore();
    void refusesAPackageWithoutPostinstall();
    void warnsOfAMissingSwitch_data();
    void warnsOfAMissingSwitch();
    void warnsOfAScriptThatCannotBePatched();
    void aScriptThatWasPatchedBeforeIsCalledSo();
    void quietHoldsBackWarningsButNotErrors();
    void readsScriptsOnlyAndLeavesNothingBehind();
};

void tst_PctCheck::acceptsTheInstallersOfBothProducts_data()
{
    QTest::addColumn<bool>("editor");
    QTest::addColumn<QByteArray>("product");
    QTest::addColumn<QString>("version");
    QTest::newRow("editor") << true << QByteArray("editor") << text("13.1.2");
    QTest::newRow("reader") << false << QByteArray("reader") << text("13.1");
}

void tst_PctCheck::acceptsTheInstallersOfBothProducts()
{
    QFETCH(bool, editor);
    QFETCH(QByteArray, product);
    QFETCH(QString, version);
    const PctRunner runner;
    const QString package = runner.samplePackage(editor);
    const PctResult readable = check(runner, product.constData(), package);
    QVERIFY2(readable.exitCode == 0, readable.err.constData());
    QCOMPARE(readable.err, QByteArray());
    QVERIFY(readable.out.contains(version.toUtf8()));

    const QJsonObject json = checkJson(runner, product.constData(), package);
    QCOMPARE(json.value(text("file")).toString(), package);
    QCOMPARE(json.value(text("product")).toString(), QString::fromUtf8(product));
    QCOMPARE(json.value(text("accepted")), QJsonValue(true));
    QVERIFY(json.value(text("problem")).isNull());
    QCOMPARE(json.value(text("warnings")), QJsonValue(QJsonArray()));
    const QJsonObject patchable{{text("patchable"), true}, {text("problem"), QJsonValue()}};
    const QJsonObject switches{
        {text("editorXmlFileCopy"), 1}, {text("setdefaultpdf"), 1}, {text("plistValue"), 1}};
    const QJsonObject expected{{text("version"), version},        {text("signed"), false},
                               {text("customizedBefore"), false}, {text("preinstall"), patchable},
                               {text("postinstall"), patchable},  {text("switches"), switches}};
    QCOMPARE(json.value(text("package")).toObject(), expected);
}

void tst_PctCheck::acceptsARelativePath()
{
    const PctRunner runner;
    runner.samplePackage(true, text("-a.pkg"));
    QCOMPARE(check(runner, "editor", text("./-a.pkg")).exitCode, 0);
    QCOMPARE(check(runner, "editor", text("-a.pkg"), {text("--")}).exitCode, 0);
}

void tst_PctCheck::refusesTheOtherProductsInstaller()
{
    const PctRunner runner;
    const QString package = runner.samplePackage(false);
    const PctResult result = check(runner, "editor", package);
    QVERIFY2(result.isOneLineRefusal(), result.err.constData());
    QVERIFY2(result.err.contains("is the installer of the Pelix PDF Reader"), result.err.constData());
    QVERIFY2(result.err.contains("use --product reader"), result.err.constData());
    const QJsonObject json = checkJson(runner, "editor", package);
    QCOMPARE(json.value(text("accepted")), QJsonValue(false));
    QVERIFY(json.value(text("package")).isNull());
    QCOMPARE(json.value(text("problem")).toObject().value(text("file")).toString(), package);
}

void tst_PctCheck::refusesWhatIsNoPackage_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("text") << QByteArray("Pelix PDF Editor\n");
    QTest::newRow("only the first bytes") << QByteArray("xar!");
    QTest::newRow("a broken header") << QByteArray("xar!\x00\x1c\x00\x01", 8).append(QByteArray(100, '\xff'));
}

void tst_PctCheck::refusesWhatIsNoPackage()
{
    QFETCH(QByteArray, content);
    const PctRunner runner;
    const QString path = runner.file(text("a.pkg"));
    TestFiles::write(path, content);
    const PctResult result = check(runner, "editor", path);
    QVERIFY2(result.isOneLineRefusal(), result.err.constData());
    QVERIFY2(result.err.startsWith(QByteArray("pct: " + path.toUtf8() + ": ")), result.err.constData());
    QVERIFY(check(runner, "editor", runner.file(QString())).isOneLineRefusal());
    QVERIFY(check(runner, "editor", runner.file(text("missing.pkg"))).isOneLineRefusal());
}

void tst_PctCheck::refusesATruncatedPackage()
{
    const PctRunner runner;
    const QByteArray whole = TestFiles::read(runner.samplePackage(true));
    const QString path = runner.file(text("truncated.pkg"));
    for (const int size : {27, 28, 200, 1000, 3000}) {
        TestFiles::write(path, whole.left(size));
        const PctResult result = check(runner, "editor", path);
        QVERIFY2(result.isOneLineRefusal(), result.err.constData());
    }
    QCOMPARE(runner.temporaryLeftovers(), QStringList());
}

void tst_PctCheck::refusesAPackageThatWasCustomizedBefore()
{
    const PctRunner runner;
    const BuildCommand build{true, runner.samplePackage(true), runner.file(text("out.pkg")), {}};
    QCOMPARE(runner.run(build.arguments()).exitCode, 0);
    const PctResult result = check(runner, "editor", build.output);
    QCOMPARE(result.exitCode, 1);
    QCOMPARE(result.messages().size(), 1);
    QVERIFY2(result.err.contains("was customized before"), result.err.constData());
    const QJsonObject json = checkJson(runner, "editor", build.output);
    QCOMPARE(json.value(text("accepted")), QJsonValue(false));
    QCOMPARE(json.value(text("package")).toObject().value(text("customizedBefore")), QJsonValue(true));
}

void tst_PctCheck::refusesAPackageWithoutPostinstall()
{
    const PctRunner runner;
    runner.replaceTool(text("ditto"), "\"$real\" \"$@\" && rm \"$3/postinstall\"");
    const PctResult result = check(runner, "editor", runner.samplePackage(true));
    QCOMPARE(result.exitCode, 1);
    QVERIFY2(result.err.contains("has no postinstall script"), result.err.constData());
}

void tst_PctCheck::warnsOfAMissingSwitch_data()
{
    QTest::addColumn<bool>("editor");
    QTest::addColumn<QString>("removal");
    QTest::addColumn<QStringList>("codes");
    const QStringList none;
    QTest::newRow("document") << true << text("/editorXmlFileCopy=0/d")
                              << QStringList{text("document-switch-missing")};
    QTest::newRow("viewer") << true << text("/setdefaultpdf=0/d")
                            << QStringList{text("viewer-switch-missing")};
    QTest::newRow("preferences") << true << text("/plistValue=/d")
                                 << QStringList{text("preference-list-missing")};
    QTest::newRow("preferences, which a Reader is never given") << false << text("/plistValue=/d") << none;
}

void tst_PctCheck::warnsOfAMissingSwitch()
{
    QFETCH(bool, editor);
    QFETCH(QString, removal);
    QFETCH(QStringList, codes);
    const char *product = editor ? "editor" : "reader";
    const PctRunner runner;
    const QString package = runner.alteredPackage(editor, text("postinstall"), removal);
    const PctResult result = check(runner, product, package);
    QVERIFY2(result.exitCode == 0, result.err.constData());
    QCOMPARE(result.messages().size(), codes.size());
    QVERIFY(codes.isEmpty() || result.err.contains(": warning: "));
    QCOMPARE(warningCodes(checkJson(runner, product, package)), codes);
}

void tst_PctCheck::warnsOfAScriptThatCannotBePatched()
{
    const PctRunner runner;
    const QString package = runner.alteredPackage(true, text("preinstall"), text("s/^mydir=/folder=/"));
    const PctResult result = check(runner, "editor", package);
    QVERIFY2(result.exitCode == 0, result.err.constData());
    QVERIFY2(result.err.contains("anchor is not unique: [mydir=`pwd`], count=0"), result.err.constData());
    const QJsonObject json = checkJson(runner, "editor", package);
    QCOMPARE(warningCodes(json), QStringList{text("preinstall-unpatched")});
    const QJsonObject preinstall =
        json.value(text("package")).toObject().value(text("preinstall")).toObject();
    QCOMPARE(preinstall.value(text("patchable")), QJsonValue(false));
}

void tst_PctCheck::aScriptThatWasPatchedBeforeIsCalledSo()
{
    const PctRunner runner;
    const BuildCommand first{true, runner.samplePackage(true), runner.file(text("out.pkg")), {}};
    QCOMPARE(runner.run(first.arguments()).exitCode, 0);
    const ExpandedPackage patched(first.output);
    const QString package = runner.changedPackage(
        true, text("cp '%1' preinstall; cp '%2' postinstall")
                  .arg(patched.scriptPath(text("preinstall")), patched.scriptPath(text("postinstall"))));
    const QStringList codes{text("document-switch-missing"), text("viewer-switch-missing"),
                            text("preinstall-patched-before"), text("postinstall-patched-before")};
    const QJsonObject json = checkJson(runner, "editor", package);
    QCOMPARE(warningCodes(json), codes);
    const QJsonObject expected{{text("patchable"), false}, {text("problem"), text("it was patched before")}};
    for (const auto *script : {"preinstall", "postinstall"})
        QCOMPARE(json.value(text("package")).toObject().value(text(script)).toObject(), expected);

    const BuildCommand second{true, package, runner.file(text("again.pkg")), {}};
    const PctResult built = runner.run(second.arguments());
    QVERIFY2(built.exitCode == 0 && !built.err.contains("anchor"), built.err.constData());
    QVERIFY2(built.err.contains("warning: preinstall was patched before and stays as it is"),
             built.err.constData());
    QVERIFY2(built.err.contains("warning: postinstall was patched before and stays as it is"),
             built.err.constData());
    for (const auto *script : {"preinstall", "postinstall"})
        QCOMPARE(ExpandedPackage(second.output).script(text(script)), patched.script(text(script)));
}

void tst_PctCheck::quietHoldsBackWarningsButNotErrors()
{
    const PctRunner runner;
    const QString package = runner.alteredPackage(true, text("postinstall"), text("/setdefaultpdf=0/d"));
    QCOMPARE(check(runner, "editor", package, {text("-q")}).err, QByteArray());
    QVERIFY(check(runner, "reader", package, {text("-q")}).isOneLineRefusal());
}

void tst_PctCheck::readsScriptsOnlyAndLeavesNothingBehind()
{
    const PctRunner runner;
    runner.replaceTool(text("pkgutil"), "exit 9");
    const QString package = runner.samplePackage(true);
    QCOMPARE(check(runner, "editor", package).exitCode, 0);
    QCOMPARE(runner.temporaryLeftovers(), QStringList());
    QCOMPARE(runner.files(), QStringList{text("Pelix PDF Editor.pkg")});
}

QTEST_GUILESS_MAIN(tst_PctCheck)
#include "tst_PctCheck.moc"
