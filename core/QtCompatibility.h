// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

/// What Qt 5 and Qt 6 want said differently. QtCompatibility_qt5.cpp and QtCompatibility_qt6.cpp answer.
namespace QtCompatibility {

/// Shows icons at the full resolution of the screen. Call it on the GUI thread, before a window shows.
void useHighDpiPixmaps();

/// Where Qt keeps the translations of its own texts on this machine; the folder may be missing.
QString translationsFolder();

} // namespace QtCompatibility
