// SPDX-License-Identifier: Apache-2.0
#include "lint/Rules.h"

#include "config/Product.h"
#include "config/RibbonCommands.h"
#include "config/RibbonDefinition.h"
#include "core/NearestWord.h"
#include "lint/LookAlike.h"

#include <algorithm>

namespace {

using namespace Lint;
using RibbonCommands::Command;

const QString textAttribute = QStringLiteral("Text");
const QString hiddenAttribute = QStringLiteral("Hidden");

QString nameOf(const QDomElement &definition)
{
    return definition.attribute(QStringLiteral("Name"));
}

/// The elements below a definition that a product has.
QVector<QDomElement> below(const QDomElement &definition, const Product &product)
{
    QVector<QDomElement> children;
    for (QDomElement child = definition.firstChildElement(); !child.isNull();
         child = child.nextSiblingElement()) {
        if (existsInProduct(child, product))
            children.append(child);
    }
    return children;
}

QDomElement named(const QVector<QDomElement> &definitions, const QString &name)
{
    const auto found = std::find_if(definitions.begin(), definitions.end(),
                                    [&](const QDomElement &one) { return nameOf(one) == name; });
    return found == definitions.end() ? QDomElement() : *found;
}

QStringList namesOf(const QVector<QDomElement> &definitions)
{
    QStringList names;
    for (const QDomElement &definition : definitions)
        names += nameOf(definition);
    return names;
}

/// An element of the customized ribbon, what the product has at its place, and which of it the element means.
struct Part
{
    QDomElement element;
    QVector<QDomElement> offered;
    QDomElement definition; ///< null when none of it
};

/// What is below an unknown element is left out.
void collect(const QDomElement &parent, const QDomElement &definition, const Product &product,
             QVector<Part> &parts)
{
    const QVector<QDomElement> offered = below(definition, product);
    for (QDomElement child = parent.firstChildElement(); !child.isNull() && parts.size() < mostLookedAt;
         child = child.nextSiblingElement()) {
        const QDomElement known = named(offered, child.attribute(textAttribute));
        parts.append({child, offered, known});
        if (!known.isNull())
            collect(child, known, product, parts);
    }
}

QVector<Part> partsOf(const Subject &subject)
{
    QVector<Part> parts;
    collect(subject.ribbon, ribbonDefinition().documentElement(), *subject.product, parts);
    return parts;
}

/// Where the quick-access bar has a command: behind which page, and in which group.
bool isOnBarAt(const Command &command, const QString &page, const QString &group)
{
    const QString category = command.path.first();
    const bool isOutside =
        category == QLatin1String("TabElements") || category == QLatin1String("Ribbon_Page_Bar");
    return group == QLatin1String("Other") ? isOutside : category == page || category == group;
}

bool isOnBar(const QVector<Command> &commands, const QDomElement &control)
{
    return std::any_of(commands.begin(), commands.end(), [&](const Command &command) {
        return command.path.last() == control.attribute(QStringLiteral("action")) &&
               isOnBarAt(command, control.attribute(QStringLiteral("page")),
                         control.attribute(QStringLiteral("group")));
    });
}

QStringList actionsOf(const QVector<Command> &commands)
{
    QStringList actions;
    for (const Command &command : commands)
        actions += command.path.last();
    return actions;
}

QVector<QDomElement> controlsOf(const Subject &subject)
{
    QVector<QDomElement> controls;
    for (QDomElement control = subject.quickAccessBar.firstChildElement(QStringLiteral("control"));
         !control.isNull() && controls.size() < mostLookedAt;
         control = control.nextSiblingElement(QStringLiteral("control")))
        controls.append(control);
    return controls;
}

/// `known` are the commands that the product has there, and `others` those of the other product.
QString whose(const Product &product, const QString &name, const QStringList &known,
              const QStringList &others)
{
    if (!known.contains(name) && others.contains(name))
        return QStringLiteral(", only the %1 has").arg(product.other().title);
    return known.contains(name) ? QStringLiteral(" on this page and in this group")
                                : nearestHint(name, known);
}

Remarks unknownOnBar(const Subject &subject)
{
    Remarks remarks;
    const QVector<Command> commands = RibbonCommands::onBar(*subject.product);
    const QStringList actions = actionsOf(commands);
    const QStringList others = actionsOf(RibbonCommands::onBar(subject.product->other()));
    for (const QDomElement &control : controlsOf(subject)) {
        const QString action = control.attribute(QStringLiteral("action"));
        if (isOnBar(commands, control) || !lookAlike(action, actions).isEmpty())
            continue;
        remarks.append({placeIn(subject, control),
                        QStringLiteral("the quick-access bar has no %1%2; \"pct config commands\" lists its "
                                       "commands")
                            .arg(quoted(action), whose(*subject.product, action, actions, others))});
    }
    return remarks;
}

QString ownerHint(const Subject &subject, const Part &part, const QString &name)
{
    const QStringList known = namesOf(part.offered);
    const QVector<Command> &all = RibbonCommands::all();
    const bool isOthers = std::any_of(all.begin(), all.end(), [&](const Command &command) {
        return command.path.last() == name && RibbonCommands::has(subject.product->other(), command) &&
               !RibbonCommands::has(*subject.product, command);
    });
    return isOthers ? QStringLiteral(", only the %1 has").arg(subject.product->other().title)
                    : nearestHint(name, known);
}

/// Whether the customized ribbon shows nothing of what the product has there.
bool isAllHidden(const QDomElement &element, const QDomElement &definition, const Product &product);

bool areAllHidden(const QDomElement &parent, const QVector<QDomElement> &definitions, const Product &product)
{
    return std::all_of(definitions.begin(), definitions.end(), [&](const QDomElement &definition) {
        QDomElement child = parent.firstChildElement();
        while (!child.isNull() && child.attribute(textAttribute) != nameOf(definition))
            child = child.nextSiblingElement();
        return !child.isNull() && isAllHidden(child, definition, product);
    });
}

bool isAllHidden(const QDomElement &element, const QDomElement &definition, const Product &product)
{
    if (element.attribute(hiddenAttribute) == QLatin1String("1"))
        return true;
    const QVector<QDomElement> children = below(definition, product);
    return !children.isEmpty() && areAllHidden(element, children, product);
}

/// The pages of the ribbon; the quick-access bar stands beside them in the definition.
QVector<QDomElement> categoriesOf(const Product &product)
{
    QVector<QDomElement> categories;
    for (const QDomElement &element : below(ribbonDefinition().documentElement(), product)) {
        if (element.tagName() == QLatin1String("Category"))
            categories.append(element);
    }
    return categories;
}

} // namespace

Remarks Lint::unknownCommands(const Subject &subject)
{
    Remarks remarks;
    for (const Part &part : partsOf(subject)) {
        const QString name = part.element.attribute(textAttribute);
        if (!part.definition.isNull() || !lookAlike(name, namesOf(part.offered)).isEmpty())
            continue;
        remarks.append({placeIn(subject, part.element),
                        QStringLiteral("the ribbon of the %1 has no %2 here%3; \"pct config commands\" lists "
                                       "what it has")
                            .arg(subject.product->title, quoted(name), ownerHint(subject, part, name))});
    }
    return remarks + unknownOnBar(subject);
}

Remarks Lint::lookAlikeCommands(const Subject &subject)
{
    Remarks remarks;
    const auto add = [&](const QDomElement &element, const QString &name, const QStringList &known) {
        const QString plain = lookAlike(name, known);
        if (!plain.isEmpty())
            remarks.append({placeIn(subject, element),
                            QStringLiteral("the command %1 only looks like %2 (%3); type it anew")
                                .arg(quoted(name), quoted(plain), oddityOf(name))});
    };
    for (const Part &part : partsOf(subject))
        add(part.element, part.element.attribute(textAttribute), namesOf(part.offered));
    const QStringList actions = actionsOf(RibbonCommands::onBar(*subject.product));
    for (const QDomElement &control : controlsOf(subject))
        add(control, control.attribute(QStringLiteral("action")), actions);
    return remarks;
}

Remarks Lint::unreadInRibbon(const Subject &subject)
{
    Remarks remarks;
    const QStringList known{textAttribute, hiddenAttribute};
    for (const Part &part : partsOf(subject)) {
        const QDomNamedNodeMap attributes = part.element.attributes();
        for (int i = 0; i < attributes.count(); ++i) {
            const QString name = attributes.item(i).nodeName();
            if (!known.contains(name))
                remarks.append({placeIn(subject, part.element),
                                QStringLiteral("nothing reads the attribute %1 of %2%3; correct its name or "
                                               "remove it")
                                    .arg(quoted(name), quoted(part.element.attribute(textAttribute)),
                                         nearestHint(name, known))});
        }
    }
    return remarks;
}

Remarks Lint::wrongHidden(const Subject &subject)
{
    Remarks remarks;
    for (const Part &part : partsOf(subject)) {
        const QString hidden = part.element.attribute(hiddenAttribute);
        if (hidden != QLatin1String("0") && hidden != QLatin1String("1"))
            remarks.append({placeIn(subject, part.element),
                            QStringLiteral("\"Hidden\" of %1 is %2, so it is shown; write 1 (hidden) or 0 "
                                           "(shown)")
                                .arg(quoted(part.element.attribute(textAttribute)), quoted(hidden))});
    }
    return remarks;
}

Remarks Lint::hiddenRibbon(const Subject &subject)
{
    const QVector<QDomElement> categories = categoriesOf(*subject.product);
    if (categories.isEmpty() || !areAllHidden(subject.ribbon, categories, *subject.product))
        return {};
    return {{placeIn(subject, subject.ribbon),
             QStringLiteral("all %1 categories of the ribbon are hidden; show at least one")
                 .arg(categories.size())}};
}
