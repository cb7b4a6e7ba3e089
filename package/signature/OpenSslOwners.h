// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <openssl/bio.h>
#include <openssl/cms.h>
#include <openssl/ts.h>
#include <openssl/x509.h>

/// Owners for what OpenSSL allocates.
namespace OpenSslOwners {

template <auto Free> struct Deleter
{
    template <typename Object> void operator()(Object *object) const { Free(object); }
};

using Bytes = std::unique_ptr<BIO, Deleter<BIO_free_all>>;
using Certificate = std::unique_ptr<X509, Deleter<X509_free>>;
using KeyContext = std::unique_ptr<EVP_PKEY_CTX, Deleter<EVP_PKEY_CTX_free>>;
using Message = std::unique_ptr<CMS_ContentInfo, Deleter<CMS_ContentInfo_free>>;
using Statement = std::unique_ptr<TS_TST_INFO, Deleter<TS_TST_INFO_free>>;
using Store = std::unique_ptr<X509_STORE, Deleter<X509_STORE_free>>;
using Verification = std::unique_ptr<X509_STORE_CTX, Deleter<X509_STORE_CTX_free>>;

/// Frees a list alone: its certificates have other owners.
struct ListDeleter
{
    void operator()(STACK_OF(X509) * list) const { sk_X509_free(list); }
};
using CertificateList = std::unique_ptr<STACK_OF(X509), ListDeleter>;

} // namespace OpenSslOwners
