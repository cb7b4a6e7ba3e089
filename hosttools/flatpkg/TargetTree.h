// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "hosttools/base/Files.h"
#include "hosttools/flatpkg/Attributes.h"

#include <QSet>
#include <QVector>

namespace FlatPkg {

/// The one gate through which archive members get onto the disk. Every path is checked, walked folder by
/// folder without following a link, and made new: nothing outside the root can be reached, nothing is
/// overwritten, and a name that comes twice is refused. All functions throw Error.
class TargetTree
{
public:
    /// `root` is an open folder; it stays the caller's and must outlive the tree.
    explicit TargetTree(int root)
        : m_root(root)
    {
    }

    /// Makes an empty file, open for reading and writing.
    FileDescriptor createFile(const QByteArray &path);
    /// Makes a folder, or takes one that a deeper path has already needed; its attributes are put on by
    /// finish(). "." stands for the root.
    void createFolder(const QByteArray &path, const Attributes &attributes);
    void createLink(const QByteArray &path, const QByteArray &target, const Attributes &attributes);
    /// Makes another name of a regular file that was made before.
    void createHardLink(const QByteArray &path, const QByteArray &existing);
    /// Opens a folder, which is made when it is missing; its attributes are the caller's affair.
    FileDescriptor enterFolder(const QByteArray &path);
    /// Refuses a file for which the file system has no room.
    void requireSpaceFor(qint64 bytes) const;

    /// Puts the attributes on the folders, once nothing more is made in them.
    void finish();

private:
    struct Place
    {
        FileDescriptor folder;
        QByteArray name;
        int depth;
    };
    struct PendingFolder
    {
        QVector<QByteArray> components;
        Attributes attributes;
    };

    void claim(const QVector<QByteArray> &components);
    Place newPlace(const QByteArray &path);
    Place placeOf(QVector<QByteArray> components) const;
    FileDescriptor walk(const QVector<QByteArray> &components) const;

    int m_root;
    QSet<QByteArray> m_made;
    QVector<PendingFolder> m_folders;
};

} // namespace FlatPkg
