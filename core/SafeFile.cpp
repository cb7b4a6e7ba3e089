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

/// A new file that goes again when it is not kept. Failures leave their reason in errno.
class NewFile
{
public:
    explicit NewFile(const QByteArray &name)
        : m_name(name)
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
    bool moveTo(const QByteArray &place)
    {
        m_kept = ::rename(m_name.constData(), place.constData()) == 0;
        return m_kept;
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

bool SafeFile::copyNew(const QString &from, const QString &to, QString *error, Lasting lasting)
{
    if (kindOf(to) != Kind::Missing)
        return fail(error, QStringLiteral("exists already"));
    QByteArray bytes;
    if (!readContents(from, bytes, error))
        return false;
    NewFile file(QFile::encodeName(to));
    if (!file.fill(bytes, from, lasting))
        return failWithErrno(error);
    file.keep();
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
    NewFile file(nameBeside(path));
    return (file.fill(bytes, path, lasting) && file.moveTo(QFile::encodeName(path))) || failWithErrno(error);
}
