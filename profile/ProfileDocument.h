// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "profile/SignedMessage.h"

#include <QList>
#include <QString>

struct EditorXmlData;

// Profiles as they were written. Unlike the window's import, which reads a MIP policy that is not set as off,
// these keep it not set.

/// Reads a configuration profile of either product: an XML, binary or old-style property list, as such or
/// inside a signed message, whoever signed it. What the profile does not mention keeps its value in the
/// record. On failure the record is as it was and `error` (may be null) gets one line without the file's
/// name. `isEditor` (may be null) tells the product that the profile is for.
///
/// `signers` (may be null) becomes empty for an unsigned profile. For a signed one it gets everybody who
/// signed it; their names are what the signatures carry, not a proof of who that is. Where the system does
/// not tell, one is called "unknown signer".
///
/// Runs /usr/bin/security for a signed profile and blocks until it ends.
bool readProfile(const QString &path, EditorXmlData &data, bool *isEditor, QString *error,
                 QList<ProfileSigner> *signers = nullptr);

/// Fills the record from the product's profile that is installed on this machine. False, with the record as
/// it was, when there is none; `problem` says in one line why the installed profiles could not be listed, and
/// becomes empty otherwise. Runs /usr/bin/profiles and blocks until it ends.
bool readInstalledProfile(EditorXmlData &data, bool editor, QString *problem);

/// The record as a profile of the product, in the form in which the file holds it; null when it could
/// not be read again.
/// `problem` (optional) gets why, or becomes empty.
QString profileText(const EditorXmlData &data, bool editor, QString *problem = nullptr);
