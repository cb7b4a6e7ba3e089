// SPDX-License-Identifier: Apache-2.0
#include "config/EditorXmlData.h"
#include "pages/preferences/security/FileTypeTable.h"
#include "pages/preferences/security/tab_prefer_security.h"
#include "pages/preferences/tab_preference.h"
#include "resources/Resources.h"

#include <QtTest>
#include <QtWidgets>

#include <functional>

namespace {

using Change = std::function<void(EditorXmlData &)>;

void addValueRow(bool editor, const char *control, const QVariant &value, const Change &change)
{
    const QByteArray tag =
        QByteArray(editor ? "Editor " : "Reader ") + control + " " + value.toString().toUtf8().left(40);
    QTest::newRow(tag.constData()) << editor << QString::fromLatin1(control) << value << change;
}

template <class Member> void addSwitchRows(bool editor, const char *control, Member member)
{
    for (const bool on : {true, false})
        addValueRow(editor, control, on, [=](EditorXmlData &data) { data.*member = on; });
}

void addPolicyRow(bool editor, int index, bool set, int policy)
{
    addValueRow(editor, "cb_aip_options", index, [=](EditorXmlData &data) {
        data.bMIPCheckPolicySet = set;
        data.nMIPCheckPolicyOnDocSave = policy;
    });
}

/// What both products have.
void addCommonRows(bool editor)
{
    addSwitchRows(editor, "checkBox_showStartPg", &EditorXmlData::bShowStartPage);
    addSwitchRows(editor, "rb_disableopenfile_all", &EditorXmlData::bDisableOpenFileAll);
    addSwitchRows(editor, "cb_UseExternalBrowserForSSO", &EditorXmlData::bSupportExtSSO);
    addPolicyRow(editor, 1, true, 0);
    addPolicyRow(editor, 2, true, 1);
    addPolicyRow(editor, 0, false, -1);
    for (const int library : {1, 0})
        addValueRow(editor, "cb_auth_lib_options", library,
                    [=](EditorXmlData &data) { data.nAuthLibrary = library; });
    for (const int mode : {0, 1, 2, -1})
        addValueRow(editor, "cb_fileattachmentsMode", mode,
                    [=](EditorXmlData &data) { data.nFileAttachmentsMode = mode; });
    const QString types = QString::fromUtf8("version:1|.ade:3|.adp:3|.<b>:2|.\u00e4:0|");
    for (const QString &list : {types, QString(QLatin1String(""))})
        addValueRow(editor, "tt_defaultLaunchAttachmentPerms", list,
                    [=](EditorXmlData &data) { data.strBuiltInPermList = list; });
}

void addEditorRows()
{
    addSwitchRows(true, "checkBox_removeAdvertise", &EditorXmlData::bRemoveAdvertise);
    addSwitchRows(true, "cb_biManageLogin", &EditorXmlData::bUseOAuth2);
    addSwitchRows(true, "cb_hidemyapps", &EditorXmlData::bHideMyApps);
    for (const bool white : {true, false}) {
        const QString mode = white ? QStringLiteral("1") : QStringLiteral("2");
        addValueRow(true, "cb_allowed_whitelist", white,
                    [=](EditorXmlData &data) { data.strLoginDomain = mode; });
        addValueRow(true, "cb_disallowed_blacklist", !white,
                    [=](EditorXmlData &data) { data.strLoginDomain = mode; });
    }
    for (const char *list : {"@b.com;@a.com", "@one.org", ""})
        addValueRow(true, "tableView_domains", QString(QLatin1String(list)),
                    [=](EditorXmlData &data) { data.strLoginDomainList = QLatin1String(list); });
}

} // namespace

Q_DECLARE_METATYPE(Change)

class tst_PreferenceValues : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        initPctResources();
        QLoggingCategory::setFilterRules(QStringLiteral("default.debug=false"));
    }

    void theTableOfFileTypesShowsWhatItUnderstands()
    {
        QTextEdit field;
        field.setPlainText(QStringLiteral("version:1|.ade:3|odd|.txt:9|.csv:1|"));
        const FileTypeTable table(&field);
        QCOMPARE(table.rowCount(), 2);
        QCOMPARE(table.index(0, 0).data().toString(), QStringLiteral(".ade"));
        QCOMPARE(table.index(0, 1).data().toString(), FileTypeTable::levels().at(3));
        QCOMPARE(table.index(1, 0).data().toString(), QStringLiteral(".csv"));
        QCOMPARE(table.index(1, 1).data().toString(), FileTypeTable::levels().at(1));
        field.setPlainText(QStringLiteral("version:1|.exe:3|"));
        QCOMPARE(table.rowCount(), 1);
    }

    void anEditInTheTableOfFileTypesKeepsAllElse()
    {
        QTextEdit field;
        field.setPlainText(QStringLiteral("version:1|.ade:3|odd|.txt:9|.csv:1|"));
        FileTypeTable table(&field);
        QCOMPARE(field.toPlainText(), QStringLiteral("version:1|.ade:3|odd|.txt:9|.csv:1|"));
        QVERIFY(table.setData(table.index(1, 1), 2, Qt::EditRole));
        QCOMPARE(field.toPlainText(), QStringLiteral("version:1|.ade:3|odd|.txt:9|.csv:2|"));
        QVERIFY(table.setData(table.index(0, 0), QStringLiteral(" .app "), Qt::EditRole));
        QVERIFY(!table.setData(table.index(0, 0), QStringLiteral("app"), Qt::EditRole));
        QVERIFY(!table.setData(table.index(0, 0), QStringLiteral(".a|b"), Qt::EditRole));
        QCOMPARE(table.addType(), 2);
        QCOMPARE(field.toPlainText(), QStringLiteral("version:1|.app:3|odd|.txt:9|.csv:2|.new:3|"));
        table.removeTypes({0, 2});
        QCOMPARE(field.toPlainText(), QStringLiteral("version:1|odd|.txt:9|.csv:2|"));
        field.undo();
        QCOMPARE(table.rowCount(), 3);
    }

    void theFirstFileTypeBeginsAList()
    {
        QTextEdit field;
        FileTypeTable table(&field);
        QCOMPARE(table.addType(), 0);
        QCOMPARE(field.toPlainText(), QStringLiteral("version:1|.new:3|"));
    }

    void anEmptyListOfModesSaysWhy()
    {
        CHandler_Prefer_Security handler(true);
        const std::unique_ptr<QWidget> page(handler.GetWidget(true));
        const auto *list = page->findChild<QComboBox *>(QStringLiteral("cb_fileattachmentsMode"));
        EditorXmlData data;
        QVERIFY(handler.ImportProperty(page.get(), &data));
        QCOMPARE(list->currentIndex(), -1);
        QCOMPARE(list->placeholderText(), QStringLiteral("Not set"));
        data.strDisableOpenSaveFileAttach = QStringLiteral("Enabled");
        QVERIFY(handler.ImportProperty(page.get(), &data));
        QCOMPARE(list->placeholderText(), QStringLiteral("Imported; a save drops it"));
    }

    void anImportedSettingIsReadBack_data()
    {
        QTest::addColumn<bool>("editor");
        QTest::addColumn<QString>("control");
        QTest::addColumn<QVariant>("value");
        QTest::addColumn<Change>("change");
        addCommonRows(true);
        addCommonRows(false);
        addEditorRows();
    }

    void anImportedSettingIsReadBack()
    {
        QFETCH(bool, editor);
        QFETCH(QString, control);
        QFETCH(QVariant, value);
        QFETCH(Change, change);
        CHandler_Preference handler(editor);
        const std::unique_ptr<QWidget> page(handler.GetWidget(true));
        EditorXmlData data = opposite();
        QVERIFY(handler.ImportProperty(page.get(), &data));
        change(data);
        QVERIFY(handler.ImportProperty(page.get(), &data));
        const QVariant read = handler.GetProperty(control);
        QCOMPARE(read.userType(), value.userType());
        QCOMPARE(read, value);
    }

    void theReaderHasNoControlOfTheEditorsSubPages()
    {
        CHandler_Preference handler(false);
        const std::unique_ptr<QWidget> page(handler.GetWidget(true));
        for (const char *name : {"checkBox_removeAdvertise", "cb_biManageLogin", "cb_hidemyapps",
                                 "cb_allowed_whitelist", "cb_disallowed_blacklist", "tableView_domains"})
            QVERIFY2(!handler.GetProperty(QLatin1String(name)).isValid(), name);
    }

    void aPolicyOfFiveAndAnAbsentOneShowDefault_data()
    {
        QTest::addColumn<bool>("set");
        QTest::addColumn<int>("policy");
        QTest::addColumn<QString>("shown");
        QTest::newRow("5") << true << 5 << QStringLiteral("Default");
        QTest::newRow("-1") << true << -1 << QStringLiteral("Default");
        QTest::newRow("absent") << false << 0 << QStringLiteral("Default");
        QTest::newRow("0") << true << 0 << QStringLiteral("Disabled");
        QTest::newRow("1") << true << 1 << QStringLiteral("Enabled");
    }

    void aPolicyOfFiveAndAnAbsentOneShowDefault()
    {
        QFETCH(bool, set);
        QFETCH(int, policy);
        CHandler_Preference handler(true);
        const std::unique_ptr<QWidget> page(handler.GetWidget(true));
        EditorXmlData data = opposite();
        QVERIFY(handler.ImportProperty(page.get(), &data));
        data.bMIPCheckPolicySet = set;
        data.nMIPCheckPolicyOnDocSave = policy;
        QVERIFY(handler.ImportProperty(page.get(), &data));
        QTEST(page->findChild<QComboBox *>(QStringLiteral("cb_aip_options"))->currentText(), "shown");
    }

    void anyAuthLibraryButOneIsMsal()
    {
        CHandler_Preference handler(false);
        const std::unique_ptr<QWidget> page(handler.GetWidget(true));
        for (const int library : {0, 2, -1}) {
            EditorXmlData data;
            data.nAuthLibrary = library;
            QVERIFY(handler.ImportProperty(page.get(), &data));
            QCOMPARE(handler.GetProperty(QStringLiteral("cb_auth_lib_options")), QVariant(0));
        }
    }

    void aFailedImportLeavesTheControlsAsTheyWere()
    {
        CHandler_Preference handler(true);
        const std::unique_ptr<QWidget> page(handler.GetWidget(true));
        const EditorXmlData data = opposite();
        QVERIFY(handler.ImportProperty(page.get(), &data));
        QVERIFY(!handler.ImportProperty(page.get(), nullptr));
        QCOMPARE(handler.GetProperty(QStringLiteral("cb_hidemyapps")), QVariant(true));
        QCOMPARE(handler.GetProperty(QStringLiteral("tableView_domains")),
                 QVariant(QStringLiteral("@old.com")));
    }

    void blockingActionsCanBeUncheckedAgain()
    {
        CHandler_Preference handler(true);
        const std::unique_ptr<QWidget> page(handler.GetWidget(true));
        auto *button = page->findChild<QAbstractButton *>(QStringLiteral("rb_disableopenfile_all"));
        for (const bool expected : {true, false}) {
            button->click();
            QCOMPARE(handler.GetProperty(QStringLiteral("rb_disableopenfile_all")), QVariant(expected));
        }
    }

private:
    /// Differs from the defaults in every setting of the page, so that nothing passes by standing still.
    static EditorXmlData opposite()
    {
        EditorXmlData data;
        data.bShowStartPage = false;
        data.bRemoveAdvertise = data.bDisableOpenFileAll = data.bHideMyApps = true;
        data.bSupportExtSSO = data.bUseOAuth2 = data.bMIPCheckPolicySet = true;
        data.nFileAttachmentsMode = 2;
        data.nMIPCheckPolicyOnDocSave = 1;
        data.nAuthLibrary = 1;
        data.strBuiltInPermList = QStringLiteral("version:1|.old:3|");
        data.strLoginDomain = QStringLiteral("2");
        data.strLoginDomainList = QStringLiteral("@old.com");
        return data;
    }
};

QTEST_MAIN(tst_PreferenceValues)
#include "tst_PreferenceValues.moc"
