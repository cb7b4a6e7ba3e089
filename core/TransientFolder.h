// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "core/HeldFolder.h"

/// A new folder with a random name that only this user can enter (mode 0700). It goes away with the object,
/// with all that is in it by then: names that are no text, folders that their owner cannot change, trees
/// of any depth. It is made and removed relative to the folder that it lies in, so a folder above that is
/// swapped for a link meanwhile leads to no other one. Any thread, one at a time.
class TransientFolder
{
public:
    /// Makes "PREFIX" and six characters in the parent.
    TransientFolder(const HeldFolder &parent, const QString &prefix);
    /// The same in the temporary folder.
    explicit TransientFolder(const QString &prefix);
    ~TransientFolder();
    TransientFolder(const TransientFolder &) = delete;
    TransientFolder &operator=(const TransientFolder &) = delete;

    /// What TMPDIR names, or the system's temporary folder when it names nothing.
    static QString temporaryPath();

    /// Removes all of these folders that there are, because the process is about to end while another thread
    /// may be at work. Nobody can make or remove one afterwards: who tries waits for the end.
    static void removeAllAtTheEnd();

    /// Whether it could be made, or why not; the problem is about the folder that it should lie in.
    const Result<> &made() const { return m_made; }

    QString path() const;
    /// Empty when the folder could not be made.
    QString filePath(const QString &name) const;
    /// For the calls that work relative to a folder; only when it could be made.
    int descriptor() const { return m_descriptor; }

private:
    Result<> make(const QString &prefix);
    Result<> open();
    void remove();
    Problem failure() const;

    HeldFolder m_parent;
    QByteArray m_name;
    Result<> m_made;
    int m_descriptor = -1;
    int m_spare = -1; ///< kept for the removal, which must not fail because files are open elsewhere
};
