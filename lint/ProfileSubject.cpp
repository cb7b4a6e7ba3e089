// SPDX-License-Identifier: Apache-2.0
#include "config/SettingItems.h"
#include "lint/Subject.h"
#include "profile/propertylist/PropertyListInput.h"

#include <algorithm>
#include <vector>

namespace {

using Lint::Subject;
using Section = Setting::Section;

/// A value of a property list, with the key that it stands behind.
struct Node
{
    enum class Type { Dictionary, Array, Scalar };

    Type type = Type::Scalar;
    QString key;
    QString text; ///< of a scalar
    TextPlace place;
    std::vector<Node> children;

    const Node *member(const QString &wanted) const
    {
        const auto found = std::find_if(children.begin(), children.end(),
                                        [&](const Node &child) { return child.key == wanted; });
        return type == Type::Dictionary && found != children.end() ? &*found : nullptr;
    }
};

/// What a scalar of a setting is as text; the other types are no settings.
struct ScalarText
{
    QString operator()(bool value) const { return value ? QStringLiteral("1") : QStringLiteral("0"); }
    QString operator()(qint64 value) const { return QString::number(value); }
    QString operator()(quint64 value) const { return QString::number(value); }
    QString operator()(double value) const { return QString::number(value); }
    QString operator()(const QString &value) const { return value; }
    template <typename Other> QString operator()(const Other & /*value*/) const { return {}; }
};

class TreeSink : public PropertyList::Sink
{
public:
    Node root;

    void at(const TextPlace &place) override { m_place = place; }
    void beginDictionary() override { open(Node::Type::Dictionary); }
    void beginArray() override { open(Node::Type::Array); }

    void end() override
    {
        Node finished = std::move(m_open.back());
        m_open.pop_back();
        keep(std::move(finished));
    }

    void key(const QString &text) override
    {
        m_key = text;
        m_keyPlace = m_place;
    }

    void scalar(const PropertyList::Scalar &value) override
    {
        Node node = begun(Node::Type::Scalar);
        node.text = std::visit(ScalarText(), value);
        keep(std::move(node));
    }

private:
    Node begun(Node::Type type)
    {
        Node node;
        node.type = type;
        node.key = m_key;
        node.place = m_key.isNull() ? m_place : m_keyPlace;
        m_key = QString();
        return node;
    }

    void open(Node::Type type) { m_open.push_back(begun(type)); }

    void keep(Node node)
    {
        if (m_open.empty())
            root = std::move(node);
        else
            m_open.back().children.push_back(std::move(node));
    }

    std::vector<Node> m_open; ///< what has begun and not ended
    TextPlace m_place;
    QString m_key;
    TextPlace m_keyPlace;
};

QString quoted(const QString &text)
{
    constexpr int longest = 64;
    return QLatin1Char('"') + (text.size() > longest ? text.left(longest) + QChar(0x2026) : text) +
           QLatin1Char('"');
}

/// Keys that every payload has for the system, and what it adds to preferences that it manages.
bool isForTheSystem(const QString &key)
{
    return key.startsWith(QLatin1String("Payload")) || key.startsWith(QLatin1Char('_'));
}

class ProfileWalk
{
public:
    explicit ProfileWalk(Subject &subject)
        : m_subject(subject)
    {
    }

    /// Settings lie at several depths, as managements wrap them in their own ways.
    void run(const Node &node)
    {
        const QStringList names = sectionNames();
        const bool isSettings =
            std::any_of(names.begin(), names.end(), [&](const QString &name) { return node.member(name); });
        if (isSettings)
            return readSettings(node);
        for (const Node &child : node.children)
            run(child);
    }

private:
    void readSettings(const Node &settings)
    {
        static const QStringList known{sectionName(Section::Preferences), sectionName(Section::Plugins),
                                       sectionName(Section::Ribbon), sectionName(Section::QuickAccessBar)};
        for (const Node &child : settings.children) {
            const auto section = known.indexOf(child.key);
            if (section == 0)
                readItems(Section::Preferences, child);
            else if (section == 1)
                readItems(Section::Plugins, child);
            else if (section > 1)
                readElement(section == 2 ? Section::Ribbon : Section::QuickAccessBar, child);
            else if (!isForTheSystem(child.key))
                addUnread(QStringLiteral("key %1").arg(quoted(child.key)), child, known);
        }
    }

    void readItems(Section section, const Node &array)
    {
        const QString name = elementName(section);
        for (const Node &wrapper : array.children) {
            for (const Node &item : wrapper.children) {
                if (item.key == name)
                    readItem(section, item);
                else
                    addUnread(QStringLiteral("key %1 in %2").arg(quoted(item.key), array.key), item, {name});
            }
        }
    }

    void readItem(Section section, const Node &item)
    {
        QStringList keys;
        const Node *key = item.member(QStringLiteral("Text"));
        const QString text = key ? key->text : QString();
        for (const SettingItem &known : profileItems(section)) {
            if (text == known.key)
                return readKnown(known, item);
            keys += known.key;
        }
        const QString what = key ? QStringLiteral("%1 %2").arg(item.key, quoted(text))
                                 : QStringLiteral("%1 without a Text").arg(item.key);
        m_subject.unread.append({what, text, keys, key ? key->place : item.place});
    }

    void readKnown(const SettingItem &known, const Node &item)
    {
        QStringList attributes{QStringLiteral("Text")};
        for (const Setting *setting : known.settings) {
            const QString attribute = setting->place.attribute;
            const Node *value = item.member(attribute);
            attributes += attribute;
            m_subject.said.append({setting, value ? value->text : QString(), value != nullptr,
                                   value ? value->place : item.place});
        }
        for (const Node &value : item.children) {
            if (!attributes.contains(value.key))
                addUnread(QStringLiteral("key %1 of %2 \"%3\"").arg(quoted(value.key), item.key, known.key),
                          value, attributes);
        }
    }

    /// In profiles the record's element stands for what is in it.
    void readElement(Section section, const Node &parent)
    {
        const QString name = elementName(section);
        for (const Node &child : parent.children) {
            if (child.key == name)
                m_subject.said.append({&settingIn(section), {}, true, child.place});
            else
                addUnread(QStringLiteral("key %1 in %2").arg(quoted(child.key), parent.key), child, {name});
        }
    }

    void addUnread(const QString &text, const Node &node, const QStringList &known)
    {
        m_subject.unread.append({text, node.key, known, node.place});
    }

    Subject &m_subject;
};

} // namespace

Result<> Lint::addProfile(Subject &subject, const QByteArray &list)
{
    TreeSink tree;
    Result<> read = PropertyListInput::read(list, tree);
    if (read)
        ProfileWalk(subject).run(tree.root);
    return read;
}
