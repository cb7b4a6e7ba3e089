// SPDX-License-Identifier: Apache-2.0
#include "cli/Startup.h"

#include <QtGlobal>

#include <clocale>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <langinfo.h>
#include <unistd.h>

namespace {

void dropMessage(QtMsgType, const QMessageLogContext &, const QString &) {}

} // namespace

void Startup::occupyStandardDescriptors()
{
    for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (::fcntl(descriptor, F_GETFD) < 0)
            ::open("/dev/null", O_RDONLY);
    }
}

void Startup::useUtf8FileNames()
{
    std::setlocale(LC_ALL, "");
    if (std::strcmp(::nl_langinfo(CODESET), "UTF-8") != 0)
        qputenv("LC_ALL", "C.UTF-8");
}

void Startup::muteDebugLog()
{
    if (qgetenv("PCT_DEBUG") != "1")
        qInstallMessageHandler(dropMessage);
}

void Startup::ignoreWriteSignals()
{
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);
}
