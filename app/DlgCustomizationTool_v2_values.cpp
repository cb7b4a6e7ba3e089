// SPDX-License-Identifier: Apache-2.0
#include "app/DlgCustomizationTool_v2.h"

#include "config/EditorXmlData.h"
#include "pages/ICutsomizationHandler.h"
#include "profile/CProfileGenerator.h"
#include "ui_DlgCustomizationTool_v2.h"

#include <type_traits>

namespace {

using Window = DlgCustomizationTool_v2;

// How the value of a control enters the record.
struct CollectRow
{
    const char *objectName;
    void (*collect)(Window &window, const QString &objectName, EditorXmlData &record);
};

template <typename Value> Value valueOf(Window &window, const QString &objectName)
{
    if constexpr (std::is_same_v<Value, bool>)
        return window.GetBoolProperty(objectName);
    else if constexpr (std::is_same_v<Value, int>)
        return window.GetIntProperty(objectName);
    else
        return window.GetStringProperty(objectName);
}

template <auto member> void asRead(Window &window, const QString &objectName, EditorXmlData &record)
{
    using Value = std::decay_t<decltype(record.*member)>;
    record.*member = valueOf<Value>(window, objectName);
}

void checkPolicy(Window &window, const QString &objectName, EditorXmlData &record)
{
    // The list offers "not set" first, then the policies from 0 on.
    const int index = window.GetIntProperty(objectName);
    record.bMIPCheckPolicySet = index == 1 || index == 2;
    record.nMIPCheckPolicyOnDocSave = record.bMIPCheckPolicySet ? index - 1 : -1;
}

// Pages need not offer this setting: then the value that a document brought stays.
void externalBrowser(Window &window, const QString &objectName, EditorXmlData &record)
{
    bool found = false;
    const bool checked = window.GetBoolProperty(objectName, &found);
    if (found)
        record.bSupportExtSSO = checked;
}

// Deliberately one-way: a box seen checked once in a run stays in effect.
void managedLogin(Window &window, const QString &objectName, EditorXmlData &record)
{
    if (window.GetBoolProperty(objectName))
        record.bUseOAuth2 = true;
}

void domainMode(Window &window, const QString &objectName, EditorXmlData &record)
{
    record.strLoginDomain = window.GetBoolProperty(objectName) ? QStringLiteral("1") : QStringLiteral("2");
}

constexpr CollectRow rowsBeforeHandlers[] = {
    {"checkBox_showStartPg", asRead<&EditorXmlData::bShowStartPage>},
    {"checkBox_removeAdvertise", asRead<&EditorXmlData::bRemoveAdvertise>},
    {"cb_hidemyapps", asRead<&EditorXmlData::bHideMyApps>},
    {"cb_fileattachmentsMode", asRead<&EditorXmlData::nFileAttachmentsMode>},
    {"tt_defaultLaunchAttachmentPerms", asRead<&EditorXmlData::strBuiltInPermList>},
    {"rb_disableopenfile_all", asRead<&EditorXmlData::bDisableOpenFileAll>},
    {"cb_aip_options", checkPolicy},
    {"cb_auth_lib_options", asRead<&EditorXmlData::nAuthLibrary>},
    {"listWidget_pluginList", asRead<&EditorXmlData::strUnloadPluginArray>},
    {"cb_UseExternalBrowserForSSO", externalBrowser},
};

constexpr CollectRow rowsAfterHandlers[] = {
    {"cb_biManageLogin", managedLogin},
    {"cb_allowed_whitelist", domainMode},
    {"tableView_domains", asRead<&EditorXmlData::strLoginDomainList>},
    {"cb_defaultpdf", asRead<&EditorXmlData::bSetAsDefaultViewer>},
};

template <std::size_t count>
void collectRows(const CollectRow (&rows)[count], Window &window, EditorXmlData &record)
{
    for (const CollectRow &row : rows)
        row.collect(window, QLatin1String(row.objectName), record);
}

void ensureIdentifier(ProfilePayloadInfo &info)
{
    if (info.PayloadIdentifier.isEmpty())
        info.PayloadIdentifier = CProfileGenerator::GenPayloadIdentifier(&info.PayloadUUID);
}

void setFound(bool *found, bool value)
{
    if (found)
        *found = value;
}

} // namespace

template <typename Value, typename Validator>
Value DlgCustomizationTool_v2::lookUp(const QString &objectName, bool *found, const Validator &isAcceptable)
{
    for (const auto &[id, handler] : m_handlers) {
        const QVariant property = handler->GetProperty(objectName);
        if (!property.canConvert<Value>())
            continue;
        const Value value = property.value<Value>();
        const bool accepted = !isAcceptable || isAcceptable(value);
        if (!accepted)
            handler->OnError(objectName);
        setFound(found, accepted);
        return value;
    }
    setFound(found, false);
    return Value();
}

bool DlgCustomizationTool_v2::GetBoolProperty(const QString &objectName, bool *found,
                                              const std::function<bool(bool)> &isAcceptable)
{
    return lookUp<bool>(objectName, found, isAcceptable);
}

int DlgCustomizationTool_v2::GetIntProperty(const QString &objectName, bool *found,
                                            const std::function<bool(int)> &isAcceptable)
{
    return lookUp<int>(objectName, found, isAcceptable);
}

QString DlgCustomizationTool_v2::GetStringProperty(const QString &objectName, bool *found,
                                                   const std::function<bool(const QString &)> &isAcceptable)
{
    return lookUp<QString>(objectName, found, isAcceptable);
}

QString DlgCustomizationTool_v2::EditorXmlGetPluginList()
{
    return GetStringProperty(QStringLiteral("listWidget_pluginList"));
}

void DlgCustomizationTool_v2::ReloadEditorXmlData()
{
    EditorXmlData &record = *m_pEditorXmlData;
    ensureIdentifier(record.payloadInfo);
    record.Clear();
    collectRows(rowsBeforeHandlers, *this, record);
    for (const auto &[id, handler] : m_handlers)
        handler->OnBeforeSave();
    collectRows(rowsAfterHandlers, *this, record);
}
