// SPDX-License-Identifier: Apache-2.0
#include "app/ControlStyle.h"

#include <QStyleFactory>

QStyle *makeControlStyle()
{
    return QStyleFactory::create(QStringLiteral("macos"));
}
