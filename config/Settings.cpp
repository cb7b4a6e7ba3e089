// SPDX-License-Identifier: Apache-2.0
#include "config/Settings.h"

#include "config/KeptElement.h"
#include "config/SettingRules.h"
#include "config/XmlText.h"

namespace {

using Data = EditorXmlData;
using Section = Setting::Section;
using Written = Setting::Written;

/// Most settings pass from one form to another as the type of their member says.
template <auto member> struct Plain
{
    using Value = std::decay_t<decltype(std::declval<Data>().*member)>;

    static std::optional<QString> text(const Data &data)
    {
        if constexpr (std::is_same_v<Value, bool>)
            return digit(data.*member);
        else if constexpr (std::is_same_v<Value, int>)
            return QString::number(data.*member);
        else
            return data.*member;
    }

    static void readText(Data &data, const QString &text)
    {
        if constexpr (std::is_same_v<Value, bool>)
            data.*member = isOne(text);
        else if constexpr (std::is_same_v<Value, int>)
            data.*member = text.toInt();
        else
            data.*member = text;
    }

    static std::variant<QString, int> profileValue(const Data &data) { return *text(data); }

    static void readProfile(Data &data, const ProfileValue &value)
    {
        if constexpr (std::is_same_v<Value, QString>)
            data.*member = value.text;
        else
            data.*member = static_cast<Value>(value.number);
    }

    static std::variant<bool, int, QString> shown(const Data &data) { return data.*member; }
    static void take(Data &data, const Value &value) { data.*member = value; }
};

/// A row of the table: what it does not say is as the member's type has it.
struct Row : Setting
{
    Row in(Section section, const char *key, const char *attribute,
           Written written = Written::EmptyThenFilled)
    {
        place = {section, 0, QLatin1String(key), QLatin1String(attribute)};
        document.written = written;
        return *this;
    }

    Row preference(int item, const char *key, const char *attribute,
                   Written written = Written::EmptyThenFilled)
    {
        in(Section::Preferences, key, attribute, written);
        place.item = item;
        return *this;
    }

    Row onlyInDocument()
    {
        profile = {};
        return *this;
    }

    Row onlyInProfile()
    {
        document = {};
        return *this;
    }

    Row writtenBy(decltype(InDocument::text) text, decltype(InDocument::read) read)
    {
        document.text = text;
        document.read = read;
        return *this;
    }

    Row inProfileBy(decltype(InProfile::value) value, decltype(InProfile::read) read)
    {
        profile = {value, read};
        return *this;
    }

    Row at(int turn, const char *controlName)
    {
        control.name = QLatin1String(controlName);
        control.turn = turn;
        return *this;
    }

    template <typename Value> Row shownBy(decltype(Control::shown) shown, Take<Value> take)
    {
        control.shown = shown;
        control.collect = take;
        return *this;
    }

    Row optional()
    {
        control.isOptional = true;
        return *this;
    }

    Row offering(const std::vector<Choice> &offered)
    {
        choices = offered;
        return *this;
    }

    Row onlyForEditor()
    {
        isOnlyForEditor = true;
        return *this;
    }

    Row collectedAnew()
    {
        isCollectedAnew = true;
        return *this;
    }

    Row meaning(const char *text)
    {
        Setting::meaning = QLatin1String(text);
        return *this;
    }

    Row listing(Entries listed)
    {
        entries = listed;
        return *this;
    }

    Row followedBy(void (*rule)(Data &))
    {
        follow = rule;
        return *this;
    }

    Row settledBy(void (*rule)(Data &, const Product &))
    {
        settle = rule;
        return *this;
    }
};

Row named(const char *name, const char *title, const char *help, const Setting::Member &member)
{
    Row row;
    row.name = QLatin1String(name);
    row.title = QLatin1String(title);
    row.help = QLatin1String(help);
    row.member = member;
    return row;
}

template <auto member> Row setting(const char *name, const char *title, const char *help)
{
    using As = Plain<member>;
    return named(name, title, help, member)
        .writtenBy(As::text, As::readText)
        .inProfileBy(As::profileValue, As::readProfile)
        .template shownBy<typename As::Value>(As::shown, As::take);
}

template <QDomElement Data::*member>
Row ribbonSetting(const char *name, const char *title, const char *help, Section section)
{
    return named(name, title, help, member).in(section, "", "");
}

// Said of two settings each. The rows keep pointers to them.
const char attachments[] = "DefaultLaunchAttachmentPerms";
const char attachmentsHelp[] = "Preferences.html#attachments";
const char attachmentsTitle[] = "All file attachments may be opened or saved to disk";
const char policyHelp[] = "Preferences.html#mip-policy";
const char policyTitle[] = "Enable Default Sensitivity Label and Mandatory Sensitivity Labeling";
const char domainsHelp[] = "Preferences.html#Configure Login Domain";

std::vector<Setting> allSettings()
{
    return {
        setting<&Data::bShowStartPage>("bShowStartPage", "Show Start Page", "Preferences.html#Start Page")
            .meaning("show the start page at launch")
            .preference(1, "StartPage", "Mode")
            .at(1, "checkBox_showStartPg")
            .collectedAnew(),
        setting<&Data::bRemoveAdvertise>("bRemoveAdvertise", "Remove Advertisement",
                                         "Preferences.html#Advertisement")
            .meaning("remove advertisements")
            .preference(2, "Advertise", "Disable", Written::ZeroThenFilled)
            .at(2, "checkBox_removeAdvertise")
            .onlyForEditor()
            .collectedAnew(),
        setting<&Data::strDisableOpenSaveFileAttach>("strDisableOpenSaveFileAttach", attachmentsTitle,
                                                     attachmentsHelp)
            .meaning("attachment permission as the document says it")
            .preference(5, attachments, "DisableOpenSaveFileAttach")
            .onlyInDocument()
            .writtenBy(attachmentText, Plain<&Data::strDisableOpenSaveFileAttach>::readText)
            .offering({{QLatin1String("Default"), QLatin1String("Default")},
                       {QLatin1String("0"), QLatin1String("Enabled")},
                       {QLatin1String("1"), QLatin1String("Disabled")}})
            .followedBy(dropChosenAttachments)
            .collectedAnew(),
        setting<&Data::nFileAttachmentsMode>("nFileAttachmentsMode", attachmentsTitle, attachmentsHelp)
            .meaning("attachment mode chosen in the window")
            .preference(5, attachments, "DisableOpenSaveFileAttach")
            .onlyInProfile()
            .at(4, "cb_fileattachmentsMode")
            .offering(attachmentChoices())
            .settledBy(settleAttachmentMode)
            .followedBy(dropNamedAttachments)
            .collectedAnew(),
        setting<&Data::strBuiltInPermList>("strBuiltInPermList",
                                           "Edit the default list of file types (Extension)",
                                           "Preferences.html#file-types")
            .meaning("file types and their permission levels")
            .preference(5, attachments, "BuiltInPermList")
            .at(5, "tt_defaultLaunchAttachmentPerms")
            .listing(Setting::Entries::FileTypes)
            .collectedAnew(),
        setting<&Data::bDisableOpenFileAll>("bDisableOpenFileAll", "Disable all actions in PDFs",
                                            "Preferences.html#actions")
            .meaning("block all actions in documents")
            .preference(5, attachments, "Mode", Written::ZeroThenFilled)
            .at(6, "rb_disableopenfile_all"),
        setting<&Data::strUnloadPluginArray>("strUnloadPluginArray", "Plugins", "Plugins.html")
            .meaning("plug-ins not to load")
            .in(Section::Plugins, "Plugin", "UnloadPluginArray")
            .at(9, "listWidget_pluginList")
            .listing(Setting::Entries::Plugins)
            .settledBy(settlePlugins)
            .collectedAnew(),
        named("bMIPCheckPolicySet", policyTitle, policyHelp, &Data::bMIPCheckPolicySet)
            .meaning("whether there is an MIP policy on save")
            .followedBy(followPolicySet)
            .collectedAnew(),
        setting<&Data::nMIPCheckPolicyOnDocSave>("nMIPCheckPolicyOnDocSave", policyTitle, policyHelp)
            .meaning("MIP policy on save")
            .preference(3, "bMIPCheckPolicyOnDocSave", "Mode")
            .writtenBy(policyText, readPolicyText)
            .inProfileBy(policyInProfile, readPolicyInProfile)
            .at(7, "cb_aip_options")
            .shownBy(shownPolicy, takePolicy)
            .followedBy(followPolicy)
            .offering({{QLatin1String("-1"), QLatin1String("Default")},
                       {QLatin1String("0"), QLatin1String("Disabled")},
                       {QLatin1String("1"), QLatin1String("Enabled")}})
            .collectedAnew(),
        setting<&Data::nAuthLibrary>("nAuthLibrary", "MIP Authentication Library",
                                     "Preferences.html#mip-library")
            .meaning("MIP sign-in library")
            .preference(4, "AuthLibrary", "Mode", Written::AtOnce)
            .writtenBy(libraryText, readLibraryText)
            .inProfileBy(libraryInProfile, readLibraryInProfile)
            .at(8, "cb_auth_lib_options")
            .shownBy(shownLibrary, Plain<&Data::nAuthLibrary>::take)
            .offering(
                {{QLatin1String("0"), QLatin1String("MSAL")}, {QLatin1String("1"), QLatin1String("ADAL")}}),
        setting<&Data::bHideMyApps>("bHideMyApps", "Hide My Apps", "Preferences.html#Hide My Apps")
            .meaning("hide the applications area of the start screen")
            .preference(6, "HideMyApps", "Mode")
            .at(3, "cb_hidemyapps")
            .onlyForEditor(),
        setting<&Data::bSupportExtSSO>("bSupportExtSSO", "Use the external browser for single sign-on",
                                       "Preferences.html#mip-browser")
            .meaning("use the external browser for single sign-on")
            .preference(10, "SupportExtSSO", "Mode", Written::AtOnce)
            .at(10, "cb_UseExternalBrowserForSSO")
            .optional(),
        ribbonSetting<&Data::elemRibbonCategory>("elemRibbonCategory", "Ribbon Category",
                                                 "Ribbon Set.html#Ribbon Category", Section::Ribbon)
            .meaning("the customized ribbon as XML")
            .collectedAnew(),
        ribbonSetting<&Data::elemQuickAccessBar>("elemQuickAccessBar", "Quick Access Toolbar",
                                                 "Ribbon Set.html#Quick Access Toolbar",
                                                 Section::QuickAccessBar)
            .meaning("the customized quick-access bar as XML")
            .collectedAnew(),
        setting<&Data::bUseOAuth2>("bUseOAuth2", "Enable iManage 10 SSO Login",
                                   "Preferences.html#Enable iManage10 SSO Login")
            .meaning("iManage 10 signs in with OAuth 2")
            .preference(7, "iManage10loginMethod", "UseOAuth2", Written::AtOnce)
            .at(11, "cb_biManageLogin")
            .shownBy(Plain<&Data::bUseOAuth2>::shown, takeManagedLogin)
            .onlyForEditor(),
        setting<&Data::strLoginDomain>("strLoginDomain", "Configure allowed login domain whitelist",
                                       domainsHelp)
            .meaning("which login domains may sign in")
            .preference(8, "LoginDomain", "String", Written::AtOnce)
            .at(12, "cb_allowed_whitelist")
            .shownBy(shownDomainMode, takeDomainMode)
            .offering({{QLatin1String("1"), QLatin1String("Configure allowed login domain whitelist"),
                        QLatin1String("whitelist")},
                       {QLatin1String("2"), QLatin1String("Configure disallowed login domain blacklist"),
                        QLatin1String("blacklist")}})
            .onlyForEditor(),
        setting<&Data::strLoginDomainList>("strLoginDomainList", "Domain List", domainsHelp)
            .meaning("the listed domains")
            .preference(9, "LoginDomainList", "String", Written::AtOnce)
            .at(13, "tableView_domains")
            .listing(Setting::Entries::Domains)
            .onlyForEditor(),
        setting<&Data::bSetAsDefaultViewer>("bSetAsDefaultViewer", "Set as the default PDF viewer",
                                            "Installation Options.html#default-viewer")
            .meaning("make the product the default PDF viewer")
            .in(Section::Installation, "SetAsDefaultViewer", "Disable", Written::AtOnce)
            .onlyInDocument()
            .writtenBy(viewerText, readViewerText)
            .at(14, "cb_defaultpdf"),
    };
}

template <typename Value> bool same(const Value &first, const Value &second)
{
    return first == second;
}

bool same(const QDomElement &first, const QDomElement &second)
{
    return sameElement(first, second);
}

template <typename Value> bool isWritable(const Value &value)
{
    if constexpr (std::is_same_v<Value, QString>)
        return isXmlText(value);
    else if constexpr (std::is_same_v<Value, QDomElement>)
        return isXmlElement(value);
    else
        return true;
}

} // namespace

const std::vector<Setting> &settings()
{
    static const std::vector<Setting> all = allSettings();
    return all;
}

QDomElement &elementOf(const Setting &setting, EditorXmlData &data)
{
    return data.*std::get<QDomElement Data::*>(setting.member);
}

const QDomElement &elementOf(const Setting &setting, const EditorXmlData &data)
{
    return data.*std::get<QDomElement Data::*>(setting.member);
}

bool sameValue(const Setting &setting, const EditorXmlData &first, const EditorXmlData &second)
{
    return std::visit([&](auto member) { return same(first.*member, second.*member); }, setting.member);
}

void reset(const Setting &setting, EditorXmlData &data)
{
    std::visit([&](auto member) { data.*member = EditorXmlData().*member; }, setting.member);
}

void collectNothing(const Setting &setting, EditorXmlData &data)
{
    std::visit([&](auto take) { take(data, {}); }, setting.control.collect);
}

QString unwritableSetting(const EditorXmlData &data)
{
    for (const Setting &setting : settings()) {
        if (!std::visit([&](auto member) { return isWritable(data.*member); }, setting.member))
            return setting.name;
    }
    if (!isXmlText(data.payloadInfo.PayloadIdentifier))
        return QStringLiteral("PayloadIdentifier");
    return isXmlText(data.payloadInfo.PayloadUUID) ? QString() : QStringLiteral("PayloadUUID");
}
