// SPDX-License-Identifier: Apache-2.0
#include "core/OutputFile.h"

#include "core/ExclusiveRename.h"
#include "core/FileDescriptor.h"

#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr mode_t permissionBits = 07777;
constexpr mode_t writableFile = 0666;

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

bool cannotRefuse(int reason)
{
    return reason == EINVAL || reason == ENOSYS || reason == ENOTSUP || reason == EOPNOTSUPP;
}

/// Where rename cannot refuse, a second name can: it never replaces anything.
int linkAndForget(int fromFolder, int toFolder, const char *name)
{
    if (::linkat(fromFolder, name, toFolder, name, 0) != 0)
        return -1;
    ::unlinkat(fromFolder, name, 0);
    return 0;
}

QString freeNameProblem(int reason)
{
    if (reason == EEXIST)
        return QStringLiteral("exists already, since this run began");
    if (cannotRefuse(reason) || reason == EPERM)
        return QStringLiteral("its file system can only replace files and not refuse to; allow it or use "
                              "another one");
    return QString::fromLocal8Bit(std::strerror(reason));
}

} // namespace

OutputFile::OutputFile(const QString &path, Existing existing)
    : m_path(path)
    , m_name(QFile::encodeName(QFileInfo(path).fileName()))
    , m_folder(QFileInfo(path).path())
    , m_existing(existing)
{
}

bool OutputFile::stage(QString *error)
{
    if (!m_folder.isValid())
        return fail(error, m_folder.errorString());
    m_staging.emplace(m_folder, QStringLiteral(".pct-output-"));
    return m_staging->isValid() || fail(error, m_staging->errorString());
}

QString OutputFile::stagedPath() const
{
    return m_staging->filePath(QFile::decodeName(m_name));
}

bool OutputFile::isStaged() const
{
    struct stat status = {};
    return ::fstatat(m_staging->descriptor(), m_name.constData(), &status, AT_SYMLINK_NOFOLLOW) == 0 &&
           S_ISREG(status.st_mode) && status.st_size > 0;
}

bool OutputFile::place(QString *error)
{
    const FileDescriptor staged(::openat(m_staging->descriptor(), m_name.constData(),
                                         O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
    if (!staged.isValid() || !staged.sync())
        return failWithErrno(error);
    if (!m_folder.isStillThere())
        return fail(error, QStringLiteral("its folder was moved or replaced during the run"));
    const bool moved =
        m_existing == Existing::Keep ? moveToFreeName(error) : moveOverFile(staged.get(), error);
    return moved && (::fsync(m_folder.descriptor()) == 0 || failWithErrno(error));
}

bool OutputFile::write(const QByteArray &bytes, QString *error)
{
    if (!stage(error))
        return false;
    return fillStaged(bytes) ? place(error) : failWithErrno(error);
}

bool OutputFile::fillStaged(const QByteArray &bytes) const
{
    const FileDescriptor file(::openat(m_staging->descriptor(), m_name.constData(),
                                       O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, writableFile));
    return file.isValid() && file.write(bytes);
}

bool OutputFile::moveToFreeName(QString *error)
{
    const int from = m_staging->descriptor();
    const int to = m_folder.descriptor();
    int result = renameWithoutReplacing(from, m_name.constData(), to, m_name.constData());
    if (result != 0 && cannotRefuse(errno))
        result = linkAndForget(from, to, m_name.constData());
    if (result == 0)
        return true;
    m_taken = errno == EEXIST;
    return fail(error, freeNameProblem(errno));
}

bool OutputFile::moveOverFile(int staged, QString *error) const
{
    struct stat old = {};
    const bool exists = ::fstatat(m_folder.descriptor(), m_name.constData(), &old, AT_SYMLINK_NOFOLLOW) == 0;
    if (exists && S_ISLNK(old.st_mode))
        return fail(error, QStringLiteral("is a link"));
    if (exists && !S_ISREG(old.st_mode))
        return fail(error, QStringLiteral("is not a regular file"));
    if (exists && ::fchmod(staged, old.st_mode & permissionBits) != 0)
        return failWithErrno(error);
    return ::renameat(m_staging->descriptor(), m_name.constData(), m_folder.descriptor(),
                      m_name.constData()) == 0 ||
           failWithErrno(error);
}
