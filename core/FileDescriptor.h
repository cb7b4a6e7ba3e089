// SPDX-License-Identifier: Apache-2.0
#pragma once

class QByteArray;

/// An open file that is closed at the end of its scope. One thread.
class FileDescriptor
{
public:
    /// Takes what open() has returned, which may be its -1.
    explicit FileDescriptor(int descriptor);
    /// Leaves errno as it is, so that the failure before it can still be told.
    ~FileDescriptor();
    FileDescriptor(const FileDescriptor &) = delete;
    FileDescriptor &operator=(const FileDescriptor &) = delete;

    bool isValid() const { return m_descriptor >= 0; }
    int get() const { return m_descriptor; }

    /// Writes all of them where the file stands. A failure leaves its reason in errno.
    bool write(const QByteArray &bytes) const;
    /// Whether all that was written is on the disk now. A failure leaves its reason in errno.
    bool sync() const;

private:
    int m_descriptor;
};
