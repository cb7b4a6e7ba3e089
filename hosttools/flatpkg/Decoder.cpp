// SPDX-License-Identifier: Apache-2.0
#include "hosttools/flatpkg/Decoder.h"

#include "hosttools/base/Error.h"

#include <array>
#include <bzlib.h>
#include <lzma.h>
#include <QMap>
#include <zlib.h>

namespace FlatPkg {

namespace {

// Enough for the largest dictionary of the usual presets; more is an attempt to exhaust the memory.
constexpr uint64_t lzmaMemoryLimit = 192U << 20U;

[[noreturn]] void refuseDamaged()
{
    throw Error("its compressed data are damaged");
}

void require(bool good)
{
    if (!good)
        refuseDamaged();
}

/// Hands on what it gets; its end is where the bytes end.
class StoredDecoder : public Decoder
{
public:
    void decode(const char *bytes, qint64 count, const Sink &sink) override { sink(bytes, count); }
    void requireEnd() const override {}
};

/// What the three decompressors have in common: they come to their own end.
class StreamDecoder : public Decoder
{
public:
    void decode(const char *bytes, qint64 count, const Sink &sink) override;
    void requireEnd() const override;

protected:
    /// Unread input and free output; a step moves both forward.
    struct Buffers
    {
        const char *in;
        size_t inCount;
        char *out;
        size_t outCount;
    };
    /// Makes one step; true at the end of the stream.
    virtual bool step(Buffers &buffers) = 0;

private:
    bool m_ended = false;
};

class ZlibDecoder : public StreamDecoder
{
public:
    ZlibDecoder() { require(inflateInit2(&m_stream, MAX_WBITS + detectGzip) == Z_OK); }
    ~ZlibDecoder() override { inflateEnd(&m_stream); }

protected:
    bool step(Buffers &buffers) override
    {
        m_stream.next_in = reinterpret_cast<Bytef *>(const_cast<char *>(buffers.in));
        m_stream.avail_in = static_cast<uInt>(buffers.inCount);
        m_stream.next_out = reinterpret_cast<Bytef *>(buffers.out);
        m_stream.avail_out = static_cast<uInt>(buffers.outCount);
        const int result = inflate(&m_stream, Z_NO_FLUSH);
        require(result == Z_OK || result == Z_STREAM_END || result == Z_BUF_ERROR);
        buffers = {reinterpret_cast<const char *>(m_stream.next_in), m_stream.avail_in,
                   reinterpret_cast<char *>(m_stream.next_out), m_stream.avail_out};
        return result == Z_STREAM_END;
    }

private:
    static constexpr int detectGzip = 32;
    z_stream m_stream = {};
};

class Bzip2Decoder : public StreamDecoder
{
public:
    Bzip2Decoder() { require(BZ2_bzDecompressInit(&m_stream, 0, 0) == BZ_OK); }
    ~Bzip2Decoder() override { BZ2_bzDecompressEnd(&m_stream); }

protected:
    bool step(Buffers &buffers) override
    {
        m_stream.next_in = const_cast<char *>(buffers.in);
        m_stream.avail_in = static_cast<unsigned>(buffers.inCount);
        m_stream.next_out = buffers.out;
        m_stream.avail_out = static_cast<unsigned>(buffers.outCount);
        const int result = BZ2_bzDecompress(&m_stream);
        require(result == BZ_OK || result == BZ_STREAM_END);
        buffers = {m_stream.next_in, m_stream.avail_in, m_stream.next_out, m_stream.avail_out};
        return result == BZ_STREAM_END;
    }

private:
    bz_stream m_stream = {};
};

class LzmaDecoder : public StreamDecoder
{
public:
    LzmaDecoder() { require(lzma_auto_decoder(&m_stream, lzmaMemoryLimit, 0) == LZMA_OK); }
    ~LzmaDecoder() override { lzma_end(&m_stream); }

protected:
    bool step(Buffers &buffers) override
    {
        m_stream.next_in = reinterpret_cast<const uint8_t *>(buffers.in);
        m_stream.avail_in = buffers.inCount;
        m_stream.next_out = reinterpret_cast<uint8_t *>(buffers.out);
        m_stream.avail_out = buffers.outCount;
        const lzma_ret result = lzma_code(&m_stream, LZMA_RUN);
        require(result == LZMA_OK || result == LZMA_STREAM_END || result == LZMA_BUF_ERROR);
        buffers = {reinterpret_cast<const char *>(m_stream.next_in), m_stream.avail_in,
                   reinterpret_cast<char *>(m_stream.next_out), m_stream.avail_out};
        return result == LZMA_STREAM_END;
    }

private:
    lzma_stream m_stream = LZMA_STREAM_INIT;
};

void StreamDecoder::decode(const char *bytes, qint64 count, const Sink &sink)
{
    std::array<char, 64 * 1024> out;
    Buffers buffers{bytes, static_cast<size_t>(count), out.data(), out.size()};
    bool outputWasFull = false;
    while (!m_ended && (buffers.inCount > 0 || outputWasFull)) {
        buffers.out = out.data();
        buffers.outCount = out.size();
        m_ended = step(buffers);
        outputWasFull = buffers.outCount == 0;
        sink(out.data(), static_cast<qint64>(out.size() - buffers.outCount));
    }
    if (buffers.inCount > 0)
        throw Error("bytes follow its compressed data");
}

void StreamDecoder::requireEnd() const
{
    if (!m_ended)
        throw Error("its compressed data end too early");
}

} // namespace

Encoding encodingNamed(const QByteArray &style)
{
    static const QMap<QByteArray, Encoding> known = {
        {"application/octet-stream", Encoding::Stored}, {"application/gzip", Encoding::Zlib},
        {"application/x-gzip", Encoding::Zlib},         {"application/zlib", Encoding::Zlib},
        {"application/bzip2", Encoding::Bzip2},         {"application/x-bzip2", Encoding::Bzip2},
        {"application/x-lzma", Encoding::Lzma},         {"application/x-xz", Encoding::Lzma},
    };
    const auto found = known.find(style);
    if (found == known.end())
        throw Error("unknown encoding \"" + style + "\"");
    return *found;
}

std::unique_ptr<Decoder> Decoder::create(Encoding encoding)
{
    switch (encoding) {
    case Encoding::Zlib:
        return std::make_unique<ZlibDecoder>();
    case Encoding::Bzip2:
        return std::make_unique<Bzip2Decoder>();
    case Encoding::Lzma:
        return std::make_unique<LzmaDecoder>();
    case Encoding::Stored:
        return std::make_unique<StoredDecoder>();
    }
    Q_UNREACHABLE();
}

} // namespace FlatPkg
