// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QString>

#include <memory>

/// Bytes that come one after the other, of any number. One thread.
class ByteStream
{
public:
    ByteStream() = default;
    virtual ~ByteStream() = default;
    ByteStream(const ByteStream &) = delete;
    ByteStream &operator=(const ByteStream &) = delete;

    /// At least one byte and at most `most`; 0 at the end, -1 when the bytes cannot be had.
    virtual qint64 read(char *to, qint64 most) = 0;

    /// All of `count` bytes; false when there are not as many.
    bool readAll(char *to, qint64 count);
    /// The same without keeping them.
    bool skip(qint64 count);
};

using Bytes = std::unique_ptr<ByteStream>;

/// A part of a file, which ends early when the file does.
Bytes bytesOfFile(const QString &path, qint64 offset, qint64 length);

/// Bytes in memory.
Bytes bytesOf(const QByteArray &bytes);
