// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "core/Result.h"

#include <QByteArray>
#include <QList>
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
/// none when there are neither. A file of which that cannot be told is one that cannot be read.
std::optional<File> fileOf(const QString &folder, const QString &domain);

/// Those of everybody and those of the current user; for root those of every user.
QList<File> filesOf(const QString &folder, const QString &domain);

} // namespace ManagedPreferences
