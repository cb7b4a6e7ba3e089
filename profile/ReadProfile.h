// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "core/Result.h"
#include "profile/SignedMessage.h"

#include <QList>
#include <QString>

struct EditorXmlData;
struct Product;

// Two doors lead to profiles. The window's is CProfileGenerator: it reads unsigned files up to the size that
// it can wait for, takes a MIP policy that is not set for off, and tells the log why something failed. `pct`
// comes in here, for files and for the installed profile, and through ManagedProfile for what a management
// has in force: profiles are read as they were written, with a policy that is not set, and a failure says
// why. Both write with ConfigGenerator::generate, sign with CProfileGenerator, and meet property lists in
// profile/propertylist/FoundationPropertyList.h only.

struct ReadProfile
{
    const Product *product; ///< that the profile is for; never null
    /// Everybody who signed it; empty for an unsigned profile. Names are what the signatures carry, not a
    /// proof of who that is. Where the system does not tell, one is called "unknown signer".
    QList<ProfileSigner> signers;
};

/// Reads a configuration profile of either product: an XML, binary or old-style property list, as such or
/// inside a signed message, whoever signed it. Where both products have settings in it, it is of `wanted`,
/// or without one of the first. What the profile does not mention keeps its value in the
/// record. On failure the record is as it was; the problem does not name the file.
///
/// Runs /usr/bin/security for a signed profile and blocks until it ends.
Result<ReadProfile> readProfile(const QString &path, EditorXmlData &data, const Product *wanted = nullptr);

/// Makes the record that of the product's profile that is installed on this machine, over the defaults.
/// False, with the record as it was, when there is none; a problem when the installed profiles cannot be
/// listed. Runs /usr/bin/profiles and blocks until it ends.
Result<bool> readInstalledProfile(EditorXmlData &data, const Product &product);
