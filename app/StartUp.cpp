// SPDX-License-Identifier: Apache-2.0
#include "app/StartUp.h"

#include "app/dlg_select_app_type.h"
#include "app/DlgCustomizationTool_v2.h"
#include "app/RegisterPages.h"

#include <QApplication>
#include <QProxyStyle>

namespace {

class PlainDialogButtons : public QProxyStyle
{
public:
    int styleHint(StyleHint hint, const QStyleOption *option, const QWidget *widget,
                  QStyleHintReturn *data) const override
    {
        return hint == SH_DialogButtonBox_ButtonsHaveIcons
                   ? 0
                   : QProxyStyle::styleHint(hint, option, widget, data);
    }
};

} // namespace

void useApplicationLook()
{
    QApplication::setStyle(new PlainDialogButtons);
}

DlgCustomizationTool_v2 *makeChosenWindow()
{
    auto chooser = std::make_unique<dlg_select_app_type>();
    if (chooser->exec() != QDialog::Accepted)
        return nullptr;
    const bool bEditor = chooser->m_bEditor;
    const PCW_CONFIGTYPE configType = chooser->m_bProfile ? PCW_CONFIG_PROFILE : PCW_CONFIG_PACKAGE;
    chooser.reset();

    auto *window = new DlgCustomizationTool_v2(bEditor, configType);
    registerPages(*window, bEditor);
    return window;
}
