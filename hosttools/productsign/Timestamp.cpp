// SPDX-License-Identifier: Apache-2.0
#include "hosttools/productsign/Timestamp.h"

#include "hosttools/base/Error.h"
#include "hosttools/base/Interrupt.h"
#include "hosttools/flatpkg/Digest.h"
#include "hosttools/security/OpenSsl.h"

#include <curl/curl.h>
#include <openssl/rand.h>
#include <openssl/ts.h>

using namespace FlatPkg;
using namespace OpenSsl;

namespace Timestamp {

namespace {

using Request = std::unique_ptr<TS_REQ, Deleter<TS_REQ_free>>;
using Response = std::unique_ptr<TS_RESP, Deleter<TS_RESP_free>>;
using Imprint = std::unique_ptr<TS_MSG_IMPRINT, Deleter<TS_MSG_IMPRINT_free>>;
using Algorithm = std::unique_ptr<X509_ALGOR, Deleter<X509_ALGOR_free>>;
using Number = std::unique_ptr<ASN1_INTEGER, Deleter<ASN1_INTEGER_free>>;
using BigNumber = std::unique_ptr<BIGNUM, Deleter<BN_free>>;
using Check = std::unique_ptr<TS_VERIFY_CTX, Deleter<TS_VERIFY_CTX_free>>;
using Transfer = std::unique_ptr<CURL, Deleter<curl_easy_cleanup>>;
using Headers = std::unique_ptr<curl_slist, Deleter<curl_slist_free_all>>;

constexpr long longestWait = 60;
constexpr int largestAnswer = 1024 * 1024;

[[noreturn]] void refuse(const QByteArray &why)
{
    throw Error("the timestamp service " + why + "; try again, or sign without a timestamp");
}

Imprint imprintOf(const QByteArray &bytes)
{
    QByteArray digest = digestOf(DigestAlgorithm::Sha256, bytes);
    Imprint imprint(TS_MSG_IMPRINT_new());
    const Algorithm algorithm(X509_ALGOR_new());
    if (!imprint || !algorithm ||
        X509_ALGOR_set0(algorithm.get(), OBJ_nid2obj(NID_sha256), V_ASN1_NULL, nullptr) != 1 ||
        TS_MSG_IMPRINT_set_algo(imprint.get(), algorithm.get()) != 1 ||
        TS_MSG_IMPRINT_set_msg(imprint.get(), reinterpret_cast<unsigned char *>(digest.data()),
                               static_cast<int>(digest.size())) != 1)
        fail("no timestamp can be asked for");
    return imprint;
}

Number nonce()
{
    constexpr int bits = 63;
    const BigNumber random(BN_new());
    if (!random || BN_rand(random.get(), bits, BN_RAND_TOP_ANY, BN_RAND_BOTTOM_ANY) != 1)
        fail("no timestamp can be asked for");
    return Number(BN_to_ASN1_INTEGER(random.get(), nullptr));
}

Request requestFor(const QByteArray &bytes)
{
    Request request(TS_REQ_new());
    if (!request || TS_REQ_set_version(request.get(), 1) != 1 ||
        TS_REQ_set_msg_imprint(request.get(), imprintOf(bytes).get()) != 1 ||
        TS_REQ_set_nonce(request.get(), nonce().get()) != 1 || TS_REQ_set_cert_req(request.get(), 1) != 1)
        fail("no timestamp can be asked for");
    return request;
}

size_t append(const char *bytes, size_t, size_t count, void *answer)
{
    auto &text = *static_cast<QByteArray *>(answer);
    if (static_cast<qint64>(count) + text.size() > largestAnswer)
        return 0;
    text.append(bytes, static_cast<int>(count));
    return count;
}

/// Asked by the transfer again and again while it waits; another value than 0 ends it.
int isToStop(void *, curl_off_t, curl_off_t, curl_off_t, curl_off_t)
{
    return Interrupt::isRequested() ? 1 : 0;
}

/// `type` and all that is sent belong to the caller until the transfer has ended.
void prepare(CURL *transfer, const QByteArray &service, const QByteArray &body, curl_slist *type)
{
    curl_easy_setopt(transfer, CURLOPT_URL, service.constData());
    curl_easy_setopt(transfer, CURLOPT_PROTOCOLS_STR, "http,https");
    curl_easy_setopt(transfer, CURLOPT_TIMEOUT, longestWait);
    curl_easy_setopt(transfer, CURLOPT_NOSIGNAL, 1L);
    curl_easy_setopt(transfer, CURLOPT_FAILONERROR, 1L);
    curl_easy_setopt(transfer, CURLOPT_HTTPHEADER, type);
    curl_easy_setopt(transfer, CURLOPT_POSTFIELDS, body.constData());
    curl_easy_setopt(transfer, CURLOPT_POSTFIELDSIZE, static_cast<long>(body.size()));
    curl_easy_setopt(transfer, CURLOPT_WRITEFUNCTION, append);
    curl_easy_setopt(transfer, CURLOPT_NOPROGRESS, 0L);
    curl_easy_setopt(transfer, CURLOPT_XFERINFOFUNCTION, isToStop);
}

QByteArray answerTo(const QByteArray &body, const QByteArray &service)
{
    const Headers type(curl_slist_append(nullptr, "Content-Type: application/timestamp-query"));
    const Transfer transfer(curl_easy_init());
    if (!transfer || !type)
        throw std::bad_alloc();
    QByteArray answer;
    prepare(transfer.get(), service, body, type.get());
    curl_easy_setopt(transfer.get(), CURLOPT_WRITEDATA, &answer);
    const CURLcode result = curl_easy_perform(transfer.get());
    Interrupt::check();
    if (result != CURLE_OK)
        refuse(QByteArray("cannot be asked (") + curl_easy_strerror(result) + ')');
    return answer;
}

QByteArray encoded(TS_REQ *request)
{
    QByteArray der(i2d_TS_REQ(request, nullptr), '\0');
    auto *bytes = reinterpret_cast<unsigned char *>(der.data());
    i2d_TS_REQ(request, &bytes);
    return der;
}

/// Whose signature it is stays open here: that is for whoever judges the package.
void requireAnswerTo(TS_REQ *request, TS_RESP *response)
{
    const Check check(TS_REQ_to_TS_VERIFY_CTX(request, nullptr));
    if (!check)
        fail("no timestamp can be checked");
    TS_VERIFY_CTX_set_flags(check.get(), TS_VFY_VERSION | TS_VFY_IMPRINT | TS_VFY_NONCE);
    if (TS_RESP_verify_response(check.get(), response) != 1)
        fail("the timestamp service has not given the timestamp that it was asked for");
}

QByteArray tokenIn(TS_RESP *response)
{
    PKCS7 *token = TS_RESP_get_token(response);
    QByteArray der(i2d_PKCS7(token, nullptr), '\0');
    auto *bytes = reinterpret_cast<unsigned char *>(der.data());
    i2d_PKCS7(token, &bytes);
    return der;
}

} // namespace

QByteArray tokenFor(const QByteArray &bytes, const QByteArray &service)
{
    const Request request = requestFor(bytes);
    const QByteArray answer = answerTo(encoded(request.get()), service);
    const Bio reader(BIO_new_mem_buf(answer.constData(), static_cast<int>(answer.size())));
    const Response response(d2i_TS_RESP_bio(reader.get(), nullptr));
    if (!response)
        refuse("has answered what is no timestamp");
    requireAnswerTo(request.get(), response.get());
    return tokenIn(response.get());
}

} // namespace Timestamp
