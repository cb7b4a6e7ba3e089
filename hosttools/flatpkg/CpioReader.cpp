// SPDX-License-Identifier: Apache-2.0
#include "hosttools/flatpkg/Cpio.h"

#include "hosttools/flatpkg/Error.h"
#include "hosttools/flatpkg/Interrupt.h"
#include "hosttools/flatpkg/Limits.h"
#include "hosttools/flatpkg/TargetTree.h"

#include <archive.h>
#include <archive_entry.h>
#include <array>
#include <memory>
#include <unistd.h>

namespace FlatPkg {

namespace {

using Archive = std::unique_ptr<archive, int (*)(archive *)>;

constexpr size_t blockSize = 64 * 1024;

[[noreturn]] void refuseDamaged(archive *source)
{
    const char *reason = archive_error_string(source);
    throw Error(QByteArrayLiteral("the archive is damaged: ") + (reason ? reason : "it cannot be read"));
}

using Format = int (*)(archive *);

/// Opens the file from its start as an archive of this format, gzip'd or not.
Archive opened(int fd, Format format)
{
    Archive source(archive_read_new(), archive_read_free);
    archive_read_support_filter_gzip(source.get());
    format(source.get());
    if (lseek(fd, 0, SEEK_SET) != 0 || archive_read_open_fd(source.get(), fd, blockSize) != ARCHIVE_OK)
        refuseDamaged(source.get());
    return source;
}

/// In other forms of cpio a name can be gigabytes long, and all of it would be held in memory.
void requirePortableForm(int fd)
{
    const QByteArray magic = QByteArrayLiteral("070707");
    const Archive bytes = opened(fd, archive_read_support_format_raw);
    archive_entry *entry = nullptr;
    QByteArray start(magic.size(), '\0');
    const bool readable = archive_read_next_header(bytes.get(), &entry) == ARCHIVE_OK &&
                          archive_read_data(bytes.get(), start.data(), start.size()) == start.size();
    if (!readable || start != magic)
        throw Error("is not a cpio archive of the portable form");
}

Archive openedCpio(int fd)
{
    requirePortableForm(fd);
    return opened(fd, archive_read_support_format_cpio);
}

Attributes attributesFrom(archive_entry *entry)
{
    Attributes attributes;
    attributes.mode = archive_entry_perm(entry) & 07777U;
    attributes.uid = static_cast<quint32>(archive_entry_uid(entry));
    attributes.gid = static_cast<quint32>(archive_entry_gid(entry));
    attributes.modified = archive_entry_mtime(entry);
    return attributes;
}

class CpioReader
{
public:
    CpioReader(int archiveFd, int folder)
        : m_source(openedCpio(archiveFd))
        , m_tree(folder)
        , m_archiveSize(statusOf(archiveFd).st_size)
    {
    }

    void unpack();

private:
    void unpackEntry(const QByteArray &path, archive_entry *entry);
    void unpackFile(const QByteArray &path, archive_entry *entry);
    void writeContents(int to);

    Archive m_source;
    TargetTree m_tree;
    qint64 m_archiveSize;
    qint64 m_unpacked = 0;
    int m_entries = 0;
};

void CpioReader::unpack()
{
    archive_entry *entry = nullptr;
    int result = ARCHIVE_OK;
    while ((result = archive_read_next_header(m_source.get(), &entry)) == ARCHIVE_OK ||
           result == ARCHIVE_WARN) {
        Interrupt::check();
        if (++m_entries > mostMembers)
            throw Error("the archive has too many members");
        const QByteArray path = archive_entry_pathname(entry);
        within(path, [&] { unpackEntry(path, entry); });
    }
    if (result != ARCHIVE_EOF)
        refuseDamaged(m_source.get());
    m_tree.finish();
}

void CpioReader::unpackEntry(const QByteArray &path, archive_entry *entry)
{
    if (const char *existing = archive_entry_hardlink(entry))
        return m_tree.createHardLink(path, existing);
    switch (archive_entry_filetype(entry)) {
    case AE_IFREG:
        return unpackFile(path, entry);
    case AE_IFDIR:
        return m_tree.createFolder(path, attributesFrom(entry));
    case AE_IFLNK:
        return m_tree.createLink(path, archive_entry_symlink(entry), attributesFrom(entry));
    default:
        throw Error("neither a file nor a folder nor a link");
    }
}

void CpioReader::unpackFile(const QByteArray &path, archive_entry *entry)
{
    const qint64 size = archive_entry_size(entry);
    m_unpacked += size;
    requirePlausibleSize(m_unpacked, m_archiveSize);
    m_tree.requireSpaceFor(size);
    const FileDescriptor file = m_tree.createFile(path);
    writeContents(file.get());
    applyAttributes(file.get(), attributesFrom(entry));
}

void CpioReader::writeContents(int to)
{
    std::array<char, blockSize> buffer;
    qint64 written = 0;
    la_ssize_t count = 0;
    while ((count = archive_read_data(m_source.get(), buffer.data(), buffer.size())) > 0) {
        Interrupt::check();
        writeAll(to, buffer.data(), count, written);
        written += count;
    }
    if (count < 0)
        refuseDamaged(m_source.get());
}

} // namespace

void unpackCpio(int archive, int folder)
{
    CpioReader(archive, folder).unpack();
}

} // namespace FlatPkg
