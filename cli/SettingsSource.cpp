// SPDX-License-Identifier: Apache-2.0
#include "cli/SettingsSource.h"

#include "cli/SettingsFile.h"
#include "cli/VerbLine.h"
#include "config/Product.h"
#include "config/ProductSettings.h"
#include "config/Settings.h"
#include "profile/ManagedProfile.h"
#include "profile/ReadProfile.h"

#include <algorithm>

namespace {

bool isKnown(const ProfileSigner &signer)
{
    return signer.isKnown;
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

Result<EditorXmlData> readConfig(const QString &path, const Product &product, QList<FileWarning> &warnings)
{
    const Result<SettingsFile> file = readDocument(product, path);
    if (!file)
        return file.problem();
    warnings += file->warnings;
    if (!fitsIntoProfile(file->settings.elemRibbonCategory))
        warnings.append(ribbonWarning(path, QStringLiteral("ribbon")));
    if (!fitsIntoProfile(file->settings.elemQuickAccessBar))
        warnings.append(ribbonWarning(path, QStringLiteral("quick-access bar")));
    return file->settings;
}

Result<EditorXmlData> readFrom(const QString &path, const Product &product, QList<FileWarning> &warnings)
{
    const Result<SettingsFile> file = readProfileFile(path, &product);
    if (!file)
        return file.problem();
    if (!std::all_of(file->signers.begin(), file->signers.end(), isKnown))
        warnings.append({path,
                         {QStringLiteral("signer-unknown"),
                          QStringLiteral("is signed by %1").arg(signersText(file->signers))}});
    if (file->product == &product)
        return file->settings;
    return Problem{path, QStringLiteral("is a profile of the %1 (%2), not of the %3; use "
                                        "--product %4")
                             .arg(QString(file->product->title), file->product->bundleIdentifier,
                                  QString(product.title), QString(file->product->word))};
}

Problem cannotTell(const Product &product, const Problem &cause)
{
    return {QStringLiteral("profiles"),
            QStringLiteral("what a management has installed for the %1 cannot be told (%2); run this as "
                           "root, or use --config or --from")
                .arg(QString(product.title), cause.text)};
}

FileWarning managedWarning(const Product &product)
{
    return {QStringLiteral("profiles"),
            {QStringLiteral("managed-preferences"),
             QStringLiteral("lists no profile of the %1 for this user; the settings are those that "
                            "a management has in force here")
                 .arg(QString(product.title))}};
}

Problem nothingInstalled(const Product &product, const Result<bool> &listed)
{
    if (!listed)
        return {QStringLiteral("profiles"),
                QStringLiteral("the installed profiles cannot be listed (%1); use --config or --from")
                    .arg(listed.problem().text)};
    return {QStringLiteral("profiles"),
            QStringLiteral("no profile of the %1 was found on this machine (those of the device are "
                           "listed for root only); use --config or --from")
                .arg(QString(product.title))};
}

/// A profile of another identity would not replace the installed one, so it has to be known.
Result<EditorXmlData> readInstalled(const Product &product, bool identityIsGiven,
                                    QList<FileWarning> &warnings)
{
    EditorXmlData settings;
    const Result<bool> listed = readInstalledProfile(settings, product);
    if (listed && *listed)
        return settings;
    const Result<ManagedProfile::Reading> managed = ManagedProfile::read(settings, product);
    if (!managed)
        return cannotTell(product, managed.problem());
    if (!managed->isFilled)
        return nothingInstalled(product, listed);
    if (!managed->identity && !identityIsGiven)
        return cannotTell(product, managed->identity.problem());
    warnings.append(managedWarning(product));
    return settings;
}

Result<EditorXmlData> readAny(const SettingsSource &source, const Product &product, bool identityIsGiven,
                              QList<FileWarning> &warnings)
{
    if (source.settings)
        return *source.settings;
    if (!source.config.isEmpty())
        return readConfig(source.config, product, warnings);
    if (!source.profile.isEmpty())
        return readFrom(source.profile, product, warnings);
    return source.installed ? readInstalled(product, identityIsGiven, warnings) : EditorXmlData();
}

/// Only a profile can bring such characters; it is the source then, or is installed.
Problem unwritable(const SettingsSource &source, const QString &name)
{
    return {source.profile.isEmpty() ? QStringLiteral("profiles") : source.profile,
            QStringLiteral("its %1 holds control characters or others that can be written nowhere; correct "
                           "it there")
                .arg(name)};
}

} // namespace

QList<Option> SettingsSource::options()
{
    return alternatives({
        configOption(),
        withRemark(
            {OptionName::from, QStringLiteral("profile with the settings and the identity to keep"),
             Value::profile("PROFILE")},
            QStringLiteral(", signed or not. A profile of the other product or of another application is "
                           "refused")),
        withRemark(
            {OptionName::installed, QStringLiteral("take them from the profile installed on this machine")},
            QStringLiteral("; more about it below")),
    });
}

SettingsSource SettingsSource::of(const VerbLine &line)
{
    return {line.path(OptionName::config), line.path(OptionName::from), line.isSet(OptionName::installed)};
}

QStringList SettingsSource::commands() const
{
    return installed ? QStringList{QStringLiteral("/usr/bin/profiles")} : QStringList();
}

Result<EditorXmlData> SettingsSource::read(const Product &product, bool identityIsGiven,
                                           QList<FileWarning> &warnings) const
{
    const Result<EditorXmlData> given = readAny(*this, product, identityIsGiven, warnings);
    if (!given)
        return given;
    const EditorXmlData kept = settingsForProduct(*given, product);
    const QString name = unwritableSetting(kept);
    return name.isEmpty() ? Result<EditorXmlData>(kept) : unwritable(*this, name);
}
