// SPDX-License-Identifier: Apache-2.0
#include "hosttools/productsign/PackageSignature.h"

#include "hosttools/base/Error.h"
#include "hosttools/flatpkg/Digest.h"
#include "hosttools/productsign/Timestamp.h"

#include <algorithm>

using namespace FlatPkg;
using namespace OpenSsl;

namespace {

// As much as a Mac reserves, and what a message may need beside its certificates: a timestamp brings some of
// its own.
constexpr qint64 usualCmsSize = 9216;
constexpr qint64 roomBesideCertificates = 6144;

using KeyContext = std::unique_ptr<EVP_PKEY_CTX, Deleter<EVP_PKEY_CTX_free>>;

QByteArray derOf(X509 *certificate)
{
    QByteArray der(i2d_X509(certificate, nullptr), '\0');
    auto *bytes = reinterpret_cast<unsigned char *>(der.data());
    i2d_X509(certificate, &bytes);
    return der;
}

QByteArray base64Lines(const QByteArray &bytes)
{
    constexpr int width = 72;
    const QByteArray text = bytes.toBase64();
    QByteArray lines;
    for (int at = 0; at < text.size(); at += width)
        lines += text.mid(at, width) + '\n';
    return lines;
}

QByteArray signatureElement(const QByteArray &name, const QByteArray &style, qint64 offset, qint64 size,
                            const QByteArray &keyInfo)
{
    return '<' + name + " style=\"" + style + "\">\n<offset>" + QByteArray::number(offset) +
           "</offset>\n<size>" + QByteArray::number(size) + "</size>\n" + keyInfo + "</" + name + ">\n";
}

void addCertificates(CMS_ContentInfo *message, const std::vector<Certificate> &certificates)
{
    for (const Certificate &certificate : certificates)
        if (CMS_add1_cert(message, certificate.get()) != 1)
            fail("a certificate of the chain cannot be added");
}

} // namespace

PackageSignature::PackageSignature(const Identity &identity, const QByteArray &timestampService)
    : m_identity(identity)
    , m_timestampService(timestampService)
    , m_issuers(Identities::issuersOf(identity))
    , m_digestSize(digestLength(DigestAlgorithm::Sha1))
    , m_rsaSize(EVP_PKEY_get_size(identity.key.get()))
    , m_cmsSize(roomBesideCertificates + derOf(identity.certificate.get()).size())
{
    for (const Certificate &issuer : m_issuers)
        m_cmsSize += derOf(issuer.get()).size();
    m_cmsSize = std::max(m_cmsSize, usualCmsSize);
}

QByteArray PackageSignature::keyInfo() const
{
    const auto element = [](X509 *certificate) {
        return QByteArray("<X509Certificate>" + base64Lines(derOf(certificate)) + "</X509Certificate>\n");
    };
    QByteArray certificates = element(m_identity.certificate.get());
    for (const Certificate &issuer : m_issuers)
        certificates += element(issuer.get());
    return "<KeyInfo xmlns=\"http://www.w3.org/2000/09/xmldsig#\">\n<X509Data>\n" + certificates +
           "</X509Data>\n</KeyInfo>\n";
}

QByteArray PackageSignature::elements() const
{
    const QByteArray info = keyInfo();
    return "<checksum style=\"sha1\">\n<offset>0</offset>\n<size>" + QByteArray::number(m_digestSize) +
           "</size>\n</checksum>\n" + signatureElement("signature", "RSA", m_digestSize, m_rsaSize, info) +
           signatureElement("x-signature", "CMS", m_digestSize + m_rsaSize, m_cmsSize, info);
}

QByteArray PackageSignature::over(const QByteArray &digest) const
{
    const QByteArray message = cms(digest);
    if (message.size() > m_cmsSize)
        throw Error("the signature with its timestamp is larger than the " + QByteArray::number(m_cmsSize) +
                    " bytes reserved for it; use another timestamp service");
    return digest + rsa(digest) + message + QByteArray(static_cast<int>(m_cmsSize - message.size()), '\0');
}

std::vector<QByteArray> PackageSignature::names() const
{
    std::vector<QByteArray> names{m_identity.name};
    for (const Certificate &issuer : m_issuers)
        names.push_back(printable(commonName(issuer.get())));
    return names;
}

/// The digest is what is signed, not hashed again.
QByteArray PackageSignature::rsa(const QByteArray &digest) const
{
    const KeyContext context(EVP_PKEY_CTX_new(m_identity.key.get(), nullptr));
    QByteArray signature(static_cast<int>(m_rsaSize), '\0');
    auto size = static_cast<size_t>(m_rsaSize);
    if (!context || EVP_PKEY_sign_init(context.get()) != 1 ||
        EVP_PKEY_CTX_set_rsa_padding(context.get(), RSA_PKCS1_PADDING) != 1 ||
        EVP_PKEY_CTX_set_signature_md(context.get(), EVP_sha1()) != 1 ||
        EVP_PKEY_sign(context.get(), reinterpret_cast<unsigned char *>(signature.data()), &size,
                      reinterpret_cast<const unsigned char *>(digest.constData()),
                      static_cast<size_t>(digest.size())) != 1)
        fail("the identity \"" + m_identity.name + "\" cannot sign");
    return signature;
}

QByteArray PackageSignature::cms(const QByteArray &digest) const
{
    constexpr unsigned flags = CMS_BINARY | CMS_PARTIAL | CMS_DETACHED | CMS_NOSMIMECAP;
    const CmsMessage message(CMS_sign(nullptr, nullptr, nullptr, nullptr, flags));
    const Bio content(BIO_new_mem_buf(digest.constData(), static_cast<int>(digest.size())));
    const Bio bytes(BIO_new(BIO_s_mem()));
    if (!message || !CMS_add1_signer(message.get(), m_identity.certificate.get(), m_identity.key.get(),
                                     EVP_sha1(), flags))
        fail("the identity \"" + m_identity.name + "\" cannot sign");
    addCertificates(message.get(), m_issuers);
    if (CMS_final(message.get(), content.get(), nullptr, flags) != 1)
        fail("the identity \"" + m_identity.name + "\" cannot sign");
    if (!m_timestampService.isEmpty())
        addTimestamp(message.get());
    if (i2d_CMS_bio(bytes.get(), message.get()) != 1)
        fail("the signature cannot be written");
    return bytesIn(bytes.get());
}

void PackageSignature::addTimestamp(CMS_ContentInfo *message) const
{
    CMS_SignerInfo *signer = sk_CMS_SignerInfo_value(CMS_get0_SignerInfos(message), 0);
    const ASN1_OCTET_STRING *signature = CMS_SignerInfo_get0_signature(signer);
    const QByteArray signedBytes(reinterpret_cast<const char *>(ASN1_STRING_get0_data(signature)),
                                 ASN1_STRING_length(signature));
    const QByteArray token = Timestamp::tokenFor(signedBytes, m_timestampService);
    if (CMS_unsigned_add1_attr_by_NID(signer, NID_id_smime_aa_timeStampToken, V_ASN1_SEQUENCE,
                                      token.constData(), static_cast<int>(token.size())) != 1)
        fail("the timestamp cannot be added");
}
