// SPDX-License-Identifier: Apache-2.0
#include "app/DlgCustomizationTool_v2.h"

#include "config/SettingItems.h"
#include "pages/ICutsomizationHandler.h"
#include "profile/CProfileGenerator.h"
#include "ui_DlgCustomizationTool_v2.h"

#include <limits>
#include <type_traits>

namespace {

using Window = DlgCustomizationTool_v2;

/// The pages write what they show in their own way when so many controls have been asked for.
constexpr int turnsBeforePages = 10;

template <typename Value> Value valueOf(Window &window, const QString &objectName, bool *found)
{
    if constexpr (std::is_same_v<Value, bool>)
        return window.GetBoolProperty(objectName, found);
    else if constexpr (std::is_same_v<Value, int>)
        return window.GetIntProperty(objectName, found);
    else
        return window.GetStringProperty(objectName, found);
}

template <typename Value>
void collectBy(Setting::Take<Value> take, const Setting::Control &control, Window &window,
               EditorXmlData &record)
{
    bool found = false;
    const auto value = valueOf<Value>(window, control.name, &found);
    if (found || !control.isOptional)
        take(record, value);
}

void collect(const Setting &setting, Window &window, EditorXmlData &record)
{
    std::visit([&](auto take) { collectBy(take, setting.control, window, record); }, setting.control.collect);
}

void collectTurns(int first, int last, Window &window, EditorXmlData &record)
{
    for (const Setting *setting : settingsInTurns()) {
        if (setting->control.turn >= first && setting->control.turn <= last)
            collect(*setting, window, record);
    }
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
        const auto value = property.value<Value>();
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
    collectTurns(1, turnsBeforePages, *this, record);
    for (const auto &[id, handler] : m_handlers)
        handler->OnBeforeSave();
    collectTurns(turnsBeforePages + 1, std::numeric_limits<int>::max(), *this, record);
}
