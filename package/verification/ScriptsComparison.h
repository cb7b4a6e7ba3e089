// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "package/contents/ScriptsArchive.h"
#include "package/verification/Deviation.h"

/// Where an archive of install scripts has other members than expected. `entry` is its path in the package.
/// As with entries, all may have one and the same other owner. Codes: "member-added", "member-removed",
/// "member-type", "member-mode", "member-owner", "member-bytes".
Deviations compareScripts(const QString &entry, const ScriptsMembers &expected, const ScriptsMembers &found);
