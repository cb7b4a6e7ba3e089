// SPDX-License-Identifier: Apache-2.0
#include "package/contents/Digest.h"

#include <openssl/evp.h>
#include <vector>

namespace {

/// Large enough that a file is read in few calls, small enough to stay in the processor's cache.
constexpr size_t blockSize = 256 * 1024;

const EVP_MD *algorithmOf(const QByteArray &style)
{
    if (style == "sha1")
        return EVP_sha1();
    if (style == "sha256")
        return EVP_sha256();
    if (style == "sha512")
        return EVP_sha512();
    return style == "md5" ? EVP_md5() : nullptr;
}

} // namespace

struct Digest::Context
{
    EVP_MD_CTX *context = EVP_MD_CTX_new();
    ~Context() { EVP_MD_CTX_free(context); }
};

bool Checksum::isKnown() const
{
    return Digest::knows(style);
}

Digest::Digest(const QByteArray &style)
    : m_context(std::make_unique<Context>())
    , m_style(style)
{
    EVP_DigestInit_ex(m_context->context, algorithmOf(style), nullptr);
}

Digest::~Digest() = default;

void Digest::add(const char *bytes, qint64 count)
{
    EVP_DigestUpdate(m_context->context, bytes, static_cast<size_t>(count));
}

Checksum Digest::checksum()
{
    unsigned char bytes[EVP_MAX_MD_SIZE];
    unsigned int length = 0;
    EVP_DigestFinal_ex(m_context->context, bytes, &length);
    return {m_style, QByteArray(reinterpret_cast<const char *>(bytes), static_cast<int>(length)).toHex()};
}

bool Digest::knows(const QByteArray &style)
{
    return algorithmOf(style) != nullptr;
}

std::optional<DigestedBytes> digestOf(ByteStream &bytes, const QByteArray &style, qint64 most)
{
    std::vector<char> block(blockSize);
    Digest digest(style);
    DigestedBytes result;
    for (;;) {
        const qint64 count = bytes.read(block.data(), static_cast<qint64>(block.size()));
        if (count < 0 || result.size + count > most)
            return {};
        if (count == 0)
            break;
        digest.add(block.data(), count);
        result.size += count;
    }
    result.checksum = digest.checksum();
    return result;
}
