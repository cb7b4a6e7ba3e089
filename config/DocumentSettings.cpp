// SPDX-License-Identifier: Apache-2.0
#include "config/DocumentSettings.h"

namespace {

using Data = EditorXmlData;
using Value = std::optional<QString>;

QString digit(bool value)
{
    return value ? QStringLiteral("1") : QStringLiteral("0");
}

Value zero(const Data &)
{
    return digit(false);
}

bool isOne(const QString &text)
{
    return text == QLatin1String("1");
}

template <bool Data::*member> Value writeBool(const Data &data)
{
    return digit(data.*member);
}

template <bool Data::*member> void readBool(Data &data, const QString &text)
{
    data.*member = isOne(text);
}

template <QString Data::*member> Value writeText(const Data &data)
{
    return data.*member;
}

template <QString Data::*member> void readText(Data &data, const QString &text)
{
    data.*member = text;
}

Value writeMipPolicy(const Data &data)
{
    return data.bMIPCheckPolicySet ? Value(QString::number(data.nMIPCheckPolicyOnDocSave)) : std::nullopt;
}

void readMipPolicy(Data &data, const QString &text)
{
    const int number = text.toInt(&data.bMIPCheckPolicySet);
    data.nMIPCheckPolicyOnDocSave = data.bMIPCheckPolicySet ? number : -1;
}

Value writeAuthLibrary(const Data &data)
{
    return digit(data.nAuthLibrary == 1);
}

void readAuthLibrary(Data &data, const QString &text)
{
    data.nAuthLibrary = isOne(text) ? 1 : 0;
}

/// A choice in the list wins; without one only the two words are translated, every other text is lost.
Value writeAttachmentMode(const Data &data)
{
    if (data.nFileAttachmentsMode >= 1)
        return QString::number(data.nFileAttachmentsMode - 1);
    if (data.strDisableOpenSaveFileAttach == QLatin1String("Enabled"))
        return digit(false);
    if (data.strDisableOpenSaveFileAttach == QLatin1String("Disabled"))
        return digit(true);
    return QString();
}

} // namespace

const std::array<DocumentSetting, 12> &documentSettings()
{
    static const QLatin1String attachments("DefaultLaunchAttachmentPerms");
    static const QLatin1String mode("Mode");
    static const QLatin1String string("String");
    static const std::array<DocumentSetting, 12> settings = {{
        {QLatin1String("StartPage"), mode, nullptr, writeBool<&Data::bShowStartPage>,
         readBool<&Data::bShowStartPage>},
        {QLatin1String("Advertise"), QLatin1String("Disable"), zero, writeBool<&Data::bRemoveAdvertise>,
         readBool<&Data::bRemoveAdvertise>},
        {QLatin1String("bMIPCheckPolicyOnDocSave"), mode, nullptr, writeMipPolicy, readMipPolicy},
        {QLatin1String("AuthLibrary"), mode, writeAuthLibrary, nullptr, readAuthLibrary},
        {attachments, mode, zero, writeBool<&Data::bDisableOpenFileAll>,
         readBool<&Data::bDisableOpenFileAll>},
        {attachments, QLatin1String("BuiltInPermList"), nullptr, writeText<&Data::strBuiltInPermList>,
         readText<&Data::strBuiltInPermList>},
        {attachments, QLatin1String("DisableOpenSaveFileAttach"), nullptr, writeAttachmentMode,
         readText<&Data::strDisableOpenSaveFileAttach>},
        {QLatin1String("HideMyApps"), mode, nullptr, writeBool<&Data::bHideMyApps>,
         readBool<&Data::bHideMyApps>},
        {QLatin1String("iManage10loginMethod"), QLatin1String("UseOAuth2"), writeBool<&Data::bUseOAuth2>,
         nullptr, readBool<&Data::bUseOAuth2>},
        {QLatin1String("LoginDomain"), string, writeText<&Data::strLoginDomain>, nullptr,
         readText<&Data::strLoginDomain>},
        {QLatin1String("LoginDomainList"), string, writeText<&Data::strLoginDomainList>, nullptr,
         readText<&Data::strLoginDomainList>},
        {QLatin1String("SupportExtSSO"), mode, writeBool<&Data::bSupportExtSSO>, nullptr,
         readBool<&Data::bSupportExtSSO>},
    }};
    return settings;
}
