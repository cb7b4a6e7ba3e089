// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "config/CCommon.h"
#include "pages/IPreferenceHandler.h"
#include "pages/PageHandler.h"

/// What the handlers of the Preferences sub-pages do alike. `Page` is the class of the sub-page's form.
template <class Page> class PreferHandler : public PageHandler<IPreferenceHandler, Page>
{
public:
    using PageHandler<IPreferenceHandler, Page>::PageHandler;

    QString GetTabTooltip() override { return {}; }

protected:
    /// A form without a parent, without what the product does not have.
    Page *makePage() const override
    {
        Page *made = PageHandler<IPreferenceHandler, Page>::makePage();
        CCommon::ReLayout(made, this->isEditor());
        return made;
    }
};
