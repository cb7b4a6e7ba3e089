// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QString>

/// The files in which a system keeps what a management forces on its users. Any thread.
namespace ManagedPreferences {

struct File
{
    QString path; ///< empty when there is none
    QByteArray bytes;
    QString problem; ///< why it cannot be read, in one line, or empty
};

/// The preferences of a domain below `folder`: those of the current user, or else those of everybody.
File fileOf(const QString &folder, const QString &domain);

} // namespace ManagedPreferences
