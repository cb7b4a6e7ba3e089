// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "config/XmlStream.h"
#include "core/Result.h"

#include <QByteArray>
#include <QString>

#include <variant>

/// Property lists value by value, whatever the format that they were written in.
namespace PropertyList {

/// In XML and in the log only; no setting is a date.
struct Date
{
    double secondsSince1970 = 0;
};

struct Null
{
};

using Scalar = std::variant<Null, bool, qint64, quint64, double, Date, QByteArray, QString>;

/// Takes a list in its order: exactly one value, where a dictionary or an array stands with all that is in it
/// up to its end, and each value in a dictionary behind its key. What came before a reading fails is to be
/// forgotten.
class Sink
{
public:
    virtual ~Sink() = default;

    /// Where the key or value that comes next begins; of lists in XML only.
    virtual void at(const TextPlace & /*place*/) {}

    virtual void beginDictionary() = 0;
    virtual void beginArray() = 0;
    virtual void end() = 0;

    virtual void key(const QString &text) = 0;
    virtual void scalar(const Scalar &value) = 0;
};

} // namespace PropertyList

/// Property lists of any format and origin. They are read here, because Foundation's parsers recurse without
/// a limit, follow references in a circle, differ in what they refuse, and some of them take what they do not
/// understand for nothing at all. Linear in time; any thread.
namespace PropertyListInput {

constexpr qint64 maximumBytes = XmlStream::maximumBytes;
constexpr int maximumDepth = XmlStream::maximumDepth;
/// Each attribute of a settings tree takes a key and a string.
constexpr int maximumNodes = 2 * XmlStream::maximumNodes;

enum class Format { Xml, Binary, OldStyle };

/// What the bytes begin as. White space and a byte order mark may stand in front of text.
Format formatOf(const QByteArray &bytes);

/// Hands the list to the sink. A problem when it breaks the limits or is no sound list; what the sink has got
/// is to be forgotten then.
Result<> read(const QByteArray &bytes, PropertyList::Sink &sink);

} // namespace PropertyListInput
