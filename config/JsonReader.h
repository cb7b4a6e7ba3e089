// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "core/Result.h"
#include "core/TextPlace.h"

#include <QByteArray>
#include <QString>

#include <vector>

/// JSON with the place of everything in it. Strict where other readers are lenient: UTF-8 only, one value, no
/// key twice in an object, no NUL, no half of a surrogate pair. Linear in time; every bound is applied while
/// reading. Any thread.
namespace Json {

constexpr qint64 maximumBytes = 32 * 1024 * 1024;
constexpr int maximumDepth = 64;
constexpr int maximumValues = 100 * 1000;

using Place = TextPlace;

enum class Type { Null, Boolean, Number, Text, List, Object };

struct Value
{
    Type type = Type::Null;
    Place place;
    bool isTrue = false;
    QString text;              ///< of a text; of a number as it is written
    std::vector<Value> values; ///< of a list or an object, in their order
    QString name;              ///< of a member of an object
    Place namePlace;

    /// The member of this name, or null.
    const Value *member(const QString &wanted) const;
};

/// What the bytes say. The problem names no file and begins with the place; with `wrongAt` the place is
/// there, where there is one.
Result<Value> read(const QByteArray &bytes, Place *wrongAt = nullptr);

} // namespace Json
