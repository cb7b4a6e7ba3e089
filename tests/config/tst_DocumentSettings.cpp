// SPDX-License-Identifier: Apache-2.0
#include "config/ConfigDocument.h"
#include "config/Product.h"
#include "config/Settings.h"
#include "tests/config/SettingOracle.h"

#include <QDomDocument>
#include <QMap>
#include <QtTest>

namespace {

using namespace SettingOracle;

/// The texts of a document, each under its item's key and its attribute.
using Texts = QMap<QString, QString>;

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

void addRow(const char *name, const char *place, const QString &text, const Change &change)
{
    QTest::newRow(name) << QString::fromLatin1(place) << text << change;
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
    for (const Row &row : rows()) {
        if (qstrcmp(row.name, "nFileAttachmentsMode") != 0)
            addRow(row.name, row.place, QString::fromLatin1(row.text), row.change);
    }
    for (const int policy : {0, 7})
        addRow(qPrintable(QStringLiteral("MIP policy %1").arg(policy)), "bMIPCheckPolicyOnDocSave Mode",
               QString::number(policy), [policy](EditorXmlData &data) {
                   data.bMIPCheckPolicySet = true;
                   data.nMIPCheckPolicyOnDocSave = policy;
               });
}

const char attachments[] = "DefaultLaunchAttachmentPerms DisableOpenSaveFileAttach";

} // namespace

/// Each setting differs alone, so that none can stand in another's place.
class tst_DocumentSettings : public QObject
{
    Q_OBJECT

private slots:
    void theDefaultsAreWritten()
    {
        QCOMPARE(textsOf(ConfigDocument::fromSettings(EditorXmlData(), Product::editor(), QString())),
                 textsOfTheDefaults());
    }

    void aSettingIsWrittenInItsPlaceAlone_data()
    {
        addColumns();
        addRowsOfBothWays();
        for (const int mode : {1, 2})
            addRow(qPrintable(QStringLiteral("nFileAttachmentsMode %1").arg(mode)), attachments,
                   QString::number(mode - 1),
                   [mode](EditorXmlData &data) { data.nFileAttachmentsMode = mode; });
        addRow("strDisableOpenSaveFileAttach", attachments, QStringLiteral("1"),
               [](EditorXmlData &data) { data.strDisableOpenSaveFileAttach = QStringLiteral("Disabled"); });
    }

    void aSettingIsWrittenInItsPlaceAlone()
    {
        QFETCH(QString, where);
        QFETCH(QString, text);
        QFETCH(Change, change);
        EditorXmlData data;
        change(data);
        Texts expected = textsOfTheDefaults();
        QVERIFY(expected.value(where) != text);
        expected[where] = text;
        QCOMPARE(textsOf(ConfigDocument::fromSettings(data, Product::editor(), QString())), expected);
    }

    void aSettingIsReadFromItsPlaceAlone_data()
    {
        addColumns();
        addRowsOfBothWays();
        addRow("strDisableOpenSaveFileAttach", attachments, QStringLiteral("1"),
               [](EditorXmlData &data) { data.strDisableOpenSaveFileAttach = QStringLiteral("1"); });
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
        for (const Setting &setting : settings())
            QVERIFY2(sameValue(setting, read, expected), setting.name.data());
    }
};

QTEST_GUILESS_MAIN(tst_DocumentSettings)
#include "tst_DocumentSettings.moc"
