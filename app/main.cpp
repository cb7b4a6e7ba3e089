// SPDX-License-Identifier: Apache-2.0
#include "app/DlgCustomizationTool_v2.h"
#include "app/StartUp.h"
#include "core/HostPaths.h"
#include "resources/Resources.h"

#include <QApplication>
#include <QIcon>

int main(int argc, char *argv[])
{
    initPctResources();
    QApplication application(argc, argv);
    QApplication::setAttribute(Qt::AA_UseHighDpiPixmaps, true);
    QApplication::setWindowIcon(QIcon(QStringLiteral(":/img/app-icon.png")));
    HostPaths::putStandInsFirst();

    DlgCustomizationTool_v2 *window = makeChosenWindow();
    if (!window)
        return 1;
    window->show();
    return QApplication::exec();
}
