// SPDX-License-Identifier: Apache-2.0
#include "cli/IdentityChoice.h"

#include "cli/VerbLine.h"
#include "config/EditorXmlData.h"
#include "profile/CProfileGenerator.h"
#include "profile/PayloadUuid.h"

#include <QRegularExpression>

namespace {

bool matches(const QString &value, const QString &pattern)
{
    return QRegularExpression(QRegularExpression::anchoredPattern(pattern)).match(value).hasMatch();
}

Problem needsIdentifier()
{
    return {{}, QStringLiteral("--stable needs an identifier to make UUIDs of; give --identifier")};
}

} // namespace

QList<Option> IdentityChoice::options()
{
    return {
        withRemark({OptionName::identifier,
                    QStringLiteral("identifier of the profile, which replaces an installed one of the same"),
                    Value::text("ID")},
                   QStringLiteral("; wins over that of a source")),
        withRemark({OptionName::uuid, QStringLiteral("UUID of the profile"), Value::text("UUID")},
                   QStringLiteral(" in its usual form with four hyphens; wins over that of a source")),
        withRemark(
            {OptionName::stable, QStringLiteral("make UUIDs that are the same in every run")},
            QStringLiteral(": version 5 of the DNS namespace and the identifier, and of the profile's UUID "
                           "and the payload's type. An `--uuid` goes before the first of them")),
    };
}

IdentityChoice IdentityChoice::of(const VerbLine &line)
{
    return {line.value(OptionName::identifier), line.value(OptionName::uuid), line.isSet(OptionName::stable)};
}

Result<> IdentityChoice::check(bool hasSource) const
{
    const QString uuidForm = QStringLiteral("[0-9A-Fa-f]{8}(-[0-9A-Fa-f]{4}){3}-[0-9A-Fa-f]{12}");
    if (!uuid.isEmpty() && !matches(uuid, uuidForm))
        return Problem{{}, QStringLiteral("\"%1\" is no UUID; give one such as uuidgen prints").arg(uuid)};
    if (!matches(identifier, QStringLiteral("[^\\s\\p{C}]*")))
        return Problem{{}, QStringLiteral("an identifier holds neither white space nor control characters")};
    if (isStable && identifier.isEmpty() && !hasSource)
        return needsIdentifier();
    return {};
}

bool IdentityChoice::isComplete() const
{
    return !identifier.isEmpty() && (isStable || !uuid.isEmpty());
}

Result<> IdentityChoice::settle(ProfilePayloadInfo &identity) const
{
    if (!identifier.isEmpty())
        identity.PayloadIdentifier = identifier;
    if (isStable && identity.PayloadIdentifier.isEmpty())
        return needsIdentifier();
    if (isStable)
        identity.PayloadUUID = stableProfileUuid(identity.PayloadIdentifier);
    if (!uuid.isEmpty())
        identity.PayloadUUID = uuid;
    QString freshUuid;
    QString freshIdentifier = CProfileGenerator::GenPayloadIdentifier(&freshUuid);
    if (identity.PayloadUUID.isEmpty())
        identity.PayloadUUID = freshUuid;
    if (identity.PayloadIdentifier.isEmpty())
        identity.PayloadIdentifier = freshIdentifier.replace(freshUuid, identity.PayloadUUID);
    return {};
}
