// SPDX-License-Identifier: Apache-2.0
#include "config/CCommon.h"
#include "config/ConfigDocument.h"
#include "config/KeptElement.h"
#include "config/Product.h"
#include "config/Settings.h"
#include "tests/config/RecordSamples.h"
#include "tests/config/SettingOracle.h"
#include "tests/support/ProblemText.h"
#include "tests/support/TestFiles.h"

#include <QTemporaryDir>
#include <QtTest>

namespace {

QDomElement named(const QDomDocument &document, const char *tagName)
{
    return document.elementsByTagName(QString::fromLatin1(tagName)).at(0).toElement();
}

/// The preference item with the key, in the document made from the live record.
QDomElement preference(const QDomDocument &document, const char *key)
{
    const QDomNodeList items = document.elementsByTagName(QStringLiteral("Preference"));
    for (int i = 0; i < items.count(); ++i) {
        if (items.at(i).toElement().attribute(QStringLiteral("Text")) == QLatin1String(key))
            return items.at(i).toElement();
    }
    return {};
}

QString value(const char *key, const char *attribute)
{
    const QDomDocument document =
        ConfigDocument::fromSettings(theEditorXmlData, Product::editor(), QString());
    const QDomElement item = preference(document, key);
    return item.attribute(QString::fromLatin1(attribute), QStringLiteral("absent"));
}

} // namespace

class tst_ConfigDocumentWriting : public QObject
{
    Q_OBJECT

private slots:
    void init() { theEditorXmlData = EditorXmlData(); }

    void theEmptyDocumentHasTheWholeTree()
    {
        QDomDocument document;
        CCommon::EditorXmlCreateEmptyXml(document, true);
        const QDomElement root = document.documentElement();
        QCOMPARE(root.tagName(), QStringLiteral("PelixPDFEditor"));
        QCOMPARE(root.attribute(QStringLiteral("Edition")), QStringLiteral("Biz"));
        QCOMPARE(root.attribute(QStringLiteral("XMLversion")), QStringLiteral("2026.2.0"));
        QVERIFY(root.hasAttribute(QStringLiteral("version")));
        QStringList sections;
        const QDomElement store = root.firstChildElement();
        QCOMPARE(store.tagName(), QStringLiteral("Profstore"));
        for (QDomElement section = store.firstChildElement(); !section.isNull();
             section = section.nextSiblingElement())
            sections += section.tagName();
        QCOMPARE(sections, QStringList({QStringLiteral("Preferences"), QStringLiteral("Plugins"),
                                        QStringLiteral("Installation_Options"),
                                        QStringLiteral("RibbonSetRibbonCategory"),
                                        QStringLiteral("RibbonSetTabElements")}));
        QVERIFY(document.firstChild().isElement());
    }

    void theReaderHasItsOwnRootAndNoEdition()
    {
        QDomDocument document;
        CCommon::EditorXmlCreateEmptyXml(document, false);
        QCOMPARE(document.documentElement().tagName(), QStringLiteral("PelixPDFReader"));
        QVERIFY(document.documentElement().hasAttribute(QStringLiteral("Edition")));
        QVERIFY(document.documentElement().attribute(QStringLiteral("Edition")).isEmpty());
    }

    void bothProductsHaveThePreferencesInOrder_data()
    {
        QTest::addColumn<bool>("editor");
        QTest::newRow("Editor") << true;
        QTest::newRow("Reader") << false;
    }

    void bothProductsHaveThePreferencesInOrder()
    {
        QFETCH(bool, editor);
        const QDomDocument document =
            ConfigDocument::fromSettings(theEditorXmlData, Product::of(editor), QString());
        const QDomNodeList items = document.elementsByTagName(QStringLiteral("Preference"));
        QStringList keys;
        for (int i = 0; i < items.count(); ++i)
            keys += items.at(i).toElement().attribute(QStringLiteral("Text"));
        QCOMPARE(keys, SettingOracle::preferenceKeys());
    }

    void builderValuesAreLaidDownBeforeFilling()
    {
        theEditorXmlData = RecordSamples::everythingChanged();
        QDomDocument document;
        CCommon::EditorXmlCreateEmptyXml(document, true);
        QCOMPARE(preference(document, "StartPage").attribute(QStringLiteral("Mode")), QString());
        QCOMPARE(preference(document, "Advertise").attribute(QStringLiteral("Disable")), QStringLiteral("0"));
        QCOMPARE(preference(document, "AuthLibrary").attribute(QStringLiteral("Mode")), QStringLiteral("1"));
        QCOMPARE(preference(document, "LoginDomain").attribute(QStringLiteral("String")),
                 QStringLiteral("2"));
        QCOMPARE(named(document, "Plugin").attribute(QStringLiteral("UnloadPluginArray")), QString());
        QCOMPARE(named(document, "Installation_Option").attribute(QStringLiteral("Disable")),
                 QStringLiteral("1"));
    }

    void onlyAnEditorDocumentCarriesTheVersion()
    {
        const QString version = QStringLiteral("13.1");
        const QString attribute = QStringLiteral("version");
        QCOMPARE(ConfigDocument::fromSettings(theEditorXmlData, Product::editor(), version)
                     .documentElement()
                     .attribute(attribute),
                 version);
        QVERIFY(ConfigDocument::fromSettings(theEditorXmlData, Product::reader(), version)
                    .documentElement()
                    .attribute(attribute)
                    .isEmpty());
    }

    void eachOfTwoStepsSetsTheVersion()
    {
        QDomDocument document;
        const QString attribute = QStringLiteral("version");
        CCommon::EditorXmlCreateEmptyXml(document, true);
        CCommon::EditorXmlSavePreferences(document, QStringLiteral("13.1"));
        QCOMPARE(document.documentElement().attribute(attribute), QStringLiteral("13.1"));
        CCommon::EditorXmlSaveInstallation(document, QStringLiteral("13.2"));
        QCOMPARE(document.documentElement().attribute(attribute), QStringLiteral("13.2"));
    }

    void anUnsetMipPolicyKeepsAnEmptyMode()
    {
        theEditorXmlData.nMIPCheckPolicyOnDocSave = 1;
        QCOMPARE(value("bMIPCheckPolicyOnDocSave", "Mode"), QString());
        theEditorXmlData.bMIPCheckPolicySet = true;
        QCOMPARE(value("bMIPCheckPolicyOnDocSave", "Mode"), QStringLiteral("1"));
    }

    void attachmentModesAreWrittenByTheirRule_data()
    {
        QTest::addColumn<int>("index");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("written");
        const QString byDefault = QStringLiteral("Default");
        QTest::newRow("none, default") << -1 << byDefault << QString();
        QTest::newRow("index 0, default") << 0 << byDefault << QString();
        QTest::newRow("index 1") << 1 << byDefault << QStringLiteral("0");
        QTest::newRow("index 2") << 2 << byDefault << QStringLiteral("1");
        QTest::newRow("index 3") << 3 << byDefault << QStringLiteral("2");
        QTest::newRow("index 0, Enabled") << 0 << QStringLiteral("Enabled") << QStringLiteral("0");
        QTest::newRow("none, Disabled") << -1 << QStringLiteral("Disabled") << QStringLiteral("1");
        QTest::newRow("case matters") << 0 << QStringLiteral("enabled") << QString();
        QTest::newRow("number text") << 0 << QStringLiteral("1") << QString();
        QTest::newRow("index wins") << 1 << QStringLiteral("Disabled") << QStringLiteral("0");
    }

    void attachmentModesAreWrittenByTheirRule()
    {
        QFETCH(int, index);
        QFETCH(QString, text);
        theEditorXmlData.nFileAttachmentsMode = index;
        theEditorXmlData.strDisableOpenSaveFileAttach = text;
        QTEST(value("DefaultLaunchAttachmentPerms", "DisableOpenSaveFileAttach"), "written");
    }

    void aNumberReadBackIsLostWithoutAChoice()
    {
        theEditorXmlData.nFileAttachmentsMode = 1;
        const QString path = saved(true);
        EditorXmlData read;
        QVERIFY(CCommon::ParseXml(path, &read));
        QCOMPARE(read.strDisableOpenSaveFileAttach, QStringLiteral("0"));
        theEditorXmlData = read;
        theEditorXmlData.nFileAttachmentsMode = 0;
        QCOMPARE(value("DefaultLaunchAttachmentPerms", "DisableOpenSaveFileAttach"), QString());
    }

    void aQuickAccessBarGoesInOnlyWithARibbon()
    {
        theEditorXmlData.elemQuickAccessBar = RecordSamples::element("<QuickAccessBar/>");
        QVERIFY(!named(ConfigDocument::fromSettings(theEditorXmlData, Product::editor(), QString()),
                       "RibbonSetTabElements")
                     .hasChildNodes());
        theEditorXmlData.elemRibbonCategory = RecordSamples::element("<RibbonUI/>");
        const QDomDocument document =
            ConfigDocument::fromSettings(theEditorXmlData, Product::editor(), QString());
        QCOMPARE(named(document, "RibbonSetTabElements").firstChildElement().tagName(),
                 QStringLiteral("QuickAccessBar"));
        QCOMPARE(named(document, "RibbonSetRibbonCategory").firstChildElement().tagName(),
                 QStringLiteral("RibbonUI"));
    }

    void aSectionsNameInTheRibbonDoesNotDrawTheBarThere()
    {
        theEditorXmlData.elemRibbonCategory =
            RecordSamples::element("<RibbonUI><RibbonSetTabElements/></RibbonUI>");
        theEditorXmlData.elemQuickAccessBar = RecordSamples::element("<QuickAccessBar/>");
        const QDomElement root =
            ConfigDocument::fromSettings(theEditorXmlData, Product::editor(), QString()).documentElement();
        QVERIFY(elementText(root).endsWith(
            QStringLiteral("<RibbonSetRibbonCategory><RibbonUI><RibbonSetTabElements/></RibbonUI>"
                           "</RibbonSetRibbonCategory><RibbonSetTabElements><QuickAccessBar/>"
                           "</RibbonSetTabElements></Profstore></PelixPDFEditor>")));
    }

    void writingLeavesTheRecordsRibbonInPlace()
    {
        theEditorXmlData = RecordSamples::everythingChanged();
        const QString first = elementText(
            ConfigDocument::fromSettings(theEditorXmlData, Product::editor(), QString()).documentElement());
        const QString second = elementText(
            ConfigDocument::fromSettings(theEditorXmlData, Product::editor(), QString()).documentElement());
        QCOMPARE(first.size(), second.size());
        QVERIFY(theEditorXmlData == RecordSamples::everythingChanged());
    }

    void createItemSkipsWhatIsNotNameAndValue()
    {
        QDomDocument document;
        QDomElement parent = document.createElement(QStringLiteral("parent"));
        document.appendChild(parent);
        CCommon::CreateItem(QStringLiteral("item"),
                            {QStringLiteral("Disable:0"), QStringLiteral("Text:a:b"), QStringLiteral("bare"),
                             QStringLiteral("empty:")},
                            document, parent);
        const QDomElement item = parent.firstChildElement(QStringLiteral("item"));
        QCOMPARE(item.attributes().count(), 2);
        QCOMPARE(item.attribute(QStringLiteral("Disable")), QStringLiteral("0"));
        QVERIFY(!item.hasAttribute(QStringLiteral("Text")));
        QVERIFY(item.hasAttribute(QStringLiteral("empty")));
    }

    void fillingComparesKeysWithoutCaseAndAddsNoAttribute()
    {
        const QDomElement item = RecordSamples::element("<p Text='STARTPAGE' Mode='' Disable='x'/>");
        CCommon::EditorXmlFillPreValue(QStringLiteral("STARTPAGE"), item.attributes());
        QCOMPARE(item.attribute(QStringLiteral("Mode")), QStringLiteral("1"));
        const QDomElement bare = RecordSamples::element("<p Text='StartPage'/>");
        CCommon::EditorXmlFillPreValue(QStringLiteral("StartPage"), bare.attributes());
        QCOMPARE(bare.attributes().count(), 1);
    }

    void anEmptyListReplacesAnOldOne()
    {
        const QDomElement item = RecordSamples::element("<p BuiltInPermList='old'/>");
        CCommon::EditorXmlFillPreValue(QStringLiteral("DefaultLaunchAttachmentPerms"), item.attributes());
        QCOMPARE(item.attribute(QStringLiteral("BuiltInPermList")), QString());
    }

    void fillingStepsSurviveAMissingSection()
    {
        QDomDocument document;
        QVERIFY(document.setContent(QByteArray("<PelixPDFEditor version=''/>")));
        CCommon::EditorXmlSavePreferences(document, QStringLiteral("1"));
        CCommon::EditorXmlSavePlugins(document);
        CCommon::EditorXmlSaveInstallation(document, QStringLiteral("1"));
        theEditorXmlData = RecordSamples::everythingChanged();
        CCommon::EditorXmlSaveRibbonSet(document);
        QCOMPARE(document.documentElement().attribute(QStringLiteral("version")), QString());
        QVERIFY(!document.documentElement().hasChildNodes());
    }

    void theFileBeginsWithTheStreamsDeclarationAndIndentsByFour()
    {
        const QList<QByteArray> lines = TestFiles::read(saved(true)).split('\n');
        QCOMPARE(lines.at(0), QByteArray("<?xml version=\"1.0\" encoding=\"UTF-8\"?>"));
        QVERIFY(lines.at(1).startsWith("<PelixPDFEditor "));
        QCOMPARE(lines.at(2), QByteArray("    <Profstore>"));
        QCOMPARE(lines.at(3), QByteArray("        <Preferences>"));
    }

    void anotherXmlReaderAcceptsTheFile()
    {
        theEditorXmlData = RecordSamples::everythingChanged();
        theEditorXmlData.strBuiltInPermList = QStringLiteral("a<b>&\"'\n\tö日");
        const QString xpath =
            QStringLiteral("string(//Preference[@Text='DefaultLaunchAttachmentPerms']/@BuiltInPermList)");
        const QByteArray read =
            TestFiles::outputOf(QStringLiteral("xmllint"), {QStringLiteral("--xpath"), xpath, saved(true)});
        QCOMPARE(QString::fromUtf8(read).trimmed(), theEditorXmlData.strBuiltInPermList);
    }

    void aWrittenRecordReadsBackTheSame_data()
    {
        QTest::addColumn<bool>("editor");
        QTest::newRow("Editor") << true;
        QTest::newRow("Reader") << false;
    }

    void aWrittenRecordReadsBackTheSame()
    {
        QFETCH(bool, editor);
        theEditorXmlData = RecordSamples::everythingChanged();
        EditorXmlData read;
        QVERIFY(CCommon::ParseXml(saved(editor), &read));
        // The chosen mode travels as a number in the text; the choice itself is not part of the document.
        QCOMPARE(read.strDisableOpenSaveFileAttach, QStringLiteral("1"));
        read.strDisableOpenSaveFileAttach = theEditorXmlData.strDisableOpenSaveFileAttach;
        read.nFileAttachmentsMode = theEditorXmlData.nFileAttachmentsMode;
        for (const Setting &setting : settings())
            QVERIFY2(sameValue(setting, read, theEditorXmlData), setting.name.data());
    }

private:
    QString saved(bool editor) const
    {
        const QString path = m_folder.filePath(QStringLiteral("ProfStore.xml"));
        const Result<> saved = ConfigDocument::save(
            ConfigDocument::fromSettings(theEditorXmlData, Product::of(editor), QStringLiteral("13.1")),
            path);
        if (!saved)
            qFatal("cannot save: %s", qPrintable(problemText(saved)));
        return path;
    }

    QTemporaryDir m_folder;
};

QTEST_GUILESS_MAIN(tst_ConfigDocumentWriting)
#include "tst_ConfigDocumentWriting.moc"
