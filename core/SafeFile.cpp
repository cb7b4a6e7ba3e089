// SPDX-License-Identifier: Apache-2.0
#include "core/SafeFile.h"

#include "core/FileDescriptor.h"

#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

bool fail(QString *error, const QString &text)
{
    if (error)
        *error = text;
    return false;
}

bool failWithErrno(QString *error)
{
    return fail(error, QString::fromLocal8Bit(std::strerror(errno)));
}

bool mayReplace(const QString &path, QString *error)
{
    switch (SafeFile::kindOf(path)) {
    case SafeFile::Kind::Missing:
    case SafeFile::Kind::File:
        return true;
    case SafeFile::Kind::Link:
        return fail(error, QStringLiteral("is a link"));
    default:
        return fail(error, QStringLiteral("is not a regular file"));
    }
}

/// A name beside the path that nobody else has in mind; hidden, as it may be left when the machine stops.
QByteArray nameBeside(const QString &path)
{
    const QFileInfo file(path);
    const QString number = QString::number(QRandomGenerator::global()->generate64(), 36);
    return QFile::encodeName(QStringLiteral("%1/.pct-new-%2").arg(file.path(), number));
}

/// A new file that goes when it has not been moved to its place.
class Replacement
{
public:
    explicit Replacement(const QString &path)
        : m_name(nameBeside(path))
        , m_place(QFile::encodeName(path))
        , m_file(::open(m_name.constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666))
    {
    }
    ~Replacement()
    {
        const int before = errno;
        if (m_file.isValid() && !m_moved)
            ::unlink(m_name.constData());
        errno = before;
    }

    bool write(const QByteArray &bytes) const { return m_file.isValid() && m_file.write(bytes); }
    bool sync() const { return m_file.sync(); }
    bool takePermissions() const
    {
        struct stat old = {};
        if (::lstat(m_place.constData(), &old) != 0)
            return errno == ENOENT;
        return ::fchmod(m_file.get(), old.st_mode & 07777) == 0;
    }
    bool move()
    {
        m_moved = ::rename(m_name.constData(), m_place.constData()) == 0;
        return m_moved;
    }

private:
    QByteArray m_name;
    QByteArray m_place;
    FileDescriptor m_file;
    bool m_moved = false;
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

bool SafeFile::copyNew(const QString &from, const QString &to, QString *error)
{
    if (kindOf(to) != Kind::Missing)
        return fail(error, QStringLiteral("exists already"));
    QFile source(from);
    if (!source.copy(to))
        return fail(error, source.errorString());
    return true;
}

bool SafeFile::readContents(const QString &path, QByteArray &bytes, QString *error)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return fail(error, file.errorString());
    bytes = file.readAll();
    return file.error() == QFileDevice::NoError || fail(error, file.errorString());
}

bool SafeFile::replaceContents(const QString &path, const QByteArray &bytes, QString *error, Lasting lasting)
{
    if (!mayReplace(path, error))
        return false;
    Replacement file(path);
    const bool isWritten = file.write(bytes) && file.takePermissions();
    return (isWritten && (lasting == Lasting::No || file.sync()) && file.move()) || failWithErrno(error);
}
