// SPDX-License-Identifier: Apache-2.0
#include "tests/hosttools/profiles/ProfilesRun.h"

#include "tests/support/TestFiles.h"

#include <QJsonDocument>

ToolRun::Result ProfilesRun::profiles(const QStringList &arguments) const
{
    return ToolRun::run(QStringLiteral("profiles"), arguments, m_folder.path(),
                        {QStringLiteral("PCT_PROFILES_DIR=") + at("store")});
}

ToolRun::Result ProfilesRun::show() const
{
    return profiles({QStringLiteral("show"), QStringLiteral("-output"), QStringLiteral("stdout-xml"),
                     QStringLiteral("-type"), QStringLiteral("configuration")});
}

ToolRun::Result ProfilesRun::install(const QByteArray &profile) const
{
    TestFiles::write(at("profile"), profile);
    return profiles({QStringLiteral("install"), QStringLiteral("-path"), at("profile")});
}

QString ProfilesRun::installedFile() const
{
    const QStringList names = ToolRun::namesIn(at("store"));
    return names.size() == 1 ? at("store") + QLatin1Char('/') + names.first() : QString();
}

QJsonObject ProfilesRun::shownLevels() const
{
    const QByteArray json = ToolRun::filtered(
        show().output, QStringLiteral("/usr/bin/python3"),
        {QStringLiteral("-c"), QStringLiteral("import sys, plistlib, json\n"
                                              "print(json.dumps(plistlib.loads(sys.stdin.buffer.read())))")});
    return QJsonDocument::fromJson(json).object();
}

QJsonArray ProfilesRun::shownProfiles() const
{
    const QJsonObject levels = shownLevels();
    return levels.size() == 1 ? levels.begin()->toArray() : QJsonArray();
}

QByteArray ProfilesRun::profileText(const QByteArray &identifier, const QByteArray &more)
{
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
           "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
           "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
           "<plist version=\"1.0\"><dict>\n"
           "<key>PayloadType</key><string>Configuration</string>\n"
           "<key>PayloadVersion</key><integer>1</integer>\n"
           "<key>PayloadIdentifier</key><string>" +
           identifier +
           "</string>\n"
           "<key>PayloadUUID</key><string>A1B2</string>\n"
           "<key>PayloadDisplayName</key><string>Pelix &amp; Söhne</string>\n"
           "<key>PayloadOrganization</key><string>Pelix Software Inc.</string>\n"
           "<key>PayloadDescription</key><string>Settings</string>\n" +
           more +
           "<key>PayloadContent</key><array><dict>\n"
           "<key>PayloadType</key><string>com.example.settings</string>\n"
           "<key>PayloadIdentifier</key><string>com.example.App</string>\n"
           "<key>PayloadUUID</key><string>C3D4</string>\n"
           "<key>Mode</key><integer>-1</integer>\n"
           "<key>Empty</key><string></string>\n"
           "<key>Preferences</key><array><dict><key>Text</key><string>StartPage</string></dict></array>\n"
           "</dict></array>\n</dict></plist>\n";
}

QByteArray ProfilesRun::converted(const QByteArray &profile, const char *format)
{
    return ToolRun::filtered(
        profile, QStringLiteral("/usr/bin/python3"),
        {QStringLiteral("-c"), QStringLiteral("import sys, plistlib\n"
                                              "value = plistlib.loads(sys.stdin.buffer.read())\n"
                                              "sys.stdout.buffer.write(plistlib.dumps(value, fmt=plistlib.") +
                                   QLatin1String(format) + QStringLiteral("))")});
}
