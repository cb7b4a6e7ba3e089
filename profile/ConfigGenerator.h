// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "core/Result.h"
#include "profile/ProfileForm.h"

#include <QByteArray>
#include <QList>
#include <QString>

#include <optional>

struct EditorXmlData;
struct Product;

/// PelixPDFConfigGenerator for sources that know no Objective-C. Each call has its own autorelease scope.
namespace ConfigGenerator {

/// What an empty MIP policy on save means, which is how a profile writes one that is not set.
enum class EmptyPolicy {
    Off,   ///< set to 0, as the window reads it
    NotSet ///< not set, as it was written
};

/// The profile's text, "" for a null record. A problem when a setting holds what no profile can, or when the
/// text could not be read again.
Result<QString> generate(const EditorXmlData *data, const Product &product, const ProfileForm &form = {});

/// The settings in one of the forms in which a management takes them without a profile. A problem as above.
Result<QString> generateSettings(const EditorXmlData &data, const Product &product, const ProfileForm &form,
                                 SettingsForm wanted);

/// Fills the record from profile text. False, with the record as it was, for a profile that is not the
/// product's; a problem for what is no XML or old-style property list.
Result<bool> importText(const QString &text, EditorXmlData &data, const Product &product);

/// Fills the record from profile data and tells of which product, never null; `wanted`, which may be null,
/// goes before the other. The settings may be in any payload and wrapped as a management does it. An empty
/// policy stays not set.
Result<const Product *> importAny(const QByteArray &bytes, EditorXmlData &data,
                                  const Product *wanted = nullptr);

enum class Installed {
    Nothing, ///< the system has no profiles
    NoMatch, ///< it has none of the product; the record is as it was
    Filled
};

/// Fills the record from the product's installed profile. A problem when the system's profiles cannot be
/// listed.
Result<Installed> importInstalled(EditorXmlData &data, const Product &product);

/// The settings and identity of each installed profile with settings of the product that the system lists for
/// this user, in its order and whichever way a management has wrapped them; what a profile does not mention
/// has its default, and an empty policy is not set. A problem as above.
Result<QList<EditorXmlData>> installedProfiles(const Product &product);

struct InstalledIdentity
{
    QString identifier;          ///< empty when no profile of the product has one
    std::optional<QString> uuid; ///< none when there is no profile of the product
};

/// Identity of the product's installed profile; none when the system has no profiles. A problem as above.
Result<std::optional<InstalledIdentity>> installedIdentity(const Product &product);

} // namespace ConfigGenerator
