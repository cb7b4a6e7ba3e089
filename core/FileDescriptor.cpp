// SPDX-License-Identifier: Apache-2.0
#include "core/FileDescriptor.h"

#include <QByteArray>

#include <cerrno>
#include <unistd.h>

FileDescriptor::FileDescriptor(int descriptor)
    : m_descriptor(descriptor)
{
}

FileDescriptor::~FileDescriptor()
{
    const int before = errno;
    if (isValid())
        ::close(m_descriptor);
    errno = before;
}

bool FileDescriptor::write(const QByteArray &bytes) const
{
    qint64 done = 0;
    while (done < bytes.size()) {
        const ssize_t written = ::write(m_descriptor, bytes.constData() + done, size_t(bytes.size() - done));
        if (written < 0 && errno != EINTR)
            return false;
        done += written > 0 ? written : 0;
    }
    return true;
}

bool FileDescriptor::sync() const
{
    return ::fsync(m_descriptor) == 0;
}
