// SPDX-License-Identifier: Apache-2.0
#include "app/WindowActions.h"

void placeMenus(WindowActions &, QWidget &) {}
