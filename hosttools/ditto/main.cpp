// SPDX-License-Identifier: Apache-2.0
// Stand-in for the macOS command of the same name: unpacking the archive of a package's scripts.
#include "hosttools/base/ToolMain.h"
#include "hosttools/flatpkg/FlatPackage.h"

using namespace FlatPkg;

int main(int argc, char **argv)
{
    const QVector<QByteArray> arguments = argumentsOf(argc, argv);
    if (arguments.size() != 3 || arguments[0] != "-x")
        return wrongUsage("ditto", "-x ARCHIVE DIR");
    return runTool("ditto", [&] { unpackArchive(arguments[1], arguments[2]); });
}
