// SPDX-License-Identifier: Apache-2.0
#include "hosttools/pkgutil/SignatureStatus.h"

#include "hosttools/base/Error.h"
#include "hosttools/base/ToolMain.h"
#include "hosttools/flatpkg/XarReader.h"
#include "hosttools/pkgutil/SignedParts.h"
#include "hosttools/pkgutil/Trust.h"

#include <algorithm>
#include <array>
#include <ctime>
#include <openssl/err.h>
#include <openssl/ts.h>
#include <optional>

using namespace FlatPkg;
using namespace OpenSsl;

namespace {

using KeyContext = std::unique_ptr<EVP_PKEY_CTX, Deleter<EVP_PKEY_CTX_free>>;
using TimestampInfo = std::unique_ptr<TS_TST_INFO, Deleter<TS_TST_INFO_free>>;

/// What is to be told of a package.
struct Status
{
    QByteArray text;
    bool holds = false;
    std::optional<std::time_t> timestamp;
    std::vector<X509 *> chain; ///< of the parts
};

const unsigned char *unsignedBytes(const QByteArray &bytes)
{
    return reinterpret_cast<const unsigned char *>(bytes.constData());
}

const EVP_MD *algorithmOf(const QByteArray &digest)
{
    for (const EVP_MD *algorithm : {EVP_sha1(), EVP_sha256(), EVP_sha512()})
        if (EVP_MD_get_size(algorithm) == digest.size())
            return algorithm;
    return nullptr;
}

bool rsaHolds(const QByteArray &signature, const X509 *signer, const QByteArray &digest)
{
    const KeyContext context(EVP_PKEY_CTX_new(X509_get0_pubkey(signer), nullptr));
    const EVP_MD *algorithm = algorithmOf(digest);
    return context && algorithm && EVP_PKEY_verify_init(context.get()) == 1 &&
           EVP_PKEY_CTX_set_rsa_padding(context.get(), RSA_PKCS1_PADDING) == 1 &&
           EVP_PKEY_CTX_set_signature_md(context.get(), algorithm) == 1 &&
           EVP_PKEY_verify(context.get(), unsignedBytes(signature), static_cast<size_t>(signature.size()),
                           unsignedBytes(digest), static_cast<size_t>(digest.size())) == 1;
}

CmsMessage messageIn(const QByteArray &bytes)
{
    const auto *at = unsignedBytes(bytes);
    return CmsMessage(d2i_CMS_ContentInfo(nullptr, &at, bytes.size()));
}

/// More than one would be a waste of time to verify.
bool hasOneSigner(CMS_ContentInfo *message)
{
    return sk_CMS_SignerInfo_num(CMS_get0_SignerInfos(message)) == 1;
}

bool isBy(CMS_ContentInfo *message, const X509 *signer)
{
    STACK_OF(X509) *signers = CMS_get0_signers(message);
    const bool isTheirs = X509_cmp(sk_X509_value(signers, 0), signer) == 0;
    sk_X509_free(signers);
    return isTheirs;
}

bool cmsHolds(CMS_ContentInfo *message, const X509 *signer, const QByteArray &digest)
{
    const Bio content(BIO_new_mem_buf(digest.constData(), static_cast<int>(digest.size())));
    return message && hasOneSigner(message) &&
           CMS_verify(message, nullptr, nullptr, content.get(), nullptr,
                      CMS_BINARY | CMS_NO_SIGNER_CERT_VERIFY) == 1 &&
           isBy(message, signer);
}

std::vector<Certificate> certificatesIn(CMS_ContentInfo *message)
{
    std::vector<Certificate> certificates;
    STACK_OF(X509) *list = CMS_get1_certs(message);
    for (int i = 0; i < sk_X509_num(list); ++i)
        certificates.emplace_back(sk_X509_value(list, i));
    sk_X509_free(list);
    return certificates;
}

QByteArray bytesOf(const ASN1_STRING *text)
{
    return QByteArray(reinterpret_cast<const char *>(ASN1_STRING_get0_data(text)), ASN1_STRING_length(text));
}

bool isOver(TS_TST_INFO *info, const QByteArray &bytes)
{
    TS_MSG_IMPRINT *imprint = TS_TST_INFO_get_msg_imprint(info);
    const ASN1_OBJECT *algorithm = nullptr;
    X509_ALGOR_get0(&algorithm, nullptr, nullptr, TS_MSG_IMPRINT_get_algo(imprint));
    const EVP_MD *digest = EVP_get_digestbyobj(algorithm);
    std::array<unsigned char, EVP_MAX_MD_SIZE> expected;
    unsigned size = 0;
    return digest &&
           EVP_Digest(bytes.constData(), static_cast<size_t>(bytes.size()), expected.data(), &size, digest,
                      nullptr) == 1 &&
           bytesOf(TS_MSG_IMPRINT_get_msg(imprint)) ==
               QByteArray(reinterpret_cast<const char *>(expected.data()), static_cast<int>(size));
}

/// The token's statement when its signature is good and its signer trusted.
TimestampInfo trustedStatement(CMS_ContentInfo *token, const Trust &trust)
{
    const Bio content(BIO_new(BIO_s_mem()));
    if (!token || !hasOneSigner(token) ||
        CMS_verify(token, nullptr, nullptr, nullptr, content.get(), CMS_BINARY | CMS_NO_SIGNER_CERT_VERIFY) !=
            1)
        return nullptr;
    STACK_OF(X509) *signers = CMS_get0_signers(token);
    X509 *signer = sk_X509_value(signers, 0);
    sk_X509_free(signers);
    if (trust.anchorOf(signer, certificatesIn(token)) == Trust::Anchor::None)
        return nullptr;
    const QByteArray der = bytesIn(content.get());
    const auto *at = unsignedBytes(der);
    return TimestampInfo(d2i_TS_TST_INFO(nullptr, &at, der.size()));
}

std::optional<std::time_t> trustedTimestamp(CMS_ContentInfo *message, const Trust &trust)
{
    CMS_SignerInfo *signer = sk_CMS_SignerInfo_value(CMS_get0_SignerInfos(message), 0);
    const auto *token = static_cast<const ASN1_STRING *>(CMS_unsigned_get0_data_by_OBJ(
        signer, OBJ_nid2obj(NID_id_smime_aa_timeStampToken), -3, V_ASN1_SEQUENCE));
    if (!token)
        return std::nullopt;
    const TimestampInfo info = trustedStatement(messageIn(bytesOf(token)).get(), trust);
    if (!info || !isOver(info.get(), bytesOf(CMS_SignerInfo_get0_signature(signer))))
        return std::nullopt;
    std::tm time = {};
    ASN1_TIME_to_tm(TS_TST_INFO_get_time(info.get()), &time);
    return timegm(&time);
}

bool isExpiredAt(const std::vector<X509 *> &chain, std::time_t time)
{
    return std::any_of(chain.begin(), chain.end(),
                       [&](const X509 *one) { return X509_cmp_time(X509_get0_notAfter(one), &time) <= 0; });
}

QByteArray statusOf(const Status &status, Trust::Anchor anchor)
{
    if (anchor == Trust::Anchor::None)
        return QByteArrayLiteral("signed by untrusted certificate");
    if (isExpiredAt(status.chain, status.timestamp.value_or(std::time(nullptr))))
        return QByteArrayLiteral("signed by a certificate that has since expired");
    return anchor == Trust::Anchor::Apple
               ? QByteArrayLiteral("signed by a developer certificate issued by Apple for distribution")
               : QByteArrayLiteral("signed by a certificate trusted by macOS");
}

/// Both signatures must hold, when both are there, over the digest that stands in the heap.
Status judge(const XarReader &package, const SignedParts &parts)
{
    if (!parts.areThere())
        return {QByteArrayLiteral("no signature"), false, {}, {}};
    const SignedPart &first = parts.rsa ? *parts.rsa : *parts.cms;
    const CmsMessage message = parts.cms ? messageIn(parts.cms->bytes) : nullptr;
    X509 *signer = first.certificates.empty() ? nullptr : first.certificates.front().get();
    const bool holds = signer && package.isTocIntact() &&
                       (!parts.rsa || rsaHolds(parts.rsa->bytes, signer, package.tocDigest())) &&
                       (!parts.cms || cmsHolds(message.get(), signer, package.tocDigest()));
    ERR_clear_error();
    if (!holds)
        return {QByteArrayLiteral("invalid signature"), false, {}, {}};
    const Trust trust;
    Status status{{}, true, {}, Trust::chainOf(signer, first.certificates)};
    if (message)
        status.timestamp = trustedTimestamp(message.get(), trust);
    status.text = statusOf(status, trust.anchorOf(signer, first.certificates));
    return status;
}

QByteArray timeText(const std::tm &time)
{
    std::array<char, 64> text;
    const size_t length = std::strftime(text.data(), text.size(), "%Y-%m-%d %H:%M:%S +0000", &time);
    return QByteArray(text.data(), static_cast<int>(length));
}

QByteArray expiryOf(const X509 *certificate)
{
    std::tm time = {};
    ASN1_TIME_to_tm(X509_get0_notAfter(certificate), &time);
    return timeText(time);
}

/// Twenty-two bytes on the first line, as the Mac's command has it.
void printFingerprint(const X509 *certificate)
{
    constexpr int onFirstLine = 22;
    const QByteArray bytes = fingerprintOf(certificate);
    for (const QByteArray &line : {bytes.left(onFirstLine), bytes.mid(onFirstLine)})
        printLine("           " + line.toHex(' ').toUpper());
}

void printChain(const std::vector<X509 *> &chain)
{
    printLine("   Certificate Chain:");
    int number = 0;
    for (const X509 *certificate : chain) {
        if (number > 0)
            printLine("       " + QByteArray(72, '-'));
        printLine("    " + QByteArray::number(++number) + ". " + commonName(certificate));
        printLine("       Expires: " + expiryOf(certificate));
        printLine("       SHA256 Fingerprint:");
        printFingerprint(certificate);
    }
}

void print(const QByteArray &name, const Status &status)
{
    printLine("Package \"" + name + "\":");
    printLine("   Status: " + status.text);
    std::tm time = {};
    if (status.timestamp && gmtime_r(&*status.timestamp, &time))
        printLine("   Signed with a trusted timestamp on: " + timeText(time));
    if (!status.chain.empty())
        printChain(status.chain);
}

SignedParts partsOf(const XarReader &package, bool *areSound)
{
    try {
        return SignedParts::read(package);
    } catch (const Error &) {
        *areSound = false;
        return {};
    }
}

} // namespace

bool printSignatureStatus(const QByteArray &path)
{
    bool areSound = true;
    const XarReader package =
        within(path, [&] { return XarReader(openInput(path), XarReader::AlteredToc::Accepted); });
    const SignedParts parts = partsOf(package, &areSound);
    const Status status =
        areSound ? judge(package, parts) : Status{QByteArrayLiteral("invalid signature"), false, {}, {}};
    print(path.mid(path.lastIndexOf('/') + 1), status);
    return status.holds;
}
