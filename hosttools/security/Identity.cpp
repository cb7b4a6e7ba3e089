// SPDX-License-Identifier: Apache-2.0
#include "hosttools/security/Identity.h"

#include "hosttools/base/Error.h"
#include "hosttools/base/Files.h"
#include "hosttools/security/IdentityFile.h"

#include <QFile>
#include <QStandardPaths>

#include <algorithm>
#include <array>
#include <openssl/err.h>
#include <openssl/x509v3.h>
#include <unistd.h>

using namespace FlatPkg;
using namespace OpenSsl;

namespace Identities {

namespace {

using Object = std::unique_ptr<ASN1_OBJECT, Deleter<ASN1_OBJECT_free>>;
using Uses = std::unique_ptr<EXTENDED_KEY_USAGE, Deleter<EXTENDED_KEY_USAGE_free>>;

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

bool isCertificateName(const QByteArray &name)
{
    return isIdentityName(name) || name.endsWith(".cer");
}

QVector<QByteArray> pathsIn(const QByteArray &folder, bool (*isWanted)(const QByteArray &))
{
    if (access(folder.constData(), F_OK) != 0)
        return {};
    QVector<QByteArray> paths;
    within(folder, [&] {
        for (const QByteArray &name : namesIn(openFolder(folder).get()))
            if (isWanted(name))
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

bool isMadeForPackages(const X509 *certificate)
{
    const Object installer(OBJ_txt2obj("1.2.840.113635.100.4.13", 1));
    const Uses uses(static_cast<EXTENDED_KEY_USAGE *>(
        X509_get_ext_d2i(certificate, NID_ext_key_usage, nullptr, nullptr)));
    for (int i = 0; uses && i < sk_ASN1_OBJECT_num(uses.get()); ++i)
        if (OBJ_cmp(sk_ASN1_OBJECT_value(uses.get(), i), installer.get()) == 0)
            return true;
    return false;
}

QByteArray obstacleForPackages(const Identity &identity, Use use)
{
    constexpr int shortestKey = 2048;
    if (use == Use::Package && !isMadeForPackages(identity.certificate.get()))
        return QByteArrayLiteral("its certificate is not for installer packages (no Developer ID Installer)");
    if (EVP_PKEY_get_base_id(identity.key.get()) != EVP_PKEY_RSA)
        return QByteArrayLiteral("its key is not RSA, which installer packages need");
    if (EVP_PKEY_get_bits(identity.key.get()) < shortestKey)
        return "its key has fewer than " + QByteArray::number(shortestKey) + " bits";
    return {};
}

QByteArray obstacleForCode(const Identity &identity)
{
    if (!isMadeForCode(identity.certificate.get()))
        return QByteArrayLiteral("its certificate is not for code signing");
    if (!canSignMessages(identity.key.get()))
        return QByteArrayLiteral("its key is neither RSA nor EC");
    return {};
}

/// Certificates that lie beside the identities.
void addCertificatesOfFolder(std::vector<Certificate> *certificates)
{
    for (const QByteArray &path : pathsIn(folder(), isCertificateName)) {
        try {
            for (Certificate &one : IdentityFile::read(path).certificates)
                certificates->push_back(std::move(one));
        } catch (const Error &) {
            continue; // whoever lists the identities tells
        }
    }
}

/// Takes the one that issued the certificate, or null.
Certificate takeIssuer(X509 *certificate, std::vector<Certificate> *certificates)
{
    const auto issuer = std::find_if(certificates->begin(), certificates->end(), [&](const Certificate &one) {
        return one && X509_check_issued(one.get(), certificate) == X509_V_OK;
    });
    return issuer == certificates->end() ? nullptr : std::move(*issuer);
}

bool isSelfIssued(X509 *certificate)
{
    return X509_check_issued(certificate, certificate) == X509_V_OK;
}

QByteArray notFound(const QByteArray &name, const QByteArray &why, Use use,
                    const QVector<QByteArray> &unusable)
{
    if (!why.isEmpty())
        return "the identity \"" + name + "\" cannot sign: " + why;
    const QByteArray policy = use == Use::Code ? "codesigning" : "basic";
    const QByteArray left = unusable.isEmpty() ? QByteArray() : "; left out: " + unusable.first();
    return "there is no identity \"" + name + "\" in " + folder() + "; \"security find-identity -v -p " +
           policy + "\" lists them" + (use == Use::Code ? QByteArray() : left);
}

bool isCalled(const Identity &identity, const QByteArray &name, Use use)
{
    return identity.name == name || (use != Use::Code && identity.fingerprint == name.toUpper());
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
    for (const QByteArray &path : pathsIn(folder(), isIdentityName)) {
        try {
            identities.push_back(readIdentity(path));
        } catch (const Error &error) {
            unusable->append(error.message());
        }
    }
    return identities;
}

QByteArray obstacle(const Identity &identity, Use use)
{
    X509 *certificate = identity.certificate.get();
    // A time that cannot be read compares as 0 and counts as an obstacle.
    if (X509_cmp_current_time(X509_get0_notBefore(certificate)) >= 0)
        return QByteArrayLiteral("its certificate is not valid yet");
    if (X509_cmp_current_time(X509_get0_notAfter(certificate)) <= 0)
        return QByteArrayLiteral("its certificate has expired");
    return use == Use::Code ? obstacleForCode(identity) : obstacleForPackages(identity, use);
}

Identity forSigning(const QByteArray &name, Use use)
{
    QByteArray why;
    QVector<QByteArray> unusable;
    for (Identity &identity : all(&unusable)) {
        if (!isCalled(identity, name, use))
            continue;
        why = obstacle(identity, use);
        if (why.isEmpty())
            return std::move(identity);
    }
    throw Error(notFound(name, why, use, unusable));
}

std::vector<Certificate> issuersOf(const Identity &identity)
{
    std::vector<Certificate> known;
    for (const Certificate &one : identity.chain) {
        X509_up_ref(one.get());
        known.emplace_back(one.get());
    }
    addCertificatesOfFolder(&known);
    std::vector<Certificate> issuers;
    for (X509 *last = identity.certificate.get(); !isSelfIssued(last); last = issuers.back().get()) {
        Certificate next = takeIssuer(last, &known);
        if (!next)
            break;
        issuers.push_back(std::move(next));
    }
    ERR_clear_error();
    return issuers;
}

} // namespace Identities
