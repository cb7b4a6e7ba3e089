// SPDX-License-Identifier: Apache-2.0
#include "config/RibbonCommands.h"

#include "config/Product.h"
#include "config/RibbonDefinition.h"
#include "core/NearestWord.h"
#include "core/PrintableText.h"

#include <algorithm>

namespace {

using RibbonCommands::Command;

const QString separator = QStringLiteral("/");

QString nameOf(const QDomElement &element)
{
    return element.attribute(QStringLiteral("Name"));
}

QString titleOf(const QDomElement &element)
{
    return element.attribute(QStringLiteral("Title"));
}

/// Two controls belong to the window's frame.
bool canBeOnBar(const QDomElement &element)
{
    const QString name = nameOf(element);
    return element.tagName() == QLatin1String("Control") && name != QLatin1String("Ribbonbar_Search") &&
           name != QLatin1String("PelixAccount");
}

Command commandBelow(const Command &parent, const QDomElement &element)
{
    return {element,
            parent.path + QStringList(nameOf(element)),
            parent.titles + QStringList(titleOf(element)),
            parent.inEditor && existsInProduct(element, Product::editor()),
            parent.inReader && existsInProduct(element, Product::reader()),
            canBeOnBar(element)};
}

void collect(const Command &parent, QVector<Command> &commands)
{
    for (QDomElement child = parent.element.firstChildElement(); !child.isNull();
         child = child.nextSiblingElement()) {
        const Command command = commandBelow(parent, child);
        commands.append(command);
        collect(command, commands);
    }
}

QVector<Command> collected()
{
    Command root;
    root.element = ribbonDefinition().documentElement();
    QVector<Command> commands;
    collect(root, commands);
    return commands;
}

bool isEnd(const QStringList &path, const QString &text)
{
    for (int from = 0; from < path.size(); ++from) {
        if (path.mid(from).join(separator) == text)
            return true;
    }
    return false;
}

QVector<Command> commandsThat(const Product &product, bool (*fits)(const Command &, const QString &),
                              const QString &text)
{
    QVector<Command> found;
    for (const Command &command : RibbonCommands::all()) {
        if (RibbonCommands::has(product, command) && fits(command, text))
            found.append(command);
    }
    return found;
}

bool isNamed(const Command &command, const QString &text)
{
    return isEnd(command.path, text);
}

bool isTitled(const Command &command, const QString &text)
{
    return isEnd(command.titles, text);
}

bool isCommon(const QString &name)
{
    static const QStringList names = RibbonCommands::commonActions();
    return names.contains(name);
}

/// Whether hiding one of them hides all.
bool areOneAction(const QVector<Command> &commands)
{
    const QString name = commands.first().path.last();
    return isCommon(name) && std::all_of(commands.begin(), commands.end(),
                                         [&](const Command &command) { return command.path.last() == name; });
}

QString listed(const QVector<Command> &commands)
{
    constexpr int told = 6;
    QStringList paths;
    for (const Command &command : commands.mid(0, told))
        paths += QLatin1Char('"') + command.path.join(separator) + QLatin1Char('"');
    if (commands.size() > told)
        paths += QStringLiteral("…");
    return paths.join(QStringLiteral(", "));
}

QString nearestTo(const QString &text, const Product &product)
{
    QStringList known;
    for (const Command &command : RibbonCommands::all()) {
        if (RibbonCommands::has(product, command))
            known << command.path.last() << command.titles.last();
    }
    return nearestHint(text, known);
}

Problem unknown(const QString &text, const Product &product)
{
    return {{},
            QStringLiteral("the product has no ribbon command \"%1\"%2; \"pct config commands\" lists them")
                .arg(printableStart(text, 64), nearestTo(text, product))};
}

} // namespace

const QVector<RibbonCommands::Command> &RibbonCommands::all()
{
    static const QVector<Command> commands = collected();
    return commands;
}

QStringList RibbonCommands::commonActions()
{
    return {QStringLiteral("Ribbon_Action_SearchHighlight"),
            QStringLiteral("Ribbon_Action_EditPageObject"),
            QStringLiteral("Ribbon_Action_EditPageObject_Text"),
            QStringLiteral("Ribbon_Action_EditPageObject_Image"),
            QStringLiteral("Ribbon_Action_EditPageObject_Shape"),
            QStringLiteral("Ribbon_Action_EditPageObject_Shading"),
            QStringLiteral("Ribbon_Action_EditPageObject_All"),
            QStringLiteral("Ribbon_Action_EditText"),
            QStringLiteral("Ribbon_Action_Bookmark"),
            QStringLiteral("Ribbon_Action_QuickOcr"),
            QStringLiteral("Ribbon_Action_RotateView"),
            QStringLiteral("Ribbon_Menu_Item_RotateLeft"),
            QStringLiteral("Ribbon_Action_Typewriter"),
            QStringLiteral("Ribbon_Action_FillandSign")};
}

bool RibbonCommands::has(const Product &product, const Command &command)
{
    return product.isEditor() ? command.inEditor : command.inReader;
}

QVector<RibbonCommands::Command> RibbonCommands::onBar(const Product &product)
{
    QVector<Command> commands;
    for (const Command &command : all()) {
        if (command.canBeOnBar && has(product, command))
            commands.append(command);
    }
    return commands;
}

Result<RibbonCommands::Command> RibbonCommands::named(const QString &text, const Product &product)
{
    QVector<Command> found = commandsThat(product, isNamed, text);
    if (found.isEmpty())
        found = commandsThat(product, isTitled, text);
    if (found.isEmpty())
        return unknown(text, product);
    if (found.size() == 1 || areOneAction(found))
        return found.first();
    return Problem{{},
                   QStringLiteral("\"%1\" names several ribbon commands; give one of %2")
                       .arg(printableStart(text, 64), listed(found))};
}
