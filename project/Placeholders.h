// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "core/Result.h"

#include <QMap>
#include <QString>

/// The places in names of outputs that something is put into: "${variant}". Any thread; the problems name no
/// file.
namespace Placeholders {

using Values = QMap<QString, QString>;

constexpr QLatin1String variant("variant");
constexpr QLatin1String product("product");
constexpr QLatin1String vendorVersion("vendor.version");

/// Whether something is to be put in, be it known or not.
bool areIn(const QString &text);

/// That each is closed and known.
Result<> check(const QString &text);

/// With the values put in.
QString filled(const QString &text, const Values &values);

} // namespace Placeholders
