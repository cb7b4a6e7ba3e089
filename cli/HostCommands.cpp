// SPDX-License-Identifier: Apache-2.0
#include "cli/HostCommands.h"

#include "core/HostPaths.h"

#include <QStandardPaths>

Result<> haveCommands(const QStringList &commands)
{
    for (const QString &command : commands) {
        if (QStandardPaths::findExecutable(HostPaths::command(command)).isEmpty())
            return Problem{command, QStringLiteral("this command was not found; install it, and correct PATH "
                                                   "or PCT_HOSTTOOLS")};
    }
    return {};
}
