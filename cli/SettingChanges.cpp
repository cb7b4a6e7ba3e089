// SPDX-License-Identifier: Apache-2.0
#include "cli/SettingChanges.h"

#include "cli/VerbLine.h"
#include "config/RibbonChanges.h"
#include "config/SettingItems.h"
#include "config/SettingText.h"
#include "core/PrintableText.h"

namespace {

using Named = std::vector<const Setting *>;

QString nameIn(const QString &assignment)
{
    return assignment.section(QLatin1Char('='), 0, 0);
}

QString valueIn(const QString &assignment)
{
    return assignment.section(QLatin1Char('='), 1);
}

Result<> checkName(const QString &name)
{
    const Result<const Setting *> setting = SettingText::named(name);
    return setting ? Result<>() : setting.problem();
}

Result<> checkAssignment(const QString &assignment)
{
    if (!assignment.contains(QLatin1Char('=')))
        return Problem{{}, QStringLiteral("\"%1\" is no NAME=VALUE").arg(printableStart(assignment, 64))};
    return checkName(nameIn(assignment));
}

Result<> hideCommands(const SettingChanges &changes, EditorXmlData &data, const Product &product)
{
    for (const QString &name : changes.commands) {
        const Result<RibbonCommands::Command> command = RibbonCommands::named(name, product);
        if (!command)
            return command.problem();
        data.elemRibbonCategory = withHidden(data.elemRibbonCategory, *command, changes.hides, product);
    }
    return {};
}

Result<> takeOffBar(const SettingChanges &changes, EditorXmlData &data, const Product &product)
{
    for (const QString &name : changes.onBar) {
        const Result<RibbonCommands::Command> command = RibbonCommands::named(name, product);
        if (!command)
            return command.problem();
        const Result<QDomElement> bar =
            withTakenOff(data.elemQuickAccessBar, *command, changes.hides, product);
        if (!bar)
            return bar.problem();
        data.elemQuickAccessBar = *bar;
    }
    return {};
}

Option commandOption(QLatin1String name, const QString &meaning)
{
    return repeatable(
        withRemark({name, meaning, Value::text("NAME")}, QStringLiteral("; see `pct config commands`")));
}

} // namespace

bool SettingChanges::isEmpty() const
{
    return values.isEmpty() && defaults.isEmpty() && commands.isEmpty() && onBar.isEmpty();
}

Result<> SettingChanges::check() const
{
    for (const QString &assignment : values) {
        if (Result<> checked = checkAssignment(assignment); !checked)
            return checked;
    }
    for (const QString &name : defaults) {
        if (Result<> checked = checkName(name); !checked)
            return checked;
    }
    return {};
}

Result<Named> SettingChanges::applyTo(EditorXmlData &data, const Product &product) const
{
    Named named;
    for (const QString &assignment : values) {
        const Setting *setting = *SettingText::named(nameIn(assignment));
        if (const Result<> taken = SettingText::take(*setting, valueIn(assignment), product, data); !taken)
            return taken.problem();
        named.push_back(setting);
    }
    for (const QString &name : defaults) {
        named.push_back(*SettingText::named(name));
        SettingText::takeDefault(*named.back(), data);
    }
    if (const Result<> hidden = hideCommands(*this, data, product); !hidden)
        return hidden.problem();
    if (const Result<> takenOff = takeOffBar(*this, data, product); !takenOff)
        return takenOff.problem();
    return named;
}

QList<Option> ribbonOptions(const QString &hide, const QString &takeOff)
{
    return {commandOption(OptionName::hideCommand, hide), commandOption(OptionName::quickAccess, takeOff)};
}

void takeRibbonOptions(SettingChanges &changes, const VerbLine &line)
{
    changes.commands = line.values(OptionName::hideCommand);
    changes.onBar = line.values(OptionName::quickAccess);
}
