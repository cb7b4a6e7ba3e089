// SPDX-License-Identifier: Apache-2.0
#include "config/UnreadSettings.h"

#include "config/SettingItems.h"

#include <QDomDocument>
#include <QHash>

#include <algorithm>
#include <array>
#include <utility>

namespace {

const QString textAttribute = QStringLiteral("Text");

/// Each look at the attributes costs the square of their number.
constexpr int enough = 1000;

using Section = Setting::Section;

QString shortened(const QString &text)
{
    constexpr int longest = 64;
    return text.size() > longest ? text.left(longest) + QChar(0x2026) : text;
}

QString described(const QDomElement &element)
{
    const QString key = shortened(element.attribute(textAttribute));
    const QString name = shortened(element.tagName());
    if (!key.isEmpty())
        return QStringLiteral("%1 \"%2\"").arg(name, key);
    const QString parent = element.parentNode().toElement().tagName();
    return parent.isEmpty() ? name : QStringLiteral("%1 in %2").arg(name, shortened(parent));
}

/// The attributes that are read of the items of a section.
using AttributesByKey = QHash<QString, QStringList>;

AttributesByKey attributesByKey(Section section)
{
    AttributesByKey known;
    for (const SettingItem &item : documentItems(section)) {
        QStringList &attributes = known[item.key];
        attributes += textAttribute;
        for (const Setting *setting : item.settings)
            attributes += setting->place.attribute;
    }
    return known;
}

/// Walks over a document as its reader does.
class Walk
{
public:
    explicit Walk(const QDomElement &root);

    QVector<UnreadSetting> unread;

private:
    /// Reads one of a section's contents; false when the child is not read.
    using ReadChild = bool (Walk::*)(const QDomElement &child);
    struct Part
    {
        QDomElement element;
        ReadChild readChild;
    };

    const Part *partAt(const QDomElement &element) const;
    bool visit(const QDomElement &element);
    bool visitChildren(const QDomElement &element);
    void readPart(const Part &part);
    bool readPreference(const QDomElement &item);
    bool readInstallationOption(const QDomElement &item);
    bool readItem(const AttributesByKey &items, const QDomElement &item);
    bool readPlugin(const QDomElement &item);
    bool readRibbon(const QDomElement &element);
    bool readQuickAccessBar(const QDomElement &element);
    void requireAttributes(const QDomElement &element, const QStringList &known);
    void addElement(const QDomElement &element);

    std::array<Part, 5> m_parts;
    AttributesByKey m_preferences = attributesByKey(Section::Preferences);
    AttributesByKey m_installation = attributesByKey(Section::Installation);
    const QHash<QString, QStringList> m_keys{{sectionName(Section::Preferences), m_preferences.keys()},
                                             {sectionName(Section::Installation), m_installation.keys()}};
};

Walk::Walk(const QDomElement &root)
{
    SectionElements sections(root);
    m_parts = {{{sections[Section::Preferences], &Walk::readPreference},
                {sections[Section::Plugins], &Walk::readPlugin},
                {sections[Section::Installation], &Walk::readInstallationOption},
                {sections[Section::Ribbon], &Walk::readRibbon},
                {sections[Section::QuickAccessBar], &Walk::readQuickAccessBar}}};
    requireAttributes(root,
                      {QStringLiteral("version"), QStringLiteral("Edition"), QStringLiteral("XMLversion")});
    visitChildren(root);
}

const Walk::Part *Walk::partAt(const QDomElement &element) const
{
    const auto found = std::find_if(m_parts.begin(), m_parts.end(),
                                    [&](const Part &part) { return part.element == element; });
    return found == m_parts.end() ? nullptr : &*found;
}

/// True when the element is a section, or there is one below.
bool Walk::visit(const QDomElement &element)
{
    if (const Part *part = partAt(element)) {
        readPart(*part);
        return true;
    }
    const auto before = unread.size();
    const bool isOnTheWay = visitChildren(element) || element.tagName() == QLatin1String("Profstore");
    if (isOnTheWay)
        requireAttributes(element, {});
    else
        unread.erase(unread.begin() + before, unread.end());
    return isOnTheWay;
}

bool Walk::visitChildren(const QDomElement &element)
{
    bool leadsToASection = false;
    for (QDomElement child = element.firstChildElement(); !child.isNull();
         child = child.nextSiblingElement()) {
        if (visit(child))
            leadsToASection = true;
        else
            addElement(child);
    }
    return leadsToASection;
}

void Walk::readPart(const Part &part)
{
    requireAttributes(part.element, {});
    for (QDomElement child = part.element.firstChildElement(); !child.isNull();
         child = child.nextSiblingElement()) {
        if (!partAt(child) && !(this->*part.readChild)(child))
            addElement(child);
    }
}

bool Walk::readPreference(const QDomElement &item)
{
    return readItem(m_preferences, item);
}

bool Walk::readInstallationOption(const QDomElement &item)
{
    return readItem(m_installation, item);
}

bool Walk::readItem(const AttributesByKey &items, const QDomElement &item)
{
    const auto known = items.constFind(item.attribute(textAttribute));
    if (known == items.constEnd())
        return false;
    requireAttributes(item, *known);
    return true;
}

bool Walk::readPlugin(const QDomElement &item)
{
    requireAttributes(item, {textAttribute, settingIn(Section::Plugins).place.attribute});
    return true;
}

bool Walk::readRibbon(const QDomElement &element)
{
    const QString tag = elementName(Section::Ribbon);
    return element.tagName() == tag && element.previousSiblingElement(tag).isNull();
}

bool Walk::readQuickAccessBar(const QDomElement &element)
{
    const QString tag = elementName(Section::QuickAccessBar);
    if (element.tagName() != tag || !element.previousSiblingElement(tag).isNull())
        return false;
    requireAttributes(element, {});
    for (QDomElement child = element.firstChildElement(); !child.isNull();
         child = child.nextSiblingElement()) {
        if (child.tagName() == QLatin1String("control"))
            requireAttributes(child,
                              {QStringLiteral("action"), QStringLiteral("page"), QStringLiteral("group")});
        else
            addElement(child);
    }
    return true;
}

void Walk::requireAttributes(const QDomElement &element, const QStringList &known)
{
    const QDomNamedNodeMap attributes = element.attributes();
    if (unread.size() > enough)
        return;
    QStringList unknown;
    for (int i = 0; i < attributes.count(); ++i) {
        const QString name = attributes.item(i).nodeName();
        if (!known.contains(name))
            unknown.append(name);
    }
    unknown.sort();
    for (const QString &name : std::as_const(unknown))
        unread.append({QStringLiteral("attribute \"%1\" of %2").arg(shortened(name), described(element)),
                       name, known, element});
}

void Walk::addElement(const QDomElement &element)
{
    const QString key = element.attribute(textAttribute);
    const auto keys = m_keys.constFind(element.parentNode().toElement().tagName());
    const bool isItem = !key.isEmpty() && keys != m_keys.constEnd();
    unread.append({described(element), key.isEmpty() ? element.tagName() : key,
                   isItem ? *keys : sectionNames(), element});
}

} // namespace

QVector<UnreadSetting> unreadSettings(const QDomDocument &document)
{
    return Walk(document.documentElement()).unread;
}
