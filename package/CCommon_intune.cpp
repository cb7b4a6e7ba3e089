// SPDX-License-Identifier: Apache-2.0
#include "config/CCommon.h"
#include "core/Logging.h"
#include "package/ScriptPatch.h"
#include "package/ScriptsFolder.h"

namespace {

struct Patch
{
    QString script;
    bool (*apply)(const QString &path, QString *error);
};

bool adapt(const Patch &patch, const QString &pkgDir, bool bEditor, QString *error)
{
    QString cause;
    if (patch.apply(scriptsFolder(pkgDir, bEditor) + patch.script, &cause))
        return true;
    qCDebug(logPackage).noquote() << QStringLiteral("adapt %1 for Intune failed: ").arg(patch.script) + cause;
    if (error)
        *error = unpatchedReason(cause);
    return false;
}

} // namespace

bool CCommon::AdaptPreInstallForIntune(QString pkgDir, bool bEditor, QString *error)
{
    return adapt({QStringLiteral("preinstall"), patchPreinstall}, pkgDir, bEditor, error);
}

bool CCommon::AdaptPostInstallForIntune(QString pkgDir, bool bEditor, QString *error)
{
    return adapt({QStringLiteral("postinstall"), patchPostinstall}, pkgDir, bEditor, error);
}
