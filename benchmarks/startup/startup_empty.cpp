// SPDX-License-Identifier: Apache-2.0
// An empty dialog with the libraries of the tool linked in.
#include "app/StartUp.h"
#include "benchmarks/startup/EndAtFirstPaint.h"

#include <QApplication>
#include <QDialog>

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    // Never true; it keeps the linker from leaving the tool's libraries out.
    if (argc > 1000)
        makeChosenWindow();
    EndAtFirstPaint end;
    application.installEventFilter(&end);
    QDialog window;
    window.resize(525, 355);
    window.exec();
    return EXIT_FAILURE;
}
