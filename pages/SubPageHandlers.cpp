// SPDX-License-Identifier: Apache-2.0
#include "pages/IPreferenceHandler.h"
#include "pages/IRibbonSetHandler.h"
#include "pages/WidgetProperty.h"

QVariant IPreferenceHandler::GetProperty(const QString &)
{
    return {};
}

QVariant IRibbonSetHandler::GetProperty(const QString &objectName)
{
    return GetWidgetProperty(GetWidget(false), objectName);
}
