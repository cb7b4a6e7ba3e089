// SPDX-License-Identifier: Apache-2.0
#include "pages/ISubPageHandler.h"

#include "pages/WidgetProperty.h"

QVariant IPreferenceHandler::GetProperty(const QString &)
{
    return {};
}

QVariant IRibbonSetHandler::GetProperty(const QString &objectName)
{
    return GetWidgetProperty(GetWidget(false), objectName);
}
