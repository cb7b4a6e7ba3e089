// SPDX-License-Identifier: Apache-2.0
#pragma once

class QWidget;

/// Whether keys change what a control says or press it: Space, the arrows, or typing. Afterwards it says what
/// it said before.
bool changesByKeys(QWidget *control);
