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

OutputFile::OutputFile(const QString &path, Existing existing, Lasting lasting)
    : m_path(path)
    , m_name(QFile::encodeName(QFileInfo(path).fileName()))
    , m_folder(QFileInfo(path).path())
    , m_existing(existing)
    , m_lasting(lasting)
{
}

Result<> OutputFile::stage()
{
    m_staging.emplace(m_folder, QStringLiteral(".pct-output-"));
    const Result<> &made = m_staging->made();
    return made ? made : failed(made.problem().text);
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

Result<> OutputFile::place()
{
    const FileDescriptor staged(::openat(m_staging->descriptor(), m_name.constData(),
                                         O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
    if (!staged.isValid() || (isLasting() && !staged.sync()))
        return failedByErrno();
    if (!m_folder.isStillThere())
        return failed(QStringLiteral("its folder was moved or replaced during the run"));
    if (Result<> moved = m_existing == Existing::Keep ? moveToFreeName() : moveOverFile(staged.get()); !moved)
        return moved;
    if (isLasting() && ::fsync(m_folder.descriptor()) != 0)
        return failedByErrno();
    return {};
}

Result<> OutputFile::write(const QByteArray &bytes)
{
    if (Result<> staged = stage(); !staged)
        return staged;
    if (!fillStaged(bytes))
        return failedByErrno();
    Result<> placed = place();
    return placed && !isLasting() ? removeStaging() : placed;
}

/// What only this run needs may lie in a folder that becomes a package, where nothing else may stay.
Result<> OutputFile::removeStaging()
{
    const QString staging = m_staging->path();
    m_staging.reset();
    if (QFileInfo::exists(staging))
        return failed(QStringLiteral("the hidden folder beside it cannot be removed"));
    return {};
}

Problem OutputFile::failedByErrno() const
{
    return failed(QString::fromLocal8Bit(std::strerror(errno)));
}

bool OutputFile::fillStaged(const QByteArray &bytes) const
{
    const FileDescriptor file(::openat(m_staging->descriptor(), m_name.constData(),
                                       O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, writableFile));
    return file.isValid() && file.write(bytes);
}

Result<> OutputFile::moveToFreeName()
{
    const int from = m_staging->descriptor();
    const int to = m_folder.descriptor();
    int result = renameWithoutReplacing(from, m_name.constData(), to, m_name.constData());
    if (result != 0 && cannotRefuse(errno))
        result = linkAndForget(from, to, m_name.constData());
    if (result == 0)
        return {};
    m_taken = errno == EEXIST;
    return failed(freeNameProblem(errno));
}

Result<> OutputFile::moveOverFile(int staged) const
{
    struct stat old = {};
    const bool exists = ::fstatat(m_folder.descriptor(), m_name.constData(), &old, AT_SYMLINK_NOFOLLOW) == 0;
    if (!exists && errno != ENOENT)
        return failedByErrno();
    if (exists && S_ISLNK(old.st_mode))
        return failed(QStringLiteral("is a link"));
    if (exists && !S_ISREG(old.st_mode))
        return failed(QStringLiteral("is not a regular file"));
    if (exists && ::fchmod(staged, old.st_mode & permissionBits) != 0)
        return failedByErrno();
    if (::renameat(m_staging->descriptor(), m_name.constData(), m_folder.descriptor(), m_name.constData()) !=
        0)
        return failedByErrno();
    return {};
}
