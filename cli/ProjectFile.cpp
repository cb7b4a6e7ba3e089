// SPDX-License-Identifier: Apache-2.0
#include "cli/ProjectFile.h"

#include "cli/InputFile.h"
#include "cli/VerbLine.h"

#include <QDir>
#include <QFileInfo>

namespace {

const QStringList &usualNames()
{
    static const QStringList names{QStringLiteral("pct-project.yaml"), QStringLiteral("pct-project.yml"),
                                   QStringLiteral("pct-project.json")};
    return names;
}

QString projectPath(const VerbLine &line)
{
    if (!line.operand(0).isEmpty())
        return line.operandPath();
    const QDir folder = QDir::current();
    for (const QString &name : usualNames()) {
        if (QFileInfo::exists(folder.filePath(name)))
            return folder.filePath(name);
    }
    return folder.filePath(usualNames().first());
}

} // namespace

bool isProjectFile(const QString &path)
{
    const QFileInfo file(path);
    static const QStringList extensions{QStringLiteral("yaml"), QStringLiteral("yml")};
    return usualNames().contains(file.fileName()) || extensions.contains(file.suffix().toLower());
}

Operand projectOperand()
{
    return {
        Value::project("PROJECT"),
        QStringLiteral("the project file, in YAML or JSON; otherwise pct-project.yaml of the working folder"),
        true};
}

Result<Project> readProject(const VerbLine &line)
{
    const QString path = projectPath(line);
    const Result<> readable =
        checkReadable(path, QStringLiteral("a project file; \"pct project init\" makes one"));
    return readable ? Project::read(path) : readable.problem();
}
