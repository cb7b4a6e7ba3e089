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

Verdict listIdentities(QStringList &names)
{
    const QString command = QStringLiteral("/usr/bin/security");
    if (const Verdict problem = missingCommand({command}))
        return problem;
    QString failure;
    names = CProfileGenerator::GetSignIDs(&failure);
    if (failure.isEmpty())
        return std::nullopt;
    return Problem{command, QStringLiteral("the identities cannot be listed (%1); check that the keychain is "
                                           "unlocked")
                                .arg(failure)};
}

int runIdentities(const VerbLine &line, Console &console)
{
    QStringList names;
    if (const Verdict problem = listIdentities(names)) {
        console.error(*problem);
        return ExitCode::refused;
    }
    writeNames(names, line.isSet(QStringLiteral("json")), console);
    return ExitCode::done;
}

} // namespace

Verb identitiesVerb()
{
    return {QLatin1String("identities"), QLatin1String("list the identities that can sign a profile"),
            identitiesSyntax, runIdentities};
}
