// SPDX-License-Identifier: Apache-2.0
// The main window as the tool shows it, with the guide and the help panel open; closes itself after a while
// and says before the last line of main() that it got there.
#include "app/DlgCustomizationTool_v2.h"
#include "resources/Resources.h"

#include <QApplication>
#include <QTimer>
#include <QToolButton>

#include <cstdio>

int main(int argc, char *argv[])
{
    initPctResources();
    QApplication application(argc, argv);
    // Lives until the process ends, as in the tool.
    auto *window = new DlgCustomizationTool_v2(true, PCW_CONFIG_PACKAGE);
    window->show();
    QTimer::singleShot(100, window,
                       [window] { window->findChild<QToolButton *>(QStringLiteral("tb_info"))->click(); });
    QTimer::singleShot(1500, window, &DlgCustomizationTool_v2::ShowUserGuide);
    QTimer::singleShot(3000, window, &QWidget::close);
    const int status = QApplication::exec();
    std::puts("closed");
    return status;
}
