// SPDX-License-Identifier: Apache-2.0
#include "config/ConfigDocument.h"
#include "config/EditorXmlData.h"
#include "config/RecordFields.h"

#include <QDomDocument>
#include <QMap>
#include <QtTest>

#include <functional>

namespace {

using Change = std::function<void(EditorXmlData &)>;

/// The texts of a document, each under its item's key and its attribute.
using Texts = QMap<QString, QString>;

QString place(const char *keyAndAttribute)
{
    return QString::fromLatin1(keyAndAttribute);
}

Texts textsOfTheDefaults()
{
    return {{place("StartPage Mode"), QStringLiteral("1")},
            {place("Advertise Disable"), QStringLiteral("0")},
            {place("bMIPCheckPolicyOnDocSave Mode"), QString()},
            {place("AuthLibrary Mode"), QStringLiteral("0")},
            {place("DefaultLaunchAttachmentPerms Mode"), QStringLiteral("0")},
            {place("DefaultLaunchAttachmentPerms BuiltInPermList"), QString()},
            {place("DefaultLaunchAttachmentPerms DisableOpenSaveFileAttach"), QString()},
            {place("HideMyApps Mode"), QStringLiteral("0")},
            {place("iManage10loginMethod UseOAuth2"), QStringLiteral("0")},
            {place("LoginDomain String"), QStringLiteral("1")},
            {place("LoginDomainList String"), QString()},
            {place("SupportExtSSO Mode"), QStringLiteral("0")},
            {place("Plugin UnloadPluginArray"), QString()},
            {place("SetAsDefaultViewer Disable"), QStringLiteral("0")}};
}

/// Every attribute of the items but their key.
Texts textsOf(const QDomDocument &document)
{
    Texts texts;
    for (const char *tagName : {"Preference", "Plugin", "Installation_Option"}) {
        const QDomNodeList items = document.elementsByTagName(QString::fromLatin1(tagName));
        for (int i = 0; i < items.count(); ++i) {
            const QDomNamedNodeMap attributes = items.at(i).attributes();
            const QString key = items.at(i).toElement().attribute(QStringLiteral("Text"));
            for (int j = 0; j < attributes.count(); ++j)
                texts.insert(key + QLatin1Char(' ') + attributes.item(j).nodeName(),
                             attributes.item(j).nodeValue());
        }
    }
    for (const QString &key : texts.keys()) {
        if (key.endsWith(QLatin1String(" Text")))
            texts.remove(key);
    }
    return texts;
}

/// The section that holds the item of the key.
QString sectionOf(const QString &key)
{
    if (key == QLatin1String("Plugin"))
        return QStringLiteral("Plugins");
    return key == QLatin1String("SetAsDefaultViewer") ? QStringLiteral("Installation_Options")
                                                      : QStringLiteral("Preferences");
}

QDomDocument documentOf(const Texts &texts)
{
    QDomDocument document;
    QDomNode root = document.appendChild(document.createElement(QStringLiteral("r")));
    QMap<QString, QDomNode> sections;
    QMap<QString, QDomElement> items;
    for (auto text = texts.begin(); text != texts.end(); ++text) {
        const QString key = text.key().section(QLatin1Char(' '), 0, 0);
        QDomNode &section = sections[sectionOf(key)];
        if (section.isNull())
            section = root.appendChild(document.createElement(sectionOf(key)));
        QDomElement &item = items[key];
        if (item.isNull())
            item = section.appendChild(document.createElement(QStringLiteral("item"))).toElement();
        item.setAttribute(QStringLiteral("Text"), key);
        item.setAttribute(text.key().section(QLatin1Char(' '), 1), text.value());
    }
    return document;
}

void addRow(const char *name, const char *keyAndAttribute, const char *text, const Change &change)
{
    QTest::newRow(name) << place(keyAndAttribute) << QString::fromLatin1(text) << change;
}

void addColumns()
{
    QTest::addColumn<QString>("where");
    QTest::addColumn<QString>("text");
    QTest::addColumn<Change>("change");
}

/// Settings that a document says as the record does, each with a value that is not its default.
void addRowsOfBothWays()
{
    addRow("bShowStartPage", "StartPage Mode", "0", [](auto &data) { data.bShowStartPage = false; });
    addRow("bRemoveAdvertise", "Advertise Disable", "1", [](auto &data) { data.bRemoveAdvertise = true; });
    for (const int policy : {0, 1, 7})
        addRow(qPrintable(QStringLiteral("MIP policy %1").arg(policy)), "bMIPCheckPolicyOnDocSave Mode",
               QByteArray::number(policy).constData(), [policy](auto &data) {
                   data.bMIPCheckPolicySet = true;
                   data.nMIPCheckPolicyOnDocSave = policy;
               });
    addRow("nAuthLibrary", "AuthLibrary Mode", "1", [](auto &data) { data.nAuthLibrary = 1; });
    addRow("bDisableOpenFileAll", "DefaultLaunchAttachmentPerms Mode", "1",
           [](auto &data) { data.bDisableOpenFileAll = true; });
    addRow("strBuiltInPermList", "DefaultLaunchAttachmentPerms BuiltInPermList", "version:1|.ade:3",
           [](auto &data) { data.strBuiltInPermList = QStringLiteral("version:1|.ade:3"); });
    addRow("bHideMyApps", "HideMyApps Mode", "1", [](auto &data) { data.bHideMyApps = true; });
    addRow("bUseOAuth2", "iManage10loginMethod UseOAuth2", "1", [](auto &data) { data.bUseOAuth2 = true; });
    addRow("strLoginDomain", "LoginDomain String", "2",
           [](auto &data) { data.strLoginDomain = QStringLiteral("2"); });
    addRow("strLoginDomainList", "LoginDomainList String", "@a.example;@b.example",
           [](auto &data) { data.strLoginDomainList = QStringLiteral("@a.example;@b.example"); });
    addRow("bSupportExtSSO", "SupportExtSSO Mode", "1", [](auto &data) { data.bSupportExtSSO = true; });
    addRow("strUnloadPluginArray", "Plugin UnloadPluginArray", "PelixOcr.dylib;",
           [](auto &data) { data.strUnloadPluginArray = QStringLiteral("PelixOcr.dylib;"); });
    addRow("bSetAsDefaultViewer", "SetAsDefaultViewer Disable", "1",
           [](auto &data) { data.bSetAsDefaultViewer = false; });
}

} // namespace

Q_DECLARE_METATYPE(Change)

/// Each setting differs alone, so that none can stand in another's place.
class tst_DocumentSettings : public QObject
{
    Q_OBJECT

private slots:
    void init() { theEditorXmlData = EditorXmlData(); }

    void theDefaultsAreWritten()
    {
        QCOMPARE(textsOf(ConfigDocument::fromRecord(true, QString())), textsOfTheDefaults());
    }

    void aSettingIsWrittenInItsPlaceAlone_data()
    {
        addColumns();
        addRowsOfBothWays();
        const char attachments[] = "DefaultLaunchAttachmentPerms DisableOpenSaveFileAttach";
        addRow("nFileAttachmentsMode 1", attachments, "0", [](auto &data) { data.nFileAttachmentsMode = 1; });
        addRow("nFileAttachmentsMode 2", attachments, "1", [](auto &data) { data.nFileAttachmentsMode = 2; });
        addRow("strDisableOpenSaveFileAttach", attachments, "1",
               [](auto &data) { data.strDisableOpenSaveFileAttach = QStringLiteral("Disabled"); });
    }

    void aSettingIsWrittenInItsPlaceAlone()
    {
        QFETCH(QString, where);
        QFETCH(QString, text);
        QFETCH(Change, change);
        change(theEditorXmlData);
        Texts expected = textsOfTheDefaults();
        QVERIFY(expected.value(where) != text);
        expected[where] = text;
        QCOMPARE(textsOf(ConfigDocument::fromRecord(true, QString())), expected);
    }

    void aSettingIsReadFromItsPlaceAlone_data()
    {
        addColumns();
        addRowsOfBothWays();
        addRow("strDisableOpenSaveFileAttach", "DefaultLaunchAttachmentPerms DisableOpenSaveFileAttach", "1",
               [](auto &data) { data.strDisableOpenSaveFileAttach = QStringLiteral("1"); });
    }

    void aSettingIsReadFromItsPlaceAlone()
    {
        QFETCH(QString, where);
        QFETCH(QString, text);
        QFETCH(Change, change);
        Texts texts = textsOfTheDefaults();
        texts[where] = text;
        EditorXmlData expected;
        expected.strDisableOpenSaveFileAttach.clear();
        change(expected);
        EditorXmlData read;
        ConfigDocument::apply(documentOf(texts), read);
        for (const RecordField &field : recordFields())
            QVERIFY2(sameValue(field, read, expected), field.name.data());
    }
};

QTEST_GUILESS_MAIN(tst_DocumentSettings)
#include "tst_DocumentSettings.moc"
