// SPDX-License-Identifier: Apache-2.0
#include "hosttools/security/Identity.h"

#include "hosttools/flatpkg/Error.h"
#include "hosttools/flatpkg/Files.h"
#include "hosttools/security/IdentityFile.h"

#include <QFile>
#include <QStandardPaths>

#include <array>
#include <openssl/err.h>
#include <openssl/x509v3.h>
#include <unistd.h>

using namespace FlatPkg;
using namespace OpenSsl;

namespace Identities {

namespace {

QByteArray fingerprintOf(const X509 *certificate)
{
    std::array<unsigned char, EVP_MAX_MD_SIZE> digest;
    unsigned size = 0;
    if (X509_digest(certificate, EVP_sha1(), digest.data(), &size) != 1)
        fail("its certificate has no fingerprint");
    return QByteArray(reinterpret_cast<const char *>(digest.data()), static_cast<int>(size))
        .toHex()
        .toUpper();
}

/// The certificate that belongs to the key; the others stay behind as the chain.
Certificate takeCertificateOf(EVP_PKEY *key, std::vector<Certificate> *certificates)
{
    for (auto one = certificates->begin(); one != certificates->end(); ++one) {
        if (X509_check_private_key(one->get(), key) != 1)
            continue;
        Certificate found = std::move(*one);
        certificates->erase(one);
        return found;
    }
    ERR_clear_error();
    return nullptr;
}

Identity identityOf(IdentityFile file)
{
    if (!file.key)
        throw Error(file.keyIsLocked ? "its private key cannot be read; is PCT_IDENTITIES_PASSWORD right?"
                                     : "has no private key");
    Identity identity;
    identity.certificate = takeCertificateOf(file.key.get(), &file.certificates);
    if (!identity.certificate)
        throw Error("has no certificate that belongs to its private key");
    identity.name = printable(commonName(identity.certificate.get()));
    if (identity.name.isEmpty())
        throw Error("its certificate has no common name");
    identity.fingerprint = fingerprintOf(identity.certificate.get());
    identity.key = std::move(file.key);
    identity.chain = std::move(file.certificates);
    return identity;
}

IdentityFile readFile(const QByteArray &path)
{
    return within(path, [&] { return IdentityFile::read(path); });
}

Identity readIdentity(const QByteArray &path)
{
    IdentityFile file = readFile(path);
    QByteArray keyPath = path;
    if (path.endsWith(".crt")) {
        keyPath = path.left(path.size() - 3) + "key";
        IdentityFile keyFile = readFile(keyPath);
        file.key = std::move(keyFile.key);
        file.readableByOthers = keyFile.readableByOthers;
    }
    const bool exposed = file.readableByOthers;
    Identity identity = within(path, [&] { return identityOf(std::move(file)); });
    identity.exposedKeyPath = exposed ? keyPath : QByteArray();
    return identity;
}

bool isIdentityName(const QByteArray &name)
{
    return name.endsWith(".pem") || name.endsWith(".crt") || name.endsWith(".p12") || name.endsWith(".pfx");
}

QVector<QByteArray> pathsIn(const QByteArray &folder)
{
    if (access(folder.constData(), F_OK) != 0)
        return {};
    QVector<QByteArray> paths;
    within(folder, [&] {
        for (const QByteArray &name : namesIn(openFolder(folder).get()))
            if (isIdentityName(name))
                paths.append(folder + '/' + name);
    });
    return paths;
}

bool canSignMessages(const EVP_PKEY *key)
{
    const int type = EVP_PKEY_get_base_id(key);
    return type == EVP_PKEY_RSA || type == EVP_PKEY_EC;
}

bool isMadeForCode(X509 *certificate)
{
    const bool saysItsUse = (X509_get_extension_flags(certificate) & EXFLAG_XKUSAGE) != 0;
    return saysItsUse && (X509_get_extended_key_usage(certificate) & XKU_CODE_SIGN) != 0;
}

QByteArray notFound(const QByteArray &name, const QByteArray &why)
{
    if (!why.isEmpty())
        return "the identity \"" + name + "\" cannot sign: " + why;
    return "there is no identity \"" + name + "\" in " + folder() +
           "; \"security find-identity -v -p codesigning\" lists them";
}

} // namespace

QByteArray folder()
{
    const QByteArray named = qgetenv("PCT_IDENTITIES_DIR");
    if (!named.isEmpty())
        return named;
    const QString data = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    return QFile::encodeName(data + QStringLiteral("/pct/identities"));
}

std::vector<Identity> all(QVector<QByteArray> *unusable)
{
    std::vector<Identity> identities;
    for (const QByteArray &path : pathsIn(folder())) {
        try {
            identities.push_back(readIdentity(path));
        } catch (const Error &error) {
            unusable->append(error.message());
        }
    }
    return identities;
}

QByteArray obstacle(const Identity &identity)
{
    X509 *certificate = identity.certificate.get();
    // A time that cannot be read compares as 0 and counts as an obstacle.
    if (X509_cmp_current_time(X509_get0_notBefore(certificate)) >= 0)
        return QByteArrayLiteral("its certificate is not valid yet");
    if (X509_cmp_current_time(X509_get0_notAfter(certificate)) <= 0)
        return QByteArrayLiteral("its certificate has expired");
    if (!isMadeForCode(certificate))
        return QByteArrayLiteral("its certificate is not for code signing");
    if (!canSignMessages(identity.key.get()))
        return QByteArrayLiteral("its key is neither RSA nor EC");
    return {};
}

Identity forSigning(const QByteArray &name)
{
    QByteArray why;
    QVector<QByteArray> unusable;
    for (Identity &identity : all(&unusable)) {
        if (identity.name != name)
            continue;
        why = obstacle(identity);
        if (why.isEmpty())
            return std::move(identity);
    }
    throw Error(notFound(name, why));
}

} // namespace Identities
