// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "package/contents/TableOfContents.h"

#include <QStringList>

/// The paths of all that the payloads in a package hold, without "./" in front. Payloads are cpio archives,
/// packed with gzip or xz, also in chunks. The bytes of their files are passed over. A problem when there is
/// none, or one that cannot be read, or that unpacks to more than 32 GiB.
Result<QStringList> payloadPaths(const TableOfContents &table);
