// SPDX-License-Identifier: Apache-2.0
#include "config/RibbonChanges.h"

#include "config/KeptElement.h"
#include "config/RibbonDefinition.h"

#include <QDomDocument>

#include <algorithm>

namespace {

using RibbonCommands::Command;

const QString textAttribute = QStringLiteral("Text");
const QString hiddenAttribute = QStringLiteral("Hidden");

QString nameOf(const QDomElement &element)
{
    return element.attribute(QStringLiteral("Name"));
}

/// The bar and the File category stand outside the pages of the ribbon.
bool isOutsideThePages(const QString &category)
{
    return category == QLatin1String("TabElements") || category == QLatin1String("Ribbon_Page_Bar");
}

bool isCommon(const QString &name)
{
    static const QStringList names = RibbonCommands::commonActions();
    return names.contains(name);
}

QString childTag(const QDomElement &parent, const QDomElement &definition)
{
    const QString tag = parent.tagName();
    if (tag == QLatin1String("RibbonUI"))
        // The products expect the tag to follow from the text that people read, not from the name.
        return definition.attribute(QStringLiteral("Title")) == QLatin1String("TabElements")
                   ? QStringLiteral("TabElements")
                   : QStringLiteral("Category");
    if (tag == QLatin1String("Category"))
        return QStringLiteral("Panel");
    return tag == QLatin1String("Control") ? QStringLiteral("SubItem") : QStringLiteral("Control");
}

QDomElement childFor(const QDomElement &parent, const QDomElement &definition)
{
    QDomElement child = parent.firstChildElement();
    while (!child.isNull() && child.attribute(textAttribute) != nameOf(definition))
        child = child.nextSiblingElement();
    return child;
}

bool isHidden(const QDomElement &element)
{
    return element.attribute(hiddenAttribute) == QLatin1String("1");
}

void setHidden(QDomElement &element, bool hidden)
{
    element.setAttribute(hiddenAttribute, hidden ? QStringLiteral("1") : QStringLiteral("0"));
}

/// One ribbon element that is being changed, beside the definition of the product's ribbon.
class Fragment
{
public:
    Fragment(const QDomElement &root, const Product &product)
        : m_root(root)
        , m_product(product)
    {
    }

    void set(const Command &command, bool hidden)
    {
        setAt(command.path, hidden);
        for (const Command &inside : RibbonCommands::all()) {
            const bool isInside = inside.path.mid(0, command.path.size()) == command.path;
            if (isInside && isCommon(inside.path.last()) && RibbonCommands::has(m_product, inside))
                setTwinsOf(inside, hidden);
        }
    }

private:
    void setTwinsOf(const Command &command, bool hidden)
    {
        for (const Command &other : RibbonCommands::all()) {
            const bool isTwin = other.path.last() == command.path.last() && other.path != command.path;
            if (isTwin && RibbonCommands::has(m_product, other))
                setAt(other.path, hidden);
        }
    }

    void setAt(const QStringList &path, bool hidden)
    {
        setBelow(m_root, ribbonDefinition().documentElement(), path, hidden);
    }

    void setBelow(QDomElement parent, const QDomElement &parentDefinition, const QStringList &path,
                  bool hidden)
    {
        const QDomElement definition = definitionOf(parentDefinition, path.first());
        QDomElement element = ensured(parent, definition);
        if (path.size() == 1) {
            setBranch(element, definition, hidden);
        } else {
            setBelow(element, definition, path.mid(1), hidden);
            setHidden(element, areAllHidden(element, definition));
        }
        dropIfShown(element);
    }

    void setBranch(QDomElement element, const QDomElement &definition, bool hidden)
    {
        setHidden(element, hidden);
        for (const QDomElement &child : childrenOf(definition)) {
            const QDomElement known = hidden ? ensured(element, child) : childFor(element, child);
            if (known.isNull())
                continue;
            setBranch(known, child, hidden);
            dropIfShown(known);
        }
    }

    /// Branches that are shown as a whole are left out.
    static void dropIfShown(const QDomElement &element)
    {
        if (!isHidden(element) && element.firstChildElement().isNull())
            element.parentNode().removeChild(element);
    }

    bool areAllHidden(const QDomElement &element, const QDomElement &definition) const
    {
        const QVector<QDomElement> children = childrenOf(definition);
        return std::all_of(children.begin(), children.end(),
                           [&](const QDomElement &child) { return isHidden(childFor(element, child)); });
    }

    QVector<QDomElement> childrenOf(const QDomElement &definition) const
    {
        QVector<QDomElement> children;
        for (QDomElement child = definition.firstChildElement(); !child.isNull();
             child = child.nextSiblingElement()) {
            if (existsInProduct(child, m_product))
                children.append(child);
        }
        return children;
    }

    QDomElement definitionOf(const QDomElement &parent, const QString &name) const
    {
        const QVector<QDomElement> children = childrenOf(parent);
        return *std::find_if(children.begin(), children.end(),
                             [&](const QDomElement &child) { return nameOf(child) == name; });
    }

    /// The child of this definition, at its place in the ribbon's order.
    QDomElement ensured(QDomElement &parent, const QDomElement &definition) const
    {
        const QDomElement known = childFor(parent, definition);
        if (!known.isNull())
            return known;
        QDomElement made = parent.ownerDocument().createElement(childTag(parent, definition));
        made.setAttribute(textAttribute, nameOf(definition));
        for (QDomElement later = definition.nextSiblingElement(); !later.isNull();
             later = later.nextSiblingElement()) {
            const QDomElement follower = childFor(parent, later);
            if (!follower.isNull())
                return parent.insertBefore(made, follower).toElement();
        }
        return parent.appendChild(made).toElement();
    }

    QDomElement m_root;
    const Product &m_product;
};

/// What a control of the quick-access bar is called in a document.
struct BarEntry
{
    QString action;
    QString page;
    QString group;

    explicit BarEntry(const Command &command)
        : action(command.path.last())
        , page(isOutsideThePages(command.path.first()) ? QStringLiteral("Other") : command.path.first())
        , group(isOutsideThePages(command.path.first()) ? QStringLiteral("Other") : command.path.at(1))
    {
    }

    bool isOf(const QDomElement &control) const
    {
        return control.attribute(QStringLiteral("action")) == action &&
               control.attribute(QStringLiteral("page")) == page &&
               control.attribute(QStringLiteral("group")) == group;
    }

    QDomElement made(QDomDocument document) const
    {
        QDomElement control = document.createElement(QStringLiteral("control"));
        control.setAttribute(QStringLiteral("action"), action);
        control.setAttribute(QStringLiteral("page"), page);
        control.setAttribute(QStringLiteral("group"), group);
        return control;
    }
};

QDomElement controlIn(const QDomElement &bar, const BarEntry &entry)
{
    QDomElement control = bar.firstChildElement();
    while (!control.isNull() && !entry.isOf(control))
        control = control.nextSiblingElement();
    return control;
}

/// Adds the control of a command in front of the first one that follows it in the ribbon.
void takeOff(QDomElement &bar, const QVector<Command> &order, int place)
{
    const BarEntry entry(order.at(place));
    if (!controlIn(bar, entry).isNull())
        return;
    const QDomElement made = entry.made(bar.ownerDocument());
    for (int later = place + 1; later < order.size(); ++later) {
        const QDomElement follower = controlIn(bar, BarEntry(order.at(later)));
        if (!follower.isNull()) {
            bar.insertBefore(made, follower);
            return;
        }
    }
    bar.appendChild(made);
}

QDomElement copyOr(const QDomElement &element, const QString &tag)
{
    return keptElement(element.isNull() ? QDomDocument().createElement(tag) : element);
}

} // namespace

QDomElement withHidden(const QDomElement &ribbon, const Command &command, bool hidden, const Product &product)
{
    const QDomElement changed = copyOr(ribbon, QStringLiteral("RibbonUI"));
    Fragment(changed, product).set(command, hidden);
    return changed;
}

Result<QDomElement> withTakenOff(const QDomElement &bar, const Command &command, bool takenOff,
                                 const Product &product)
{
    QDomElement changed = copyOr(bar, QStringLiteral("QuickAccessBar"));
    const QVector<Command> order = RibbonCommands::onBar(product);
    bool isOnBar = false;
    for (int place = 0; place < order.size(); ++place) {
        if (order.at(place).path.mid(0, command.path.size()) != command.path)
            continue;
        isOnBar = true;
        if (takenOff)
            takeOff(changed, order, place);
        else
            changed.removeChild(controlIn(changed, BarEntry(order.at(place))));
    }
    if (isOnBar)
        return changed;
    return Problem{
        {},
        QStringLiteral("\"%1\" cannot be on the quick-access bar; \"pct config commands\" tells what can")
            .arg(command.path.join(QLatin1Char('/')))};
}
