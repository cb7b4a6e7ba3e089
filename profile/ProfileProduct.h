// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

/// What a profile says of its product: true = the Editor, false = the Reader. Any thread.
namespace ProfileProduct {

/// The settings payload's identifier, by which a profile is matched.
QString bundleIdentifier(bool editor);

/// The settings payload's type.
QString settingsType(bool editor);

QString displayName(bool editor);
QString organization();
QString description(bool editor);

} // namespace ProfileProduct
