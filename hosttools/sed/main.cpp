// SPDX-License-Identifier: Apache-2.0
// Stand-in for the macOS command of the same name: the system's sed with macOS' form of editing in place.
#include "hosttools/base/Error.h"
#include "hosttools/base/ToolMain.h"
#include "hosttools/sed/InPlace.h"

#include <unistd.h>

using namespace FlatPkg;

namespace {

void editFiles(const QByteArray &script, const QVector<QByteArray> &files)
{
    const QByteArray sed = InPlace::systemSed();
    for (const QByteArray &file : files)
        within(file, [&] { InPlace::edit(sed, script, file); });
}

/// Becomes the system's sed; comes back only when that cannot be started.
void becomeSystemSed(char **argv)
{
    const QByteArray sed = InPlace::systemSed();
    execv(sed.constData(), argv);
    throw systemError(sed);
}

} // namespace

int main(int argc, char **argv)
{
    const QVector<QByteArray> arguments = argumentsOf(argc, argv);
    const bool inPlace = arguments.value(0) == "-i" && arguments.size() >= 2 && arguments[1].isEmpty();
    if (inPlace && arguments.size() < 4)
        return wrongUsage("sed", "-i '' EXPR FILE...");
    if (inPlace)
        return runTool("sed", [&] { editFiles(arguments[2], arguments.mid(3)); });
    return runTool("sed", [&] { becomeSystemSed(argv); });
}
