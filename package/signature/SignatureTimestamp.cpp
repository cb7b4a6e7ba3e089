// SPDX-License-Identifier: Apache-2.0
#include "package/signature/SignatureTimestamp.h"

#include <ctime>
#include <openssl/err.h>
#include <openssl/x509v3.h>

using namespace OpenSslOwners;

namespace {

/// Clocks differ a little.
constexpr qint64 toleratedSeconds = 300;

QByteArray bytesOf(const ASN1_STRING *text)
{
    return QByteArray(reinterpret_cast<const char *>(ASN1_STRING_get0_data(text)), ASN1_STRING_length(text));
}

Message messageIn(const QByteArray &bytes)
{
    const auto *at = reinterpret_cast<const unsigned char *>(bytes.constData());
    return Message(d2i_CMS_ContentInfo(nullptr, &at, static_cast<long>(bytes.size())));
}

bool isOver(TS_TST_INFO *statement, const QByteArray &bytes)
{
    TS_MSG_IMPRINT *imprint = TS_TST_INFO_get_msg_imprint(statement);
    const ASN1_OBJECT *algorithm = nullptr;
    X509_ALGOR_get0(&algorithm, nullptr, nullptr, TS_MSG_IMPRINT_get_algo(imprint));
    const EVP_MD *digest = EVP_get_digestbyobj(algorithm);
    QByteArray expected(EVP_MAX_MD_SIZE, '\0');
    unsigned size = 0;
    return digest &&
           EVP_Digest(bytes.constData(), static_cast<size_t>(bytes.size()),
                      reinterpret_cast<unsigned char *>(expected.data()), &size, digest, nullptr) == 1 &&
           bytesOf(TS_MSG_IMPRINT_get_msg(imprint)) == expected.left(static_cast<int>(size));
}

/// What the token states, when its own signature holds.
Statement statementIn(CMS_ContentInfo *token)
{
    const Bytes content(BIO_new(BIO_s_mem()));
    if (sk_CMS_SignerInfo_num(CMS_get0_SignerInfos(token)) != 1)
        return nullptr;
    if (CMS_verify(token, nullptr, nullptr, nullptr, content.get(), CMS_BINARY | CMS_NO_SIGNER_CERT_VERIFY) !=
        1)
        return nullptr;
    char *text = nullptr;
    const long size = BIO_get_mem_data(content.get(), &text);
    const auto *at = reinterpret_cast<const unsigned char *>(text);
    return Statement(d2i_TS_TST_INFO(nullptr, &at, size));
}

std::vector<Certificate> certificatesIn(CMS_ContentInfo *token, const std::vector<Certificate> &ofPackage)
{
    std::vector<Certificate> certificates;
    const CertificateList list(CMS_get1_certs(token));
    for (int i = 0; i < sk_X509_num(list.get()); ++i)
        certificates.emplace_back(sk_X509_value(list.get(), i));
    for (const Certificate &one : ofPackage) {
        X509_up_ref(one.get());
        certificates.emplace_back(one.get());
    }
    return certificates;
}

QDateTime timeIn(const TS_TST_INFO *statement)
{
    std::tm parts = {};
    if (ASN1_TIME_to_tm(TS_TST_INFO_get_time(statement), &parts) != 1)
        return {};
    return QDateTime::fromSecsSinceEpoch(timegm(&parts)).toUTC();
}

/// Why what the service says counts for nothing, although nobody has forged it.
QString problemOfService(const CertificateInfo &service, X509 *certificate, TrustAnchor anchor,
                         const QDateTime &time)
{
    if (anchor == TrustAnchor::None)
        return QStringLiteral("its service is unknown");
    if ((X509_get_extended_key_usage(certificate) & XKU_TIMESTAMP) == 0)
        return QStringLiteral("its service's certificate is not for timestamps");
    if (time < service.validFrom || time > service.validUntil)
        return QStringLiteral("its service's certificate was not valid then");
    return {};
}

SignatureTimestamp forged(const QString &problem, const QDateTime &time = {})
{
    return {time, {}, problem, true};
}

SignatureTimestamp judged(CMS_ContentInfo *token, const QByteArray &signature, const TrustAnchors &anchors,
                          const std::vector<Certificate> &ofPackage)
{
    const Statement statement = token ? statementIn(token) : nullptr;
    if (!statement)
        return forged(QStringLiteral("its own signature does not hold"));
    const QDateTime time = timeIn(statement.get());
    if (!isOver(statement.get(), signature))
        return forged(QStringLiteral("it is of another signature"), time);
    if (!time.isValid() || time > QDateTime::currentDateTimeUtc().addSecs(toleratedSeconds))
        return forged(QStringLiteral("it lies in the future"), time);
    const CertificateList signers(CMS_get0_signers(token));
    X509 *signer = sk_X509_value(signers.get(), 0);
    const CertificateInfo service = infoOf(signer);
    const TrustAnchor anchor = anchors.anchorOf(signer, certificatesIn(token, ofPackage));
    return {time, service.name, problemOfService(service, signer, anchor, time)};
}

} // namespace

std::optional<SignatureTimestamp> timestampIn(CMS_ContentInfo *message, const TrustAnchors &anchors,
                                              const std::vector<Certificate> &ofPackage)
{
    constexpr int onlyOne = -3;
    CMS_SignerInfo *signer = sk_CMS_SignerInfo_value(CMS_get0_SignerInfos(message), 0);
    ASN1_OBJECT *kind = OBJ_nid2obj(NID_id_smime_aa_timeStampToken);
    if (CMS_unsigned_get_attr_by_OBJ(signer, kind, -1) < 0)
        return std::nullopt;
    const auto *bytes = static_cast<const ASN1_STRING *>(
        CMS_unsigned_get0_data_by_OBJ(signer, kind, onlyOne, V_ASN1_SEQUENCE));
    const Message token = bytes ? messageIn(bytesOf(bytes)) : nullptr;
    SignatureTimestamp timestamp =
        judged(token.get(), bytesOf(CMS_SignerInfo_get0_signature(signer)), anchors, ofPackage);
    ERR_clear_error();
    return timestamp;
}
