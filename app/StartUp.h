// SPDX-License-Identifier: Apache-2.0
#pragma once

class DlgCustomizationTool_v2;

/// Asks for product and output and makes the main window with its pages, not shown yet. Null when the
/// question was cancelled; no window has been built then. The window lives until the process ends.
DlgCustomizationTool_v2 *makeChosenWindow();
