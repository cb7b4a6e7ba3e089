// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>

#include <memory>
#include <openssl/bio.h>
#include <openssl/cms.h>
#include <openssl/evp.h>
#include <openssl/x509.h>

/// Owners for what OpenSSL allocates, and its errors as ours.
namespace OpenSsl {

template <auto Free> struct Deleter
{
    template <typename Object> void operator()(Object *object) const { Free(object); }
};

using Bio = std::unique_ptr<BIO, Deleter<BIO_free_all>>;
using Certificate = std::unique_ptr<X509, Deleter<X509_free>>;
using PrivateKey = std::unique_ptr<EVP_PKEY, Deleter<EVP_PKEY_free>>;
using CmsMessage = std::unique_ptr<CMS_ContentInfo, Deleter<CMS_ContentInfo_free>>;

/// Throws FlatPkg::Error: what went wrong, and OpenSSL's reason when it has one.
[[noreturn]] void fail(const QByteArray &what);

/// What has been written to a memory BIO.
QByteArray bytesIn(BIO *memory);

/// The certificate's common name as it is, in UTF-8; empty when it has none.
QByteArray commonName(const X509 *certificate);

} // namespace OpenSsl
