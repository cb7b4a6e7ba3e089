// SPDX-License-Identifier: Apache-2.0
#include "hosttools/profiles/PropertyList.h"

#include "hosttools/base/Error.h"
#include "hosttools/profiles/BinaryList.h"
#include "hosttools/profiles/Contained.h"
#include "hosttools/profiles/OldStyleList.h"
#include "hosttools/profiles/XmlList.h"

#include <QXmlStreamReader>

#include <cstdlib>

using namespace FlatPkg;

namespace PropertyList {

namespace {

constexpr int mostLevels = 64;

struct FreeDeleter
{
    void operator()(void *memory) const { std::free(memory); }
};
template <typename Type> using Allocated = std::unique_ptr<Type, FreeDeleter>;

Node parsed(const QByteArray &bytes)
{
    plist_t node = nullptr;
    const auto size = static_cast<uint32_t>(bytes.size());
    if (BinaryList::isOne(bytes))
        plist_from_bin(bytes.constData(), size, &node);
    else
        plist_from_xml(bytes.constData(), size, &node);
    if (!node)
        throw Error("is not a property list");
    return Node(node);
}

void requireLevels(plist_t node, int levels)
{
    if (levels == 0)
        throw Error("is nested more than " + QByteArray::number(mostLevels) + " levels deep");
    forEach(node, [levels](const QByteArray &, plist_t item) { requireLevels(item, levels - 1); });
}

/// The library passes texts on as they are; other readers would stumble over what we print.
void requireWellFormed(const QByteArray &xml)
{
    QXmlStreamReader reader(xml);
    while (!reader.atEnd())
        reader.readNext();
    if (reader.hasError())
        throw Error("holds text that no property list can hold");
}

/// A list in a form that the library does not mistake.
QByteArray strict(const QByteArray &bytes)
{
    if (BinaryList::isOne(bytes))
        return BinaryList::withSoundTables(bytes);
    return OldStyleList::isOne(bytes) ? OldStyleList::asXml(bytes, mostLevels)
                                      : XmlList::simplified(bytes, mostLevels);
}

QByteArray checkedXml(const QByteArray &bytes)
{
    const Node node = parsed(strict(bytes));
    requireLevels(node.get(), mostLevels);
    const QByteArray xml = toXml(node.get());
    requireWellFormed(xml);
    return xml;
}

void forEachInArray(plist_t array, const std::function<void(const QByteArray &, plist_t)> &visit)
{
    plist_array_iter position = nullptr;
    plist_array_new_iter(array, &position);
    const Allocated<void> owner(position);
    plist_t item = nullptr;
    for (plist_array_next_item(array, position, &item); item; plist_array_next_item(array, position, &item))
        visit(QByteArray(), item);
}

void forEachInDictionary(plist_t dictionary, const std::function<void(const QByteArray &, plist_t)> &visit)
{
    plist_dict_iter position = nullptr;
    plist_dict_new_iter(dictionary, &position);
    const Allocated<void> owner(position);
    for (;;) {
        char *key = nullptr;
        plist_t item = nullptr;
        plist_dict_next_item(dictionary, position, &key, &item);
        const Allocated<char> keyOwner(key);
        if (!item)
            return;
        visit(key, item);
    }
}

} // namespace

Node read(const QByteArray &bytes)
{
    // The library neither bounds nesting nor what a binary list unfolds to.
    return parsed(contained([&bytes] { return checkedXml(bytes); }));
}

QByteArray toXml(plist_t node)
{
    char *xml = nullptr;
    uint32_t size = 0;
    plist_to_xml(node, &xml, &size);
    const Allocated<char> owner(xml);
    if (!xml)
        throw Error("cannot be written as a property list");
    return QByteArray(xml, static_cast<int>(size));
}

bool is(plist_t node, plist_type type)
{
    return node && plist_get_node_type(node) == type;
}

QByteArray text(plist_t dictionary, const char *key)
{
    const plist_t node = plist_dict_get_item(dictionary, key);
    if (!is(node, PLIST_STRING))
        return {};
    char *value = nullptr;
    plist_get_string_val(node, &value);
    const Allocated<char> owner(value);
    return value;
}

void forEach(plist_t container, const std::function<void(const QByteArray &key, plist_t item)> &visit)
{
    if (is(container, PLIST_ARRAY))
        forEachInArray(container, visit);
    else if (is(container, PLIST_DICT))
        forEachInDictionary(container, visit);
}

void insert(plist_t dictionary, const QByteArray &key, Node node)
{
    plist_dict_set_item(dictionary, key.constData(), node.release());
}

void append(plist_t array, Node node)
{
    plist_array_append_item(array, node.release());
}

Node copyOf(plist_t node)
{
    return Node(plist_copy(node));
}

Node ofText(const QByteArray &text)
{
    return Node(plist_new_string(text.constData()));
}

} // namespace PropertyList
