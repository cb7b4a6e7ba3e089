// SPDX-License-Identifier: Apache-2.0
#include "core/SafeFile.h"

#include "core/FileDescriptor.h"

#include <QFile>

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

Problem failedByErrno(const QString &path)
{
    return {path, QString::fromLocal8Bit(std::strerror(errno))};
}

/// A new file that goes again when it is not kept. Failures leave their reason in errno.
class NewFile
{
public:
    explicit NewFile(const QString &path)
        : m_name(QFile::encodeName(path))
        , m_file(::open(m_name.constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666))
    {
    }
    ~NewFile()
    {
        const int before = errno;
        if (m_file.isValid() && !m_kept)
            ::unlink(m_name.constData());
        errno = before;
    }

    /// With the permissions of the file at `model`, where there is one, before anybody could read the bytes.
    bool fill(const QByteArray &bytes, const QString &model, SafeFile::Lasting lasting) const
    {
        return m_file.isValid() && takePermissions(QFile::encodeName(model)) && m_file.write(bytes) &&
               (lasting == SafeFile::Lasting::No || m_file.sync());
    }
    void keep() { m_kept = true; }

private:
    bool takePermissions(const QByteArray &model) const
    {
        struct stat status = {};
        if (::stat(model.constData(), &status) != 0)
            return errno == ENOENT;
        return ::fchmod(m_file.get(), status.st_mode & 07777) == 0;
    }

    QByteArray m_name;
    FileDescriptor m_file;
    bool m_kept = false;
};

} // namespace

SafeFile::Kind SafeFile::kindOf(const QString &path)
{
    struct stat status = {};
    if (::lstat(QFile::encodeName(path).constData(), &status) != 0)
        return errno == ENOENT || errno == ENOTDIR ? Kind::Missing : Kind::Other;
    if (S_ISLNK(status.st_mode))
        return Kind::Link;
    if (S_ISREG(status.st_mode))
        return Kind::File;
    return S_ISDIR(status.st_mode) ? Kind::Folder : Kind::Other;
}

bool SafeFile::sameFile(const QString &first, const QString &second)
{
    struct stat one = {};
    struct stat other = {};
    return ::stat(QFile::encodeName(first).constData(), &one) == 0 &&
           ::stat(QFile::encodeName(second).constData(), &other) == 0 && one.st_dev == other.st_dev &&
           one.st_ino == other.st_ino;
}

Result<> SafeFile::copyNew(const QString &from, const QString &to, Lasting lasting)
{
    if (kindOf(to) != Kind::Missing)
        return Problem{to, QStringLiteral("exists already")};
    const Result<QByteArray> bytes = readContents(from);
    if (!bytes)
        return bytes.problem();
    NewFile file(to);
    if (!file.fill(*bytes, from, lasting))
        return failedByErrno(to);
    file.keep();
    return {};
}

Result<QByteArray> SafeFile::readContents(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return Problem{path, file.errorString()};
    QByteArray bytes = file.readAll();
    if (file.error() != QFileDevice::NoError)
        return Problem{path, file.errorString()};
    return bytes;
}

Result<> SafeFile::replaceContents(const QString &path, const QByteArray &bytes, Lasting lasting)
{
    return OutputFile(path, OutputFile::Existing::Replace, lasting).write(bytes);
}
