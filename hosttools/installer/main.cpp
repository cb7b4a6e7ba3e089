// SPDX-License-Identifier: Apache-2.0
// Stand-in for the macOS command of the same name: what a package says it installs.
#include "hosttools/base/Error.h"
#include "hosttools/base/ToolMain.h"
#include "hosttools/flatpkg/ProductInfo.h"

using namespace FlatPkg;

namespace {

void printInfo(const QByteArray &package)
{
    const ProductInfo info = within(package, [&] { return readProductInfo(XarReader(package)); });
    if (!info.title.isEmpty())
        printLine(info.title);
    for (const QByteArray &component : info.components)
        printLine(component);
}

} // namespace

int main(int argc, char **argv)
{
    const QVector<QByteArray> arguments = argumentsOf(argc, argv);
    const auto package = arguments.indexOf("-pkg") + 1;
    if (arguments.size() != 3 || !arguments.contains("-pkginfo") || package == 0 || package == 3)
        return wrongUsage("installer", "-pkginfo -pkg PKG");
    return runTool("installer", [&] { printInfo(arguments[package]); });
}
