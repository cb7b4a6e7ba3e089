// SPDX-License-Identifier: Apache-2.0
#include "profile/LocalHostName.h"

#include <QSysInfo>

QString localHostName()
{
    return QSysInfo::machineHostName().section(QLatin1Char('.'), 0, 0);
}
