// SPDX-License-Identifier: Apache-2.0
#include "app/StartUp.h"

#include "app/dlg_select_app_type.h"
#include "app/DlgCustomizationTool_v2.h"
#include "app/RegisterPages.h"

#include <memory>

DlgCustomizationTool_v2 *makeChosenWindow()
{
    auto chooser = std::make_unique<dlg_select_app_type>();
    if (chooser->exec() != QDialog::Accepted)
        return nullptr;
    const bool bEditor = chooser->m_bEditor;
    const PCW_CONFIGTYPE configType = chooser->m_bProfile ? PCW_CONFIG_PROFILE : PCW_CONFIG_PACKAGE;
    chooser.reset();

    auto *window = new DlgCustomizationTool_v2(bEditor, configType);
    registerPages(*window);
    return window;
}
