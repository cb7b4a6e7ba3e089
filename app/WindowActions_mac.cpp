// SPDX-License-Identifier: Apache-2.0
#include "app/WindowActions.h"

#include <QMenu>
#include <QMenuBar>
#include <QWidget>

void placeMenus(WindowActions &actions, QWidget &window)
{
    auto *bar = new QMenuBar(&window);
    for (QMenu *menu : actions.menus())
        bar->addMenu(menu);
}
