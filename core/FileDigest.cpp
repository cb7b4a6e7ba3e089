// SPDX-License-Identifier: Apache-2.0
#include "core/FileDigest.h"

#include <QFile>

#include <array>
#include <memory>
#include <openssl/evp.h>

namespace {

struct HashDeleter
{
    void operator()(EVP_MD_CTX *hash) const { EVP_MD_CTX_free(hash); }
};
using Hash = std::unique_ptr<EVP_MD_CTX, HashDeleter>;

} // namespace

Result<QByteArray> sha256OfFile(const QString &path)
{
    QFile file(path);
    const Hash hash(EVP_MD_CTX_new());
    bool isHashed = file.open(QIODevice::ReadOnly | QIODevice::Unbuffered) && hash &&
                    EVP_DigestInit_ex(hash.get(), EVP_sha256(), nullptr) == 1;
    QByteArray piece(1024 * 1024, '\0');
    qint64 length = 0;
    while (isHashed && (length = file.read(piece.data(), piece.size())) > 0)
        isHashed = EVP_DigestUpdate(hash.get(), piece.constData(), static_cast<size_t>(length)) == 1;
    std::array<unsigned char, EVP_MAX_MD_SIZE> digest{};
    unsigned int size = 0;
    if (!isHashed || length < 0 || EVP_DigestFinal_ex(hash.get(), digest.data(), &size) != 1)
        return Problem{path, QStringLiteral("cannot be read (%1)").arg(file.errorString())};
    return QByteArray(reinterpret_cast<const char *>(digest.data()), static_cast<int>(size)).toHex();
}
