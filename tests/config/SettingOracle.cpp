// SPDX-License-Identifier: Apache-2.0
#include "tests/config/SettingOracle.h"

namespace {

using Data = EditorXmlData;
using SettingOracle::Row;

const char attachmentMode[] = "DefaultLaunchAttachmentPerms DisableOpenSaveFileAttach";

QList<Row> allRows()
{
    const QString zero = QStringLiteral("0");
    const QString one = QStringLiteral("1");
    const QString two = QStringLiteral("2");
    const QString types = QStringLiteral("version:1|.ade:3");
    const QString domains = QStringLiteral("@a.example;@b.example");
    const QString library = QStringLiteral("PelixOcr.dylib;");
    return {
        {"bShowStartPage", [](Data &data) { data.bShowStartPage = false; }, "StartPage Mode", "0", zero,
         "checkBox_showStartPg", false},
        {"bRemoveAdvertise", [](Data &data) { data.bRemoveAdvertise = true; }, "Advertise Disable", "1", one,
         "checkBox_removeAdvertise", true},
        {"nFileAttachmentsMode", [](Data &data) { data.nFileAttachmentsMode = 2; }, attachmentMode, "1", two,
         "cb_fileattachmentsMode", 2},
        {"strBuiltInPermList", [types](Data &data) { data.strBuiltInPermList = types; },
         "DefaultLaunchAttachmentPerms BuiltInPermList", "version:1|.ade:3", types,
         "tt_defaultLaunchAttachmentPerms", types},
        {"bDisableOpenFileAll", [](Data &data) { data.bDisableOpenFileAll = true; },
         "DefaultLaunchAttachmentPerms Mode", "1", one, "rb_disableopenfile_all", true},
        {"strUnloadPluginArray", [library](Data &data) { data.strUnloadPluginArray = library; },
         "Plugin UnloadPluginArray", "PelixOcr.dylib;", library, "listWidget_pluginList", library},
        {"nMIPCheckPolicyOnDocSave",
         [](Data &data) {
             data.bMIPCheckPolicySet = true;
             data.nMIPCheckPolicyOnDocSave = 1;
         },
         "bMIPCheckPolicyOnDocSave Mode", "1", 1, "cb_aip_options", 2},
        {"nAuthLibrary", [](Data &data) { data.nAuthLibrary = 1; }, "AuthLibrary Mode", "1", one,
         "cb_auth_lib_options", 1},
        {"bHideMyApps", [](Data &data) { data.bHideMyApps = true; }, "HideMyApps Mode", "1", one,
         "cb_hidemyapps", true},
        {"bSupportExtSSO", [](Data &data) { data.bSupportExtSSO = true; }, "SupportExtSSO Mode", "1", one,
         "cb_UseExternalBrowserForSSO", true},
        {"bUseOAuth2", [](Data &data) { data.bUseOAuth2 = true; }, "iManage10loginMethod UseOAuth2", "1", one,
         "cb_biManageLogin", true},
        {"strLoginDomain", [two](Data &data) { data.strLoginDomain = two; }, "LoginDomain String", "2", two,
         "cb_allowed_whitelist", false},
        {"strLoginDomainList", [domains](Data &data) { data.strLoginDomainList = domains; },
         "LoginDomainList String", "@a.example;@b.example", domains, "tableView_domains", domains},
        {"bSetAsDefaultViewer", [](Data &data) { data.bSetAsDefaultViewer = false; },
         "SetAsDefaultViewer Disable", "1", QJsonValue(QJsonValue::Undefined), "cb_defaultpdf", false},
    };
}

} // namespace

const QList<Row> &SettingOracle::rows()
{
    static const QList<Row> all = allRows();
    return all;
}

QMap<QString, QString> SettingOracle::textsOfTheDefaults()
{
    return {{QStringLiteral("StartPage Mode"), QStringLiteral("1")},
            {QStringLiteral("Advertise Disable"), QStringLiteral("0")},
            {QStringLiteral("bMIPCheckPolicyOnDocSave Mode"), QString()},
            {QStringLiteral("AuthLibrary Mode"), QStringLiteral("0")},
            {QStringLiteral("DefaultLaunchAttachmentPerms Mode"), QStringLiteral("0")},
            {QStringLiteral("DefaultLaunchAttachmentPerms BuiltInPermList"), QString()},
            {QStringLiteral("DefaultLaunchAttachmentPerms DisableOpenSaveFileAttach"), QString()},
            {QStringLiteral("HideMyApps Mode"), QStringLiteral("0")},
            {QStringLiteral("iManage10loginMethod UseOAuth2"), QStringLiteral("0")},
            {QStringLiteral("LoginDomain String"), QStringLiteral("1")},
            {QStringLiteral("LoginDomainList String"), QString()},
            {QStringLiteral("SupportExtSSO Mode"), QStringLiteral("0")},
            {QStringLiteral("Plugin UnloadPluginArray"), QString()},
            {QStringLiteral("SetAsDefaultViewer Disable"), QStringLiteral("0")}};
}

QMap<QString, QJsonValue> SettingOracle::valuesOfTheDefaults()
{
    return {{QStringLiteral("StartPage Mode"), QStringLiteral("1")},
            {QStringLiteral("Advertise Disable"), QStringLiteral("0")},
            {QStringLiteral("bMIPCheckPolicyOnDocSave Mode"), QString()},
            {QStringLiteral("AuthLibrary Mode"), QStringLiteral("0")},
            {QStringLiteral("DefaultLaunchAttachmentPerms Mode"), QStringLiteral("0")},
            {QStringLiteral("DefaultLaunchAttachmentPerms BuiltInPermList"), QString()},
            {QStringLiteral("DefaultLaunchAttachmentPerms DisableOpenSaveFileAttach"), QStringLiteral("-1")},
            {QStringLiteral("HideMyApps Mode"), QStringLiteral("0")},
            {QStringLiteral("iManage10loginMethod UseOAuth2"), QStringLiteral("0")},
            {QStringLiteral("LoginDomain String"), QStringLiteral("1")},
            {QStringLiteral("LoginDomainList String"), QString()},
            {QStringLiteral("SupportExtSSO Mode"), QStringLiteral("0")},
            {QStringLiteral("Plugin UnloadPluginArray"), QString()}};
}

QStringList SettingOracle::collectedAnew()
{
    return {QStringLiteral("bShowStartPage"),       QStringLiteral("bRemoveAdvertise"),
            QStringLiteral("nFileAttachmentsMode"), QStringLiteral("strDisableOpenSaveFileAttach"),
            QStringLiteral("strBuiltInPermList"),   QStringLiteral("strUnloadPluginArray"),
            QStringLiteral("bMIPCheckPolicySet"),   QStringLiteral("nMIPCheckPolicyOnDocSave"),
            QStringLiteral("elemRibbonCategory"),   QStringLiteral("elemQuickAccessBar")};
}

QStringList SettingOracle::lostByTheReader()
{
    return {QStringLiteral("bRemoveAdvertise"), QStringLiteral("bHideMyApps"),
            QStringLiteral("strLoginDomainList")};
}

QStringList SettingOracle::preferenceKeys()
{
    return {QStringLiteral("StartPage"),
            QStringLiteral("Advertise"),
            QStringLiteral("bMIPCheckPolicyOnDocSave"),
            QStringLiteral("AuthLibrary"),
            QStringLiteral("DefaultLaunchAttachmentPerms"),
            QStringLiteral("HideMyApps"),
            QStringLiteral("iManage10loginMethod"),
            QStringLiteral("LoginDomain"),
            QStringLiteral("LoginDomainList"),
            QStringLiteral("SupportExtSSO")};
}

QStringList SettingOracle::turns()
{
    return {QStringLiteral("checkBox_showStartPg"),
            QStringLiteral("checkBox_removeAdvertise"),
            QStringLiteral("cb_hidemyapps"),
            QStringLiteral("cb_fileattachmentsMode"),
            QStringLiteral("tt_defaultLaunchAttachmentPerms"),
            QStringLiteral("rb_disableopenfile_all"),
            QStringLiteral("cb_aip_options"),
            QStringLiteral("cb_auth_lib_options"),
            QStringLiteral("listWidget_pluginList"),
            QStringLiteral("cb_UseExternalBrowserForSSO"),
            QStringLiteral("OnBeforeSave"),
            QStringLiteral("cb_biManageLogin"),
            QStringLiteral("cb_allowed_whitelist"),
            QStringLiteral("tableView_domains"),
            QStringLiteral("cb_defaultpdf")};
}
