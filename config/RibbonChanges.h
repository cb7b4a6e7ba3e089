// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "config/RibbonCommands.h"

// What is hidden of the ribbon and the quick-access bar, changed without a window. What comes out is what the
// pages make when the same is ticked; what the ribbon does not know stays in it. One thread; the problems
// name no file.

/// The element "RibbonUI" with the command, all that is in it and its twins hidden or shown. A null element
/// is a ribbon as it ships.
QDomElement withHidden(const QDomElement &ribbon, const RibbonCommands::Command &command, bool hidden,
                       const Product &product);

/// The element "QuickAccessBar" with the command, or all in it that can be on the bar, taken off it or put
/// back. A problem when nothing of it can be on the bar.
Result<QDomElement> withTakenOff(const QDomElement &bar, const RibbonCommands::Command &command,
                                 bool takenOff, const Product &product);
