// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QUrl>

/// Address of a help page in "../Resources/pcw/en-US/" beside the application's folder. `encodedName` is a
/// page's file name, URL-encoded, with or without an anchor.
QUrl helpAddress(const QString &applicationFolder, const QString &encodedName);
