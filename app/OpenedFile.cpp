// SPDX-License-Identifier: Apache-2.0
#include "app/OpenedFile.h"

#include "config/EditorXmlData.h"
#include "config/Product.h"
#include "core/Logging.h"
#include "core/PathRules.h"
#include "core/TransientFolder.h"
#include "package/BuildPaths.h"
#include "package/PackageBuild.h"
#include "profile/ReadProfile.h"

#include <QFileInfo>

namespace {

void warn(const QString &line)
{
    qCWarning(logApp).noquote() << line;
}

QString notBuildable(const Problem &problem)
{
    return QStringLiteral("No package can be made from this one: ") + problem.line();
}

/// What the paths alone tell.
Result<> checkPlace(const QString &package)
{
    if (Result<> quotable = PathRules::quotable(package); !quotable)
        return quotable;
    return checkWorkFolder(defaultWorkFolder(package), {package, package, package});
}

Result<PackageInspection> lookInside(const QString &package, const Product &product)
{
    const TransientFolder folder(QStringLiteral("pct-"));
    if (!folder.made())
        return folder.made().problem();
    return inspectPackage(package, product, folder.path());
}

/// One line, beginning with the path.
QString refusalOf(const QString &path, const Product &product)
{
    EditorXmlData unused;
    const Result<ReadProfile> read = readProfile(path, unused);
    if (!read)
        return Problem{path, read.problem().text}.line();
    if (!read->signers.isEmpty())
        return path +
               QStringLiteral(": is signed, and this window opens unsigned profiles only; open the one that "
                              "was signed, or make an unsigned one with \"pct profile --from\"");
    if (read->product != &product)
        return path +
               QStringLiteral(": is a profile for the %1; start the tool again and choose that product")
                   .arg(read->product->title);
    return path + QStringLiteral(": is in a form that this window does not open; make another one of it with "
                                 "\"pct profile --from\"");
}

} // namespace

void logWhatABuildWouldSay(const QString &package, const Product &product)
{
    const QString path = QFileInfo(package).absoluteFilePath();
    if (const Result<> place = checkPlace(path); !place)
        warn(notBuildable(place.problem()));
    const Result<PackageInspection> inspection = lookInside(path, product);
    if (!inspection)
        return warn(notBuildable({path, inspection.problem().text}));
    if (const Result<> contents = checkContents(path, inspection->scripts, true); !contents)
        return warn(notBuildable(contents.problem()));
    for (const BuildWarning &warning : warningsAbout(*inspection, true, product.isEditor()))
        warn(path + QStringLiteral(": ") + warning.text);
}

void logWhyProfileIsRefused(const QString &path, const Product &product)
{
    warn(refusalOf(path, product));
}
