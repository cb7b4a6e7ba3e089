// SPDX-License-Identifier: Apache-2.0
// Preloaded into pct by tests: PCT_TEST_WITHOUT names calls that then fail as on a file system that does not
// have them, PCT_TEST_BUSY one that never ends, as a computation that takes very long.
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <dlfcn.h>
#include <unistd.h>

namespace {

bool isNamed(const char *variable, const char *call)
{
    const char *names = std::getenv(variable);
    return names && std::strstr(names, call);
}

int failure(int reason)
{
    errno = reason;
    return -1;
}

/// Says that it has begun by making the file that PCT_TEST_NOTE names. Ends long after every test has given
/// up, so that no process is left behind.
void computeForEver()
{
    ::alarm(150);
    const char *note = std::getenv("PCT_TEST_NOTE");
    if (std::FILE *file = note ? std::fopen(note, "w") : nullptr)
        std::fclose(file);
    for (volatile unsigned turns = 0;; turns = turns + 1) {
    }
}

template <typename Function> Function systemsOwn(Function, const char *call)
{
    return reinterpret_cast<Function>(::dlsym(RTLD_NEXT, call));
}

} // namespace

extern "C" int renameat2(int fromFolder, const char *from, int toFolder, const char *to, unsigned flags)
{
    if (isNamed("PCT_TEST_WITHOUT", "renameat2"))
        return failure(EINVAL);
    return systemsOwn(&renameat2, "renameat2")(fromFolder, from, toFolder, to, flags);
}

extern "C" int linkat(int fromFolder, const char *from, int toFolder, const char *to, int flags)
{
    // Qt gives unnamed files their name with a flag; that is another matter.
    if (flags == 0 && isNamed("PCT_TEST_WITHOUT", "linkat"))
        return failure(EPERM);
    return systemsOwn(&linkat, "linkat")(fromFolder, from, toFolder, to, flags);
}

extern "C" int fsync(int file)
{
    if (isNamed("PCT_TEST_BUSY", "fsync"))
        computeForEver();
    return systemsOwn(&fsync, "fsync")(file);
}
