// SPDX-License-Identifier: Apache-2.0
#include "hosttools/base/Files.h"

#include "hosttools/base/Error.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <dirent.h>
#include <fcntl.h>
#include <memory>
#include <sys/statvfs.h>
#include <unistd.h>
#include <utility>

namespace FlatPkg {

namespace {

FileDescriptor opened(int fd)
{
    if (fd < 0)
        throw systemError("cannot be opened");
    return FileDescriptor(fd);
}

bool isDotOrDotDot(const QByteArray &name)
{
    return name == "." || name == "..";
}

} // namespace

FileDescriptor::~FileDescriptor()
{
    if (m_fd >= 0)
        close(m_fd);
}

FileDescriptor::FileDescriptor(FileDescriptor &&other) noexcept
    : m_fd(std::exchange(other.m_fd, -1))
{
}

FileDescriptor &FileDescriptor::operator=(FileDescriptor &&other) noexcept
{
    std::swap(m_fd, other.m_fd);
    return *this;
}

int FileDescriptor::release()
{
    return std::exchange(m_fd, -1);
}

QByteArray withoutTrailingSlashes(const QByteArray &path)
{
    auto length = path.size();
    while (length > 1 && path.at(length - 1) == '/')
        --length;
    return path.left(length);
}

QByteArray folderOf(const QByteArray &path)
{
    const auto slash = withoutTrailingSlashes(path).lastIndexOf('/');
    if (slash < 0)
        return QByteArrayLiteral(".");
    return slash == 0 ? QByteArrayLiteral("/") : path.left(slash);
}

FileDescriptor openInput(const QByteArray &path)
{
    // Without O_NONBLOCK opening a named pipe would wait for a writer.
    FileDescriptor file = opened(open(path.constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    if (!S_ISREG(statusOf(file.get()).st_mode))
        throw Error("is not a file");
    return file;
}

FileDescriptor openFileIn(int folder, const QByteArray &name)
{
    const int flags = O_RDONLY | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK;
    return opened(openat(folder, name.constData(), flags));
}

FileDescriptor openFolderIn(int folder, const QByteArray &name)
{
    const int flags = O_RDONLY | O_CLOEXEC | O_NOFOLLOW | O_DIRECTORY;
    return opened(openat(folder, name.constData(), flags));
}

FileDescriptor openFolder(const QByteArray &path)
{
    return opened(open(path.constData(), O_RDONLY | O_CLOEXEC | O_DIRECTORY));
}

struct stat statusOf(int fd)
{
    struct stat status = {};
    if (fstat(fd, &status) != 0)
        throw systemError("cannot be looked at");
    return status;
}

struct stat statusIn(int folder, const QByteArray &name)
{
    struct stat status = {};
    if (fstatat(folder, name.constData(), &status, AT_SYMLINK_NOFOLLOW) != 0)
        throw systemError("cannot be looked at");
    return status;
}

QByteArray linkTargetIn(int folder, const QByteArray &name)
{
    std::array<char, PATH_MAX> target;
    const ssize_t length = readlinkat(folder, name.constData(), target.data(), target.size());
    if (length < 0)
        throw systemError("cannot be read");
    return QByteArray(target.data(), static_cast<int>(length));
}

QVector<QByteArray> namesIn(int folder)
{
    // A descriptor of its own: closedir() closes it, and the position belongs to nobody else.
    FileDescriptor copy = openFolderIn(folder, QByteArrayLiteral("."));
    const std::unique_ptr<DIR, int (*)(DIR *)> stream(fdopendir(copy.get()), closedir);
    if (!stream)
        throw systemError("cannot be listed");
    copy.release();
    QVector<QByteArray> names;
    while (const dirent *entry = readdir(stream.get()))
        if (!isDotOrDotDot(entry->d_name))
            names.append(entry->d_name);
    std::sort(names.begin(), names.end());
    return names;
}

void readExactly(int fd, char *bytes, qint64 count, qint64 offset)
{
    while (count > 0) {
        const ssize_t got = pread(fd, bytes, static_cast<size_t>(count), offset);
        if (got < 0 && errno == EINTR)
            continue;
        if (got < 0)
            throw systemError("cannot be read");
        if (got == 0)
            throw Error("ends too early");
        bytes += got;
        count -= got;
        offset += got;
    }
}

void writeAll(int fd, const char *bytes, qint64 count, qint64 offset)
{
    while (count > 0) {
        const ssize_t written = pwrite(fd, bytes, static_cast<size_t>(count), offset);
        if (written < 0 && errno == EINTR)
            continue;
        if (written < 0)
            throw systemError("cannot be written");
        bytes += written;
        count -= written;
        offset += written;
    }
}

qint64 freeSpace(int folder)
{
    struct statvfs status = {};
    if (fstatvfs(folder, &status) != 0)
        throw systemError("its file system cannot be looked at");
    return static_cast<qint64>(status.f_bavail) * static_cast<qint64>(status.f_frsize);
}

} // namespace FlatPkg
