// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "pages/ISubPageHandler.h"

/// A sub-page of the Preferences page.
class IPreferenceHandler : public ISubPageHandler
{
public:
    /// Invalid: the parent page finds plain controls by itself, because the sub-page lies inside it.
    QVariant GetProperty(const QString &objectName) override;
};
