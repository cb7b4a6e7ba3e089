// SPDX-License-Identifier: Apache-2.0
#include "hosttools/security/SignedMessage.h"

#include "hosttools/base/Error.h"

#include <openssl/err.h>

using namespace FlatPkg;
using namespace OpenSsl;

namespace SignedMessage {

namespace {

/// Frees a list alone: its certificates have other owners.
struct ListDeleter
{
    void operator()(STACK_OF(X509) * list) const { sk_X509_free(list); }
};
using CertificateList = std::unique_ptr<STACK_OF(X509), ListDeleter>;
using CertificateStore = std::unique_ptr<X509_STORE, Deleter<X509_STORE_free>>;
using Verification = std::unique_ptr<X509_STORE_CTX, Deleter<X509_STORE_CTX_free>>;

Bio readerOf(const QByteArray &bytes)
{
    return Bio(BIO_new_mem_buf(bytes.constData(), static_cast<int>(bytes.size())));
}

CmsMessage parsed(const QByteArray &message)
{
    CmsMessage cms(d2i_CMS_bio(readerOf(message).get(), nullptr));
    if (!cms || OBJ_obj2nid(CMS_get0_type(cms.get())) != NID_pkcs7_signed)
        fail("is not a signed message");
    return cms;
}

void requireSignedContent(CMS_ContentInfo *cms)
{
    ASN1_OCTET_STRING **content = CMS_get0_content(cms);
    if (!content || !*content)
        throw Error("is a signature without its content");
}

/// The certificates on a list, each owned once more.
std::vector<Certificate> sharedOnes(const STACK_OF(X509) * list)
{
    std::vector<Certificate> certificates;
    for (int i = 0; i < sk_X509_num(list); ++i) {
        X509 *certificate = sk_X509_value(list, i);
        X509_up_ref(certificate);
        certificates.emplace_back(certificate);
    }
    return certificates;
}

std::vector<Certificate> signersOf(CMS_ContentInfo *cms)
{
    return sharedOnes(CertificateList(CMS_get0_signers(cms)).get());
}

std::vector<Certificate> certificatesIn(CMS_ContentInfo *cms)
{
    STACK_OF(X509) *list = CMS_get1_certs(cms);
    std::vector<Certificate> certificates = sharedOnes(list);
    sk_X509_pop_free(list, X509_free);
    return certificates;
}

CertificateStore knownCertificates()
{
    CertificateStore store(X509_STORE_new());
    X509_STORE_set_default_paths(store.get());
    X509_STORE_set_flags(store.get(), X509_V_FLAG_PARTIAL_CHAIN);
    QVector<QByteArray> unusable;
    for (const Identity &identity : Identities::all(&unusable)) {
        X509_STORE_add_cert(store.get(), identity.certificate.get());
        for (const Certificate &certificate : identity.chain)
            X509_STORE_add_cert(store.get(), certificate.get());
    }
    return store;
}

void addSigner(CMS_ContentInfo *cms, const Identity &identity, const EVP_MD *digest, unsigned flags)
{
    EVP_PKEY *key = identity.key.get();
    if (!CMS_add1_signer(cms, identity.certificate.get(), key, digest, flags))
        fail("the identity \"" + identity.name + "\" cannot sign");
    for (const Certificate &certificate : identity.chain)
        if (CMS_add1_cert(cms, certificate.get()) != 1)
            fail("a certificate of \"" + identity.name + "\" cannot be added");
}

} // namespace

Contents decoded(const QByteArray &message)
{
    const CmsMessage cms = parsed(message);
    requireSignedContent(cms.get());
    const Bio content(BIO_new(BIO_s_mem()));
    constexpr unsigned flags = CMS_BINARY | CMS_NO_SIGNER_CERT_VERIFY;
    if (CMS_verify(cms.get(), nullptr, nullptr, nullptr, content.get(), flags) != 1)
        fail("has no good signature");
    return {bytesIn(content.get()), signersOf(cms.get()), certificatesIn(cms.get())};
}

bool isTrusted(X509 *signer, const Contents &contents)
{
    const CertificateList others(sk_X509_new_null());
    for (const Certificate &certificate : contents.others)
        sk_X509_push(others.get(), certificate.get());
    const CertificateStore known = knownCertificates();
    const Verification verification(X509_STORE_CTX_new());
    const bool trusted = X509_STORE_CTX_init(verification.get(), known.get(), signer, others.get()) == 1 &&
                         X509_verify_cert(verification.get()) == 1;
    ERR_clear_error();
    return trusted;
}

bool looksSigned(const QByteArray &bytes)
{
    constexpr char sequence = 0x30;
    // The digit 0 has the same code, but no length of a message follows it: those begin at 0x80.
    return bytes.size() > 1 && bytes.at(0) == sequence && (bytes.at(1) & 0x80) != 0;
}

QByteArray made(const QByteArray &content, const Identity &identity, const EVP_MD *digest)
{
    constexpr unsigned flags = CMS_BINARY | CMS_PARTIAL | CMS_NOSMIMECAP;
    const CmsMessage cms(CMS_sign(nullptr, nullptr, nullptr, nullptr, flags));
    if (!cms)
        fail("no message can be made");
    addSigner(cms.get(), identity, digest, flags);
    const Bio message(BIO_new(BIO_s_mem()));
    if (CMS_final(cms.get(), readerOf(content).get(), nullptr, flags) != 1 ||
        i2d_CMS_bio(message.get(), cms.get()) != 1)
        fail("the identity \"" + identity.name + "\" cannot sign");
    return bytesIn(message.get());
}

} // namespace SignedMessage
