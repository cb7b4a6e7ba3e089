// SPDX-License-Identifier: Apache-2.0
#include "cli/Console.h"
#include "cli/ExitCode.h"
#include "cli/Installer.h"
#include "cli/Json.h"
#include "cli/PrivateFolder.h"
#include "cli/SignatureCheck.h"
#include "cli/VerbLine.h"
#include "config/Product.h"

#include <QJsonArray>

namespace {

/// What a build would say, and who signed the package.
struct PackageCheck : InstallerCheck
{
    std::optional<SignatureReport> signature;
};

InstallerCheck checkScripts(const QString &package, const Product &product)
{
    const PrivateFolder folder;
    if (const Result<> usable = folder.check(); !usable)
        return {usable, std::nullopt};
    return checkInstaller(package, product, folder.makeSubfolder(QStringLiteral("inspect")), true);
}

PackageCheck checkPackage(const QString &package, const Product &product, const SignatureDemands &demands)
{
    PackageCheck check{checkScripts(package, product), std::nullopt};
    if (!check.inspection)
        return check;
    const Result<SignatureReport> report = signatureOf(package, demands);
    if (report)
        check.signature = *report;
    if (check.verdict)
        check.verdict = report ? meets(package, *report, demands) : Result<>(report.problem());
    return check;
}

/// For every addition that a build of the product may be asked to make.
QList<BuildWarning> warningsOf(const PackageCheck &check, const Product &product)
{
    if (!check.inspection || !check.verdict)
        return {};
    return signatureWarnings(*check.signature) + warningsAbout(*check.inspection, true, product.isEditor());
}

QJsonArray warningsArray(const QList<BuildWarning> &warnings)
{
    QJsonArray array;
    for (const BuildWarning &warning : warnings)
        array.append(warningObject(warning));
    return array;
}

QJsonObject scriptObject(const QString &problem)
{
    return {{QStringLiteral("patchable"), problem.isEmpty()},
            {QStringLiteral("problem"), textOrNull(problem)}};
}

QJsonObject inspectionObject(const PackageInspection &inspection)
{
    const ScriptsInspection &scripts = inspection.scripts;
    return {
        {QStringLiteral("version"), textOrNull(scripts.version)},
        {QStringLiteral("signed"), inspection.signedByVendor},
        {QStringLiteral("customizedBefore"), scripts.customizedBefore},
        {QStringLiteral("preinstall"), scriptObject(scripts.preinstallProblem)},
        {QStringLiteral("postinstall"), scriptObject(scripts.postinstallProblem)},
        {QStringLiteral("switches"),
         QJsonObject{{QStringLiteral("editorXmlFileCopy"), scripts.documentSwitches},
                     {QStringLiteral("setdefaultpdf"), scripts.viewerSwitches},
                     {QStringLiteral("plistValue"), scripts.preferenceLists}}},
    };
}

QJsonObject checkObject(const QString &package, const Product &product, const PackageCheck &check)
{
    return {
        {QStringLiteral("file"), package},
        {QStringLiteral("product"), product.word},
        {QStringLiteral("accepted"), bool(check.verdict)},
        {QStringLiteral("problem"), problemOrNull(check.verdict)},
        {QStringLiteral("package"),
         check.inspection ? QJsonValue(inspectionObject(*check.inspection)) : QJsonValue()},
        {QStringLiteral("signature"),
         check.signature ? QJsonValue(signatureObject(*check.signature)) : QJsonValue()},
        {QStringLiteral("warnings"), warningsArray(warningsOf(check, product))},
    };
}

QString yesOrNo(bool value)
{
    return value ? QStringLiteral("yes") : QStringLiteral("no");
}

QString patchability(const QString &problem)
{
    return problem.isEmpty() ? QStringLiteral("can be patched")
                             : QStringLiteral("cannot be patched: ") + problem;
}

QString lineCount(int count)
{
    return count == 1 ? QStringLiteral("1 line") : QStringLiteral("%1 lines").arg(count);
}

QList<Console::Row> inspectionRows(const PackageInspection &inspection)
{
    const ScriptsInspection &scripts = inspection.scripts;
    return {
        {QStringLiteral("version"), scripts.version.isEmpty() ? QStringLiteral("unknown") : scripts.version},
        {QStringLiteral("signed"), yesOrNo(inspection.signedByVendor)},
        {QStringLiteral("customized before"), yesOrNo(scripts.customizedBefore)},
        {QStringLiteral("preinstall"), patchability(scripts.preinstallProblem)},
        {QStringLiteral("postinstall"), patchability(scripts.postinstallProblem)},
        {QStringLiteral("editorXmlFileCopy"), lineCount(scripts.documentSwitches)},
        {QStringLiteral("setdefaultpdf"), lineCount(scripts.viewerSwitches)},
        {QStringLiteral("plistValue"), lineCount(scripts.preferenceLists)},
    };
}

void writeCheck(const QString &package, const Product &product, const PackageCheck &check, bool asJson,
                Console &console)
{
    if (asJson)
        console.writeJson(checkObject(package, product, check));
    else if (check.inspection)
        console.writeTable(QStringLiteral("%1 installer").arg(product.title),
                           inspectionRows(*check.inspection));
    if (!asJson && check.signature && check.signature->isSigned)
        console.writeTable(QStringLiteral("Signature"), signatureRows(*check.signature));
}

QJsonObject checkRefusal(const VerbLine &line, const Problem &problem)
{
    return checkObject(line.operandPath(), line.product(), {{problem, std::nullopt}, std::nullopt});
}

int runCheck(const VerbLine &line, Console &console)
{
    const QString package = line.operandPath();
    const Product &product = line.product();
    console.setQuiet(line.isSet(OptionName::quiet));
    PackageCheck check = checkPackage(package, product, demandsOf(line, OptionName::requireTeam));
    check.verdict = console.told(check.verdict);
    writeCheck(package, product, check, line.isSet(OptionName::json), console);
    for (const BuildWarning &warning : warningsOf(check, product))
        console.warning(package, warning.text);
    if (check.verdict)
        return ExitCode::done;
    console.error(check.verdict.problem());
    return ExitCode::refused;
}

} // namespace

Verb checkVerb()
{
    Verb verb{QLatin1String("check"), QLatin1String("say what an installer package offers to a build"),
              runCheck};
    verb.description = QStringLiteral(
        "Says whether PKG is the vendor's installer of the product and what a build can do with it. "
        "Exit code 0 when a build would work.");
    verb.options = {required(productOption(QStringLiteral("the product whose installer PKG should be"))),
                    jsonOption(), quietOption()};
    verb.options += demandOptions(OptionName::requireTeam);
    verb.operands = {{Value::package(), QStringLiteral("the installer package to look at")}};
    verb.refusal = checkRefusal;
    return verb;
}
