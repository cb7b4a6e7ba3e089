// SPDX-License-Identifier: Apache-2.0
#include "hosttools/security/Document.h"

#include "hosttools/base/Error.h"
#include "hosttools/base/Files.h"
#include "hosttools/base/Output.h"

#include <cstdio>
#include <unistd.h>

using namespace FlatPkg;

namespace Document {

namespace {

void keepOwner(const QByteArray &path, int fd)
{
    struct stat status = {};
    if (geteuid() != 0 || lstat(path.constData(), &status) != 0)
        return;
    if (fchown(fd, status.st_uid, status.st_gid) != 0)
        throw systemError("its owner cannot be kept");
}

} // namespace

QByteArray read(const QByteArray &path, qint64 largest)
{
    const FileDescriptor file = openInput(path);
    const qint64 size = statusOf(file.get()).st_size;
    if (size > largest)
        throw Error("is larger than " + QByteArray::number(largest / 1024 / 1024) +
                    " MiB, which no profile is");
    QByteArray bytes(static_cast<int>(size), Qt::Uninitialized);
    readExactly(file.get(), bytes.data(), size, 0);
    return bytes;
}

void replace(const QByteArray &path, const QByteArray &bytes)
{
    OutputFile output(path);
    writeAll(output.get(), bytes.constData(), bytes.size(), 0);
    keepOwner(path, output.get());
    output.commit();
}

void print(const QByteArray &bytes)
{
    const auto size = static_cast<size_t>(bytes.size());
    if (std::fwrite(bytes.constData(), 1, size, stdout) != size)
        throw systemError("standard output");
}

} // namespace Document
