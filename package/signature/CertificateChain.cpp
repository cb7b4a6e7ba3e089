// SPDX-License-Identifier: Apache-2.0
#include "package/signature/CertificateChain.h"

#include <QFile>

#include <algorithm>
#include <ctime>
#include <openssl/err.h>
#include <openssl/pem.h>
#include <openssl/x509v3.h>

using namespace OpenSslOwners;

namespace {

const char appleRoot[] = "b0b1730ecbc7ff4505142c49f1295e6eda6bcaed7e2c68c5be91b5a11001f024";
const char installerUse[] = "1.2.840.113635.100.4.13";
constexpr size_t mostAnchors = 100;
constexpr size_t longestChain = 16;

using Object = std::unique_ptr<ASN1_OBJECT, Deleter<ASN1_OBJECT_free>>;
using Uses = std::unique_ptr<EXTENDED_KEY_USAGE, Deleter<EXTENDED_KEY_USAGE_free>>;

QString nameEntry(const X509 *certificate, int kind)
{
    const X509_NAME *subject = X509_get_subject_name(certificate);
    const int index = X509_NAME_get_index_by_NID(subject, kind, -1);
    unsigned char *text = nullptr;
    if (index < 0)
        return {};
    const int size =
        ASN1_STRING_to_UTF8(&text, X509_NAME_ENTRY_get_data(X509_NAME_get_entry(subject, index)));
    const QString entry =
        size < 0 ? QString() : QString::fromUtf8(reinterpret_cast<const char *>(text), size);
    OPENSSL_free(text);
    return entry;
}

QDateTime timeOf(const ASN1_TIME *time)
{
    std::tm parts = {};
    if (ASN1_TIME_to_tm(time, &parts) != 1)
        return {};
    return QDateTime::fromSecsSinceEpoch(timegm(&parts)).toUTC();
}

bool isForPackages(const X509 *certificate)
{
    const Object wanted(OBJ_txt2obj(installerUse, 1));
    const Uses uses(static_cast<EXTENDED_KEY_USAGE *>(
        X509_get_ext_d2i(certificate, NID_ext_key_usage, nullptr, nullptr)));
    for (int i = 0; uses && i < sk_ASN1_OBJECT_num(uses.get()); ++i) {
        if (OBJ_cmp(sk_ASN1_OBJECT_value(uses.get(), i), wanted.get()) == 0)
            return true;
    }
    return false;
}

/// What can be computed back by anybody with some patience signs nothing.
QString keyProblemOf(const X509 *certificate)
{
    constexpr int shortestRsa = 1024;
    constexpr int shortestCurve = 224;
    const EVP_PKEY *key = X509_get0_pubkey(certificate);
    if (!key)
        return QStringLiteral("cannot be read");
    const bool isCurve = EVP_PKEY_get_base_id(key) == EVP_PKEY_EC;
    const int bits = EVP_PKEY_get_bits(key);
    if (bits >= (isCurve ? shortestCurve : shortestRsa))
        return {};
    return QStringLiteral("has only %1 bits").arg(bits);
}

QByteArray fingerprintOf(const X509 *certificate)
{
    QByteArray digest(EVP_MAX_MD_SIZE, '\0');
    unsigned size = 0;
    X509_digest(certificate, EVP_sha256(), reinterpret_cast<unsigned char *>(digest.data()), &size);
    return digest.left(static_cast<int>(size));
}

/// Apple marks its certificates with critical extensions that OpenSSL has never heard of. Times are judged
/// apart.
bool leadsTo(X509 *anchor, X509 *signer, STACK_OF(X509) * others)
{
    const Store store(X509_STORE_new());
    X509_STORE_add_cert(store.get(), anchor);
    X509_STORE_set_flags(store.get(),
                         X509_V_FLAG_IGNORE_CRITICAL | X509_V_FLAG_NO_CHECK_TIME | X509_V_FLAG_PARTIAL_CHAIN);
    X509_STORE_set_depth(store.get(), static_cast<int>(longestChain));
    const Verification verification(X509_STORE_CTX_new());
    const bool leads = X509_STORE_CTX_init(verification.get(), store.get(), signer, others) == 1 &&
                       X509_verify_cert(verification.get()) == 1;
    ERR_clear_error();
    return leads;
}

Bytes readerOf(const QByteArray &bytes)
{
    return Bytes(BIO_new_mem_buf(bytes.constData(), static_cast<int>(bytes.size())));
}

} // namespace

Result<TrustAnchors> TrustAnchors::fromFile(const QString &path)
{
    constexpr qint64 largestFile = 1024LL * 1024;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return Problem{path, QStringLiteral("cannot be read (%1); give a file with certificates in PEM form")
                                 .arg(file.errorString())};
    const QByteArray text = file.read(largestFile);
    const Bytes reader = readerOf(text);
    TrustAnchors anchors;
    while (X509 *certificate = PEM_read_bio_X509(reader.get(), nullptr, nullptr, nullptr)) {
        anchors.m_certificates.emplace_back(certificate);
        if (anchors.m_certificates.size() > mostAnchors)
            return Problem{path, QStringLiteral("has more than %1 certificates").arg(mostAnchors)};
    }
    ERR_clear_error();
    if (anchors.m_certificates.empty())
        return Problem{path, QStringLiteral("has no certificate in PEM form; give one that has")};
    return anchors;
}

TrustAnchor TrustAnchors::anchorOf(X509 *signer, const std::vector<Certificate> &others) const
{
    const CertificateList list(sk_X509_new_null());
    for (const Certificate &one : others)
        sk_X509_push(list.get(), one.get());
    for (const Certificate &one : others) {
        if (fingerprintOf(one.get()).toHex() == appleRoot && leadsTo(one.get(), signer, list.get()))
            return TrustAnchor::Apple;
    }
    const bool isKnown =
        std::any_of(m_certificates.begin(), m_certificates.end(),
                    [&](const Certificate &one) { return leadsTo(one.get(), signer, list.get()); });
    return isKnown ? TrustAnchor::File : TrustAnchor::None;
}

CertificateInfo infoOf(const X509 *certificate)
{
    CertificateInfo info;
    info.name = nameEntry(certificate, NID_commonName);
    info.team = nameEntry(certificate, NID_organizationalUnitName);
    info.validFrom = timeOf(X509_get0_notBefore(certificate));
    info.validUntil = timeOf(X509_get0_notAfter(certificate));
    info.sha256 = fingerprintOf(certificate);
    info.keyProblem = keyProblemOf(certificate);
    info.isForPackages = isForPackages(certificate);
    return info;
}

std::vector<Certificate> certificatesFrom(const QList<QByteArray> &der)
{
    std::vector<Certificate> certificates;
    for (const QByteArray &one : der) {
        const auto *bytes = reinterpret_cast<const unsigned char *>(one.constData());
        if (Certificate certificate{d2i_X509(nullptr, &bytes, static_cast<long>(one.size()))})
            certificates.push_back(std::move(certificate));
    }
    ERR_clear_error();
    return certificates;
}

std::vector<X509 *> chainOf(X509 *signer, const std::vector<Certificate> &others)
{
    std::vector<X509 *> chain{signer};
    const auto isNext = [&chain](const Certificate &one) {
        return X509_check_issued(one.get(), chain.back()) == X509_V_OK &&
               std::none_of(chain.begin(), chain.end(),
                            [&](const X509 *known) { return X509_cmp(known, one.get()) == 0; });
    };
    while (chain.size() < longestChain) {
        const auto next = std::find_if(others.begin(), others.end(), isNext);
        ERR_clear_error();
        if (next == others.end())
            break;
        chain.push_back(next->get());
    }
    return chain;
}
