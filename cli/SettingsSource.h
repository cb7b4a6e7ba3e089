// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "cli/FileWarning.h"
#include "cli/Option.h"
#include "config/EditorXmlData.h"
#include "core/Result.h"

#include <QList>
#include <QString>

#include <optional>

struct Product;
class VerbLine;

/// Where the settings of a new profile come from. At most one member is given; without any they are the
/// defaults.
struct SettingsSource
{
    QString config;         ///< absolute path of a document
    QString profile;        ///< absolute path of a profile, whose identity is taken, too
    bool installed = false; ///< the profile that is installed on this machine, and its identity
    std::optional<EditorXmlData> settings{}; ///< what has been read already

    static QList<Option> options();
    static SettingsSource of(const VerbLine &line);

    /// The commands that reading needs.
    QStringList commands() const;

    /// The settings, of which a profile for the product can hold every text; what the product lacks is left
    /// out. An identity that is given makes up for an installed one that cannot be told.
    Result<EditorXmlData> read(const Product &product, bool identityIsGiven,
                               QList<FileWarning> &warnings) const;
};
