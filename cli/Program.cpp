// SPDX-License-Identifier: Apache-2.0
#include "cli/Program.h"

#include "cli/Console.h"
#include "cli/ExitCode.h"
#include "cli/Interruption.h"
#include "cli/Verbs.h"
#include "core/HostPaths.h"
#include "core/Version.h"
#include "resources/Resources.h"

#include <QCoreApplication>
#include <QFile>
#include <QTextStream>

#include <unistd.h>

int runProgram()
{
    initPctResources();
    HostPaths::putStandInsFirst();
    QCoreApplication::setApplicationName(QStringLiteral("pct"));
    QCoreApplication::setApplicationVersion(QLatin1String(toolVersion));

    QFile outFile;
    QFile errFile;
    const auto unbuffered = QIODevice::WriteOnly | QIODevice::Unbuffered;
    if (!outFile.open(STDOUT_FILENO, unbuffered) || !errFile.open(STDERR_FILENO, unbuffered))
        return ExitCode::refused;
    QTextStream out(&outFile);
    QTextStream err(&errFile);
    const QStringList arguments = QCoreApplication::arguments().mid(1);
    Interruption interruption(arguments.value(0));
    Console console(out, err, &interruption);
    return runPct(pctVerbs(), arguments, console);
}
