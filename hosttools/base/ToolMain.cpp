// SPDX-License-Identifier: Apache-2.0
#include "hosttools/base/ToolMain.h"

#include "hosttools/base/Error.h"
#include "hosttools/base/Interrupt.h"

#include <cstdio>
#include <cstdlib>
#include <new>

namespace FlatPkg {

namespace {

int fail(const char *tool, const QByteArray &message)
{
    std::fprintf(stderr, "%s: %s\n", tool, printable(message).constData());
    return EXIT_FAILURE;
}

} // namespace

QVector<QByteArray> argumentsOf(int argc, char **argv)
{
    QVector<QByteArray> arguments;
    for (int i = 1; i < argc; ++i)
        arguments.append(argv[i]);
    return arguments;
}

int runTool(const char *tool, const std::function<void()> &work)
{
    try {
        Interrupt::watch();
        work();
        if (std::fflush(stdout) != 0)
            throw systemError("standard output");
        return EXIT_SUCCESS;
    } catch (const Error &error) {
        return fail(tool, error.message());
    } catch (const std::bad_alloc &) {
        return fail(tool, "not enough memory");
    }
}

int wrongUsage(const char *tool, const char *usage)
{
    std::fprintf(stderr, "usage: %s %s\n", tool, usage);
    return 2;
}

void printLine(const QByteArray &line)
{
    std::puts(printable(line).constData());
}

} // namespace FlatPkg
