// SPDX-License-Identifier: Apache-2.0
#include "hosttools/base/Error.h"
#include "hosttools/base/Interrupt.h"
#include "hosttools/base/Output.h"
#include "hosttools/flatpkg/Component.h"
#include "hosttools/flatpkg/Cpio.h"
#include "hosttools/flatpkg/EntryPath.h"
#include "hosttools/flatpkg/FlatPackage.h"
#include "hosttools/flatpkg/Limits.h"
#include "hosttools/flatpkg/VerifiedDigest.h"
#include "hosttools/flatpkg/XarReader.h"
#include "hosttools/flatpkg/XarWriter.h"

#include <cstdlib>
#include <map>
#include <memory>
#include <QSet>
#include <unistd.h>

namespace FlatPkg {

namespace {

/// Lists an expanded package as the table of contents of the package to be made, and packs what has to
/// be packed.
class FolderScan
{
public:
    /// Archives in between are made in the folder `scratch`.
    explicit FolderScan(QByteArray scratch)
        : m_scratch(std::move(scratch))
    {
    }

    std::vector<TocEntry> entriesBelow(int root);

    /// Opens the bytes of a listed file: the file itself, or the archive of a Scripts folder.
    MemberBytes open(int root, const QByteArray &path) const;

private:
    std::vector<TocEntry> entriesIn(int folder, const QByteArray &prefix, int depth);
    TocEntry entryFor(int folder, const QByteArray &name, const QByteArray &path, int depth);
    TocEntry fileEntry(int file);
    TocEntry folderEntry(int folder, const QByteArray &path, int depth);
    TocEntry scriptsEntry(int folder, const QByteArray &path);
    QByteArray nextId();

    QByteArray m_scratch;
    std::map<QByteArray, FileDescriptor> m_packedScripts; ///< by path
    std::map<ino_t, QByteArray> m_idByInode;              ///< of files with several names
    QSet<QByteArray> m_linkedIds;
    int m_members = 0;
};

std::optional<MemberData> dataOfSize(qint64 size)
{
    if (size == 0)
        return std::nullopt;
    MemberData data;
    data.size = size;
    return data;
}

TocEntry linkEntry(int folder, const QByteArray &name, int depth)
{
    TocEntry entry;
    entry.type = EntryType::Link;
    entry.attributes = linkAttributesOf(folder, name);
    entry.target = linkTargetIn(folder, name);
    requireTargetInside(entry.target, depth);
    if (printable(entry.target) != entry.target)
        throw Error("a link to \"" + entry.target + "\" cannot be written into a package");
    return entry;
}

/// A file is the original of hard links only when it has another name in the same package.
void markOriginals(std::vector<TocEntry> &entries, const QSet<QByteArray> &linkedIds)
{
    for (TocEntry &entry : entries) {
        entry.isOriginal = entry.type == EntryType::File && linkedIds.contains(entry.id);
        markOriginals(entry.children, linkedIds);
    }
}

std::vector<TocEntry> FolderScan::entriesBelow(int root)
{
    std::vector<TocEntry> entries = entriesIn(root, QByteArray(), 0);
    markOriginals(entries, m_linkedIds);
    return entries;
}

std::vector<TocEntry> FolderScan::entriesIn(int folder, const QByteArray &prefix, int depth)
{
    if (depth >= deepestNesting)
        throw Error(prefix + ": nested too deeply");
    std::vector<TocEntry> entries;
    for (const QByteArray &name : namesIn(folder)) {
        Interrupt::check();
        const QByteArray path = prefix + name;
        entries.push_back(within(path, [&] { return entryFor(folder, name, path, depth); }));
    }
    return entries;
}

TocEntry FolderScan::entryFor(int folder, const QByteArray &name, const QByteArray &path, int depth)
{
    const QByteArray id = nextId();
    TocEntry entry;
    switch (statusIn(folder, name).st_mode & S_IFMT) {
    case S_IFREG:
        entry = fileEntry(openFileIn(folder, name).get());
        break;
    case S_IFDIR:
        entry = folderEntry(openFolderIn(folder, name).get(), path, depth);
        break;
    case S_IFLNK:
        entry = linkEntry(folder, name, depth);
        break;
    default:
        throw Error("neither a file nor a folder nor a link");
    }
    entry.name = name;
    entry.id = id;
    return entry;
}

QByteArray FolderScan::nextId()
{
    if (++m_members > mostMembers)
        throw Error("too many files for a package");
    return QByteArray::number(m_members);
}

TocEntry FolderScan::fileEntry(int file)
{
    const struct stat status = statusOf(file);
    TocEntry entry;
    entry.attributes = attributesOf(file);
    if (status.st_nlink > 1) {
        const auto [first, isFirst] = m_idByInode.emplace(status.st_ino, QByteArray::number(m_members));
        if (!isFirst) {
            m_linkedIds.insert(first->second);
            entry.type = EntryType::HardLink;
            entry.target = first->second;
            return entry;
        }
    }
    entry.data = dataOfSize(status.st_size);
    return entry;
}

TocEntry FolderScan::folderEntry(int folder, const QByteArray &path, int depth)
{
    if (isScriptsMember(path))
        return scriptsEntry(folder, path);
    TocEntry entry;
    entry.type = EntryType::Folder;
    entry.attributes = attributesOf(folder);
    entry.children = entriesIn(folder, path + '/', depth + 1);
    return entry;
}

TocEntry FolderScan::scriptsEntry(int folder, const QByteArray &path)
{
    FileDescriptor packed = scratchFile(m_scratch);
    packCpio(folder, packed.get());
    TocEntry entry;
    entry.attributes = scriptsMemberOf(folder, newestIn(folder));
    entry.data = dataOfSize(statusOf(packed.get()).st_size);
    m_packedScripts.emplace(path, std::move(packed));
    return entry;
}

MemberBytes FolderScan::open(int root, const QByteArray &path) const
{
    const auto scripts = m_packedScripts.find(path);
    if (scripts != m_packedScripts.end())
        return {FileDescriptor(dup(scripts->second.get())), std::nullopt};
    QVector<QByteArray> components = componentsOf(path);
    const QByteArray name = components.takeLast();
    FileDescriptor folder = openFolderIn(root, QByteArrayLiteral("."));
    for (const QByteArray &component : components)
        folder = openFolderIn(folder.get(), component);
    MemberBytes bytes{openFileIn(folder.get(), name), std::nullopt};
    bytes.sha1 = verifiedDigestOf(bytes.file.get(), folder.get(), name);
    return bytes;
}

QByteArray canonical(const QByteArray &path)
{
    const std::unique_ptr<char, void (*)(void *)> resolved(realpath(path.constData(), nullptr), std::free);
    if (!resolved)
        throw systemError("cannot be found");
    return resolved.get();
}

/// A package inside the folder would become a member of itself.
void requireOutside(const QByteArray &folder, const QByteArray &package)
{
    const QByteArray target = canonical(folderOf(package)) + '/';
    if (target.startsWith(QByteArray(canonical(folder) + '/')))
        throw Error("would lie in the folder that it is made of; choose another place");
}

/// Reads a finished package as everybody else will, its scripts with all their bytes.
void requireReadable(int package, const Toc &written)
{
    const XarReader reader(FileDescriptor(dup(package)));
    if (writeToc(reader.toc()) != writeToc(written))
        throw Error("does not hold what has been written to it; check the disk");
    forEachEntry(reader.toc(), [&](const QByteArray &path, const TocEntry &entry) {
        if (entry.data && isScriptsMember(path))
            reader.contents(entry, entry.data->size);
    });
}

} // namespace

void flattenFolder(const QByteArray &folder, const QByteArray &package)
{
    const FileDescriptor root = within(folder, [&] { return openFolder(folder); });
    std::optional<OutputFile> output;
    within(package, [&] {
        requireOutside(folder, package);
        output.emplace(package);
    });
    const Toc written = within(folder, [&] {
        FolderScan scan(folderOf(package));
        return writeXar(
            scan.entriesBelow(root.get()),
            [&](const QByteArray &path) { return scan.open(root.get(), path); }, output->get());
    });
    within(package, [&] {
        requireReadable(output->get(), written);
        output->commit();
    });
}

} // namespace FlatPkg
