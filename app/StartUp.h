// SPDX-License-Identifier: Apache-2.0
#pragma once

class DlgCustomizationTool_v2;

/// Asks for product and output and makes the main window with its pages, not shown yet. Null when the
/// question was cancelled; no window has been built then. The window lives until the process ends.
DlgCustomizationTool_v2 *makeChosenWindow();

/// Gives dialogs the look they have on macOS: no pictures on their buttons. Before the first window.
void useApplicationLook();
