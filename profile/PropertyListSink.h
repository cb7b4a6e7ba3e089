// SPDX-License-Identifier: Apache-2.0
#pragma once

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

    virtual void beginDictionary() = 0;
    virtual void beginArray() = 0;
    virtual void end() = 0;

    virtual void key(const QString &text) = 0;
    virtual void scalar(const Scalar &value) = 0;
};

} // namespace PropertyList
