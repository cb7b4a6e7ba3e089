// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>

#include <functional>
#include <memory>

namespace FlatPkg {

/// How the bytes of a member lie in the heap.
enum class Encoding { Stored, Zlib, Bzip2, Lzma };

/// The encoding that the style of an `<encoding>` element names. Throws Error for an unknown one.
Encoding encodingNamed(const QByteArray &style);

/// Decodes one stream piece by piece. Throws Error for a stream that is damaged.
class Decoder
{
public:
    using Sink = std::function<void(const char *bytes, qint64 count)>;

    /// Zlib takes zlib and gzip streams, Lzma takes xz and lzma.
    static std::unique_ptr<Decoder> create(Encoding encoding);
    virtual ~Decoder() = default;

    /// Hands everything that these bytes decode to, in small pieces, to the sink. Throws Error when
    /// bytes follow the end of the stream.
    virtual void decode(const char *bytes, qint64 count, const Sink &sink) = 0;

    /// Throws Error unless the stream has come to its end.
    virtual void requireEnd() const = 0;
};

} // namespace FlatPkg
