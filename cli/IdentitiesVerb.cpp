// SPDX-License-Identifier: Apache-2.0
#include "cli/Console.h"
#include "cli/ExitCode.h"
#include "cli/HostCommands.h"
#include "cli/Verb.h"
#include "core/PrintableText.h"
#include "profile/CProfileGenerator.h"

#include <QJsonArray>

namespace {

void writeNames(const QStringList &names, bool asJson, Console &console)
{
    if (asJson) {
        console.writeJson({{QStringLiteral("identities"), QJsonArray::fromStringList(names)}});
        return;
    }
    for (const QString &name : names)
        console.out() << printableText(name) << '\n';
}

VerbSyntax identitiesSyntax()
{
    VerbSyntax syntax;
    syntax.name = QStringLiteral("identities");
    syntax.synopsis = QStringLiteral("[--json]");
    syntax.description = QStringLiteral("Lists the code-signing identities of this user that \"pct profile "
                                        "--sign\" takes, one a line.");
    syntax.options = {CommonOption::json()};
    return syntax;
}

int runIdentities(const VerbLine &line, Console &console)
{
    if (const Verdict problem = missingCommand({QStringLiteral("/usr/bin/security")})) {
        console.error(*problem);
        return ExitCode::refused;
    }
    writeNames(CProfileGenerator::GetSignIDs(), line.isSet(QStringLiteral("json")), console);
    return ExitCode::done;
}

} // namespace

Verb identitiesVerb()
{
    return {QLatin1String("identities"), QLatin1String("list the identities that can sign a profile"),
            identitiesSyntax, runIdentities};
}
