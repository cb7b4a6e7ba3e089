// SPDX-License-Identifier: Apache-2.0
#include "cli/Console.h"
#include "cli/ExitCode.h"
#include "cli/HostCommands.h"
#include "cli/Json.h"
#include "cli/VerbLine.h"
#include "core/PrintableText.h"
#include "package/signature/PackageSigning.h"
#include "profile/CProfileGenerator.h"

#include <QJsonArray>

namespace {

const QString packages = QStringLiteral("packages");

/// What can sign, and what was said about files that cannot or that others can read.
struct Listing
{
    QStringList names;
    QList<FileWarning> warnings;
};

void writeListing(const Listing &listing, bool asJson, Console &console)
{
    if (asJson) {
        console.writeJson({{QStringLiteral("identities"), QJsonArray::fromStringList(listing.names)},
                           {QStringLiteral("warnings"), warningsArray(listing.warnings)}});
    } else {
        for (const QString &name : listing.names)
            console.out() << printableText(name) << '\n';
    }
    for (const FileWarning &warning : listing.warnings)
        console.warning(warning.file, warning.warning.text);
}

Result<Listing> listIdentities(bool forPackages)
{
    const QString command = QStringLiteral("/usr/bin/security");
    if (const Result<> there = haveCommands({command}); !there)
        return there.problem();
    const SigningIdentities identities = forPackages ? CProfileGenerator::FindSignIDs(QStringLiteral("basic"))
                                                     : CProfileGenerator::FindSignIDs();
    if (identities.names)
        return Listing{forPackages ? identitiesForPackages(*identities.names) : *identities.names,
                       identityWarnings(identities.remarks)};
    return Problem{command, QStringLiteral("the identities cannot be listed (%1); check that the keychain is "
                                           "unlocked")
                                .arg(identities.names.problem().text)};
}

int runIdentities(const VerbLine &line, Console &console)
{
    const Result<Listing> listing = listIdentities(line.value(OptionName::forUse) == packages);
    if (!listing) {
        console.error(listing.problem());
        return ExitCode::refused;
    }
    writeListing(*listing, line.isSet(OptionName::json), console);
    return ExitCode::done;
}

} // namespace

Verb identitiesVerb()
{
    Verb verb{QLatin1String("identities"),
              QLatin1String("list the identities that can sign a profile or a package"), runIdentities};
    verb.description = QStringLiteral(
        "Lists the code-signing identities of this user that can sign a profile, one a line, as the "
        "signing dialog of the window does, or those for installer packages.");
    verb.options = {withRemark({OptionName::forUse, QStringLiteral("what is to be signed"),
                                Value::choice({QStringLiteral("profiles"), packages})},
                               QStringLiteral("; profiles when nothing is said")),
                    jsonOption()};
    return verb;
}
