// SPDX-License-Identifier: Apache-2.0
#include "cli/Console.h"
#include "cli/InputFile.h"
#include "cli/Json.h"
#include "cli/PackageSigning.h"
#include "cli/SignatureCheck.h"
#include "cli/VerbLine.h"
#include "core/OutputFile.h"
#include "core/PathRules.h"

namespace {

Result<> checkPaths(const QString &package, const QString &output, bool force)
{
    if (Result<> file = checkFile(package, FileKind::Package, QStringLiteral("an installer package")); !file)
        return file;
    if (Result<> different =
            PathRules::allDiffer({{QStringLiteral("package"), package}, {QStringLiteral("output"), output}});
        !different)
        return different;
    return checkWritable(output, force);
}

Result<> sign(const VerbLine &line)
{
    const QString package = line.operandPath();
    const QString path = line.path(OptionName::output);
    const bool force = line.isSet(OptionName::force);
    if (Result<> usable = checkPaths(package, path, force); !usable)
        return usable;
    OutputFile output(path, force ? OutputFile::Existing::Replace : OutputFile::Existing::Keep);
    return signPackage(package, PackageSigning::from(line, OptionName::identity), &output);
}

QJsonObject outcomeObject(const VerbLine &line, const Result<> &result)
{
    const QString output = line.path(OptionName::output);
    const Result<SignatureReport> report = result ? signatureOf(output, {}) : result.problem();
    return {
        {QStringLiteral("succeeded"), bool(result)},
        {QStringLiteral("problem"), problemOrNull(result)},
        {QStringLiteral("file"), line.operandPath()},
        {QStringLiteral("output"), output},
        {QStringLiteral("signature"), report ? QJsonValue(signatureObject(*report)) : QJsonValue()},
    };
}

QJsonObject signRefusal(const VerbLine &line, const Problem &problem)
{
    return outcomeObject(line, problem);
}

int runSign(const VerbLine &line, Console &console)
{
    console.setQuiet(line.isSet(OptionName::quiet));
    const Result<> result = console.told(sign(line));
    return console.writeOutcome(line.path(OptionName::output), result, {},
                                line.isSet(OptionName::json), [&] { return outcomeObject(line, result); });
}

} // namespace

Verb signVerb()
{
    Verb verb{QLatin1String("sign"), QLatin1String("sign an installer package"), runSign};
    verb.description = QStringLiteral(
        "Makes a signed copy of PKG, without an earlier signature and a stapled ticket. It takes the place "
        "of the output only when its signature holds.");
    verb.options = {
        required({OptionName::output, QStringLiteral("the signed package to make"), Value::package()}),
        required(withRemark({OptionName::identity, QStringLiteral("who signs"), Value::identity()},
                            QStringLiteral(", one that `pct identities` lists for packages"))),
        anyCertificateOption(),
        timestampOption(),
        {OptionName::force, QStringLiteral("replace an output that exists already")},
        withRemark(jsonOption(), QStringLiteral(", also when the signing fails")),
        quietOption(),
    };
    verb.operands = {
        {Value::package(), QStringLiteral("the installer package to sign; it is never changed")}};
    verb.refusal = signRefusal;
    return verb;
}
