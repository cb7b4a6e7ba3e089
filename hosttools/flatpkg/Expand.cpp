// SPDX-License-Identifier: Apache-2.0
#include "hosttools/base/Error.h"
#include "hosttools/base/Interrupt.h"
#include "hosttools/base/Output.h"
#include "hosttools/flatpkg/Component.h"
#include "hosttools/flatpkg/Cpio.h"
#include "hosttools/flatpkg/FlatPackage.h"
#include "hosttools/flatpkg/Limits.h"
#include "hosttools/flatpkg/TargetTree.h"
#include "hosttools/flatpkg/VerifiedDigest.h"
#include "hosttools/flatpkg/XarReader.h"

#include <algorithm>
#include <QHash>
#include <unistd.h>

namespace FlatPkg {

namespace {

/// What a Scripts folder is when its archive does not say.
const Attributes plainFolder = {0755, 0, 0, QByteArrayLiteral("root"), QByteArrayLiteral("wheel"), {}};

using Filter = std::function<bool(const QByteArray &path)>;

/// Writes members of an archive into a folder.
class Extraction
{
public:
    /// With `scratch`, a folder for work in between, Scripts archives are unpacked as well.
    Extraction(const XarReader &archive, int folder, const QByteArray &scratch = QByteArray())
        : m_archive(archive)
        , m_tree(folder)
        , m_scratch(scratch)
    {
    }

    void extract(const Filter &wanted);

private:
    void extractEntry(const QByteArray &path, const TocEntry &entry);
    void extractFile(const QByteArray &path, const TocEntry &entry);
    void unpackScripts(const QByteArray &path, const TocEntry &entry);
    void makeHardLinks();
    void rememberDigests();

    const XarReader &m_archive;
    TargetTree m_tree;
    QByteArray m_scratch;
    QHash<QByteArray, QByteArray> m_pathById;
    QVector<QPair<QByteArray, QByteArray>> m_hardLinks; ///< path, id
    QVector<QPair<QByteArray, QByteArray>> m_verified;  ///< path, SHA-1
};

bool everything(const QByteArray & /*path*/)
{
    return true;
}

/// How much the wanted members will take on the disk, in bytes.
qint64 sizeOf(const XarReader &archive, const Filter &wanted)
{
    qint64 total = 0;
    forEachEntry(archive.toc(), [&](const QByteArray &path, const TocEntry &entry) {
        if (!entry.data || !wanted(path))
            return;
        if (__builtin_add_overflow(total, entry.data->size, &total))
            throw Error("its sizes are impossible");
    });
    return total;
}

void Extraction::extract(const Filter &wanted)
{
    // Nothing is taken from a package of which the whole could not be.
    requirePlausibleSize(sizeOf(m_archive, everything), m_archive.size());
    const qint64 total = sizeOf(m_archive, wanted);
    m_tree.requireSpaceFor(total);
    forEachEntry(m_archive.toc(), [&](const QByteArray &path, const TocEntry &entry) {
        Interrupt::check();
        if (wanted(path))
            within(path, [&] { extractEntry(path, entry); });
    });
    makeHardLinks();
    m_tree.finish();
    rememberDigests();
}

void Extraction::extractEntry(const QByteArray &path, const TocEntry &entry)
{
    switch (entry.type) {
    case EntryType::File:
        return !m_scratch.isEmpty() && isScriptsMember(path) ? unpackScripts(path, entry)
                                                             : extractFile(path, entry);
    case EntryType::Folder:
        return m_tree.createFolder(path, entry.attributes);
    case EntryType::Link:
        return m_tree.createLink(path, entry.target, entry.attributes);
    case EntryType::HardLink:
        m_hardLinks.append({path, entry.target});
    }
}

void Extraction::extractFile(const QByteArray &path, const TocEntry &entry)
{
    const FileDescriptor file = m_tree.createFile(path);
    const std::optional<QByteArray> sha1 = m_archive.extract(entry, file.get());
    if (sha1 && entry.data->size >= worthRemembering)
        m_verified.append({path, *sha1});
    applyAttributes(file.get(), entry.attributes);
    m_pathById.insert(entry.id, path);
}

void Extraction::unpackScripts(const QByteArray &path, const TocEntry &entry)
{
    const FileDescriptor packed = scratchFile(m_scratch);
    m_archive.extract(entry, packed.get());
    const FileDescriptor folder = m_tree.enterFolder(path);
    applyAttributes(folder.get(), plainFolder);
    unpackCpio(packed.get(), folder.get());
    rememberScriptsMember(folder.get(), entry.attributes, newestIn(folder.get()));
}

void Extraction::makeHardLinks()
{
    for (const auto &[path, id] : m_hardLinks) {
        if (!m_pathById.contains(id))
            throw Error(path + ": it is another name of a member that was not asked for");
        m_tree.createHardLink(path, m_pathById.value(id));
    }
}

void Extraction::rememberDigests()
{
    for (const auto &[path, sha1] : m_verified)
        rememberDigest(m_tree.enterFolder(folderOf(path)).get(), path.mid(path.lastIndexOf('/') + 1), sha1);
}

bool isAtOrBelow(const QByteArray &path, const QByteArray &member)
{
    return path == member || path.startsWith(QByteArray(member + '/'));
}

/// True for the members themselves, for what is in them and for the folders that they are in.
Filter selecting(const QVector<QByteArray> &members)
{
    return [members](const QByteArray &path) {
        return std::any_of(members.begin(), members.end(), [&](const QByteArray &member) {
            return isAtOrBelow(path, member) || isAtOrBelow(member, path);
        });
    };
}

/// Makes a folder that appears only when `fill` has succeeded; errors of the folder's own name it.
void makeFolder(const QByteArray &path, const std::function<void(const OutputFolder &)> &fill)
{
    std::optional<OutputFolder> output;
    within(path, [&] { output.emplace(path); });
    fill(*output);
    within(path, [&] { output->commit(); });
}

} // namespace

void expandPackage(const QByteArray &package, const QByteArray &folder)
{
    makeFolder(folder, [&](const OutputFolder &output) {
        within(package, [&] {
            const XarReader archive(package);
            Extraction(archive, output.get(), output.path()).extract(everything);
        });
    });
}

void extractMembers(const QByteArray &archivePath, const QByteArray &folder,
                    const QVector<QByteArray> &members)
{
    const FileDescriptor target = within(folder, [&] { return openFolder(folder); });
    within(archivePath, [&] {
        const XarReader archive(archivePath);
        for (const QByteArray &member : members)
            if (!archive.find(member))
                throw Error(member + ": no such member");
        Extraction(archive, target.get()).extract(members.isEmpty() ? everything : selecting(members));
    });
}

void unpackArchive(const QByteArray &archivePath, const QByteArray &folder)
{
    const auto unpackInto = [&](int target) {
        within(archivePath, [&] { unpackCpio(openInput(archivePath).get(), target); });
    };
    if (access(folder.constData(), F_OK) == 0)
        return unpackInto(within(folder, [&] { return openFolder(folder); }).get());
    makeFolder(folder, [&](const OutputFolder &output) { unpackInto(output.get()); });
}

} // namespace FlatPkg
