// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "core/Result.h"

#include <QDomElement>
#include <QStringList>
#include <QVector>

struct Product;

/// What the ribbon of the products offers. One thread; the problems name no file.
namespace RibbonCommands {

struct Command
{
    QDomElement element; ///< in the ribbon's definition
    QStringList path;    ///< names, from the category down to the command itself
    QStringList titles;  ///< what people read, in the same order
    bool inEditor = true;
    bool inReader = true;
    bool canBeOnBar = false; ///< can be taken off the quick-access bar
};

/// All categories, panels, controls and their items, in the order of the definition.
const QVector<Command> &all();

/// Actions that stand in several categories and are hidden or shown together.
QStringList commonActions();

/// Whether the product has it.
bool has(const Product &product, const Command &command);

/// Those of the product that can be taken off the quick-access bar, in the order of the definition.
QVector<Command> onBar(const Product &product);

/// What a text means in a product: a name, or the end of a path of names or titles with "/" between them. A
/// problem when it means nothing, or several commands that are not one action.
Result<Command> named(const QString &text, const Product &product);

} // namespace RibbonCommands
