// SPDX-License-Identifier: Apache-2.0
#include "hosttools/flatpkg/TargetTree.h"

#include "hosttools/base/Error.h"
#include "hosttools/flatpkg/EntryPath.h"

#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

namespace FlatPkg {

namespace {

QByteArray joined(const QVector<QByteArray> &components)
{
    return components.toList().join('/');
}

void makeFolder(int parent, const QByteArray &name)
{
    if (mkdirat(parent, name.constData(), 0700) != 0 && errno != EEXIST)
        throw systemError("cannot be made");
}

/// Enters a folder, making it when it is missing; a link or file in its place is refused.
FileDescriptor enter(int parent, const QByteArray &name)
{
    makeFolder(parent, name);
    return openFolderIn(parent, name);
}

void requireMade(int result)
{
    if (result != 0)
        throw systemError("cannot be made");
}

} // namespace

FileDescriptor TargetTree::walk(const QVector<QByteArray> &components) const
{
    FileDescriptor folder = openFolderIn(m_root, QByteArrayLiteral("."));
    for (const QByteArray &component : components)
        folder = enter(folder.get(), component);
    return folder;
}

TargetTree::Place TargetTree::placeOf(QVector<QByteArray> components) const
{
    if (components.isEmpty())
        throw Error("the top folder's name cannot be used for anything else");
    const QByteArray name = components.takeLast();
    return {walk(components), name, int(components.size())};
}

void TargetTree::claim(const QVector<QByteArray> &components)
{
    const QByteArray path = joined(components);
    if (m_made.contains(path))
        throw Error("the name is there twice");
    m_made.insert(path);
}

TargetTree::Place TargetTree::newPlace(const QByteArray &path)
{
    const QVector<QByteArray> components = componentsOf(path);
    claim(components);
    return placeOf(components);
}

FileDescriptor TargetTree::createFile(const QByteArray &path)
{
    const Place place = newPlace(path);
    const int flags = O_RDWR | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC;
    FileDescriptor file(openat(place.folder.get(), place.name.constData(), flags, 0600));
    if (file.get() < 0)
        throw systemError("cannot be made");
    return file;
}

void TargetTree::createFolder(const QByteArray &path, const Attributes &attributes)
{
    const QVector<QByteArray> components = componentsOf(path);
    claim(components);
    walk(components);
    m_folders.append({components, attributes});
}

void TargetTree::createLink(const QByteArray &path, const QByteArray &target, const Attributes &attributes)
{
    const Place place = newPlace(path);
    requireTargetInside(target, place.depth);
    requireMade(symlinkat(target.constData(), place.folder.get(), place.name.constData()));
    applyLinkAttributes(place.folder.get(), place.name, attributes);
}

void TargetTree::createHardLink(const QByteArray &path, const QByteArray &existing)
{
    const QVector<QByteArray> components = componentsOf(existing);
    if (!m_made.contains(joined(components)))
        throw Error("a link to \"" + existing + "\", which is not there");
    const Place from = placeOf(components);
    // A link that stays inside where it is could lead outside from another folder.
    if (!S_ISREG(statusIn(from.folder.get(), from.name).st_mode))
        throw Error("another name of \"" + existing + "\", which is not a file");
    const Place to = newPlace(path);
    requireMade(linkat(from.folder.get(), from.name.constData(), to.folder.get(), to.name.constData(), 0));
}

FileDescriptor TargetTree::enterFolder(const QByteArray &path)
{
    return walk(componentsOf(path));
}

void TargetTree::requireSpaceFor(qint64 bytes) const
{
    if (bytes > freeSpace(m_root))
        throw Error("there is not enough room on the disk for its " + QByteArray::number(bytes) + " bytes");
}

void TargetTree::finish()
{
    // From the leaves up: making anything in a folder changes the folder's time.
    for (auto folder = m_folders.crbegin(); folder != m_folders.crend(); ++folder)
        applyAttributes(walk(folder->components).get(), folder->attributes);
}

} // namespace FlatPkg
