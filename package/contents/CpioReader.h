// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "core/Result.h"
#include "package/contents/ByteStream.h"

#include <QByteArray>

#include <optional>

/// What a cpio archive says of one of its members.
struct CpioMember
{
    QByteArray name; ///< as it stands there, "./postinstall"
    int mode = 0;    ///< type and permission bits
    qint64 uid = 0;
    qint64 gid = 0;
    qint64 size = 0;

    /// Without "./" in front and a slash behind, "." for the folder itself; empty for a name that is no text.
    QString path() const;

    bool isFile() const;
    bool isFolder() const;
    bool isLink() const;
    int permissions() const { return mode & 07777; }
};

/// Reads a cpio archive of the portable forms "odc" and "newc" member by member, strictly: what is no number
/// is refused, and behind the end nothing but zeros may follow. One thread.
class CpioReader
{
public:
    explicit CpioReader(Bytes archive);
    ~CpioReader();
    CpioReader(const CpioReader &) = delete;
    CpioReader &operator=(const CpioReader &) = delete;

    /// The next member, or nothing behind the last one. What was not read of the one before is passed over.
    Result<std::optional<CpioMember>> next();

    /// The bytes of the current member.
    ByteStream &bytes() { return *m_bytes; }

private:
    Result<std::optional<CpioMember>> readMember();
    std::optional<CpioMember> readOldHeader(qint64 *nameSize);
    std::optional<CpioMember> readNewHeader(qint64 *nameSize);
    bool skipPadding();
    bool restIsZero();

    class MemberBytes;
    Bytes m_archive;
    std::unique_ptr<MemberBytes> m_member;
    ByteStream *m_bytes = nullptr;
    qint64 m_alignment = 1;
    qint64 m_position = 0; ///< in the member with its header
};
