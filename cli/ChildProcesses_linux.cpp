// SPDX-License-Identifier: Apache-2.0
#include "cli/ChildProcesses.h"

#include <QDir>
#include <QFile>

std::vector<pid_t> childProcessesOf(pid_t parent)
{
    std::vector<pid_t> children;
    // proc(5): each thread lists the children that it has started.
    const QDir threads(QStringLiteral("/proc/%1/task").arg(parent));
    for (const QString &thread : threads.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        QFile list(threads.filePath(thread + QStringLiteral("/children")));
        if (!list.open(QIODevice::ReadOnly))
            continue;
        for (const QByteArray &pid : list.readAll().simplified().split(' '))
            children.push_back(pid.toInt());
    }
    return children;
}
