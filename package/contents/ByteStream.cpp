// SPDX-License-Identifier: Apache-2.0
#include "package/contents/ByteStream.h"

#include <QFile>

#include <algorithm>
#include <cstring>

namespace {

class FileStream : public ByteStream
{
public:
    FileStream(const QString &path, qint64 offset, qint64 length)
        : m_file(path)
        , m_left(length)
    {
        m_isUsable = m_file.open(QIODevice::ReadOnly | QIODevice::Unbuffered) && m_file.seek(offset);
    }

    qint64 read(char *to, qint64 most) override
    {
        if (!m_isUsable)
            return -1;
        const qint64 count = m_left > 0 ? m_file.read(to, std::min(most, m_left)) : 0;
        m_left -= std::max<qint64>(count, 0);
        return count;
    }

private:
    QFile m_file;
    qint64 m_left;
    bool m_isUsable = false;
};

class MemoryStream : public ByteStream
{
public:
    explicit MemoryStream(const QByteArray &bytes)
        : m_bytes(bytes)
    {
    }

    qint64 read(char *to, qint64 most) override
    {
        const qint64 count = std::min<qint64>(most, m_bytes.size() - m_at);
        std::memcpy(to, m_bytes.constData() + m_at, static_cast<size_t>(count));
        m_at += count;
        return count;
    }

private:
    QByteArray m_bytes;
    qint64 m_at = 0;
};

} // namespace

bool ByteStream::readAll(char *to, qint64 count)
{
    while (count > 0) {
        const qint64 got = read(to, count);
        if (got <= 0)
            return false;
        to += got;
        count -= got;
    }
    return true;
}

bool ByteStream::skip(qint64 count)
{
    char block[16 * 1024];
    while (count > 0) {
        const qint64 got = read(block, std::min<qint64>(count, sizeof block));
        if (got <= 0)
            return false;
        count -= got;
    }
    return true;
}

Bytes bytesOfFile(const QString &path, qint64 offset, qint64 length)
{
    return std::make_unique<FileStream>(path, offset, length);
}

Bytes bytesOf(const QByteArray &bytes)
{
    return std::make_unique<MemoryStream>(bytes);
}
