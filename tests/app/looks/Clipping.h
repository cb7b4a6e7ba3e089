// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QStringList>

class QWidget;

/// What is wrong with where the visible widgets of a window stand: texts that do not fit into their widget,
/// widgets that stick out of what they stand in without a way to scroll to them, and widgets on top of each
/// other. Empty when all is well.
QStringList clippedIn(const QWidget &window);
