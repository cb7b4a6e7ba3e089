// SPDX-License-Identifier: Apache-2.0
#include "hosttools/sed/InPlace.h"

#include "hosttools/base/Error.h"
#include "hosttools/base/Files.h"
#include "hosttools/base/Output.h"

#include <cerrno>
#include <cstdlib>
#include <QList>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace FlatPkg;

namespace InPlace {

namespace {

// What is called sed can be a script that calls this program again: that has to find the next one then.
const char triedVariable[] = "PCT_SED_TRIED";

bool isThisProgram(const struct stat &candidate)
{
    struct stat self = {};
    return stat("/proc/self/exe", &self) == 0 && self.st_dev == candidate.st_dev &&
           self.st_ino == candidate.st_ino;
}

bool isAnotherProgram(const QByteArray &path)
{
    struct stat status = {};
    return stat(path.constData(), &status) == 0 && S_ISREG(status.st_mode) &&
           access(path.constData(), X_OK) == 0 && !isThisProgram(status);
}

pid_t start(const QVector<QByteArray> &command, int standardOutput)
{
    std::vector<char *> arguments;
    for (const QByteArray &argument : command)
        arguments.push_back(const_cast<char *>(argument.constData()));
    arguments.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, standardOutput, STDOUT_FILENO);
    pid_t child = -1;
    errno = posix_spawn(&child, arguments.front(), &actions, nullptr, arguments.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    if (errno != 0)
        throw systemError(command.first());
    return child;
}

void waitForSuccess(pid_t child)
{
    int status = 0;
    while (waitpid(child, &status, 0) < 0)
        if (errno != EINTR)
            throw systemError("cannot wait for the system's sed");
    if (!WIFEXITED(status) || WEXITSTATUS(status) != 0)
        throw Error("left as it was, because the system's sed failed");
}

} // namespace

QByteArray systemSed()
{
    QList<QByteArray> tried = qgetenv(triedVariable).split(':');
    for (const QByteArray &folder : qgetenv("PATH").split(':')) {
        const QByteArray candidate = folder + "/sed";
        if (folder.isEmpty() || !isAnotherProgram(candidate) || tried.contains(candidate))
            continue;
        tried.append(candidate);
        qputenv(triedVariable, tried.join(':'));
        return candidate;
    }
    throw Error("the system has no sed; install it or correct PATH");
}

void edit(const QByteArray &sed, const QByteArray &script, const QByteArray &path)
{
    const FileDescriptor folder = openFolder(folderOf(path));
    const QByteArray name = path.mid(path.lastIndexOf('/') + 1);
    const struct stat status = statusIn(folder.get(), name);
    if (!S_ISREG(status.st_mode))
        throw Error("is not a file; only files are edited in place");
    OutputFile output(path);
    waitForSuccess(start({sed, "--", script, path}, output.get()));
    if (geteuid() == 0 && fchown(output.get(), status.st_uid, status.st_gid) != 0)
        throw systemError("its owner cannot be kept");
    output.commit();
}

} // namespace InPlace
