// SPDX-License-Identifier: Apache-2.0
#include "app/RegisterPages.h"

#include "app/DlgCustomizationTool_v2.h"
#include "config/Product.h"
#include "pages/installoption/tab_installoption.h"
#include "pages/plugins/tab_plugins.h"
#include "pages/preferences/tab_preference.h"
#include "pages/ribbonset/tab_ribbonset.h"

void registerPages(DlgCustomizationTool_v2 &window)
{
    const bool bEditor = window.product().isEditor();
    window.Register(std::make_shared<CHandler_InstallOption>(bEditor));
    window.Register(std::make_shared<CHandler_Preference>(bEditor));
    window.Register(std::make_shared<CHandler_RibbonSet>(bEditor));
    window.Register(std::make_shared<CHandler_Plugins>(bEditor));
}
