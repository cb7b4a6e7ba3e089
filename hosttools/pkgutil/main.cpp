// SPDX-License-Identifier: Apache-2.0
// Stand-in for the macOS command of the same name: taking flat packages apart and putting them together.
#include "hosttools/flatpkg/FlatPackage.h"
#include "hosttools/flatpkg/ToolMain.h"

using namespace FlatPkg;

int main(int argc, char **argv)
{
    const QVector<QByteArray> arguments = argumentsOf(argc, argv);
    const QByteArray verb = arguments.value(0);
    if (arguments.size() == 3 && verb == "--expand")
        return runTool("pkgutil", [&] { expandPackage(arguments[1], arguments[2]); });
    if (arguments.size() == 3 && verb == "--flatten")
        return runTool("pkgutil", [&] { flattenFolder(arguments[1], arguments[2]); });
    return wrongUsage("pkgutil", "--expand PKG DIR | --flatten DIR PKG");
}
