// SPDX-License-Identifier: Apache-2.0
#include "hosttools/flatpkg/Cpio.h"

#include "hosttools/base/Error.h"
#include "hosttools/base/Files.h"
#include "hosttools/flatpkg/Attributes.h"
#include "hosttools/flatpkg/ByteRange.h"
#include "hosttools/flatpkg/EntryPath.h"

#include <algorithm>
#include <archive.h>
#include <archive_entry.h>
#include <memory>

namespace FlatPkg {

namespace {

using Archive = std::unique_ptr<archive, int (*)(archive *)>;
using Entry = std::unique_ptr<archive_entry, void (*)(archive_entry *)>;

void require(archive *target, int result)
{
    if (result < ARCHIVE_OK)
        throw Error(QByteArrayLiteral("cannot be packed: ") + archive_error_string(target));
}

Archive opened(int fd)
{
    Archive target(archive_write_new(), archive_write_free);
    archive *const raw = target.get();
    require(raw, archive_write_set_format_cpio_odc(raw));
    require(raw, archive_write_add_filter_gzip(raw));
    // Without the time of packing the same folder gives the same archive.
    require(raw, archive_write_set_options(raw, "gzip:compression-level=1,gzip:!timestamp"));
    require(raw, archive_write_set_bytes_in_last_block(raw, 1));
    require(raw, archive_write_open_fd(raw, fd));
    return target;
}

class CpioWriter
{
public:
    explicit CpioWriter(int archiveFd)
        : m_target(opened(archiveFd))
    {
    }

    void pack(int folder);

private:
    void packFolder(int folder, const QByteArray &path, int depth);
    void packChild(int folder, const QByteArray &name, const QByteArray &path, int depth);
    void packFile(int file, const QByteArray &path);
    void packLink(int folder, const QByteArray &name, const QByteArray &path, int depth);
    Entry entryFor(const QByteArray &path, const struct stat &status, const Attributes &attributes);
    void writeHeader(const Entry &entry);

    Archive m_target;
};

void CpioWriter::pack(int folder)
{
    packFolder(folder, QByteArrayLiteral("."), 0);
    require(m_target.get(), archive_write_close(m_target.get()));
}

void CpioWriter::packFolder(int folder, const QByteArray &path, int depth)
{
    if (depth > deepestNesting)
        throw Error("nested too deeply");
    writeHeader(entryFor(path, statusOf(folder), attributesOf(folder)));
    for (const QByteArray &name : namesIn(folder))
        within(name, [&] { packChild(folder, name, path + '/' + name, depth); });
}

void CpioWriter::packChild(int folder, const QByteArray &name, const QByteArray &path, int depth)
{
    switch (statusIn(folder, name).st_mode & S_IFMT) {
    case S_IFREG:
        return packFile(openFileIn(folder, name).get(), path);
    case S_IFDIR:
        return packFolder(openFolderIn(folder, name).get(), path, depth + 1);
    case S_IFLNK:
        return packLink(folder, name, path, depth);
    default:
        throw Error("neither a file nor a folder nor a link");
    }
}

void CpioWriter::packFile(int file, const QByteArray &path)
{
    const struct stat status = statusOf(file);
    writeHeader(entryFor(path, status, attributesOf(file)));
    forEachPiece({file, 0, status.st_size}, [&](const char *bytes, qint64 count, qint64) {
        if (archive_write_data(m_target.get(), bytes, static_cast<size_t>(count)) != count)
            require(m_target.get(), ARCHIVE_FATAL);
    });
}

void CpioWriter::packLink(int folder, const QByteArray &name, const QByteArray &path, int depth)
{
    const QByteArray target = linkTargetIn(folder, name);
    requireTargetInside(target, depth);
    const Entry entry = entryFor(path, statusIn(folder, name), linkAttributesOf(folder, name));
    archive_entry_set_symlink(entry.get(), target.constData());
    writeHeader(entry);
}

Entry CpioWriter::entryFor(const QByteArray &path, const struct stat &status, const Attributes &attributes)
{
    constexpr quint32 largestOwner = 0777777; // the form has six octal digits
    if (attributes.uid > largestOwner || attributes.gid > largestOwner)
        throw Error("its owner's number is too large for a package");
    Entry entry(archive_entry_new(), archive_entry_free);
    archive_entry_set_pathname(entry.get(), path.constData());
    archive_entry_set_filetype(entry.get(), status.st_mode & S_IFMT);
    archive_entry_set_perm(entry.get(), attributes.mode);
    archive_entry_set_uid(entry.get(), attributes.uid);
    archive_entry_set_gid(entry.get(), attributes.gid);
    archive_entry_set_mtime(entry.get(), attributes.modified.value_or(0), 0);
    archive_entry_set_size(entry.get(), S_ISREG(status.st_mode) ? status.st_size : 0);
    archive_entry_set_nlink(entry.get(),
                            S_ISREG(status.st_mode) ? static_cast<unsigned>(status.st_nlink) : 1);
    archive_entry_set_ino64(entry.get(), static_cast<la_int64_t>(status.st_ino));
    return entry;
}

void CpioWriter::writeHeader(const Entry &entry)
{
    require(m_target.get(), archive_write_header(m_target.get(), entry.get()));
}

qint64 newestBelow(int folder, const QByteArray &name)
{
    const struct stat status = statusIn(folder, name);
    return S_ISDIR(status.st_mode) ? newestIn(openFolderIn(folder, name).get()) : status.st_mtim.tv_sec;
}

} // namespace

void packCpio(int folder, int archive)
{
    CpioWriter(archive).pack(folder);
}

qint64 newestIn(int folder)
{
    qint64 newest = statusOf(folder).st_mtim.tv_sec;
    for (const QByteArray &name : namesIn(folder))
        newest = std::max(newest, newestBelow(folder, name));
    return newest;
}

} // namespace FlatPkg
