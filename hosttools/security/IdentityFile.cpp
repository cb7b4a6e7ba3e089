// SPDX-License-Identifier: Apache-2.0
#include "hosttools/security/IdentityFile.h"

#include "hosttools/base/Error.h"
#include "hosttools/base/Files.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <openssl/err.h>
#include <openssl/provider.h>
#include <openssl/store.h>
#include <openssl/ui.h>

using namespace FlatPkg;
using namespace OpenSsl;

namespace {

constexpr qint64 largestIdentityFile = 1024LL * 1024;

using Store = std::unique_ptr<OSSL_STORE_CTX, Deleter<OSSL_STORE_close>>;
using StoredObject = std::unique_ptr<OSSL_STORE_INFO, Deleter<OSSL_STORE_INFO_free>>;
using Provider = std::unique_ptr<OSSL_PROVIDER, Deleter<OSSL_PROVIDER_unload>>;
using Questions = std::unique_ptr<UI_METHOD, Deleter<UI_destroy_method>>;

/// `asked` is a bool that tells whether the file holds something locked.
int passwordFromEnvironment(char *buffer, int size, int, void *asked)
{
    *static_cast<bool *>(asked) = true;
    const QByteArray password = qgetenv("PCT_IDENTITIES_PASSWORD");
    if (password.size() > size)
        return -1;
    std::memcpy(buffer, password.constData(), static_cast<size_t>(password.size()));
    return static_cast<int>(password.size());
}

FileDescriptor openIdentity(const QByteArray &path)
{
    FileDescriptor file = openInput(path);
    if (statusOf(file.get()).st_size > largestIdentityFile)
        throw Error("is too large for an identity");
    return file;
}

/// A stream and not the descriptor itself: the decoders step back in what they read.
Bio readerOf(FileDescriptor file)
{
    std::FILE *stream = fdopen(file.get(), "rb");
    if (!stream)
        throw systemError("cannot be read");
    file.release();
    return Bio(BIO_new_fp(stream, BIO_CLOSE));
}

void take(const StoredObject &object, IdentityFile *contents)
{
    const int type = OSSL_STORE_INFO_get_type(object.get());
    if (type == OSSL_STORE_INFO_CERT)
        contents->certificates.emplace_back(OSSL_STORE_INFO_get1_CERT(object.get()));
    else if (type == OSSL_STORE_INFO_PKEY && !contents->key)
        contents->key.reset(OSSL_STORE_INFO_get1_PKEY(object.get()));
}

void takeAll(OSSL_STORE_CTX *store, IdentityFile *contents)
{
    while (!OSSL_STORE_eof(store)) {
        const StoredObject object(OSSL_STORE_load(store));
        if (object)
            take(object, contents);
        else if (OSSL_STORE_error(store))
            break; // also how an ordinary file ends
    }
    if (contents->certificates.empty() && !contents->key)
        fail("cannot be read as an identity; is PCT_IDENTITIES_PASSWORD right?");
}

/// Keychains export with ciphers that OpenSSL has set apart; without them other files can still be read.
Provider oldCiphers()
{
    Provider provider(OSSL_PROVIDER_try_load(nullptr, "legacy", 1));
    ERR_clear_error();
    return provider;
}

/// What a file that begins with such an address (RFC 7512) says about where its key lies; else empty.
QByteArray tokenAddressIn(const FileDescriptor &file)
{
    constexpr qint64 longestAddress = 4096;
    QByteArray text(static_cast<int>(std::min<qint64>(statusOf(file.get()).st_size, longestAddress)), '\0');
    readExactly(file.get(), text.data(), text.size(), 0);
    return text.startsWith("pkcs11:") ? text.left(text.indexOf('\n')).trimmed() : QByteArray();
}

/// It is never unloaded by us: the keys of a token live in it, as long as they are used.
void loadTokenProvider()
{
    static const OSSL_PROVIDER *provider = OSSL_PROVIDER_try_load(nullptr, "pkcs11", 1);
    if (!provider)
        fail(
            "its key lies on a token, for which OpenSSL has no provider here; install one (pkcs11-provider)");
}

Store storeOnToken(const QByteArray &address, const Questions &questions, bool *isLocked)
{
    loadTokenProvider();
    Store store(OSSL_STORE_open(address.constData(), questions.get(), isLocked, nullptr, nullptr));
    if (store)
        OSSL_STORE_expect(store.get(), OSSL_STORE_INFO_PKEY);
    return store;
}

/// Whoever can read where a key lies still needs the token, unless the address tells its password.
bool isSecret(const QByteArray &address)
{
    return address.isEmpty() || address.contains("pin-value=");
}

} // namespace

IdentityFile IdentityFile::read(const QByteArray &path)
{
    const Provider ciphers = oldCiphers();
    FileDescriptor file = openIdentity(path);
    const QByteArray address = tokenAddressIn(file);
    IdentityFile contents;
    contents.readableByOthers =
        isSecret(address) && (statusOf(file.get()).st_mode & (S_IRGRP | S_IROTH)) != 0;
    const Bio bytes = readerOf(std::move(file));
    const Questions noQuestions(UI_UTIL_wrap_read_pem_callback(passwordFromEnvironment, 0));
    const Store store =
        address.isEmpty() ? Store(OSSL_STORE_attach(bytes.get(), "file", nullptr, nullptr, noQuestions.get(),
                                                    &contents.keyIsLocked, nullptr, nullptr, nullptr))
                          : storeOnToken(address, noQuestions, &contents.keyIsLocked);
    if (!store)
        fail("cannot be read as an identity");
    takeAll(store.get(), &contents);
    contents.keyIsLocked = contents.keyIsLocked && !contents.key;
    ERR_clear_error();
    return contents;
}
