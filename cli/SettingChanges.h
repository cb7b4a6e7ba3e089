// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "cli/Option.h"
#include "config/Settings.h"
#include "core/Result.h"

#include <QStringList>

#include <vector>

class VerbLine;

/// What a command line asks to change in settings.
struct SettingChanges
{
    QStringList values;   ///< each "NAME=VALUE"
    QStringList defaults; ///< names of settings that get their default
    QStringList commands; ///< of the ribbon
    QStringList onBar;    ///< commands on the quick-access bar
    bool hides = true;    ///< whether commands are hidden or shown again

    bool isEmpty() const;

    /// That the values have their form and that there are settings of these names.
    Result<> check() const;

    /// Changes the record of a product and gives the settings that were named. A problem when the product has
    /// no such value; the record is then half changed.
    Result<std::vector<const Setting *>> applyTo(EditorXmlData &data, const Product &product) const;
};

/// --hide-command and --quick-access, and what they are given.
QList<Option> ribbonOptions(const QString &hide, const QString &takeOff);
void takeRibbonOptions(SettingChanges &changes, const VerbLine &line);
