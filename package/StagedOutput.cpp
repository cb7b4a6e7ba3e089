// SPDX-License-Identifier: Apache-2.0
#include "package/StagedOutput.h"

#include "config/Product.h"
#include "core/Command.h"
#include "core/OutputFile.h"
#include "package/FlatPackage.h"

namespace {

bool listsScripts(const QByteArray &listing, const Product &product)
{
    const QByteArray member = product.componentPackage.data() + QByteArray("/Scripts");
    return listing.split('\n').contains(member);
}

Result<> readBack(const OutputFile &output, const Product &product)
{
    if (!output.isStaged())
        return Problem{{}, QStringLiteral("pkgutil made no package")};
    const CommandResult listing = Command::run(
        QStringLiteral("xar"), {QStringLiteral("-t"), QStringLiteral("-f"), output.stagedPath()});
    if (!listing.succeeded())
        return Problem{{}, listing.problem()};
    if (!listsScripts(listing.standardOutput, product))
        return Problem{{}, QStringLiteral("the package that pkgutil made has no scripts of the product")};
    return {};
}

} // namespace

Result<> flattenStaged(const QString &folder, const Product &product, OutputFile &output)
{
    if (const Result<> staged = output.stage(); !staged)
        return Problem{output.path(), QStringLiteral("cannot write beside it: ") + staged.problem().text};
    if (Result<> flattened = FlatPackage::flatten(folder, output.stagedPath()); !flattened)
        return flattened;
    return readBack(output, product);
}
