// SPDX-License-Identifier: Apache-2.0
#include "cli/ProfileJob.h"

#include "cli/HostCommands.h"
#include "cli/InputFile.h"
#include "cli/PrivateFolder.h"
#include "cli/SettingsFile.h"
#include "config/Product.h"
#include "config/ProductSettings.h"
#include "config/Settings.h"
#include "core/PathRules.h"
#include "core/SafeFile.h"
#include "profile/ConfigGenerator.h"
#include "profile/CProfileGenerator.h"
#include "profile/ReadProfile.h"

#include <QFileInfo>

#include <algorithm>

namespace {

bool isKnown(const ProfileSigner &signer)
{
    return signer.isKnown;
}

bool isText(const Setting &setting)
{
    return std::holds_alternative<QString EditorXmlData::*>(setting.member);
}

bool sameTexts(const EditorXmlData &first, const EditorXmlData &second)
{
    return first.payloadInfo.PayloadIdentifier == second.payloadInfo.PayloadIdentifier &&
           first.payloadInfo.PayloadUUID == second.payloadInfo.PayloadUUID &&
           std::all_of(settings().begin(), settings().end(), [&](const Setting &setting) {
               return !isText(setting) || sameValue(setting, first, second);
           });
}

/// A profile has one place for what an element holds under one name, and none for text.
bool fitsIntoProfile(const QDomElement &element)
{
    for (QDomNode node = element.firstChild(); !node.isNull(); node = node.nextSibling()) {
        const QDomElement child = node.toElement();
        const bool isText = node.isText() || node.isCDATASection();
        if (isText || element.hasAttribute(child.tagName()) || !fitsIntoProfile(child))
            return false;
    }
    return true;
}

} // namespace

ProfileJob::ProfileJob(const ProfileRequest &request)
    : m_request(request)
    , m_output(request.output, request.force ? OutputFile::Existing::Replace : OutputFile::Existing::Keep)
{
}

Result<> ProfileJob::run()
{
    using Stage = Result<> (ProfileJob::*)();
    for (const Stage stage : {&ProfileJob::checkPaths, &ProfileJob::takeSettings, &ProfileJob::write}) {
        if (Result<> done = (this->*stage)(); !done)
            return done;
    }
    return {};
}

const QList<FileWarning> &ProfileJob::warnings() const
{
    return m_warnings;
}

const ProfilePayloadInfo &ProfileJob::identity() const
{
    return m_settings.payloadInfo;
}

Result<> ProfileJob::checkPaths()
{
    if (Result<> different = PathRules::allDiffer({{QStringLiteral("configuration"), m_request.config},
                                                   {QStringLiteral("source profile"), m_request.source},
                                                   {QStringLiteral("output"), m_request.output}});
        !different)
        return different;
    if (Result<> output = checkWritable(m_request.output, m_request.force); !output)
        return output;
    QStringList commands;
    if (m_request.installed)
        commands << QStringLiteral("/usr/bin/profiles");
    if (!m_request.signer.isEmpty())
        commands << QStringLiteral("/usr/bin/security");
    return haveCommands(commands);
}

Result<> ProfileJob::takeSettings()
{
    const Result<EditorXmlData> settings = readGivenSettings();
    if (!settings)
        return settings.problem();
    m_settings = settingsForProduct(*settings, *m_request.product);
    settleIdentity();
    return checkSettings();
}

Result<EditorXmlData> ProfileJob::readGivenSettings()
{
    if (m_request.settings)
        return *m_request.settings;
    if (!m_request.config.isEmpty())
        return readConfig();
    if (!m_request.source.isEmpty())
        return readSource();
    return m_request.installed ? readInstalled() : EditorXmlData();
}

/// Only a profile can bring such characters; it is the source then, or is installed.
Result<> ProfileJob::checkSettings() const
{
    const QString name = unwritableSetting(m_settings);
    if (name.isEmpty())
        return {};
    return Problem{
        m_request.source.isEmpty() ? QStringLiteral("profiles") : m_request.source,
        QStringLiteral("its %1 holds control characters or others that can be written nowhere; correct "
                       "it there")
            .arg(name)};
}

Result<EditorXmlData> ProfileJob::readConfig()
{
    const Result<SettingsFile> file = readDocument(*m_request.product, m_request.config);
    if (!file)
        return file.problem();
    m_warnings += file->warnings;
    if (!fitsIntoProfile(file->settings.elemRibbonCategory))
        m_warnings.append(ribbonWarning(m_request.config, QStringLiteral("ribbon")));
    if (!fitsIntoProfile(file->settings.elemQuickAccessBar))
        m_warnings.append(ribbonWarning(m_request.config, QStringLiteral("quick-access bar")));
    return file->settings;
}

Result<EditorXmlData> ProfileJob::readSource()
{
    const Result<SettingsFile> file = readProfileFile(m_request.source);
    if (!file)
        return file.problem();
    if (!std::all_of(file->signers.begin(), file->signers.end(), isKnown))
        m_warnings.append({m_request.source,
                           {QStringLiteral("signer-unknown"),
                            QStringLiteral("is signed by %1").arg(signersText(file->signers))}});
    if (file->product == m_request.product)
        return file->settings;
    return Problem{m_request.source,
                   QStringLiteral("is a profile of the %1 (%2), not of the %3; use "
                                  "--product %4")
                       .arg(QString(file->product->title), file->product->bundleIdentifier,
                            QString(m_request.product->title), QString(file->product->word))};
}

Result<EditorXmlData> ProfileJob::readInstalled()
{
    EditorXmlData settings;
    const Result<bool> installed = readInstalledProfile(settings, *m_request.product);
    if (installed && *installed)
        return settings;
    const Result<ManagedProfile::Reading> managed = ManagedProfile::read(settings, *m_request.product);
    if (!managed)
        return cannotTell(managed.problem());
    if (managed->isFilled) {
        const Result<> complete = checkManaged(*managed);
        return complete ? Result<EditorXmlData>(settings) : complete.problem();
    }
    if (!installed)
        return Problem{QStringLiteral("profiles"),
                       QStringLiteral("the installed profiles cannot be listed (%1); use --config or --from")
                           .arg(installed.problem().text)};
    return Problem{QStringLiteral("profiles"),
                   QStringLiteral("no profile of the %1 was found on this machine (those of the device are "
                                  "listed for root only); use --config or --from")
                       .arg(QString(m_request.product->title))};
}

Problem ProfileJob::cannotTell(const Problem &cause) const
{
    return {QStringLiteral("profiles"),
            QStringLiteral("what a management has installed for the %1 cannot be told (%2); run this as "
                           "root, or use --config or --from")
                .arg(QString(m_request.product->title), cause.text)};
}

/// A profile of another identity would not replace the installed one, so it has to be known.
Result<> ProfileJob::checkManaged(const ManagedProfile::Reading &managed)
{
    const bool identityIsGiven = !m_request.identifier.isEmpty() && !m_request.uuid.isEmpty();
    if (!managed.identity && !identityIsGiven)
        return cannotTell(managed.identity.problem());
    m_warnings.append(
        {QStringLiteral("profiles"),
         {QStringLiteral("managed-preferences"),
          QStringLiteral("lists no profile of the %1 for this user; the settings are those that "
                         "a management has in force here")
              .arg(QString(m_request.product->title))}});
    return {};
}

/// What is given wins over the source, and the source over a fresh identity.
void ProfileJob::settleIdentity()
{
    ProfilePayloadInfo &identity = m_settings.payloadInfo;
    if (!m_request.identifier.isEmpty())
        identity.PayloadIdentifier = m_request.identifier;
    if (!m_request.uuid.isEmpty())
        identity.PayloadUUID = m_request.uuid;
    QString freshUuid;
    QString freshIdentifier = CProfileGenerator::GenPayloadIdentifier(&freshUuid);
    if (identity.PayloadUUID.isEmpty())
        identity.PayloadUUID = freshUuid;
    if (identity.PayloadIdentifier.isEmpty())
        identity.PayloadIdentifier = freshIdentifier.replace(freshUuid, identity.PayloadUUID);
}

Result<> ProfileJob::write()
{
    const PrivateFolder folder;
    if (Result<> usable = folder.check(); !usable)
        return usable;
    const QString made = folder.filePath(QFileInfo(m_request.output).fileName());
    if (Result<> written = writeTo(made); !written)
        return written;
    const Result<QByteArray> profile = SafeFile::readContents(made);
    const Result<> placed = profile ? m_output.write(*profile) : profile.problem();
    if (placed)
        return {};
    const QString cause = placed.problem().text;
    if (m_output.isTaken())
        return Problem{m_request.output, cause + forceAdvice()};
    return Problem{m_request.output, QStringLiteral("cannot be written (%1); use another place").arg(cause)};
}

Result<> ProfileJob::writeTo(const QString &path)
{
    if (!CProfileGenerator::CreateProfile(&m_settings, path, m_request.product->isEditor()))
        return notCreated();
    if (!m_request.signer.isEmpty()) {
        if (Result<> isSigned = sign(path); !isSigned)
            return isSigned;
    }
    return readBack(path);
}

Problem ProfileJob::notCreated() const
{
    const Result<QString> profile = ConfigGenerator::generate(&m_settings, *m_request.product);
    if (profile)
        return {m_request.output,
                QStringLiteral("the profile cannot be written; check that the temporary folder has room")};
    return {m_request.output,
            QStringLiteral("no profile can hold these settings (%1); give fewer, shorter or less "
                           "nested ones")
                .arg(profile.problem().text)};
}

Result<> ProfileJob::sign(const QString &path)
{
    const QString signedForm = path + QStringLiteral(".signed");
    const bool isSigned = CProfileGenerator::SignProfileInto(path, m_request.signer, signedForm) &&
                          QFile::remove(path) && QFile::rename(signedForm, path);
    const SigningIdentities identities = CProfileGenerator::FindSignIDs();
    m_warnings += identityWarnings(identities.remarks);
    if (isSigned)
        return {};
    if (identities.names && !identities.names->contains(m_request.signer))
        return Problem{m_request.signer, QStringLiteral("there is no signing identity of this name; \"pct "
                                                        "identities\" lists those that there are")};
    return Problem{m_request.signer, QStringLiteral("signing with this identity failed, so no profile was "
                                                    "made; set PCT_DEBUG to 1 to see why")};
}

/// Numbers and the ribbon are meant to come back from a profile in a simpler form, texts are not.
Result<> ProfileJob::readBack(const QString &path)
{
    EditorXmlData settings = m_settings;
    const Result<ReadProfile> profile = readProfile(path, settings);
    if (!profile)
        return Problem{m_request.output,
                       QStringLiteral("the profile %1, so none was made; check the settings "
                                      "for what is too long or odd")
                           .arg(profile.problem().text)};
    const bool same = profile->product == m_request.product && sameTexts(settings, m_settings) &&
                      profile->signers.isEmpty() == m_request.signer.isEmpty();
    if (!same)
        return Problem{m_request.output,
                       QStringLiteral("the profile does not read back as it was written, so none was made; "
                                      "check the settings for odd characters")};
    m_settings.payloadInfo = settings.payloadInfo;
    return {};
}
