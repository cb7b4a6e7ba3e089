// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "core/Result.h"
#include "package/contents/ByteStream.h"

#include <memory>
#include <optional>

/// A checksum as packages name it: its kind ("sha1", "sha256", …) and its digits in lower case.
struct Checksum
{
    QByteArray style;
    QByteArray digits;

    bool isKnown() const; ///< whether Digest can compute the kind
    bool operator==(const Checksum &other) const { return style == other.style && digits == other.digits; }
};

/// Computes a checksum of bytes that come in pieces. One thread.
class Digest
{
public:
    /// Of a kind that is known.
    explicit Digest(const QByteArray &style);
    ~Digest();
    Digest(const Digest &) = delete;
    Digest &operator=(const Digest &) = delete;

    void add(const char *bytes, qint64 count);
    /// Once, at the end.
    Checksum checksum();

    static bool knows(const QByteArray &style);

private:
    struct Context;
    std::unique_ptr<Context> m_context;
    QByteArray m_style;
};

/// The number of bytes in a stream and their checksum; nothing when they cannot be had, or are more than
/// `most`.
struct DigestedBytes
{
    qint64 size = 0;
    Checksum checksum;
};
std::optional<DigestedBytes> digestOf(ByteStream &bytes, const QByteArray &style, qint64 most);
