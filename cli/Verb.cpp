// SPDX-License-Identifier: Apache-2.0
#include "cli/Verb.h"

#include <algorithm>
#include <iterator>

namespace {

QString parentOf(const Verb &verb)
{
    return QString(verb.name).section(QLatin1Char(' '), 0, -2);
}

} // namespace

const Verb *findVerb(const VerbTable &table, const QString &name)
{
    const auto found =
        std::find_if(table.begin(), table.end(), [&](const Verb &verb) { return verb.name == name; });
    return found == table.end() ? nullptr : &*found;
}

VerbTable verbsBelow(const VerbTable &table, const QString &name)
{
    VerbTable below;
    std::copy_if(table.begin(), table.end(), std::back_inserter(below),
                 [&](const Verb &verb) { return parentOf(verb) == name; });
    return below;
}

QString lastWord(const Verb &verb)
{
    return QString(verb.name).section(QLatin1Char(' '), -1);
}

const VerbTable &pctVerbs()
{
    static const VerbTable table{
        checkVerb(),          plistVerb(),        driftVerb(),        previewVerb(),      buildVerb(),        profileVerb(),      showVerb(),
        diffVerb(),           compareVerb(),      identitiesVerb(),   verifyVerb(),       configVerb(),
        configNewVerb(),      configSetVerb(),    configUnsetVerb(),  configGetVerb(),    configNamesVerb(),
        configCommandsVerb(), signVerb(),         notarizeVerb(),     projectVerb(),      projectInitVerb(),
        projectBuildVerb(),   projectCheckVerb(), projectListVerb(),  projectSchemaVerb(),
        lintVerb(),           schemaVerb()};
    return table;
}
