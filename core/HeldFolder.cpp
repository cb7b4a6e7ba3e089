// SPDX-License-Identifier: Apache-2.0
#include "core/HeldFolder.h"

#include <QDir>
#include <QFile>

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

/// Not cleaned: "link/../folder" must mean to us what it means to the system.
QString absolutePath(const QString &path)
{
    return QDir::isAbsolutePath(path) ? path : QDir::currentPath() + QLatin1Char('/') + path;
}

std::shared_ptr<const int> closedByTheLast(int descriptor)
{
    const auto closeIt = [](const int *held) {
        ::close(*held);
        delete held;
    };
    return {new int(descriptor), closeIt};
}

} // namespace

HeldFolder::HeldFolder(const QString &path)
    : m_path(absolutePath(path))
{
    const int descriptor = ::open(QFile::encodeName(m_path).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0)
        m_opened = Problem{m_path, QString::fromLocal8Bit(std::strerror(errno))};
    else
        m_descriptor = closedByTheLast(descriptor);
}

bool HeldFolder::isStillThere() const
{
    struct stat held = {};
    struct stat found = {};
    return ::fstat(descriptor(), &held) == 0 && ::stat(QFile::encodeName(m_path).constData(), &found) == 0 &&
           held.st_dev == found.st_dev && held.st_ino == found.st_ino;
}
