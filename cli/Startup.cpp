// SPDX-License-Identifier: Apache-2.0
#include "cli/Startup.h"

#include "core/Logging.h"

#include <QLoggingCategory>

#include <algorithm>
#include <clocale>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <langinfo.h>
#include <sys/resource.h>
#include <unistd.h>

namespace {

void dropMessage(QtMsgType, const QMessageLogContext &, const QString &) {}

constexpr rlim_t neededFiles = 64;

rlimit openFilesLimit()
{
    rlimit limit = {neededFiles, neededFiles};
    ::getrlimit(RLIMIT_NOFILE, &limit);
    return limit;
}

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
    if (qgetenv("PCT_DEBUG") == "1") {
        showControlCharactersInLog();
        return;
    }
    qInstallMessageHandler(dropMessage);
    // Foundation has a log of its own, which follows the categories and not the handler.
    QLoggingCategory::setFilterRules(QStringLiteral("*.debug=false"));
}

void Startup::supplyPath()
{
    if (!qEnvironmentVariableIsEmpty("PATH"))
        return;
    QByteArray path(static_cast<int>(::confstr(_CS_PATH, nullptr, 0)), '\0');
    ::confstr(_CS_PATH, path.data(), path.size());
    qputenv("PATH", path.constData());
}

void Startup::raiseFileLimit()
{
    rlimit limit = openFilesLimit();
    if (limit.rlim_cur >= neededFiles)
        return;
    limit.rlim_cur = std::min(neededFiles, limit.rlim_max);
    ::setrlimit(RLIMIT_NOFILE, &limit);
}

Result<> Startup::checkFileLimit()
{
    const rlimit limit = openFilesLimit();
    if (limit.rlim_cur >= neededFiles)
        return {};
    return Problem{
        QStringLiteral("open files"),
        QStringLiteral("only %1 may be open at a time; raise the limit, for example with \"ulimit -n "
                       "%2\"")
            .arg(limit.rlim_cur)
            .arg(neededFiles)};
}

void Startup::ignoreWriteSignals()
{
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);
}
