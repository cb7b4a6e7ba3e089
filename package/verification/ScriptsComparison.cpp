// SPDX-License-Identifier: Apache-2.0
#include "package/verification/ScriptsComparison.h"

#include <algorithm>

namespace {

bool haveOneOwner(const ScriptsMembers &members)
{
    return std::all_of(members.begin(), members.end(), [&](const ScriptsMember &member) {
        return member.uid == members.first().uid && member.gid == members.first().gid;
    });
}

QString octal(int mode)
{
    return QStringLiteral("%1").arg(mode, 4, 8, QLatin1Char('0'));
}

/// In which way a member is another one, as code and clause; no code when it is the same.
QPair<QString, QString> differenceOf(const ScriptsMember &expected, const ScriptsMember &found,
                                     bool hasOneOwner)
{
    if (expected.type != found.type)
        return {QStringLiteral("member-type"),
                QStringLiteral("is a %1 instead of a %2").arg(found.type, expected.type)};
    if (expected.sha256 != found.sha256)
        return {QStringLiteral("member-bytes"), QStringLiteral("is not what a build makes of the vendor's")};
    if (expected.permissions != found.permissions)
        return {QStringLiteral("member-mode"),
                QStringLiteral("has the mode %1 instead of %2")
                    .arg(octal(found.permissions), octal(expected.permissions))};
    if (!hasOneOwner && (expected.uid != found.uid || expected.gid != found.gid))
        return {QStringLiteral("member-owner"), QStringLiteral("belongs to %1:%2 instead of %3:%4")
                                                    .arg(found.uid)
                                                    .arg(found.gid)
                                                    .arg(expected.uid)
                                                    .arg(expected.gid)};
    return {};
}

} // namespace

Deviations compareScripts(const QString &entry, const ScriptsMembers &expected, const ScriptsMembers &found)
{
    Deviations findings;
    const bool hasOneOwner = haveOneOwner(found);
    const auto pathOf = [&entry](const QString &member) -> QString { return entry + QLatin1Char('/') + member; };
    for (auto member = expected.begin(); member != expected.end(); ++member) {
        if (!found.contains(member.key())) {
            findings.append(
                {QStringLiteral("member-removed"), pathOf(member.key()), QStringLiteral("is missing")});
            continue;
        }
        const auto [code, text] = differenceOf(*member, found[member.key()], hasOneOwner);
        if (!code.isEmpty())
            findings.append({code, pathOf(member.key()), text});
    }
    for (auto member = found.begin(); member != found.end(); ++member) {
        if (!expected.contains(member.key()))
            findings.append({QStringLiteral("member-added"), pathOf(member.key()),
                             QStringLiteral("is not in the vendor's scripts")});
    }
    return findings;
}
