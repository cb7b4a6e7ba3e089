// SPDX-License-Identifier: Apache-2.0
#include "hosttools/base/Output.h"

#include "hosttools/base/Error.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <optional>
#include <sys/stat.h>
#include <unistd.h>

namespace FlatPkg {

namespace {

mode_t creationMask()
{
    const mode_t mask = umask(0);
    umask(mask);
    return mask;
}

std::optional<struct stat> statusAt(const QByteArray &path)
{
    struct stat status = {};
    if (lstat(path.constData(), &status) == 0)
        return status;
    if (errno != ENOENT)
        throw systemError("cannot be looked at");
    return std::nullopt;
}

QByteArray privateNameIn(const QByteArray &folder)
{
    return folder + "/.pkgutil-XXXXXX";
}

FileDescriptor namedTemporary(const QByteArray &folder, QByteArray *path)
{
    *path = privateNameIn(folder);
    FileDescriptor file(mkostemp(path->data(), O_CLOEXEC));
    if (file.get() < 0)
        throw systemError("its folder cannot be written");
    return file;
}

/// A file without a name where the file system can, so that not even a killed run leaves it behind.
FileDescriptor temporary(const QByteArray &folder, QByteArray *path)
{
    FileDescriptor file(open(folder.constData(), O_TMPFILE | O_RDWR | O_CLOEXEC, 0600));
    return file.get() >= 0 ? std::move(file) : namedTemporary(folder, path);
}

QByteArray targetName(const QByteArray &target)
{
    if (target.isEmpty())
        throw Error("an empty name; name the result");
    return withoutTrailingSlashes(target);
}

} // namespace

FileDescriptor scratchFile(const QByteArray &folder)
{
    QByteArray path;
    FileDescriptor file = temporary(folder, &path);
    if (!path.isEmpty())
        unlink(path.constData());
    return file;
}

OutputFile::OutputFile(const QByteArray &target)
    : m_target(targetName(target))
    , m_folder(folderOf(m_target))
    , m_mode(0666 & ~creationMask())
{
    const std::optional<struct stat> existing = statusAt(m_target);
    if (existing && !S_ISREG(existing->st_mode))
        throw Error("exists and is not a file; choose another name");
    if (existing)
        m_mode = existing->st_mode & 0777U;
    m_file = temporary(m_folder, &m_temporaryPath);
}

OutputFile::~OutputFile()
{
    if (!m_temporaryPath.isEmpty())
        unlink(m_temporaryPath.constData());
}

void OutputFile::giveItAName()
{
    QByteArray path;
    const FileDescriptor placeholder = namedTemporary(m_folder, &path);
    unlink(path.constData());
    const QByteArray source = "/proc/self/fd/" + QByteArray::number(m_file.get());
    if (linkat(AT_FDCWD, source.constData(), AT_FDCWD, path.constData(), AT_SYMLINK_FOLLOW) != 0)
        throw systemError("cannot be put in place");
    m_temporaryPath = path;
}

void OutputFile::commit()
{
    if (fchmod(m_file.get(), m_mode) != 0)
        throw systemError("cannot be put in place");
    if (m_temporaryPath.isEmpty())
        giveItAName();
    if (rename(m_temporaryPath.constData(), m_target.constData()) != 0)
        throw systemError("cannot be put in place");
    m_temporaryPath.clear();
}

void writeFile(const QByteArray &target, const QByteArray &bytes)
{
    OutputFile output(target);
    writeAll(output.get(), bytes.constData(), bytes.size(), 0);
    output.commit();
}

OutputFolder::OutputFolder(const QByteArray &target)
    : m_target(targetName(target))
{
    if (statusAt(m_target))
        throw Error("exists already; choose a new name");
    m_path = privateNameIn(folderOf(m_target));
    if (!mkdtemp(m_path.data()))
        throw systemError("its folder cannot be written");
    m_folder = openFolder(m_path);
}

OutputFolder::~OutputFolder()
{
    std::error_code ignored;
    if (!m_path.isEmpty())
        std::filesystem::remove_all(m_path.constData(), ignored);
}

void OutputFolder::commit()
{
    if (fchmod(m_folder.get(), 0777 & ~creationMask()) != 0)
        throw systemError("cannot be put in place");
    // The kernel itself refuses to replace what has appeared there meanwhile.
    if (renameat2(AT_FDCWD, m_path.constData(), AT_FDCWD, m_target.constData(), RENAME_NOREPLACE) != 0 &&
        (errno != EINVAL || rename(m_path.constData(), m_target.constData()) != 0))
        throw systemError("cannot be put in place");
    m_path.clear();
}

} // namespace FlatPkg
