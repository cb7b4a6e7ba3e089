// SPDX-License-Identifier: Apache-2.0
// Starts as the tool does, up to the chooser on the screen.
#include "app/StartUp.h"
#include "app/Translation.h"
#include "benchmarks/startup/EndAtFirstPaint.h"
#include "core/HostPaths.h"
#include "core/QtCompatibility.h"
#include "resources/Resources.h"

#include <QApplication>

int main(int argc, char *argv[])
{
    initPctResources();
    QApplication application(argc, argv);
    installTranslation(application, chosenLanguage());
    QtCompatibility::useHighDpiPixmaps();
    HostPaths::putStandInsFirst();
    EndAtFirstPaint end;
    application.installEventFilter(&end);
    makeChosenWindow();
    return EXIT_FAILURE;
}
