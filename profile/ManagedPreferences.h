// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "core/Result.h"

#include <QByteArray>
#include <QString>

#include <optional>

/// The files in which a system keeps what a management forces on its users. Any thread.
namespace ManagedPreferences {

struct File
{
    QString path;
    Result<QByteArray> bytes;
};

/// The preferences of a domain below `folder`: those of the current user, or else those of everybody;
/// none when there are neither.
std::optional<File> fileOf(const QString &folder, const QString &domain);

} // namespace ManagedPreferences
