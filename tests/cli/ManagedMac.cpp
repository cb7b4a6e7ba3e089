// SPDX-License-Identifier: Apache-2.0
#include "tests/cli/ManagedMac.h"

#include "tests/support/TestFiles.h"

using namespace ProfileXml;

const QByteArray ManagedReport::domain = "com.pelix-software.Pelix.PDF.Editor.settings";
const QByteArray ManagedReport::payloadUuid = "11111111-2222-4333-8444-555555555555";
const QByteArray ManagedReport::device = "spconfigprofile_section_deviceconfigprofiles";

using namespace ManagedReport;

namespace {

QByteArray entry(const QByteArray &name, const QByteArray &further, const QList<QByteArray> &items = {})
{
    QByteArray text = key("_name", string(name)) + further;
    if (!items.isEmpty())
        text += key("_items", array(items.join()));
    return dictionary(text);
}

QByteArray property(const QByteArray &name, const QByteArray &value)
{
    return key("spconfigprofile_" + name, string(value));
}

} // namespace

QByteArray ManagedReport::reportedPayload(const QByteArray &type, const QByteArray &uuid,
                                          const QByteArray &data)
{
    return entry(type, property("payload_identifier", "an.identifier") + property("payload_uuid", uuid) +
                           property("payload_data", data));
}

QByteArray ManagedReport::reportedProfile(const QByteArray &identifier, const QList<QByteArray> &payloads)
{
    return entry("Office profile",
                 property("profile_identifier", identifier) +
                     property("profile_uuid", "99999999-7777-4888-9999-AAAAAAAAAAAA") +
                     property("organization", "Example") + property("description", "All Macs") +
                     property("install_source", "MDM") + property("verification_state", "verified"),
                 payloads);
}

QByteArray ManagedReport::section(const QByteArray &name, const QList<QByteArray> &profiles)
{
    return entry(name, QByteArray(), profiles);
}

QByteArray ManagedReport::report(const QList<QByteArray> &sections)
{
    return plist(array(dictionary(key("_SPCommandLineArguments", array(string("-xml"))) +
                                  key("_dataType", string("SPConfigurationProfileDataType")) +
                                  key("_items", array(sections.join())) +
                                  key("_versionInfo", dictionary(QByteArray())))));
}

QByteArray ManagedReport::managedSettings()
{
    return plist(dictionary(
        key("PayloadUUID", string(payloadUuid)) + key("_manualProfile", "<false/>") +
        key("Preferences",
            array(preference("StartPage", key("Mode", string("0"))) +
                  preference("HideMyApps", key("Mode", "<true/>")) +
                  preference("bMIPCheckPolicyOnDocSave", key("Mode", "<integer>1</integer>")) +
                  preference("LoginDomainList", key("String", string("a.example;b.example"))))) +
        key("Plugins",
            array(dictionary(key("Plugin", dictionary(key("Text", string("Plugin")) +
                                                      key("UnloadPluginArray", string("one;two")))))))));
}

ManagedMac::ManagedMac()
{
    setEnvironment(QStringLiteral("PCT_MANAGED_PREFERENCES"), m_preferences.path());
    listsNothing();
    reportIs(report(
        {section(device, {reportedProfile("office.example", {reportedPayload(domain, payloadUuid)})})}));
}

QString ManagedMac::preferences(const QString &user) const
{
    const QString name = QString::fromLatin1(domain) + QStringLiteral(".plist");
    return m_preferences.filePath(user.isEmpty() ? name : user + QLatin1Char('/') + name);
}

void ManagedMac::reportIs(const QByteArray &xml) const
{
    TestFiles::write(file(QStringLiteral("../report.xml")), xml);
    replaceTool(QStringLiteral("system_profiler"),
                "[ \"$*\" = 'SPConfigurationProfileDataType -xml' ] || exit 64\n"
                "cat '" +
                    file(QStringLiteral("../report.xml")).toUtf8() + "'");
}

void ManagedMac::listsNothing() const
{
    replaceTool(QStringLiteral("profiles"),
                "echo \"There are no configuration profiles installed for user 'jane'\"");
}
