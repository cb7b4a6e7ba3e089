// SPDX-License-Identifier: Apache-2.0
#include "tests/app/ProfileFlow.h"

#include "app/RegisterPages.h"
#include "core/HostPaths.h"
#include "pages/PXCheckBox.h"
#include "profile/CProfileGenerator.h"

#include <QListWidget>
#include <QTest>
#include <QToolButton>

namespace {

QListWidgetItem *pluginItem(const DlgCustomizationTool_v2 &window, int row)
{
    return window.findChild<QListWidget *>(QStringLiteral("listWidget_pluginList"))->item(row);
}

} // namespace

ProfileFlow::ProfileFlow()
{
    HostPaths::putStandInsFirst();
    for (const char *folder : {"out", "profiles", "identities"})
        QDir().mkpath(path(folder));
    qputenv("PCT_PROFILES_DIR", QFile::encodeName(path("profiles")));
    qputenv("PCT_IDENTITIES_DIR", QFile::encodeName(path("identities")));
}

std::unique_ptr<DlgCustomizationTool_v2> ProfileFlow::openWindow(bool editor) const
{
    auto window = std::make_unique<DlgCustomizationTool_v2>(editor, PCW_CONFIG_PROFILE);
    registerPages(*window);
    window->show();
    return window;
}

QString ProfileFlow::makeProfile(const char *name, bool editor, const QString &plugins) const
{
    EditorXmlData record;
    record.strUnloadPluginArray = plugins;
    record.payloadInfo.PayloadIdentifier =
        CProfileGenerator::GenPayloadIdentifier(&record.payloadInfo.PayloadUUID);
    const QString file = path(name);
    QDir().mkpath(QFileInfo(file).path());
    if (!CProfileGenerator::CreateProfile(&record, file, editor))
        qFatal("cannot make %s", name);
    return file;
}

void ProfileFlow::install(const QString &profile) const
{
    // Only the stand-in does so: Apple's command has given it up, and one like it answers as that does.
    const QString standIns = qEnvironmentVariable("APPLE_LIKE_REAL");
    TestFiles::outputOf(standIns.isEmpty() ? HostPaths::command(QStringLiteral("/usr/bin/profiles"))
                                           : standIns + QStringLiteral("/profiles"),
                        {QStringLiteral("install"), QStringLiteral("-path"), profile});
}

void ProfileFlow::addIdentity(const QString &name) const
{
    const QString key = path("key.pem");
    const QString certificate = path("certificate.pem");
    TestFiles::outputOf(QStringLiteral("openssl"),
                        {QStringLiteral("req"), QStringLiteral("-x509"), QStringLiteral("-newkey"),
                         QStringLiteral("ec"), QStringLiteral("-pkeyopt"),
                         QStringLiteral("ec_paramgen_curve:P-256"), QStringLiteral("-nodes"),
                         QStringLiteral("-subj"), QStringLiteral("/CN=") + name, QStringLiteral("-addext"),
                         QStringLiteral("extendedKeyUsage=codeSigning"), QStringLiteral("-keyout"), key,
                         QStringLiteral("-out"), certificate});
    const QString identity = path("identities/") + name + QStringLiteral(".pem");
    TestFiles::write(identity, TestFiles::read(key) + TestFiles::read(certificate));
    QFile::setPermissions(identity, QFile::ReadOwner | QFile::WriteOwner);
}

void ProfileFlow::save(DlgCustomizationTool_v2 &window, const QList<DialogScript::Answer> &answers)
{
    const DialogScript script(answers);
    window.findChild<QToolButton *>(QStringLiteral("tb_save"))->click();
}

QString valueIn(const QString &profile, const char *key)
{
    const QString expression = QStringLiteral("string(/plist/dict/key[.='%1']/following-sibling::string[1])");
    const QByteArray value =
        TestFiles::outputOf(QStringLiteral("xmllint"), {QStringLiteral("--nonet"), QStringLiteral("--xpath"),
                                                        expression.arg(QLatin1String(key)), profile});
    return QString::fromUtf8(value).trimmed();
}

QString offeredPlugin(const DlgCustomizationTool_v2 &window, int row)
{
    return pluginItem(window, row)->data(Qt::UserRole + 1).toString();
}

bool isPluginTicked(const DlgCustomizationTool_v2 &window, int row)
{
    QListWidgetItem *item = pluginItem(window, row);
    const QWidget *tick = item->listWidget()->itemWidget(item);
    return qobject_cast<const PXCheckBox *>(tick)->checkState() == Qt::Checked;
}
