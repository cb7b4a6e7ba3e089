// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QMap>
#include <QVector>

#include <optional>

/// What follows a command's verb: options that stand alone and options with a value, in any order.
class Options
{
public:
    /// Nothing when there is another option than these, one twice, or one without its value.
    static std::optional<Options> parse(const QVector<QByteArray> &arguments,
                                        const QVector<QByteArray> &withValue,
                                        const QVector<QByteArray> &alone = {});

    bool has(const QByteArray &option) const { return m_values.contains(option); }
    bool hasAll(const QVector<QByteArray> &options) const;
    bool hasAny(const QVector<QByteArray> &options) const;
    QByteArray value(const QByteArray &option) const { return m_values.value(option); }

private:
    QMap<QByteArray, QByteArray> m_values;
};
