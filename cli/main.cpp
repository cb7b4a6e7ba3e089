// SPDX-License-Identifier: Apache-2.0
#include "cli/Interruption.h"
#include "cli/Program.h"
#include "cli/Startup.h"

#include <QCoreApplication>

int main(int argc, char *argv[])
{
    Startup::occupyStandardDescriptors();
    Startup::useUtf8FileNames();
    Startup::ignoreWriteSignals();
    Startup::supplyPath();
    Startup::raiseFileLimit();
    Startup::muteDebugLog();
    const QCoreApplication application(argc, argv);
    const int exitCode = runProgram();
    Interruption::endBySignal();
    return exitCode;
}
