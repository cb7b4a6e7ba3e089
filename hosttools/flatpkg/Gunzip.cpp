// SPDX-License-Identifier: Apache-2.0
#include "hosttools/flatpkg/Gunzip.h"

#include "hosttools/base/Error.h"
#include "hosttools/base/Interrupt.h"

#include <fcntl.h>
#include <unistd.h>
#include <zlib.h>

namespace FlatPkg {

namespace {

gzFile opened(int fd)
{
    if (lseek(fd, 0, SEEK_SET) != 0)
        throw systemError("cannot be read");
    const int copy = fcntl(fd, F_DUPFD_CLOEXEC, 0);
    const gzFile file = copy < 0 ? nullptr : gzdopen(copy, "rb");
    if (!file)
        throw systemError("cannot be read");
    gzbuffer(file, 128 * 1024);
    return file;
}

} // namespace

Gunzip::Gunzip(int fd)
    : m_file(opened(fd), gzclose)
{
}

qint64 Gunzip::read(char *bytes, qint64 count)
{
    const int got = gzread(m_file.get(), bytes, static_cast<unsigned>(count));
    Interrupt::check();
    int problem = Z_OK;
    gzerror(m_file.get(), &problem);
    if (problem == Z_ERRNO)
        throw systemError("cannot be read");
    // A stream that is cut gives what it has without a complaint at first.
    if (got < 0 || problem != Z_OK)
        throw Error("the archive is damaged: what is packed in it has been changed or cut");
    return got;
}

} // namespace FlatPkg
