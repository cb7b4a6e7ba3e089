// SPDX-License-Identifier: Apache-2.0
#include "resources/Resources.h"

#include <QDir>

void initPctResources()
{
    Q_INIT_RESOURCE(customizationtool);
    Q_INIT_RESOURCE(duti);
}
