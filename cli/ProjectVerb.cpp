// SPDX-License-Identifier: Apache-2.0
#include "cli/Console.h"
#include "cli/ExitCode.h"
#include "cli/ProjectFile.h"
#include "cli/VerbLine.h"
#include "config/Product.h"
#include "project/ProjectShape.h"

#include <QJsonArray>

namespace {

QJsonArray outputsArray(const ProjectVariant &variant)
{
    QJsonArray outputs;
    for (const ProjectOutput &output : variant.outputs)
        outputs.append(
            QJsonObject{{QStringLiteral("kind"), output.kind}, {QStringLiteral("path"), output.path.text}});
    return outputs;
}

QJsonObject projectObject(const Project &project)
{
    QJsonArray variants;
    for (const ProjectVariant &variant : project.variants) {
        if (!variant.isAbstract)
            variants.append(QJsonObject{{QStringLiteral("name"), variant.name.text},
                                        {QStringLiteral("outputs"), outputsArray(variant)}});
    }
    return {{QStringLiteral("project"), project.file},
            {QStringLiteral("product"), project.product->word},
            {QStringLiteral("variants"), variants}};
}

void writeVariants(const Project &project, Console &console)
{
    for (const ProjectVariant &variant : project.variants) {
        if (variant.isAbstract)
            continue;
        QList<Console::Row> rows;
        for (const ProjectOutput &output : variant.outputs)
            rows.append({output.kind, output.path.text});
        console.writeTable(variant.name.text, rows);
    }
}

/// The version of the vendor's package stays a placeholder, because the package need not be there.
int runList(const VerbLine &line, Console &console)
{
    const Result<Project> project = readProject(line);
    const Result<Project> named =
        project ? project->named(QStringLiteral("${%1}").arg(Placeholders::vendorVersion))
                : project.problem();
    if (!named) {
        console.error(named.problem());
        return ExitCode::refused;
    }
    if (line.isSet(OptionName::json))
        console.writeJson(projectObject(*named));
    else
        writeVariants(*named, console);
    return ExitCode::done;
}

int runSchema(const VerbLine &, Console &console)
{
    console.writeJson(ProjectShape::jsonSchema());
    return ExitCode::done;
}

} // namespace

Verb projectVerb()
{
    return {QLatin1String("project"), QLatin1String("make all outputs of a project file")};
}

Verb projectListVerb()
{
    Verb verb{QLatin1String("project list"),
              QLatin1String("list the variants of a project and their outputs"), runList};
    verb.description =
        QStringLiteral("Lists the variants of a project and what is made of each. Needs neither "
                       "the vendor's package nor the documents.");
    verb.options = {jsonOption()};
    verb.operands = {projectOperand()};
    return verb;
}

Verb projectSchemaVerb()
{
    Verb verb{QLatin1String("project schema"), QLatin1String("print the JSON Schema of project files"),
              runSchema};
    verb.description = QStringLiteral("Prints the JSON Schema (draft 7) of project files, for editors that "
                                      "complete and check while writing.");
    return verb;
}
