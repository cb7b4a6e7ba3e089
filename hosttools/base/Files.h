// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QVector>

#include <sys/stat.h>

/// Files by raw byte paths: names in an archive and on a command line are bytes, and must stay what
/// they are in every locale. Everything here throws Error, without the path, which the caller knows better.
namespace FlatPkg {

/// Owns an open file descriptor.
class FileDescriptor
{
public:
    explicit FileDescriptor(int fd = -1)
        : m_fd(fd)
    {
    }
    ~FileDescriptor();
    FileDescriptor(FileDescriptor &&other) noexcept;
    FileDescriptor &operator=(FileDescriptor &&other) noexcept;
    FileDescriptor(const FileDescriptor &) = delete;
    FileDescriptor &operator=(const FileDescriptor &) = delete;

    int get() const { return m_fd; }
    /// Gives the descriptor away; somebody else closes it.
    int release();

private:
    int m_fd;
};

QByteArray withoutTrailingSlashes(const QByteArray &path);

/// The folder part of a path, "." when there is none.
QByteArray folderOf(const QByteArray &path);

/// Opens a regular file for reading; anything else, such as a pipe that would block, is refused.
FileDescriptor openInput(const QByteArray &path);

/// Opens a file or folder in a folder, never through a link.
FileDescriptor openFileIn(int folder, const QByteArray &name);
FileDescriptor openFolderIn(int folder, const QByteArray &name);
FileDescriptor openFolder(const QByteArray &path);

struct stat statusOf(int fd);
struct stat statusIn(int folder, const QByteArray &name);
QByteArray linkTargetIn(int folder, const QByteArray &name);

/// The names in a folder, without "." and "..", in byte order.
QVector<QByteArray> namesIn(int folder);

void readExactly(int fd, char *bytes, qint64 count, qint64 offset);
void writeAll(int fd, const char *bytes, qint64 count, qint64 offset);

/// What a user of the machine may still write to this folder's file system, in bytes.
qint64 freeSpace(int folder);

} // namespace FlatPkg
