// SPDX-License-Identifier: Apache-2.0
#include "hosttools/profiles/ConfigurationProfile.h"

#include "hosttools/base/Error.h"
#include "hosttools/security/SignedMessage.h"

#include <algorithm>
#include <array>
#include <pwd.h>
#include <unistd.h>
#include <utility>

using namespace FlatPkg;
using namespace PropertyList;

namespace ConfigurationProfile {

namespace {

/// What a profile calls its properties, and what the system calls those of an installed one.
constexpr std::array<std::pair<const char *, const char *>, 8> shownAs = {{
    {"PayloadDescription", "ProfileDescription"},
    {"PayloadDisplayName", "ProfileDisplayName"},
    {"PayloadIdentifier", "ProfileIdentifier"},
    {"PayloadOrganization", "ProfileOrganization"},
    {"PayloadRemovalDisallowed", "ProfileRemovalDisallowed"},
    {"PayloadType", "ProfileType"},
    {"PayloadUUID", "ProfileUUID"},
    {"PayloadVersion", "ProfileVersion"},
}};

/// The properties that every payload has; all others are its settings.
constexpr std::array<const char *, 8> payloadProperties = {
    "PayloadDescription",  "PayloadDisplayName", "PayloadEnabled", "PayloadIdentifier",
    "PayloadOrganization", "PayloadType",        "PayloadUUID",    "PayloadVersion"};

bool isPayloadProperty(const QByteArray &key)
{
    return std::find(payloadProperties.begin(), payloadProperties.end(), key) != payloadProperties.end();
}

void requireText(plist_t dictionary, const char *key)
{
    if (text(dictionary, key).isEmpty())
        throw Error(QByteArray("is not a configuration profile: it has no ") + key);
}

void requirePayloads(plist_t profile)
{
    const plist_t payloads = plist_dict_get_item(profile, "PayloadContent");
    if (!is(payloads, PLIST_ARRAY))
        throw Error("is not a configuration profile: its PayloadContent is not an array");
    forEach(payloads, [](const QByteArray &, plist_t payload) {
        if (!is(payload, PLIST_DICT))
            throw Error("is not a configuration profile: a payload in it is not a dictionary");
    });
}

void requireProfile(plist_t profile)
{
    if (!is(profile, PLIST_DICT) || text(profile, "PayloadType") != "Configuration")
        throw Error("is not a configuration profile: its PayloadType is not \"Configuration\"");
    requireText(profile, "PayloadIdentifier");
    requireText(profile, "PayloadUUID");
    requirePayloads(profile);
}

/// What is forced by its domain is wrapped under a name of its own.
QByteArray shownKey(const QByteArray &key)
{
    return key == "PayloadContent" ? QByteArrayLiteral("PayloadContentManagedPreferences") : key;
}

Node shownItem(plist_t payload)
{
    Node item(plist_new_dict());
    Node settings(plist_new_dict());
    forEach(payload, [&](const QByteArray &key, plist_t value) {
        insert(isPayloadProperty(key) ? item.get() : settings.get(), shownKey(key), copyOf(value));
    });
    insert(item.get(), "PayloadContent", std::move(settings));
    return item;
}

Node shownItems(plist_t profile)
{
    Node items(plist_new_array());
    forEach(plist_dict_get_item(profile, "PayloadContent"),
            [&items](const QByteArray &, plist_t payload) { append(items.get(), shownItem(payload)); });
    return items;
}

} // namespace

Node read(const QByteArray &bytes)
{
    const bool isSigned = SignedMessage::looksSigned(bytes);
    Node profile = PropertyList::read(isSigned ? SignedMessage::decoded(bytes).bytes : bytes);
    requireProfile(profile.get());
    return profile;
}

QByteArray identifier(plist_t profile)
{
    return text(profile, "PayloadIdentifier");
}

QByteArray userName()
{
    const passwd *user = getpwuid(geteuid());
    return user ? QByteArray(user->pw_name) : QByteArray::number(geteuid());
}

QByteArray level(plist_t profile)
{
    return text(profile, "PayloadScope") == "System" ? QByteArrayLiteral("_computerlevel") : userName();
}

Node shown(plist_t profile, const QByteArray &installDate)
{
    Node result(plist_new_dict());
    for (const auto &[key, shownKey] : shownAs)
        if (const plist_t value = plist_dict_get_item(profile, key))
            insert(result.get(), shownKey, copyOf(value));
    insert(result.get(), "ProfileInstallDate", ofText(installDate));
    insert(result.get(), "ProfileItems", shownItems(profile));
    return result;
}

} // namespace ConfigurationProfile
