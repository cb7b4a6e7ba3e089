// SPDX-License-Identifier: Apache-2.0
#include "package/contents/CpioReader.h"

#include <algorithm>
#include <sys/stat.h>

namespace {

constexpr qint64 longestName = 4096;

/// Numbers of fixed widths, one after the other.
class Fields
{
public:
    Fields(ByteStream &bytes, int base)
        : m_bytes(bytes)
        , m_base(base)
    {
    }

    qint64 take(int width)
    {
        QByteArray digits(width, '\0');
        bool isNumber = m_bytes.readAll(digits.data(), width);
        isNumber = isNumber && std::all_of(digits.begin(), digits.end(), [](char c) {
                       return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
                   });
        const qint64 number = isNumber ? digits.toLongLong(&isNumber, m_base) : 0;
        m_areUsable = m_areUsable && isNumber;
        return number;
    }

    void pass(int width) { static_cast<void>(take(width)); }
    bool areUsable() const { return m_areUsable; }

private:
    ByteStream &m_bytes;
    int m_base;
    bool m_areUsable = true;
};

Problem broken(const QString &why)
{
    return {{}, QStringLiteral("is no cpio archive that can be read: ") + why};
}

bool isKind(int mode, int kind)
{
    return (mode & S_IFMT) == kind;
}

} // namespace

/// What is left of a member.
class CpioReader::MemberBytes : public ByteStream
{
public:
    MemberBytes(ByteStream &archive, qint64 size)
        : m_archive(archive)
        , m_left(size)
    {
    }

    qint64 read(char *to, qint64 most) override
    {
        if (m_left == 0)
            return 0;
        const qint64 count = m_archive.read(to, std::min(most, m_left));
        m_left -= std::max<qint64>(count, 0);
        return count == 0 ? -1 : count;
    }

    bool skipRest()
    {
        const qint64 rest = m_left;
        m_left = 0;
        return m_archive.skip(rest);
    }

private:
    ByteStream &m_archive;
    qint64 m_left;
};

QString CpioMember::path() const
{
    QByteArray bytes = name.startsWith("./") ? name.mid(2) : name;
    if (bytes.endsWith('/'))
        bytes.chop(1);
    if (bytes.isEmpty())
        return QStringLiteral(".");
    const QString text = QString::fromUtf8(bytes);
    return text.toUtf8() == bytes ? text : QString();
}

bool CpioMember::isFile() const
{
    return isKind(mode, S_IFREG);
}

bool CpioMember::isFolder() const
{
    return isKind(mode, S_IFDIR);
}

bool CpioMember::isLink() const
{
    return isKind(mode, S_IFLNK);
}

CpioReader::CpioReader(Bytes archive)
    : m_archive(std::move(archive))
{
}

CpioReader::~CpioReader() = default;

Result<std::optional<CpioMember>> CpioReader::next()
{
    if (m_member && (!m_member->skipRest() || !skipPadding()))
        return broken(QStringLiteral("it ends too early"));
    Result<std::optional<CpioMember>> member = readMember();
    if (!member || (*member)->name != "TRAILER!!!")
        return member;
    if ((*member)->size != 0 || !restIsZero())
        return broken(QStringLiteral("something follows its end"));
    return std::optional<CpioMember>();
}

Result<std::optional<CpioMember>> CpioReader::readMember()
{
    QByteArray magic(6, '\0');
    if (!m_archive->readAll(magic.data(), magic.size()))
        return broken(QStringLiteral("it has no end"));
    const bool isNew = magic == "070701" || magic == "070702";
    if (!isNew && magic != "070707")
        return broken(QStringLiteral("a member does not begin as one"));
    qint64 nameSize = 0;
    std::optional<CpioMember> member = isNew ? readNewHeader(&nameSize) : readOldHeader(&nameSize);
    if (!member || nameSize < 1 || nameSize > longestName)
        return broken(QStringLiteral("a member's header has what is no number"));
    member->name.resize(static_cast<int>(nameSize));
    if (!m_archive->readAll(member->name.data(), nameSize) || member->name.indexOf('\0') != nameSize - 1)
        return broken(QStringLiteral("a member's name does not end"));
    member->name.chop(1);
    m_alignment = isNew ? 4 : 1;
    m_position = (isNew ? 110 : 76) + nameSize;
    if (!skipPadding())
        return broken(QStringLiteral("it ends too early"));
    m_member = std::make_unique<MemberBytes>(*m_archive, member->size);
    m_bytes = m_member.get();
    m_position = member->size;
    return member;
}

std::optional<CpioMember> CpioReader::readOldHeader(qint64 *nameSize)
{
    Fields fields(*m_archive, 8);
    CpioMember member;
    fields.pass(6);
    fields.pass(6);
    member.mode = static_cast<int>(fields.take(6));
    member.uid = fields.take(6);
    member.gid = fields.take(6);
    fields.pass(6);
    fields.pass(6);
    fields.pass(11);
    *nameSize = fields.take(6);
    member.size = fields.take(11);
    return fields.areUsable() ? std::optional(member) : std::nullopt;
}

std::optional<CpioMember> CpioReader::readNewHeader(qint64 *nameSize)
{
    constexpr int width = 8;
    Fields fields(*m_archive, 16);
    CpioMember member;
    fields.pass(width);
    member.mode = static_cast<int>(fields.take(width));
    member.uid = fields.take(width);
    member.gid = fields.take(width);
    fields.pass(width);
    fields.pass(width);
    member.size = fields.take(width);
    for (int device = 0; device < 4; ++device)
        fields.pass(width);
    *nameSize = fields.take(width);
    fields.pass(width);
    return fields.areUsable() ? std::optional(member) : std::nullopt;
}

bool CpioReader::skipPadding()
{
    const qint64 surplus = m_position % m_alignment;
    return surplus == 0 || m_archive->skip(m_alignment - surplus);
}

bool CpioReader::restIsZero()
{
    char block[4096];
    for (;;) {
        const qint64 count = m_archive->read(block, sizeof block);
        if (count <= 0)
            return count == 0;
        if (!std::all_of(block, block + count, [](char byte) { return byte == 0; }))
            return false;
    }
}
