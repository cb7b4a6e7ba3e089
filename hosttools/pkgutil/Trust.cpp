// SPDX-License-Identifier: Apache-2.0
#include "hosttools/pkgutil/Trust.h"

#include "hosttools/base/Error.h"
#include "hosttools/base/Files.h"
#include "hosttools/security/Identity.h"
#include "hosttools/security/IdentityFile.h"

#include <algorithm>
#include <array>
#include <openssl/err.h>
#include <unistd.h>

using namespace FlatPkg;
using namespace OpenSsl;

namespace {

using CertificateStore = std::unique_ptr<X509_STORE, Deleter<X509_STORE_free>>;
using Verification = std::unique_ptr<X509_STORE_CTX, Deleter<X509_STORE_CTX_free>>;

/// Frees a list alone: its certificates have other owners.
struct ListDeleter
{
    void operator()(STACK_OF(X509) * list) const { sk_X509_free(list); }
};
using CertificateList = std::unique_ptr<STACK_OF(X509), ListDeleter>;

const char appleRoot[] = "B0B1730ECBC7FF4505142C49F1295E6EDA6BCAED7E2C68C5BE91B5A11001F024";

std::vector<Certificate> authoritiesOfTheUser()
{
    std::vector<Certificate> found;
    const QByteArray folder = Identities::folder();
    if (access(folder.constData(), F_OK) != 0)
        return found;
    for (const QByteArray &name : namesIn(openFolder(folder).get())) {
        if (!name.endsWith(".cer"))
            continue;
        IdentityFile file =
            within(folder + '/' + name, [&] { return IdentityFile::read(folder + '/' + name); });
        std::move(file.certificates.begin(), file.certificates.end(), std::back_inserter(found));
    }
    return found;
}

/// Apple marks its certificates with critical extensions that OpenSSL has never heard of.
bool leadsTo(X509 *anchor, X509 *signer, const CertificateList &others)
{
    const CertificateStore store(X509_STORE_new());
    X509_STORE_add_cert(store.get(), anchor);
    X509_STORE_set_flags(store.get(), X509_V_FLAG_IGNORE_CRITICAL | X509_V_FLAG_NO_CHECK_TIME);
    const Verification verification(X509_STORE_CTX_new());
    const bool leads = X509_STORE_CTX_init(verification.get(), store.get(), signer, others.get()) == 1 &&
                       X509_verify_cert(verification.get()) == 1;
    ERR_clear_error();
    return leads;
}

} // namespace

Trust::Trust()
    : m_ofTheUser(authoritiesOfTheUser())
{
}

Trust::Anchor Trust::anchorOf(X509 *signer, const std::vector<Certificate> &others) const
{
    const CertificateList list(sk_X509_new_null());
    for (const Certificate &one : others)
        sk_X509_push(list.get(), one.get());
    for (const Certificate &one : others)
        if (fingerprintOf(one.get()).toHex().toUpper() == appleRoot && leadsTo(one.get(), signer, list))
            return Anchor::Apple;
    const bool known = std::any_of(m_ofTheUser.begin(), m_ofTheUser.end(),
                                   [&](const Certificate &one) { return leadsTo(one.get(), signer, list); });
    return known ? Anchor::OfTheUser : Anchor::None;
}

std::vector<X509 *> Trust::chainOf(X509 *signer, const std::vector<Certificate> &others)
{
    std::vector<X509 *> chain{signer};
    const auto isNext = [&](const Certificate &one) {
        return X509_check_issued(one.get(), chain.back()) == X509_V_OK &&
               std::none_of(chain.begin(), chain.end(),
                            [&](const X509 *known) { return X509_cmp(known, one.get()) == 0; });
    };
    for (;;) {
        const auto next = std::find_if(others.begin(), others.end(), isNext);
        ERR_clear_error();
        if (next == others.end())
            return chain;
        chain.push_back(next->get());
    }
}

QByteArray fingerprintOf(const X509 *certificate)
{
    std::array<unsigned char, EVP_MAX_MD_SIZE> digest;
    unsigned size = 0;
    if (X509_digest(certificate, EVP_sha256(), digest.data(), &size) != 1)
        fail("a certificate has no fingerprint");
    return QByteArray(reinterpret_cast<const char *>(digest.data()), static_cast<int>(size));
}
