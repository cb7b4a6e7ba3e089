// SPDX-License-Identifier: Apache-2.0
#include "package/signature/SignatureReport.h"

#include "package/signature/SignedPackage.h"

#include <QRegularExpression>

#include <openssl/err.h>

using namespace OpenSslOwners;

namespace {

const unsigned char *bytesOf(const QByteArray &bytes)
{
    return reinterpret_cast<const unsigned char *>(bytes.constData());
}

/// Of the digest that is signed; null for one that nobody makes.
const EVP_MD *algorithmOf(const QByteArray &digest)
{
    for (const EVP_MD *algorithm : {EVP_sha1(), EVP_sha256(), EVP_sha512()}) {
        if (EVP_MD_get_size(algorithm) == digest.size())
            return algorithm;
    }
    return nullptr;
}

bool rsaHolds(const QByteArray &signature, const X509 *signer, const QByteArray &digest)
{
    EVP_PKEY *key = X509_get0_pubkey(signer);
    const KeyContext context(key ? EVP_PKEY_CTX_new(key, nullptr) : nullptr);
    const EVP_MD *algorithm = algorithmOf(digest);
    return context && algorithm && EVP_PKEY_verify_init(context.get()) == 1 &&
           EVP_PKEY_CTX_set_rsa_padding(context.get(), RSA_PKCS1_PADDING) == 1 &&
           EVP_PKEY_CTX_set_signature_md(context.get(), algorithm) == 1 &&
           EVP_PKEY_verify(context.get(), bytesOf(signature), static_cast<size_t>(signature.size()),
                           bytesOf(digest), static_cast<size_t>(digest.size())) == 1;
}

bool isBy(CMS_ContentInfo *message, const X509 *signer)
{
    const CertificateList signers(CMS_get0_signers(message));
    return X509_cmp(sk_X509_value(signers.get(), 0), signer) == 0;
}

/// Whoever wants to waste time puts in thousands of signers.
bool cmsHolds(CMS_ContentInfo *message, const QByteArray &digest)
{
    if (sk_CMS_SignerInfo_num(CMS_get0_SignerInfos(message)) != 1)
        return false;
    const Bytes content(BIO_new_mem_buf(digest.constData(), static_cast<int>(digest.size())));
    return CMS_verify(message, nullptr, nullptr, content.get(), nullptr,
                      CMS_BINARY | CMS_NO_SIGNER_CERT_VERIFY) == 1;
}

/// One package under judgement.
class Judgement
{
public:
    Judgement(const SignedPackage &package, const TrustAnchors &anchors);

    SignatureReport report();

private:
    void judgeDigest();
    void judgeRsa();
    void judgeCms();
    void describeSigner();
    void judgeTime();
    void judgeTrust();
    X509 *signer() const { return m_certificates.empty() ? nullptr : m_certificates.front().get(); }
    void breaks(const QString &why) { m_report.breaks.append(why); }
    void doubts(const QString &why) { m_report.doubts.append(why); }

    const SignedPackage &m_package;
    const TrustAnchors &m_anchors;
    std::vector<Certificate> m_certificates;
    Message m_message;
    SignatureReport m_report;
};

QList<QByteArray> certificatesOf(const SignedPackage &package)
{
    if (package.rsa)
        return package.rsa->certificates;
    return package.cms ? package.cms->certificates : QList<QByteArray>();
}

Judgement::Judgement(const SignedPackage &package, const TrustAnchors &anchors)
    : m_package(package)
    , m_anchors(anchors)
    , m_certificates(certificatesFrom(certificatesOf(package)))
{
}

SignatureReport Judgement::report()
{
    m_report.hasTicket = m_package.hasTicket;
    m_report.isSigned = m_package.isSigned();
    if (!m_report.isSigned)
        return m_report;
    m_report.breaks = m_package.flaws;
    judgeDigest();
    if (!signer())
        breaks(QStringLiteral("it has no certificate that can be read"));
    judgeRsa();
    judgeCms();
    if (signer()) {
        describeSigner();
        judgeTime();
        judgeTrust();
    }
    ERR_clear_error();
    return m_report;
}

void Judgement::judgeDigest()
{
    const bool isRight = !m_package.digest.isEmpty() && m_package.digest == m_package.storedDigest;
    m_report.digest = isRight ? Held::Yes : Held::No;
    if (!isRight)
        breaks(QStringLiteral("the digest of its table of contents is wrong"));
}

void Judgement::judgeRsa()
{
    if (!m_package.rsa)
        return;
    const bool holds = signer() && rsaHolds(m_package.rsa->bytes, signer(), m_package.digest);
    m_report.rsa = holds ? Held::Yes : Held::No;
    if (!holds)
        breaks(QStringLiteral("its RSA signature is wrong"));
}

void Judgement::judgeCms()
{
    if (!m_package.cms)
        return;
    const QByteArray &bytes = m_package.cms->bytes;
    const auto *at = bytesOf(bytes);
    m_message.reset(d2i_CMS_ContentInfo(nullptr, &at, static_cast<long>(bytes.size())));
    const bool holds = m_message && signer() && cmsHolds(m_message.get(), m_package.digest);
    const bool isTheSigners = holds && isBy(m_message.get(), signer());
    m_report.cms = isTheSigners ? Held::Yes : Held::No;
    if (!holds)
        breaks(QStringLiteral("its CMS signature is wrong"));
    else if (!isTheSigners)
        breaks(QStringLiteral("its CMS signature is by somebody else than its RSA signature"));
}

/// Where no organizational unit names the team, the common name ends with it.
QString teamOf(const CertificateInfo &signer)
{
    static const QRegularExpression atTheEnd(QStringLiteral("\\(([A-Z0-9]{10})\\)$"));
    return signer.team.isEmpty() ? atTheEnd.match(signer.name).captured(1) : signer.team;
}

void Judgement::describeSigner()
{
    for (const X509 *certificate : chainOf(signer(), m_certificates))
        m_report.chain.append(infoOf(certificate));
    m_report.team = teamOf(m_report.chain.first());
}

void Judgement::judgeTime()
{
    if (m_report.cms == Held::Yes)
        m_report.timestamp = timestampIn(m_message.get(), m_anchors, m_certificates);
    const bool counts = m_report.timestamp && m_report.timestamp->problem.isEmpty();
    m_report.judgedAt = counts ? m_report.timestamp->time : QDateTime::currentDateTimeUtc();
    if (m_report.timestamp && m_report.timestamp->isForged)
        doubts(QStringLiteral("its timestamp is not one: ") + m_report.timestamp->problem);
}

void Judgement::judgeTrust()
{
    m_report.anchor = m_anchors.anchorOf(signer(), m_certificates);
    if (m_report.anchor == TrustAnchor::None)
        doubts(QStringLiteral("its chain ends neither in Apple's root nor in a given trust anchor"));
    if (!m_report.chain.first().isForPackages)
        doubts(QStringLiteral("the signer's certificate is not for installer packages"));
    for (const CertificateInfo &one : m_report.chain) {
        if (m_report.judgedAt > one.validUntil)
            doubts(QStringLiteral("the certificate \"%1\" had expired").arg(one.name));
        if (m_report.judgedAt < one.validFrom)
            doubts(QStringLiteral("the certificate \"%1\" was not valid yet").arg(one.name));
        if (!one.keyProblem.isEmpty())
            doubts(QStringLiteral("the key of \"%1\" %2").arg(one.name, one.keyProblem));
    }
}

} // namespace

Result<SignatureReport> reportSignature(const QString &package, const TrustAnchors &anchors)
{
    const Result<SignedPackage> read = SignedPackage::read(package);
    if (!read)
        return read.problem();
    return Judgement(*read, anchors).report();
}
