// SPDX-License-Identifier: Apache-2.0
#include "cli/Startup.h"

#include <QLoggingCategory>

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
    if (qgetenv("PCT_DEBUG") == "1")
        return;
    qInstallMessageHandler(dropMessage);
    // Foundation has a log of its own, which follows the categories and not the handler.
    QLoggingCategory::setFilterRules(QStringLiteral("*.debug=false"));
}

void Startup::ignoreWriteSignals()
{
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);
}
