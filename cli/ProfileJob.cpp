// SPDX-License-Identifier: Apache-2.0
#include "cli/ProfileJob.h"

#include "cli/HostCommands.h"
#include "cli/InputFile.h"
#include "cli/PrivateFolder.h"
#include "config/Product.h"
#include "config/Settings.h"
#include "core/PathRules.h"
#include "core/SafeFile.h"
#include "profile/ConfigGenerator.h"
#include "profile/CProfileGenerator.h"
#include "profile/ManagementService.h"
#include "profile/ReadProfile.h"

#include <QFileInfo>

#include <algorithm>

namespace {

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

} // namespace

ProfileJob::ProfileJob(const ProfileRequest &request)
    : m_request(request)
    , m_output(request.output, request.force ? OutputFile::Existing::Replace : OutputFile::Existing::Keep)
{
    m_request.form.hasStableUuid = request.identity.isStable;
}

Result<> ProfileJob::run()
{
    using Stage = Result<> (ProfileJob::*)();
    for (const Stage stage : {&ProfileJob::checkRequest, &ProfileJob::takeSettings, &ProfileJob::write}) {
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

Result<> ProfileJob::checkRequest()
{
    if (Result<> different =
            PathRules::allDiffer({{QStringLiteral("configuration"), m_request.source.config},
                                  {QStringLiteral("source profile"), m_request.source.profile},
                                  {QStringLiteral("output"), m_request.output}});
        !different)
        return different;
    if (Result<> output = checkWritable(m_request.output, m_request.force); !output)
        return output;
    if (Result<> service = checkService(); !service)
        return service;
    QStringList commands = m_request.source.commands();
    if (!m_request.signer.isEmpty())
        commands << QStringLiteral("/usr/bin/security");
    return haveCommands(commands);
}

Upload ProfileJob::upload() const
{
    return {m_request.form, !m_request.signer.isEmpty(), m_hasToken};
}

Result<> ProfileJob::checkService() const
{
    const Result<> taken = m_request.service ? m_request.service->takes(upload()) : Result<>();
    return taken ? taken : Problem{m_request.output, taken.problem().text};
}

void ProfileJob::warnOfService()
{
    if (!m_request.service)
        return;
    for (const QString &text : m_request.service->warnings(upload()))
        m_warnings.append({m_request.output, {QStringLiteral("management-service"), text}});
}

Result<> ProfileJob::checkSize(const QByteArray &profile) const
{
    const Result<> taken = m_request.service ? m_request.service->takesSize(profile.size()) : Result<>();
    return taken ? taken : Problem{m_request.output, taken.problem().text};
}

Result<> ProfileJob::takeSettings()
{
    const Result<EditorXmlData> settings =
        m_request.source.read(*m_request.product, m_request.identity.isComplete(), m_warnings);
    if (!settings)
        return settings.problem();
    m_settings = *settings;
    const Result<> settled = m_request.identity.settle(m_settings.payloadInfo);
    return settled ? settled : Problem{m_request.output, settled.problem().text};
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
    if (Result<> taken = profile ? checkSize(*profile) : Result<>(); !taken)
        return taken;
    warnOfService();
    return place(profile);
}

Result<> ProfileJob::place(const Result<QByteArray> &profile)
{
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
    if (Result<> created = create(path); !created)
        return created;
    if (!m_request.signer.isEmpty()) {
        if (Result<> isSigned = sign(path); !isSigned)
            return isSigned;
    }
    return readBack(path);
}

Result<> ProfileJob::create(const QString &path)
{
    const Result<QString> profile =
        ConfigGenerator::generate(&m_settings, *m_request.product, m_request.form);
    if (!profile)
        return Problem{m_request.output,
                       QStringLiteral("no profile can hold these settings (%1); give fewer, shorter or less "
                                      "nested ones")
                           .arg(profile.problem().text)};
    m_hasToken = profile->contains(QLatin1String("{{"));
    if (SafeFile::replaceContents(path, profile->toUtf8()))
        return {};
    return Problem{m_request.output,
                   QStringLiteral("the profile cannot be written; check that the temporary folder has room")};
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
    const Result<ReadProfile> profile = readProfile(path, settings, m_request.product);
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
