// SPDX-License-Identifier: Apache-2.0
#include "package/contents/ScriptsArchive.h"

#include "package/contents/CpioReader.h"
#include "package/contents/Unpacking.h"

#include <algorithm>
#include <vector>

namespace {

constexpr qint64 mostBytes = 512LL * 1024 * 1024;
constexpr qint64 mostKept = 16LL * 1024 * 1024;
constexpr int mostMembers = 100 * 1000;

QString typeOf(const CpioMember &member)
{
    if (member.isFile())
        return QStringLiteral("file");
    if (member.isFolder())
        return QStringLiteral("directory");
    return member.isLink() ? QStringLiteral("symlink") : QStringLiteral("other");
}

bool isKept(const QString &path, const CpioMember &member)
{
    static const QStringList kept{QStringLiteral("preinstall"), QStringLiteral("postinstall"),
                                  QStringLiteral("ProfStore.xml")};
    return member.isFile() && member.size <= mostKept && kept.contains(path);
}

/// One archive on its way into members.
class ScriptsReader
{
public:
    explicit ScriptsReader(Bytes archive)
        : m_reader(unpackedArchive(std::move(archive)))
    {
    }

    Result<ScriptsMembers> read();

private:
    Result<> take(const CpioMember &member);
    Result<ScriptsMember> described(const QString &path, const CpioMember &member);

    CpioReader m_reader;
    ScriptsMembers m_members;
    qint64 m_room = mostBytes;
};

Result<ScriptsMembers> ScriptsReader::read()
{
    for (;;) {
        const Result<std::optional<CpioMember>> member = m_reader.next();
        if (!member)
            return member.problem();
        if (!*member)
            return std::move(m_members);
        if (Result<> taken = take(**member); !taken)
            return taken.problem();
    }
}

Result<> ScriptsReader::take(const CpioMember &member)
{
    const QString path = member.path();
    m_room -= member.size;
    if (m_room < 0 || m_members.size() == mostMembers)
        return Problem{{}, QStringLiteral("has more than scripts need")};
    if (path.isEmpty())
        return Problem{{}, QStringLiteral("has a member whose name is no text")};
    if (m_members.contains(path))
        return Problem{{}, QStringLiteral("has the member \"%1\" twice").arg(path)};
    const Result<ScriptsMember> described = this->described(path, member);
    if (!described)
        return described.problem();
    m_members.insert(path, *described);
    return {};
}

Result<ScriptsMember> ScriptsReader::described(const QString &path, const CpioMember &member)
{
    ScriptsMember result{typeOf(member), member.permissions(), member.uid, member.gid, member.size, {}, {}};
    const bool keeps = isKept(path, member);
    std::vector<char> block(64 * 1024);
    Digest digest("sha256");
    for (qint64 left = member.size; left > 0;) {
        const qint64 count = m_reader.bytes().read(block.data(), std::min<qint64>(left, block.size()));
        if (count <= 0)
            return Problem{{}, QStringLiteral("ends too early")};
        digest.add(block.data(), count);
        if (keeps)
            result.content.append(block.data(), static_cast<int>(count));
        left -= count;
    }
    result.sha256 = digest.checksum().digits;
    return result;
}

} // namespace

Result<ScriptsMembers> readScripts(const TableOfContents &table, const ContentsEntry &entry)
{
    Result<ScriptsMembers> members = ScriptsReader(table.bytesOf(entry)).read();
    return members ? members : Problem{table.package, entry.path + QLatin1Char(' ') + members.problem().text};
}
