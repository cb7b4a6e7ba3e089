// SPDX-License-Identifier: Apache-2.0
#include "config/Product.h"
#include "config/SettingItems.h"
#include "config/XmlMarkup.h"
#include "schema/ProfileForm.h"
#include "schema/Schema.h"

#include <QDomDocument>
#include <QVariant>

#include <algorithm>

namespace {

using Section = Setting::Section;

const char doctype[] = "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
                       "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n";

class PropertyListTree
{
public:
    explicit PropertyListTree(const QVariant &value)
    {
        QDomElement root = m_document.createElement(QStringLiteral("plist"));
        root.setAttribute(QStringLiteral("version"), QStringLiteral("1.0"));
        root.appendChild(element(value));
        m_document.appendChild(root);
    }

    QByteArray xml() const
    {
        return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n" + QByteArray(doctype) +
               XmlMarkup::of(m_document, 4);
    }

private:
    QDomElement leaf(const char *tag, const QString &text)
    {
        QDomElement made = m_document.createElement(QString::fromLatin1(tag));
        made.appendChild(m_document.createTextNode(text));
        return made;
    }

    QDomElement element(const QVariant &value)
    {
        switch (value.userType()) {
        case QMetaType::QVariantMap:
            return dictionary(value.toMap());
        case QMetaType::QVariantList:
        case QMetaType::QStringList:
            return array(value.toList());
        case QMetaType::Bool:
            return m_document.createElement(value.toBool() ? QStringLiteral("true")
                                                           : QStringLiteral("false"));
        case QMetaType::Int:
            return leaf("integer", value.toString());
        case QMetaType::QDateTime:
            return leaf("date", value.toDateTime().toUTC().toString(Qt::ISODate));
        default:
            return leaf("string", value.toString());
        }
    }

    QDomElement dictionary(const QVariantMap &members)
    {
        QDomElement made = m_document.createElement(QStringLiteral("dict"));
        for (auto member = members.begin(); member != members.end(); ++member) {
            made.appendChild(leaf("key", member.key()));
            made.appendChild(element(member.value()));
        }
        return made;
    }

    QDomElement array(const QVariantList &values)
    {
        QDomElement made = m_document.createElement(QStringLiteral("array"));
        for (const QVariant &value : values)
            made.appendChild(element(value));
        return made;
    }

    QDomDocument m_document{QString()};
};

QVariantMap subkey(const QString &name, const char *type, const QString &title, const QString &description)
{
    return {{QStringLiteral("pfm_name"), name},
            {QStringLiteral("pfm_type"), QString::fromLatin1(type)},
            {QStringLiteral("pfm_title"), title},
            {QStringLiteral("pfm_description"), description}};
}

QVariantMap with(QVariantMap map, const char *key, const QVariant &value)
{
    map.insert(QString::fromLatin1(key), value);
    return map;
}

QVariantMap always(const QVariantMap &map)
{
    return with(map, "pfm_require", QStringLiteral("always"));
}

/// The keys that every payload has.
QVariantList payloadKeys(const Product &product)
{
    const QString uuid =
        QStringLiteral("^[0-9A-Za-z]{8}-[0-9A-Za-z]{4}-[0-9A-Za-z]{4}-[0-9A-Za-z]{4}-[0-9A-Za-z]{12}$");
    const auto key = [](const char *name, const char *type, const char *title, const char *description) {
        return subkey(QString::fromLatin1(name), type, QString::fromLatin1(title),
                      QString::fromLatin1(description));
    };
    return {
        with(key("PayloadDescription", "string", "Payload Description", "What the payload is for."),
             "pfm_default", QStringLiteral("Settings of the %1").arg(product.title)),
        with(always(key("PayloadDisplayName", "string", "Payload Display Name", "What people see.")),
             "pfm_default", QString(product.title)),
        with(always(key("PayloadIdentifier", "string", "Payload Identifier", "Tells payloads apart.")),
             "pfm_default", QString(product.bundleIdentifier)),
        with(always(key("PayloadType", "string", "Payload Type", "The preference domain.")), "pfm_default",
             product.settingsType()),
        with(always(key("PayloadUUID", "string", "Payload UUID", "Is another for each payload.")),
             "pfm_format", uuid),
        with(
            always(key("PayloadVersion", "integer", "Payload Version", "The version of the payload's form.")),
            "pfm_default", 1),
        key("PayloadOrganization", "string", "Payload Organization", "Who gives out the profile."),
    };
}

/// One key of all items of a section, since an array has one form for all that is in it.
struct UnitedField
{
    QString name;
    QStringList titles;
    QStringList values;      ///< empty when one of the settings takes any text
    QStringList valueTitles; ///< what each value is called, by every setting that has it
    bool takesAnyText = false;

    void add(const FormField &field)
    {
        titles += QStringLiteral("%1 (%2)").arg(field.setting->title, field.setting->name);
        takesAnyText = takesAnyText || field.choices.isEmpty();
        for (const SettingText::Choice &choice : field.choices)
            addChoice(choice);
    }

    QVariantMap key() const
    {
        QVariantMap map =
            subkey(name, "string", name, QStringLiteral("For %1.").arg(titles.join(QStringLiteral(", "))));
        if (takesAnyText)
            return map;
        map.insert(QStringLiteral("pfm_range_list"), values);
        map.insert(QStringLiteral("pfm_range_list_titles"), valueTitles);
        return map;
    }

private:
    void addChoice(const SettingText::Choice &choice)
    {
        const auto known = values.indexOf(choice.value);
        if (known < 0) {
            values += choice.value;
            valueTitles += choice.word;
        } else if (!valueTitles.at(known).split(QStringLiteral(" / ")).contains(choice.word)) {
            valueTitles[known] += QStringLiteral(" / ") + choice.word;
        }
    }
};

std::vector<UnitedField> unitedFields(const std::vector<FormItem> &items)
{
    std::vector<UnitedField> united;
    for (const FormItem &item : items) {
        for (const FormField &field : item.fields) {
            auto known = std::find_if(united.begin(), united.end(),
                                      [&](const UnitedField &one) { return one.name == field.name; });
            if (known == united.end())
                known = united.insert(united.end(), UnitedField{field.name, {}, {}, {}, false});
            known->add(field);
        }
    }
    return united;
}

QVariantMap keyField(const std::vector<FormItem> &items)
{
    QStringList keys;
    QStringList titles;
    for (const FormItem &item : items) {
        keys += item.key;
        titles += item.title;
    }
    QVariantMap map = always(subkey(QStringLiteral("Text"), "string", QStringLiteral("Setting"),
                                    QStringLiteral("Which setting the item says.")));
    map.insert(QStringLiteral("pfm_range_list"), keys);
    map.insert(QStringLiteral("pfm_range_list_titles"), titles);
    return map;
}

QVariantMap defaultOf(const FormItem &item)
{
    QVariantMap fields{{QStringLiteral("Text"), item.key}};
    for (const FormField &field : item.fields) {
        if (!field.isNumber)
            fields.insert(field.name, field.standard);
    }
    return {{item.element, fields}};
}

QVariantMap sectionKey(Section section, const Product &product)
{
    const std::vector<FormItem> items = formItems(section, product);
    QVariantList fields{keyField(items)};
    for (const UnitedField &field : unitedFields(items))
        fields.append(field.key());
    QVariantList defaults;
    for (const FormItem &item : items)
        defaults.append(defaultOf(item));
    const QString element = elementName(section);
    QVariantMap item = subkey(element, "dictionary", element, QStringLiteral("One setting."));
    item.insert(QStringLiteral("pfm_subkeys"), fields);
    QVariantMap wrapper = subkey({}, "dictionary", element, QStringLiteral("One setting."));
    wrapper.remove(QStringLiteral("pfm_name"));
    wrapper.insert(QStringLiteral("pfm_subkeys"), QVariantList{item});
    QVariantMap key =
        subkey(sectionName(section), "array", sectionName(section),
               QStringLiteral("The settings, each as an item; what is not there has its default."));
    key.insert(QStringLiteral("pfm_default"), defaults);
    key.insert(QStringLiteral("pfm_subkeys"), QVariantList{wrapper});
    return key;
}

} // namespace

QByteArray Schema::manifest(const Product &product, const QDateTime &lastModified)
{
    QVariantList keys = payloadKeys(product);
    for (const Section section : {Section::Preferences, Section::Plugins})
        keys.append(sectionKey(section, product));
    const QVariantMap root{
        {QStringLiteral("pfm_description"), QStringLiteral("Settings of the %1").arg(product.title)},
        {QStringLiteral("pfm_domain"), product.settingsType()},
        {QStringLiteral("pfm_format_version"), 1},
        {QStringLiteral("pfm_last_modified"), lastModified},
        {QStringLiteral("pfm_platforms"), QStringList{QStringLiteral("macOS")}},
        {QStringLiteral("pfm_subkeys"), keys},
        {QStringLiteral("pfm_targets"), QStringList{QStringLiteral("system"), QStringLiteral("user")}},
        {QStringLiteral("pfm_title"), QString(product.title)},
        {QStringLiteral("pfm_unique"), true},
        {QStringLiteral("pfm_version"), 1}};
    return PropertyListTree(root).xml();
}
