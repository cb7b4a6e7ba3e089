// SPDX-License-Identifier: Apache-2.0
#include "config/DocumentEdit.h"

#include "config/SettingItems.h"

#include <QDomDocument>

#include <algorithm>

namespace {

using Section = Setting::Section;

const QString textAttribute = QStringLiteral("Text");

bool isAtPlaceOf(const Setting &one, const Setting &other)
{
    return one.place.section == other.place.section && one.place.key == other.place.key &&
           one.place.attribute == other.place.attribute;
}

/// What documents say of the settings, whichever member says it.
EditorXmlData settled(EditorXmlData data, const Product &product)
{
    for (const Setting &setting : settings()) {
        if (setting.settle)
            setting.settle(data, product);
    }
    return data;
}

class Edit
{
public:
    Edit(QDomDocument &document, const DocumentChange &wanted)
        : m_document(document)
        , m_sections(document.documentElement())
        , m_wanted(wanted)
        , m_after(settled(wanted.after, wanted.product))
    {
    }

    void run()
    {
        for (const Section section : {Section::Preferences, Section::Installation}) {
            for (const SettingItem &item : documentItems(section))
                writeItem(section, item);
        }
        writePlugins();
        writeElement(Section::Ribbon);
        writeElement(Section::QuickAccessBar);
    }

private:
    bool isWanted(const Setting &setting) const
    {
        const auto &named = m_wanted.named;
        return !sameValue(setting, m_wanted.before, m_wanted.after) ||
               std::find(named.begin(), named.end(), &setting) != named.end();
    }

    /// Two settings can stand at one place, of which only one is written.
    bool isPlaceWanted(const Setting &written) const
    {
        return std::any_of(settings().begin(), settings().end(), [&](const Setting &setting) {
            return isAtPlaceOf(setting, written) && isWanted(setting);
        });
    }

    QString textOf(const Setting &setting) const
    {
        return setting.document.text(m_after).value_or(QString());
    }

    QDomElement sectionElement(Section section)
    {
        QDomElement &element = m_sections[section];
        if (!element.isNull())
            return element;
        QDomElement store = m_document.documentElement().firstChildElement(QStringLiteral("Profstore"));
        if (store.isNull())
            store = m_document.documentElement();
        element = store.appendChild(m_document.createElement(sectionName(section))).toElement();
        return element;
    }

    /// Of items with one key the last one counts.
    QDomElement itemFor(Section section, const SettingItem &item)
    {
        QDomElement parent = sectionElement(section);
        for (QDomElement known = parent.lastChildElement(); !known.isNull();
             known = known.previousSiblingElement()) {
            if (known.attribute(textAttribute) == item.key)
                return known;
        }
        QDomElement made = parent.appendChild(m_document.createElement(elementName(section))).toElement();
        made.setAttribute(textAttribute, item.key);
        for (const Setting *setting : item.settings)
            made.setAttribute(setting->place.attribute, textOf(*setting));
        return made;
    }

    void writeItem(Section section, const SettingItem &item)
    {
        for (const Setting *setting : item.settings) {
            if (isPlaceWanted(*setting))
                itemFor(section, item).setAttribute(setting->place.attribute, textOf(*setting));
        }
    }

    /// All items of the section count, so one is left.
    void writePlugins()
    {
        const Setting &setting = settingIn(Section::Plugins);
        if (!isWanted(setting))
            return;
        QDomElement section = sectionElement(Section::Plugins);
        for (QDomElement further = section.lastChildElement(); further != section.firstChildElement();
             further = section.lastChildElement())
            section.removeChild(further);
        QDomElement item = section.firstChildElement();
        if (item.isNull()) {
            item = section.appendChild(m_document.createElement(elementName(Section::Plugins))).toElement();
            item.setAttribute(textAttribute, setting.place.key);
        }
        item.setAttribute(setting.place.attribute, textOf(setting));
    }

    void writeElement(Section section)
    {
        const Setting &setting = settingIn(section);
        if (!isWanted(setting))
            return;
        QDomElement parent = sectionElement(section);
        const QDomElement old = parent.firstChildElement(elementName(section));
        const QDomElement &element = elementOf(setting, m_wanted.after);
        if (element.isNull()) {
            parent.removeChild(old);
            return;
        }
        const QDomNode made = m_document.importNode(element, true);
        if (old.isNull())
            parent.appendChild(made);
        else
            parent.replaceChild(made, old);
    }

    QDomDocument &m_document;
    SectionElements m_sections;
    const DocumentChange &m_wanted;
    const EditorXmlData m_after;
};

} // namespace

void change(QDomDocument &document, const DocumentChange &wanted)
{
    Edit(document, wanted).run();
}
