// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QIcon>
#include <QPalette>

/// Gives every window of the process one look, whatever the system's colours are: the pages are white and
/// their texts dark, and a control that took the system's colours beside them could not be read. Before the
/// first window.
void useApplicationLook();

/// The colours of all that no style sheet colours.
QPalette applicationPalette();

/// The program's icon in every size that it was drawn in.
QIcon applicationIcon();
