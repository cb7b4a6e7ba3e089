// SPDX-License-Identifier: Apache-2.0
// Stand-in for the macOS command of the same name: what it tells of the installed configuration profiles.
#include "hosttools/base/ToolMain.h"
#include "hosttools/profiles/ConfigurationProfile.h"
#include "hosttools/profiles/ProfileStore.h"
#include "hosttools/security/Document.h"

using namespace FlatPkg;
using namespace PropertyList;

namespace {

const QByteArray dataType = QByteArrayLiteral("SPConfigurationProfileDataType");

/// The report's own names for what a profile or a payload says of itself.
void copyText(plist_t source, const char *key, plist_t target, const char *name)
{
    const QByteArray value = text(source, key);
    if (!value.isEmpty())
        insert(target, QByteArray("spconfigprofile_") + name, ofText(value));
}

Node payloadEntry(plist_t payload)
{
    Node entry(plist_new_dict());
    insert(entry.get(), "_name", ofText(text(payload, "PayloadType")));
    copyText(payload, "PayloadDisplayName", entry.get(), "payload_display_name");
    copyText(payload, "PayloadIdentifier", entry.get(), "payload_identifier");
    copyText(payload, "PayloadUUID", entry.get(), "payload_uuid");
    return entry;
}

Node profileEntry(plist_t profile)
{
    Node entry(plist_new_dict());
    Node payloads(plist_new_array());
    forEach(plist_dict_get_item(profile, "PayloadContent"), [&payloads](const QByteArray &, plist_t payload) {
        append(payloads.get(), payloadEntry(payload));
    });
    insert(entry.get(), "_name", ofText(text(profile, "PayloadDisplayName")));
    insert(entry.get(), "_items", std::move(payloads));
    copyText(profile, "PayloadDescription", entry.get(), "description");
    copyText(profile, "PayloadOrganization", entry.get(), "organization");
    copyText(profile, "PayloadIdentifier", entry.get(), "profile_identifier");
    copyText(profile, "PayloadUUID", entry.get(), "profile_uuid");
    return entry;
}

/// The profiles of the device, or else those of the user; null when there are none.
Node section(bool device, const QByteArray &name)
{
    Node profiles(plist_new_array());
    for (const ProfileStore::InstalledProfile &one : ProfileStore::all())
        if ((ConfigurationProfile::level(one.profile.get()) == "_computerlevel") == device)
            append(profiles.get(), profileEntry(one.profile.get()));
    if (plist_array_get_size(profiles.get()) == 0)
        return nullptr;
    Node entry(plist_new_dict());
    insert(entry.get(), "_name", ofText(name));
    insert(entry.get(), "_items", std::move(profiles));
    return entry;
}

void report()
{
    Node sections(plist_new_array());
    if (Node device = section(true, "spconfigprofile_section_deviceconfigprofiles"))
        append(sections.get(), std::move(device));
    if (Node user = section(false, "User Configuration Profiles (" + ConfigurationProfile::userName() + ')'))
        append(sections.get(), std::move(user));
    Node answer(plist_new_dict());
    insert(answer.get(), "_dataType", ofText(dataType));
    insert(answer.get(), "_items", std::move(sections));
    const Node answers(plist_new_array());
    append(answers.get(), std::move(answer));
    Document::print(toXml(answers.get()));
}

} // namespace

int main(int argc, char **argv)
{
    QVector<QByteArray> arguments = argumentsOf(argc, argv);
    if (arguments.size() == 2 && arguments.removeOne("-xml") && arguments.first() == dataType)
        return runTool("system_profiler", report);
    return wrongUsage("system_profiler", "SPConfigurationProfileDataType -xml");
}
