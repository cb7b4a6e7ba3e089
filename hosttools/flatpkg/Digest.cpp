// SPDX-License-Identifier: Apache-2.0
#include "hosttools/flatpkg/Digest.h"

#include "hosttools/base/Error.h"

#include <memory>
#include <openssl/evp.h>

namespace FlatPkg {

namespace {

const EVP_MD *implementationOf(DigestAlgorithm algorithm)
{
    switch (algorithm) {
    case DigestAlgorithm::Md5:
        return EVP_md5();
    case DigestAlgorithm::Sha1:
        return EVP_sha1();
    case DigestAlgorithm::Sha256:
        return EVP_sha256();
    case DigestAlgorithm::Sha512:
        return EVP_sha512();
    }
    Q_UNREACHABLE();
}

void require(int openSslResult)
{
    if (openSslResult != 1)
        throw Error("the system's OpenSSL does not offer a checksum that the package needs");
}

} // namespace

struct DigestSet::Running
{
    explicit Running(DigestAlgorithm wanted)
        : algorithm(wanted)
        , context(EVP_MD_CTX_new(), EVP_MD_CTX_free)
    {
        require(EVP_DigestInit_ex(context.get(), implementationOf(algorithm), nullptr));
    }

    DigestAlgorithm algorithm;
    std::unique_ptr<EVP_MD_CTX, void (*)(EVP_MD_CTX *)> context;
};

std::optional<DigestAlgorithm> digestAlgorithmNamed(const QByteArray &style)
{
    static const QMap<QByteArray, std::optional<DigestAlgorithm>> known = {
        {"none", std::nullopt},
        {"md5", DigestAlgorithm::Md5},
        {"sha1", DigestAlgorithm::Sha1},
        {"sha256", DigestAlgorithm::Sha256},
        {"sha512", DigestAlgorithm::Sha512},
    };
    const auto found = known.find(style.toLower().replace('-', ""));
    if (found == known.end())
        throw Error("unknown checksum style \"" + style + "\"");
    return *found;
}

int digestLength(DigestAlgorithm algorithm)
{
    return EVP_MD_size(implementationOf(algorithm));
}

DigestSet::DigestSet(const QVector<DigestAlgorithm> &algorithms)
{
    for (const DigestAlgorithm algorithm : algorithms)
        m_running.emplace_back(algorithm);
}

DigestSet::~DigestSet() = default;
DigestSet::DigestSet(DigestSet &&other) noexcept = default;

void DigestSet::add(const char *bytes, qint64 count)
{
    for (const Running &running : m_running)
        require(EVP_DigestUpdate(running.context.get(), bytes, static_cast<size_t>(count)));
}

Digests DigestSet::finish()
{
    Digests digests;
    for (const Running &running : m_running) {
        QByteArray digest(digestLength(running.algorithm), '\0');
        auto *bytes = reinterpret_cast<unsigned char *>(digest.data());
        require(EVP_DigestFinal_ex(running.context.get(), bytes, nullptr));
        digests.insert(running.algorithm, digest);
    }
    return digests;
}

QByteArray digestOf(DigestAlgorithm algorithm, const QByteArray &bytes)
{
    DigestSet digest({algorithm});
    digest.add(bytes.constData(), bytes.size());
    return digest.finish().value(algorithm);
}

} // namespace FlatPkg
