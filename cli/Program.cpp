// SPDX-License-Identifier: Apache-2.0
#include "cli/Program.h"

#include "cli/ExitCode.h"
#include "cli/Interruption.h"
#include "cli/Verbs.h"
#include "core/HostPaths.h"
#include "resources/Resources.h"

#include <QCoreApplication>
#include <QFile>
#include <QTextStream>

#include <unistd.h>

namespace {

int checkWritten(QTextStream &out, QTextStream &err, int exitCode)
{
    out.flush();
    if (out.status() == QTextStream::Ok)
        return exitCode;
    err << QStringLiteral("pct: standard output: %1; write to a place that has room\n")
               .arg(out.device()->errorString());
    return exitCode == ExitCode::done ? ExitCode::refused : exitCode;
}

} // namespace

int runProgram()
{
    initPctResources();
    HostPaths::putStandInsFirst();
    QCoreApplication::setApplicationName(QStringLiteral("pct"));
    QCoreApplication::setApplicationVersion(QStringLiteral(PCT_VERSION));

    QFile outFile;
    QFile errFile;
    outFile.open(STDOUT_FILENO, QIODevice::WriteOnly | QIODevice::Unbuffered);
    errFile.open(STDERR_FILENO, QIODevice::WriteOnly | QIODevice::Unbuffered);
    QTextStream out(&outFile);
    QTextStream err(&errFile);
    const Interruption interruption;
    const int exitCode = runPct(QCoreApplication::arguments().mid(1), out, err);
    return checkWritten(out, err, exitCode);
}
