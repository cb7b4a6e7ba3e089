// SPDX-License-Identifier: Apache-2.0
#include "pages/ICutsomizationHandler.h"

#include "pages/WidgetProperty.h"

bool ICutsomizationHandler::IsOnlyForEditor()
{
    return false;
}

bool ICutsomizationHandler::SupportsProfile()
{
    return false;
}

QVariant ICutsomizationHandler::GetProperty(const QString &objectName)
{
    return GetWidgetProperty(GetWidget(false), objectName);
}

void ICutsomizationHandler::OnError(const QString &) {}

void ICutsomizationHandler::OnBeforeSave() {}
