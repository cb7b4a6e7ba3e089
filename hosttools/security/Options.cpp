// SPDX-License-Identifier: Apache-2.0
#include "hosttools/security/Options.h"

#include <algorithm>

std::optional<Options> Options::parse(const QVector<QByteArray> &arguments,
                                      const QVector<QByteArray> &withValue, const QVector<QByteArray> &alone)
{
    Options options;
    for (int i = 0; i < arguments.size(); ++i) {
        const QByteArray &option = arguments.at(i);
        const bool takesValue = withValue.contains(option);
        if (options.has(option) || !(takesValue || alone.contains(option)))
            return std::nullopt;
        if (takesValue && ++i == arguments.size())
            return std::nullopt;
        options.m_values.insert(option, takesValue ? arguments.at(i) : QByteArray());
    }
    return options;
}

bool Options::hasAll(const QVector<QByteArray> &options) const
{
    return std::all_of(options.begin(), options.end(), [this](const QByteArray &one) { return has(one); });
}

bool Options::hasAny(const QVector<QByteArray> &options) const
{
    return std::any_of(options.begin(), options.end(), [this](const QByteArray &one) { return has(one); });
}
