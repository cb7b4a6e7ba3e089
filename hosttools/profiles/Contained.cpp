// SPDX-License-Identifier: Apache-2.0
#include "hosttools/profiles/Contained.h"

#include "hosttools/base/Error.h"
#include "hosttools/base/Files.h"

#include <QFile>

#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <new>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace FlatPkg;

namespace {

enum ExitCode { Done = 0, Refused = 3, OutOfMemory = 4 };

constexpr rlim_t mostMemory = 1024ULL * 1024 * 1024;
constexpr rlim_t mostSeconds = 10;

void limit(__rlimit_resource resource, rlim_t value)
{
    const rlimit limits = {value, value};
    setrlimit(resource, &limits);
}

/// What counts against the limit already: an instrumented build begins with terabytes.
rlim_t memoryInUse()
{
    constexpr int dataPages = 5;
    QFile sizes(QStringLiteral("/proc/self/statm"));
    if (!sizes.open(QIODevice::ReadOnly))
        return 0;
    return sizes.readAll().simplified().split(' ').value(dataPages).toULongLong() *
           static_cast<rlim_t>(sysconf(_SC_PAGESIZE));
}

void confine()
{
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    limit(RLIMIT_DATA, memoryInUse() + mostMemory);
    limit(RLIMIT_CPU, mostSeconds);
    limit(RLIMIT_CORE, 0);
    // What a crash has to say is said by the parent, in one line.
    const int nowhere = open("/dev/null", O_WRONLY | O_CLOEXEC);
    dup2(nowhere, STDERR_FILENO);
}

[[noreturn]] void finish(ExitCode code, const QByteArray &bytes, int results)
{
    try {
        writeAll(results, bytes.constData(), bytes.size(), 0);
        _exit(code);
    } catch (const Error &) {
        _exit(OutOfMemory);
    }
}

[[noreturn]] void beChild(const std::function<QByteArray()> &work, int results)
{
    confine();
    try {
        finish(Done, work(), results);
    } catch (const Error &error) {
        finish(Refused, error.message(), results);
    } catch (const std::bad_alloc &) {
        _exit(OutOfMemory);
    }
}

int waitFor(pid_t child)
{
    int status = 0;
    while (waitpid(child, &status, 0) < 0)
        if (errno != EINTR)
            throw systemError("cannot wait for its reader");
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

QByteArray everythingIn(int file)
{
    const qint64 size = statusOf(file).st_size;
    QByteArray bytes(static_cast<int>(size), Qt::Uninitialized);
    readExactly(file, bytes.data(), size, 0);
    return bytes;
}

} // namespace

QByteArray contained(const std::function<QByteArray()> &work)
{
    const FileDescriptor results(memfd_create("contained", MFD_CLOEXEC));
    const pid_t child = results.get() < 0 ? -1 : fork();
    if (child < 0)
        throw systemError("its reader cannot be started");
    if (child == 0)
        beChild(work, results.get());
    const int code = waitFor(child);
    if (code == Refused)
        throw Error(everythingIn(results.get()));
    if (code != Done)
        throw Error("cannot be read: it is damaged, or made to exhaust the machine");
    return everythingIn(results.get());
}
