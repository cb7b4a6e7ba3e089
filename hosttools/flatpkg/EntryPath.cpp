// SPDX-License-Identifier: Apache-2.0
#include "hosttools/flatpkg/EntryPath.h"

#include "hosttools/base/Error.h"
#include "hosttools/base/Files.h"

#include <climits>
#include <QList>

namespace FlatPkg {

namespace {

[[noreturn]] void refuseTarget(const QByteArray &target)
{
    throw Error("a link leads outside, to \"" + target + "\"");
}

} // namespace

void requireFileName(const QByteArray &name)
{
    const bool special = name.isEmpty() || name == "." || name == "..";
    if (special || name.contains('/') || name.contains('\0') || name.size() > NAME_MAX)
        throw Error("\"" + name.left(NAME_MAX) + "\" is no acceptable file name");
}

QVector<QByteArray> componentsOf(const QByteArray &path)
{
    if (path.startsWith('/'))
        throw Error("the absolute name \"" + path + "\" is not acceptable");
    QVector<QByteArray> components;
    for (const QByteArray &component : withoutTrailingSlashes(path).split('/')) {
        if (component == ".")
            continue;
        requireFileName(component);
        components.append(component);
    }
    if (components.size() > deepestNesting)
        throw Error("nested too deeply");
    return components;
}

void requireTargetInside(const QByteArray &target, int depth)
{
    if (target.isEmpty() || target.startsWith('/') || target.contains('\0'))
        refuseTarget(target);
    int up = 0;
    bool named = false;
    for (const QByteArray &component : target.split('/')) {
        const bool isUp = component == "..";
        if (isUp && (named || ++up > depth))
            refuseTarget(target);
        named = named || (!isUp && !component.isEmpty() && component != ".");
    }
}

} // namespace FlatPkg
