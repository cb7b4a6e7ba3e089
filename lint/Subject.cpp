// SPDX-License-Identifier: Apache-2.0
#include "lint/Subject.h"

#include "config/JsonReader.h"
#include "config/SettingItems.h"
#include "config/UnreadSettings.h"

#include <algorithm>

namespace {

using Lint::Form;
using Lint::Subject;
using Section = Setting::Section;

const QString textAttribute = QStringLiteral("Text");

class DocumentWalk
{
public:
    explicit DocumentWalk(Subject &subject)
        : m_subject(subject)
        , m_sections(subject.document.documentElement())
    {
    }

    void run()
    {
        addItems(Section::Preferences);
        addPlugins();
        addItems(Section::Installation);
        m_subject.ribbon = childOf(Section::Ribbon);
        m_subject.quickAccessBar = childOf(Section::QuickAccessBar);
        for (const UnreadSetting &setting : unreadSettings(m_subject.document))
            m_subject.unread.append(
                {setting.text, setting.name, setting.known, m_subject.places.of(setting.element)});
    }

private:
    QDomElement childOf(Section section)
    {
        return m_sections[section].firstChildElement(elementName(section));
    }

    void add(const Setting &setting, const QDomElement &item)
    {
        const QString attribute = setting.place.attribute;
        m_subject.said.append(
            {&setting, item.attribute(attribute), item.hasAttribute(attribute), m_subject.places.of(item)});
    }

    void addItems(Section section)
    {
        for (QDomElement item = m_sections[section].firstChildElement(); !item.isNull();
             item = item.nextSiblingElement()) {
            for (const SettingItem &known : documentItems(section)) {
                if (item.attribute(textAttribute) == known.key)
                    addAll(known, item);
            }
        }
    }

    void addAll(const SettingItem &known, const QDomElement &item)
    {
        for (const Setting *setting : known.settings)
            add(*setting, item);
    }

    void addPlugins()
    {
        for (QDomElement item = m_sections[Section::Plugins].firstChildElement(); !item.isNull();
             item = item.nextSiblingElement())
            add(settingIn(Section::Plugins), item);
    }

    Subject &m_subject;
    SectionElements m_sections;
};

const Setting *settingNamed(const QString &name)
{
    const auto found = std::find_if(settings().begin(), settings().end(),
                                    [&](const Setting &setting) { return setting.name == name; });
    return found == settings().end() ? nullptr : &*found;
}

QString saidText(const Json::Value &value)
{
    if (value.type == Json::Type::Boolean)
        return value.isTrue ? QStringLiteral("1") : QStringLiteral("0");
    return value.text;
}

} // namespace

TextPlace Lint::placeOf(const Subject &subject, const Setting &setting)
{
    const auto found = std::find_if(subject.said.begin(), subject.said.end(),
                                    [&](const Said &said) { return said.setting == &setting; });
    return found == subject.said.end() ? TextPlace() : found->place;
}

TextPlace Lint::placeIn(const Subject &subject, const QDomElement &element)
{
    if (!subject.document.isNull())
        return subject.places.of(element);
    const auto found = std::find_if(subject.said.begin(), subject.said.end(), [&](const Said &said) {
        return elementName(said.setting->place.section) == element.tagName();
    });
    return found == subject.said.end() ? TextPlace() : found->place;
}

Result<> Lint::addDocument(Subject &subject, const QByteArray &xml)
{
    const Result<QDomDocument> document = XmlTree::read(xml, subject.places);
    if (!document)
        return document.problem();
    subject.document = *document;
    DocumentWalk(subject).run();
    return {};
}

Result<> Lint::addJson(Subject &subject, const QByteArray &json)
{
    const Result<Json::Value> root = Json::read(json);
    if (!root)
        return root.problem();
    const Json::Value *nested = root->member(QStringLiteral("settings"));
    for (const Json::Value &value : (nested ? *nested : *root).values) {
        if (const Setting *setting = settingNamed(value.name))
            subject.said.append({setting, saidText(value), true, value.place});
    }
    return {};
}

Lint::Subject Lint::subjectOf(Form form, const Product &product, const EditorXmlData &settings)
{
    Subject subject;
    subject.form = form;
    subject.product = &product;
    subject.settings = settings;
    subject.ribbon = settings.elemRibbonCategory;
    subject.quickAccessBar = settings.elemQuickAccessBar;
    return subject;
}

Result<Lint::Subject> Lint::subjectOf(Form form, const QByteArray &contents, const Product &product,
                                      const EditorXmlData &settings)
{
    Subject subject = subjectOf(form, product, settings);
    const auto add = form == Form::Document ? addDocument : form == Form::Profile ? addProfile : addJson;
    if (const Result<> added = add(subject, contents); !added)
        return added.problem();
    subject.isCut = std::max(subject.said.size(), subject.unread.size()) > mostLookedAt;
    subject.said = subject.said.mid(0, mostLookedAt);
    subject.unread = subject.unread.mid(0, mostLookedAt);
    return subject;
}
