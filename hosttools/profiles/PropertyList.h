// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>

#include <functional>
#include <memory>
#include <plist/plist.h>

/// Property lists over libplist. Everything that can fail throws FlatPkg::Error.
namespace PropertyList {

struct Deleter
{
    void operator()(plist_t node) const { plist_free(node); }
};
/// Owns a node and all below it.
using Node = std::unique_ptr<void, Deleter>;

/// Reads bytes of any format and origin. Refused are more than 64 levels, texts that XML cannot hold, and
/// what the Mac's commands refuse.
Node read(const QByteArray &bytes);

/// The XML form.
QByteArray toXml(plist_t node);

/// Whether a node, which may be null, is of a type.
bool is(plist_t node, plist_type type);

/// The text under a key of a dictionary; empty when there is none.
QByteArray text(plist_t dictionary, const char *key);

/// Calls `visit` for each item of an array or dictionary, in order; the key of an array's item is empty.
void forEach(plist_t container, const std::function<void(const QByteArray &key, plist_t item)> &visit);

/// Puts a node under a key of a dictionary, or at the end of an array.
void insert(plist_t dictionary, const QByteArray &key, Node node);
void append(plist_t array, Node node);

Node copyOf(plist_t node);
Node ofText(const QByteArray &text);

} // namespace PropertyList
