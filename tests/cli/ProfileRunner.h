// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tests/cli/PctRunner.h"

/// A PctRunner with a store of installed profiles and a folder of signing identities of its own, both empty
/// at first. Profiles are read by other programs than ours: plistutil and Python, signatures by openssl.
class ProfileRunner : public PctRunner
{
public:
    ProfileRunner();

    /// Makes a self-signed identity that can sign code; `key` is what `openssl req -newkey` takes.
    void addIdentity(const QString &name, const QStringList &key = {QStringLiteral("rsa:2048")}) const;
    /// The PEM file with certificate and key of such an identity.
    QString identityFile(const QString &name) const;

    /// Puts a profile into the store of installed profiles.
    void install(const QString &profile) const;

    /// The command line of a `pct profile` with an output named "out.mobileconfig".
    QStringList profileArguments(bool editor, const QStringList &more = {}) const;
    /// Runs it.
    PctResult makeProfile(bool editor, const QStringList &more = {}) const;
    QString output() const;

    /// A property list as plistutil converts and Python reads it.
    QJsonObject propertyList(const QString &path) const;
    /// The file with the content of a signed message, after openssl has checked the signature.
    QString verifiedContent(const QString &path) const;
    /// The digests that a signed message names, as openssl prints them.
    QByteArray digests(const QString &path) const;

private:
    QTemporaryDir m_stores;
};

/// The settings payload of a profile as propertyList() gives it.
QJsonObject payloadOf(const QJsonObject &profile);

/// The attributes of a preference item, or an empty object.
QJsonObject preferenceOf(const QJsonObject &profile, const QString &text);

/// Profiles in pieces of XML, for what `pct` never writes itself.
namespace ProfileXml {

QByteArray key(const QByteArray &name, const QByteArray &value);
QByteArray string(const QByteArray &text);
QByteArray dictionary(const QByteArray &entries);
QByteArray array(const QByteArray &items);
QByteArray plist(const QByteArray &value);

/// A preference item with the given further entries.
QByteArray preference(const QByteArray &text, const QByteArray &entries);

/// The entries of the Editor's settings payload, with the given preference items.
QByteArray payload(const QByteArray &preferences,
                   const QByteArray &bundle = QByteArrayLiteral("com.pelix-software.Pelix.PDF.Editor"));

/// A whole profile around payload dictionaries' entries.
QByteArray profile(const QByteArray &payloadEntries);

} // namespace ProfileXml
