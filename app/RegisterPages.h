// SPDX-License-Identifier: Apache-2.0
#pragma once

class DlgCustomizationTool_v2;

/// Pages with a higher id have a button but no place in the window.
constexpr int highestPageId = 5;

/// Gives the main window every settings page there is, in their order. The window decides which of them
/// exist for its product and mode.
void registerPages(DlgCustomizationTool_v2 &window);
