// SPDX-License-Identifier: Apache-2.0
#pragma once

class DlgCustomizationTool_v2;

/// Gives the main window every settings page there is, in their order. The window decides which of them
/// exist for its product and mode.
void registerPages(DlgCustomizationTool_v2 &window);
