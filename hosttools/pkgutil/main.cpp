// SPDX-License-Identifier: Apache-2.0
// Stand-in for the macOS command of the same name: taking flat packages apart and putting them together.
#include "hosttools/base/ToolMain.h"
#include "hosttools/flatpkg/FlatPackage.h"
#include "hosttools/pkgutil/SignatureStatus.h"

#include <cstdlib>

using namespace FlatPkg;

namespace {

/// What a package without a good signature ends with; that nobody knows its signer is told in words only.
int checkSignature(const QByteArray &package)
{
    bool holds = false;
    const int result = runTool("pkgutil", [&] { holds = printSignatureStatus(package); });
    return result == EXIT_SUCCESS && !holds ? EXIT_FAILURE : result;
}

} // namespace

int main(int argc, char **argv)
{
    const QVector<QByteArray> arguments = argumentsOf(argc, argv);
    const QByteArray verb = arguments.value(0);
    if (arguments.size() == 3 && verb == "--expand")
        return runTool("pkgutil", [&] { expandPackage(arguments[1], arguments[2]); });
    if (arguments.size() == 3 && verb == "--flatten")
        return runTool("pkgutil", [&] { flattenFolder(arguments[1], arguments[2]); });
    if (arguments.size() == 2 && verb == "--check-signature")
        return checkSignature(arguments[1]);
    return wrongUsage("pkgutil", "--expand PKG DIR | --flatten DIR PKG | --check-signature PKG");
}
