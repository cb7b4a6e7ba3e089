// SPDX-License-Identifier: Apache-2.0
#include "tests/cli/ProfileRunner.h"

#include "tests/support/TestFiles.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>

namespace {

QStringList opensslRequest(const QString &name, const QStringList &key, const QString &file)
{
    return QStringList{QStringLiteral("req"),     QStringLiteral("-x509"),
                       QStringLiteral("-utf8"),   QStringLiteral("-nodes"),
                       QStringLiteral("-days"),   QStringLiteral("2"),
                       QStringLiteral("-subj"),   QStringLiteral("/CN=") + name,
                       QStringLiteral("-addext"), QStringLiteral("keyUsage=critical,digitalSignature"),
                       QStringLiteral("-addext"), QStringLiteral("extendedKeyUsage=codeSigning"),
                       QStringLiteral("-keyout"), file + QStringLiteral(".key"),
                       QStringLiteral("-out"),    file + QStringLiteral(".crt"),
                       QStringLiteral("-newkey")} +
           key;
}

} // namespace

ProfileRunner::ProfileRunner()
{
    for (const auto *name : {"identities", "profiles"})
        QDir(m_stores.path()).mkdir(QString::fromLatin1(name));
    setEnvironment(QStringLiteral("PCT_IDENTITIES_DIR"), m_stores.filePath(QStringLiteral("identities")));
    setEnvironment(QStringLiteral("PCT_PROFILES_DIR"), m_stores.filePath(QStringLiteral("profiles")));
}

QString ProfileRunner::identityFile(const QString &name) const
{
    return m_stores.filePath(QStringLiteral("identities/%1.pem").arg(name));
}

void ProfileRunner::addIdentity(const QString &name, const QStringList &key) const
{
    const QString part = m_stores.filePath(QStringLiteral("part"));
    TestFiles::outputOf(QStringLiteral("openssl"), opensslRequest(name, key, part));
    const QString file = identityFile(name);
    TestFiles::write(file, TestFiles::read(part + QStringLiteral(".key")) +
                               TestFiles::read(part + QStringLiteral(".crt")));
    QFile::setPermissions(file, QFile::ReadOwner | QFile::WriteOwner);
}

void ProfileRunner::install(const QString &profile) const
{
    QProcess process;
    process.setProcessEnvironment(environment());
    process.start(QStringLiteral(PCT_HOSTTOOLS_DIR "/profiles"),
                  {QStringLiteral("install"), QStringLiteral("-path"), profile});
    if (!process.waitForFinished() || process.exitCode() != 0)
        qFatal("cannot install %s: %s", qPrintable(profile), process.readAllStandardError().constData());
}

QString ProfileRunner::output() const
{
    return file(QStringLiteral("out.mobileconfig"));
}

QStringList ProfileRunner::profileArguments(bool editor, const QStringList &more) const
{
    const QString product = editor ? QStringLiteral("editor") : QStringLiteral("reader");
    return QStringList{QStringLiteral("profile"), QStringLiteral("--product"), product,
                       QStringLiteral("--output"), output()} +
           more;
}

PctResult ProfileRunner::makeProfile(bool editor, const QStringList &more) const
{
    return run(profileArguments(editor, more));
}

QJsonObject ProfileRunner::propertyList(const QString &path) const
{
    const QString binary = m_stores.filePath(QStringLiteral("binary"));
    TestFiles::outputOf(QStringLiteral("plistutil"), {QStringLiteral("-i"), path, QStringLiteral("-o"),
                                                      binary, QStringLiteral("-f"), QStringLiteral("bin")});
    const QString script = QStringLiteral(
        "import json, plistlib, sys; print(json.dumps(plistlib.load(open(sys.argv[1], 'rb'))))");
    return QJsonDocument::fromJson(TestFiles::outputOf(QStringLiteral("/usr/bin/python3"),
                                                       {QStringLiteral("-c"), script, binary}))
        .object();
}

QString ProfileRunner::verifiedContent(const QString &path) const
{
    QString content = m_stores.filePath(QStringLiteral("content"));
    TestFiles::outputOf(QStringLiteral("openssl"),
                        {QStringLiteral("cms"), QStringLiteral("-verify"), QStringLiteral("-noverify"),
                         QStringLiteral("-binary"), QStringLiteral("-inform"), QStringLiteral("DER"),
                         QStringLiteral("-in"), path, QStringLiteral("-out"), content});
    return content;
}

QByteArray ProfileRunner::digests(const QString &path) const
{
    const QByteArray message =
        TestFiles::outputOf(QStringLiteral("openssl"),
                            {QStringLiteral("cms"), QStringLiteral("-cmsout"), QStringLiteral("-print"),
                             QStringLiteral("-inform"), QStringLiteral("DER"), QStringLiteral("-in"), path});
    const int start = message.indexOf("digestAlgorithms:");
    return message.mid(start, message.indexOf("encapContentInfo:") - start);
}

QJsonObject payloadOf(const QJsonObject &profile)
{
    return profile.value(QStringLiteral("PayloadContent")).toArray().at(0).toObject();
}

QJsonObject preferenceOf(const QJsonObject &profile, const QString &text)
{
    const QJsonArray items = payloadOf(profile).value(QStringLiteral("Preferences")).toArray();
    for (const QJsonValue &item : items) {
        QJsonObject preference = item.toObject().value(QStringLiteral("Preference")).toObject();
        if (preference.value(QStringLiteral("Text")).toString() == text)
            return preference;
    }
    return {};
}

QByteArray ProfileXml::key(const QByteArray &name, const QByteArray &value)
{
    return "<key>" + name + "</key>" + value + "\n";
}

QByteArray ProfileXml::string(const QByteArray &text)
{
    return "<string>" + text + "</string>";
}

QByteArray ProfileXml::dictionary(const QByteArray &entries)
{
    return "<dict>" + entries + "</dict>";
}

QByteArray ProfileXml::array(const QByteArray &items)
{
    return "<array>" + items + "</array>";
}

QByteArray ProfileXml::plist(const QByteArray &value)
{
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
           "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
           "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
           "<plist version=\"1.0\">\n" +
           value + "\n</plist>\n";
}

QByteArray ProfileXml::preference(const QByteArray &text, const QByteArray &entries)
{
    return dictionary(key("Preference", dictionary(key("Text", string(text)) + entries)));
}

QByteArray ProfileXml::payload(const QByteArray &preferences, const QByteArray &bundle)
{
    return key("PayloadIdentifier", string(bundle)) + key("PayloadType", string(bundle + ".settings")) +
           key("PayloadUUID", string("11111111-2222-4333-8444-555555555555")) +
           key("PayloadVersion", "<integer>1</integer>") + key("Preferences", array(preferences));
}

QByteArray ProfileXml::profile(const QByteArray &payloadEntries)
{
    return plist(dictionary(key("PayloadContent", array(dictionary(payloadEntries))) +
                            key("PayloadDisplayName", string("A profile")) +
                            key("PayloadIdentifier", string("host.example")) +
                            key("PayloadType", string("Configuration")) +
                            key("PayloadUUID", string("66666666-7777-4888-9999-AAAAAAAAAAAA")) +
                            key("PayloadVersion", "<integer>1</integer>")));
}
