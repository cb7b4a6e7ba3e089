// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "pages/ISubPageHandler.h"

/// A sub-page of the Ribbon Set page.
class IRibbonSetHandler : public ISubPageHandler
{
public:
    /// Value of the sub-page's control with that object name; invalid when there is none.
    QVariant GetProperty(const QString &objectName) override;
    /// Writes the sub-page's state into the record before it is saved.
    virtual void OnBeforeSave() = 0;
};
