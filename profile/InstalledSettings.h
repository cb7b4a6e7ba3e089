// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "config/EditorXmlData.h"

#include <QList>
#include <QString>
#include <QStringList>

struct Product;

/// What is installed of a product on this machine, wherever the system keeps it.
struct InstalledSettings
{
    struct Copy
    {
        QString origin; ///< for people: the profile or the file that holds it
        EditorXmlData settings;
    };

    QList<Copy> copies;
    QStringList unread; ///< what could not be read, or is not where it should be, each with the reason

    /// Looks into the list of installed profiles, which for root is that of the device, into the managed
    /// preferences, for root those of every user, and into the system's report, which tells what should be
    /// there. Runs /usr/bin/profiles and /usr/sbin/system_profiler and blocks until they end.
    static InstalledSettings find(const Product &product);
};
