// SPDX-License-Identifier: Apache-2.0
#include "package/contents/Unpacking.h"

#include <algorithm>
#include <bzlib.h>
#include <cstring>
#include <lzma.h>
#include <QtEndian>
#include <zlib.h>

namespace {

enum class Step { GoesOn, End, Failure };

/// The libraries have the same idea of a stream under different names.
class Deflate
{
public:
    Deflate() { m_isUsable = inflateInit2(&m_stream, MAX_WBITS + 32) == Z_OK; }
    ~Deflate() { inflateEnd(&m_stream); }
    Deflate(const Deflate &) = delete;
    Deflate &operator=(const Deflate &) = delete;

    Step step(bool)
    {
        const int result = m_isUsable ? inflate(&m_stream, Z_NO_FLUSH) : Z_STREAM_ERROR;
        if (result == Z_STREAM_END)
            return Step::End;
        return result == Z_OK || result == Z_BUF_ERROR ? Step::GoesOn : Step::Failure;
    }

    z_stream &stream() { return m_stream; }
    using Byte = Bytef;

private:
    z_stream m_stream = {};
    bool m_isUsable;
};

class Bzip2
{
public:
    Bzip2() { m_isUsable = BZ2_bzDecompressInit(&m_stream, 0, 0) == BZ_OK; }
    ~Bzip2() { BZ2_bzDecompressEnd(&m_stream); }
    Bzip2(const Bzip2 &) = delete;
    Bzip2 &operator=(const Bzip2 &) = delete;

    Step step(bool)
    {
        const int result = m_isUsable ? BZ2_bzDecompress(&m_stream) : BZ_PARAM_ERROR;
        if (result == BZ_STREAM_END)
            return Step::End;
        return result == BZ_OK ? Step::GoesOn : Step::Failure;
    }

    bz_stream &stream() { return m_stream; }
    using Byte = char;

private:
    bz_stream m_stream = {};
    bool m_isUsable;
};

class Lzma
{
public:
    Lzma()
    {
        constexpr quint64 mostMemory = 128 * 1024 * 1024;
        m_isUsable = lzma_auto_decoder(&m_stream, mostMemory, 0) == LZMA_OK;
    }
    ~Lzma() { lzma_end(&m_stream); }
    Lzma(const Lzma &) = delete;
    Lzma &operator=(const Lzma &) = delete;

    Step step(bool isLast)
    {
        const lzma_ret result =
            m_isUsable ? lzma_code(&m_stream, isLast ? LZMA_FINISH : LZMA_RUN) : LZMA_PROG_ERROR;
        if (result == LZMA_STREAM_END)
            return Step::End;
        return result == LZMA_OK || result == LZMA_BUF_ERROR ? Step::GoesOn : Step::Failure;
    }

    lzma_stream &stream() { return m_stream; }
    using Byte = uint8_t;

private:
    lzma_stream m_stream = LZMA_STREAM_INIT;
    bool m_isUsable;
};

template <typename Codec> class UnpackedStream : public ByteStream
{
public:
    explicit UnpackedStream(Bytes packed)
        : m_packed(std::move(packed))
    {
    }

    qint64 read(char *to, qint64 most) override
    {
        using Byte = typename Codec::Byte;
        auto &stream = m_codec.stream();
        using Length = decltype(stream.avail_out);
        const auto room = static_cast<Length>(std::min<qint64>(most, 1 << 20));
        stream.next_out = reinterpret_cast<Byte *>(to);
        stream.avail_out = room;
        while (!m_hasEnded && stream.avail_out == room) {
            if (!refill() || !advance())
                return -1;
        }
        return static_cast<qint64>(room - stream.avail_out);
    }

private:
    bool refill()
    {
        auto &stream = m_codec.stream();
        if (stream.avail_in > 0 || m_isLast)
            return true;
        const qint64 count = m_packed->read(m_block, sizeof m_block);
        m_isLast = count <= 0;
        stream.next_in = reinterpret_cast<typename Codec::Byte *>(m_block);
        stream.avail_in = static_cast<decltype(stream.avail_in)>(std::max<qint64>(count, 0));
        return count >= 0;
    }

    /// What is cut off makes no progress at its end.
    bool advance()
    {
        auto &stream = m_codec.stream();
        const auto room = stream.avail_out;
        const Step step = m_codec.step(m_isLast);
        m_hasEnded = step == Step::End;
        if (m_hasEnded)
            return restIsZero();
        return step == Step::GoesOn && !(m_isLast && stream.avail_in == 0 && stream.avail_out == room);
    }

    bool restIsZero()
    {
        auto &stream = m_codec.stream();
        const auto isZero = [](char byte) { return byte == 0; };
        const char *rest = reinterpret_cast<const char *>(stream.next_in);
        if (!std::all_of(rest, rest + stream.avail_in, isZero))
            return false;
        for (;;) {
            const qint64 count = m_packed->read(m_block, sizeof m_block);
            if (count <= 0)
                return count == 0;
            if (!std::all_of(m_block, m_block + count, isZero))
                return false;
        }
    }

    Bytes m_packed;
    Codec m_codec;
    bool m_isLast = false;
    bool m_hasEnded = false;
    char m_block[64 * 1024];
};

/// A beginning that was read already, and the rest.
class RejoinedStream : public ByteStream
{
public:
    RejoinedStream(const QByteArray &beginning, Bytes rest)
        : m_beginning(bytesOf(beginning))
        , m_rest(std::move(rest))
    {
    }

    qint64 read(char *to, qint64 most) override
    {
        const qint64 count = m_beginning->read(to, most);
        return count != 0 ? count : m_rest->read(to, most);
    }

private:
    Bytes m_beginning;
    Bytes m_rest;
};

/// The next bytes of a stream that others go on with.
class PartStream : public ByteStream
{
public:
    PartStream(ByteStream &whole, qint64 length)
        : m_whole(whole)
        , m_left(length)
    {
    }

    qint64 read(char *to, qint64 most) override
    {
        if (m_left == 0)
            return 0;
        const qint64 count = m_whole.read(to, std::min(most, m_left));
        if (count <= 0)
            return -1;
        m_left -= count;
        return count;
    }

private:
    ByteStream &m_whole;
    qint64 m_left;
};

/// Chunks of 16 MiB mostly, each with the length that it unpacks to and its own. One that does not get
/// smaller by packing is stored.
class ChunkedStream : public ByteStream
{
public:
    explicit ChunkedStream(Bytes chunks)
        : m_chunks(std::move(chunks))
    {
        char blockSize[8];
        m_isUsable = m_chunks->readAll(blockSize, sizeof blockSize);
    }

    qint64 read(char *to, qint64 most) override
    {
        while (m_isUsable) {
            const qint64 count = m_chunk ? m_chunk->read(to, most) : 0;
            m_left -= count;
            m_isUsable = count >= 0 && m_left >= 0 && (count > 0 || m_left == 0);
            if (count > 0 && m_isUsable)
                return count;
            if (m_isUsable && !openNext())
                return m_isUsable ? 0 : -1;
        }
        return -1;
    }

private:
    /// False at the end and when the next one cannot be.
    bool openNext()
    {
        m_chunk.reset();
        char head[16];
        const qint64 first = m_chunks->read(head, 1);
        m_isUsable = first == 0 || (first == 1 && m_chunks->readAll(head + 1, sizeof head - 1));
        if (first <= 0 || !m_isUsable)
            return false;
        const auto plain = qFromBigEndian<quint64>(head);
        const auto packed = qFromBigEndian<quint64>(head + 8);
        constexpr quint64 largest = Q_UINT64_C(1) << 32;
        m_isUsable = plain > 0 && plain <= largest && packed > 0 && packed <= largest;
        if (!m_isUsable)
            return false;
        m_left = static_cast<qint64>(plain);
        auto part = std::make_unique<PartStream>(*m_chunks, static_cast<qint64>(packed));
        m_chunk = plain == packed ? Bytes(std::move(part)) : unpacked(std::move(part), Packing::Lzma);
        return true;
    }

    Bytes m_chunks;
    Bytes m_chunk;
    qint64 m_left = 0; ///< that the chunk has still to give
    bool m_isUsable;
};

Packing packingOf(const QByteArray &beginning)
{
    if (beginning.startsWith("\x1f\x8b"))
        return Packing::Deflate;
    if (beginning.startsWith("BZh"))
        return Packing::Bzip2;
    return beginning.startsWith("\xfd"
                                "7zXZ")
               ? Packing::Lzma
               : Packing::None;
}

} // namespace

Bytes unpacked(Bytes packed, Packing packing)
{
    switch (packing) {
    case Packing::Deflate:
        return std::make_unique<UnpackedStream<Deflate>>(std::move(packed));
    case Packing::Bzip2:
        return std::make_unique<UnpackedStream<Bzip2>>(std::move(packed));
    case Packing::Lzma:
        return std::make_unique<UnpackedStream<Lzma>>(std::move(packed));
    case Packing::None:
        break;
    }
    return packed;
}

Bytes unpackedArchive(Bytes archive)
{
    char magic[6];
    qint64 count = 0;
    while (count < static_cast<qint64>(sizeof magic)) {
        const qint64 got = archive->read(magic + count, static_cast<qint64>(sizeof magic) - count);
        if (got <= 0)
            break;
        count += got;
    }
    const QByteArray beginning(magic, static_cast<int>(count));
    const bool isChunked = beginning.startsWith("pbzx");
    auto whole = std::make_unique<RejoinedStream>(beginning.mid(isChunked ? 4 : 0), std::move(archive));
    if (isChunked)
        return std::make_unique<ChunkedStream>(std::move(whole));
    return unpacked(std::move(whole), packingOf(beginning));
}
