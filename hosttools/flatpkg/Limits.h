// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "hosttools/base/Error.h"

#include <QtGlobal>

namespace FlatPkg {

/// More members than this are refused; real packages have a few hundred.
constexpr int mostMembers = 100000;

/// Refuses an archive that would fill the disk: installers hold payloads that are compressed already, so
/// what comes out is never many times what went in. `archived` and `unpacked` are bytes.
inline void requirePlausibleSize(qint64 unpacked, qint64 archived)
{
    constexpr qint64 largestFactor = 100;
    constexpr qint64 alwaysAcceptable = 1024LL * 1024 * 1024;
    if (unpacked < 0 || unpacked - alwaysAcceptable > largestFactor * archived)
        throw Error("it would unpack to far more than an installer package holds");
}

} // namespace FlatPkg
