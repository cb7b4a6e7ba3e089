// SPDX-License-Identifier: Apache-2.0
#include "config/UnreadSettings.h"

#include "config/ConfigDocument.h"
#include "config/DocumentSettings.h"
#include "config/XmlTree.h"

#include <QDomDocument>
#include <QHash>

#include <algorithm>
#include <array>

namespace {

const QString textAttribute = QStringLiteral("Text");

/// Each look at the attributes costs the square of their number.
constexpr int enough = 1000;

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

/// Walks over a document as its reader does.
class Walk
{
public:
    explicit Walk(const QDomElement &root);

    QStringList unread;

private:
    /// Reads a section's contents; false when the child is not read.
    using ReadChild = bool (Walk::*)(const QDomElement &child);
    struct Section
    {
        QDomElement element;
        ReadChild readChild;
    };

    const Section *sectionAt(const QDomElement &element) const;
    bool visit(const QDomElement &element);
    bool visitChildren(const QDomElement &element);
    void readSection(const Section &section);
    bool readPreference(const QDomElement &item);
    bool readPlugin(const QDomElement &item);
    bool readInstallationOption(const QDomElement &item);
    bool readRibbon(const QDomElement &element);
    bool readQuickAccessBar(const QDomElement &element);
    void requireAttributes(const QDomElement &element, const QStringList &known);

    std::array<Section, 5> m_sections;
    QHash<QString, QStringList> m_preferences; ///< by key, the attributes that are read
};

Walk::Walk(const QDomElement &root)
{
    const QVector<QDomElement> sections = XmlTree::firstNamed(root, ConfigDocument::sectionNames());
    m_sections = {{{sections.at(0), &Walk::readPreference},
                   {sections.at(1), &Walk::readPlugin},
                   {sections.at(2), &Walk::readInstallationOption},
                   {sections.at(3), &Walk::readRibbon},
                   {sections.at(4), &Walk::readQuickAccessBar}}};
    for (const DocumentSetting &setting : documentSettings())
        m_preferences[setting.key] += {textAttribute, setting.attribute};
    requireAttributes(root,
                      {QStringLiteral("version"), QStringLiteral("Edition"), QStringLiteral("XMLversion")});
    visitChildren(root);
}

const Walk::Section *Walk::sectionAt(const QDomElement &element) const
{
    const auto found = std::find_if(m_sections.begin(), m_sections.end(),
                                    [&](const Section &section) { return section.element == element; });
    return found == m_sections.end() ? nullptr : &*found;
}

/// True when the element is a section, or there is one below.
bool Walk::visit(const QDomElement &element)
{
    if (const Section *section = sectionAt(element)) {
        readSection(*section);
        return true;
    }
    const int before = unread.size();
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
            unread.append(described(child));
    }
    return leadsToASection;
}

void Walk::readSection(const Section &section)
{
    requireAttributes(section.element, {});
    for (QDomElement child = section.element.firstChildElement(); !child.isNull();
         child = child.nextSiblingElement()) {
        if (!sectionAt(child) && !(this->*section.readChild)(child))
            unread.append(described(child));
    }
}

bool Walk::readPreference(const QDomElement &item)
{
    const auto known = m_preferences.constFind(item.attribute(textAttribute));
    if (known == m_preferences.constEnd())
        return false;
    requireAttributes(item, *known);
    return true;
}

bool Walk::readPlugin(const QDomElement &item)
{
    requireAttributes(item, {textAttribute, QStringLiteral("UnloadPluginArray")});
    return true;
}

bool Walk::readInstallationOption(const QDomElement &item)
{
    if (item.attribute(textAttribute) != QLatin1String("SetAsDefaultViewer"))
        return false;
    requireAttributes(item, {textAttribute, QStringLiteral("Disable")});
    return true;
}

bool Walk::readRibbon(const QDomElement &element)
{
    const QString tag = QStringLiteral("RibbonUI");
    return element.tagName() == tag && element.previousSiblingElement(tag).isNull();
}

bool Walk::readQuickAccessBar(const QDomElement &element)
{
    const QString tag = QStringLiteral("QuickAccessBar");
    if (element.tagName() != tag || !element.previousSiblingElement(tag).isNull())
        return false;
    requireAttributes(element, {});
    for (QDomElement child = element.firstChildElement(); !child.isNull();
         child = child.nextSiblingElement()) {
        if (child.tagName() == QLatin1String("control"))
            requireAttributes(child,
                              {QStringLiteral("action"), QStringLiteral("page"), QStringLiteral("group")});
        else
            unread.append(described(child));
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
            unknown.append(QStringLiteral("attribute \"%1\" of %2").arg(shortened(name), described(element)));
    }
    unknown.sort();
    unread += unknown;
}

} // namespace

QStringList unreadSettings(const QDomDocument &document)
{
    return Walk(document.documentElement()).unread;
}
