// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QWidgetList>

/// Everything visible in a window that a user can change or press, and nothing that Qt puts inside it: no
/// scroll bar, no button within a line edit, no frame around controls.
QWidgetList controlsIn(const QWidget &window);

/// Whether Tab stops at one button of the control's group only, and arrow keys lead to the others.
bool isReachedByArrows(const QWidget *control);

/// What messages call a widget: its object name, or its class when it has none.
QString callOf(const QWidget *widget);
