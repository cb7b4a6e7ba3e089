// SPDX-License-Identifier: Apache-2.0
#include "hosttools/flatpkg/Cpio.h"

#include "hosttools/base/Error.h"
#include "hosttools/base/Interrupt.h"
#include "hosttools/flatpkg/Gunzip.h"
#include "hosttools/flatpkg/Limits.h"
#include "hosttools/flatpkg/TargetTree.h"

#include <algorithm>
#include <array>
#include <climits>
#include <QHash>

namespace FlatPkg {

namespace {

const QByteArray trailer = QByteArrayLiteral("TRAILER!!!");

/// What stands between the magic number and the name of a member, all of it in octal digits.
struct Header
{
    quint32 device = 0;
    quint32 inode = 0;
    mode_t mode = 0;
    quint32 uid = 0;
    quint32 gid = 0;
    quint32 names = 0;
    qint64 modified = 0;
    qint64 nameLength = 0; ///< with the NUL at its end
    qint64 size = 0;
};

[[noreturn]] void refuseDamaged(const QByteArray &what)
{
    throw Error("the archive is damaged: " + what);
}

/// Takes numbers from the front of a header.
class Fields
{
public:
    explicit Fields(const QByteArray &header)
        : m_header(header)
    {
    }

    quint32 shortNumber() { return static_cast<quint32>(number(6)); }
    qint64 longNumber() { return number(11); }

private:
    qint64 number(int digits)
    {
        const QByteArray text = m_header.mid(m_position, digits);
        m_position += digits;
        const auto isOctal = [](char digit) { return digit >= '0' && digit <= '7'; };
        if (!std::all_of(text.begin(), text.end(), isOctal))
            refuseDamaged("\"" + text + "\" is no number");
        return text.toLongLong(nullptr, 8);
    }

    const QByteArray &m_header;
    int m_position = 0;
};

Attributes attributesFrom(const Header &header)
{
    Attributes attributes;
    attributes.mode = header.mode & 07777U;
    attributes.uid = header.uid;
    attributes.gid = header.gid;
    attributes.modified = header.modified;
    return attributes;
}

class CpioReader
{
public:
    CpioReader(int archiveFd, int folder)
        : m_source(archiveFd)
        , m_tree(folder)
        , m_archiveSize(statusOf(archiveFd).st_size)
    {
    }

    void unpack();

private:
    void requirePortableForm();
    Header readHeader();
    QByteArray readName(const Header &header);
    QByteArray readBytes(qint64 count);
    void unpackMember(const QByteArray &path, const Header &header);
    void unpackFile(const QByteArray &path, const Header &header);
    bool isAnotherName(const QByteArray &path, const Header &header);
    void unpackLink(const QByteArray &path, const Header &header);
    void copyContents(qint64 count, int to);
    void skip(qint64 count);
    void readToEnd();
    void account(qint64 count);

    Gunzip m_source;
    TargetTree m_tree;
    qint64 m_archiveSize;
    qint64 m_unpacked = 0;
    int m_members = 0;
    QHash<QPair<quint32, quint32>, QByteArray> m_pathByInode; ///< of files with several names
};

void CpioReader::unpack()
{
    requirePortableForm();
    for (;;) {
        Interrupt::check();
        const Header header = readHeader();
        const QByteArray path = readName(header);
        if (path == trailer)
            break;
        if (++m_members > mostMembers)
            throw Error("the archive has too many members");
        within(path, [&] { unpackMember(path, header); });
        requirePortableForm();
    }
    readToEnd();
    m_tree.finish();
}

/// In other forms of cpio a name can be gigabytes long.
void CpioReader::requirePortableForm()
{
    std::array<char, 6> magic;
    const qint64 count = m_source.read(magic.data(), magic.size());
    if (QByteArray(magic.data(), static_cast<int>(count)) == "070707")
        return;
    if (m_members == 0)
        throw Error("is not a cpio archive of the portable form");
    refuseDamaged(count < qint64(magic.size()) ? "it ends too early" : "no member where one has to be");
}

Header CpioReader::readHeader()
{
    constexpr int length = 8 * 6 + 2 * 11;
    const QByteArray bytes = readBytes(length);
    Fields fields(bytes);
    Header header;
    header.device = fields.shortNumber();
    header.inode = fields.shortNumber();
    header.mode = fields.shortNumber();
    header.uid = fields.shortNumber();
    header.gid = fields.shortNumber();
    header.names = fields.shortNumber();
    fields.shortNumber(); // which device it is, were it one
    header.modified = fields.longNumber();
    header.nameLength = fields.shortNumber();
    header.size = fields.longNumber();
    return header;
}

QByteArray CpioReader::readName(const Header &header)
{
    const QByteArray name = readBytes(header.nameLength);
    if (name.isEmpty() || name.indexOf('\0') != name.size() - 1)
        refuseDamaged("a name does not end where it has to");
    return name.chopped(1);
}

QByteArray CpioReader::readBytes(qint64 count)
{
    account(count);
    QByteArray bytes(static_cast<int>(count), Qt::Uninitialized);
    if (m_source.read(bytes.data(), count) != count)
        refuseDamaged("it ends too early");
    return bytes;
}

void CpioReader::unpackMember(const QByteArray &path, const Header &header)
{
    switch (header.mode & S_IFMT) {
    case S_IFREG:
        return unpackFile(path, header);
    case S_IFDIR:
        m_tree.createFolder(path, attributesFrom(header));
        return skip(header.size);
    case S_IFLNK:
        return unpackLink(path, header);
    default:
        throw Error("neither a file nor a folder nor a link");
    }
}

void CpioReader::unpackFile(const QByteArray &path, const Header &header)
{
    if (header.names > 1 && isAnotherName(path, header))
        return skip(header.size); // every name comes with the contents
    m_tree.requireSpaceFor(header.size);
    const FileDescriptor file = m_tree.createFile(path);
    copyContents(header.size, file.get());
    applyAttributes(file.get(), attributesFrom(header));
}

/// Makes another name of a file when one of its names was here before.
bool CpioReader::isAnotherName(const QByteArray &path, const Header &header)
{
    QByteArray &first = m_pathByInode[{header.device, header.inode}];
    if (first.isEmpty()) {
        first = path;
        return false;
    }
    m_tree.createHardLink(path, first);
    return true;
}

void CpioReader::unpackLink(const QByteArray &path, const Header &header)
{
    if (header.size >= PATH_MAX)
        refuseDamaged("the target of a link is too long");
    m_tree.createLink(path, readBytes(header.size), attributesFrom(header));
}

void CpioReader::copyContents(qint64 count, int to)
{
    account(count);
    std::array<char, 64 * 1024> buffer;
    for (qint64 done = 0; done < count;) {
        Interrupt::check();
        const qint64 step = std::min<qint64>(count - done, buffer.size());
        if (m_source.read(buffer.data(), step) != step)
            refuseDamaged("it ends too early");
        if (to >= 0)
            writeAll(to, buffer.data(), step, done);
        done += step;
    }
}

void CpioReader::skip(qint64 count)
{
    copyContents(count, -1);
}

/// What follows is filling, but the checksum of the packed bytes stands behind it.
void CpioReader::readToEnd()
{
    std::array<char, 64 * 1024> filling;
    while (const qint64 count = m_source.read(filling.data(), filling.size())) {
        Interrupt::check();
        account(count);
    }
}

void CpioReader::account(qint64 count)
{
    m_unpacked += count;
    requirePlausibleSize(m_unpacked, m_archiveSize);
}

} // namespace

void unpackCpio(int archive, int folder)
{
    CpioReader(archive, folder).unpack();
}

} // namespace FlatPkg
