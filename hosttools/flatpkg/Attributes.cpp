// SPDX-License-Identifier: Apache-2.0
#include "hosttools/flatpkg/Attributes.h"

#include "hosttools/base/Error.h"
#include "hosttools/base/Files.h"
#include "hosttools/flatpkg/Digest.h"
#include "hosttools/flatpkg/ExtendedAttribute.h"

#include <fcntl.h>
#include <grp.h>
#include <pwd.h>
#include <QList>
#include <unistd.h>

namespace FlatPkg {

namespace {

const QByteArray entryRecord = QByteArrayLiteral("user.pct.entry");
const QByteArray memberRecord = QByteArrayLiteral("user.pct.member");

/// What lies on the disk in place of an archive's attributes.
struct DiskState
{
    mode_t mode;
    quint32 uid;
    quint32 gid;
};

struct Record
{
    Attributes attributes;
    DiskState disk;
    QByteArray witness; ///< what must be as it was for the record to hold
};

bool runsAsRoot()
{
    return geteuid() == 0;
}

mode_t workableMode(mode_t mode, bool folder)
{
    return (mode & 0777U) | (folder ? 0700U : 0400U);
}

QByteArray toBytes(const Record &record)
{
    const Attributes &kept = record.attributes;
    return QByteArray::number(kept.mode, 8) + ' ' + QByteArray::number(kept.uid) + ' ' +
           QByteArray::number(kept.gid) + ' ' + QByteArray::number(kept.modified.value_or(0)) + ' ' +
           QByteArray::number(record.disk.mode, 8) + ' ' + QByteArray::number(record.disk.uid) + ' ' +
           QByteArray::number(record.disk.gid) + '\n' + kept.user + '\n' + kept.group + '\n' + record.witness;
}

std::optional<Record> recordFrom(const std::optional<QByteArray> &bytes)
{
    if (!bytes)
        return std::nullopt;
    const QList<QByteArray> lines = bytes->split('\n');
    const QList<QByteArray> numbers = lines.first().split(' ');
    if (lines.size() < 4 || numbers.size() != 7)
        return std::nullopt;
    Record record;
    record.attributes = {
        numbers[0].toUInt(nullptr, 8), numbers[1].toUInt(), numbers[2].toUInt(), lines[1], lines[2],
        numbers[3].toLongLong()};
    record.disk = {numbers[4].toUInt(nullptr, 8), numbers[5].toUInt(), numbers[6].toUInt()};
    record.witness = lines.mid(3).join('\n');
    return record;
}

DiskState diskStateOf(const struct stat &status)
{
    return {status.st_mode & 07777U, status.st_uid, status.st_gid};
}

QByteArray userName(uid_t uid)
{
    if (uid == 0)
        return QByteArrayLiteral("root");
    const passwd *known = getpwuid(uid);
    return known ? QByteArray(known->pw_name) : QByteArray();
}

QByteArray groupName(gid_t gid)
{
    // The group of number 0 has another name on the system that packages are made for.
    if (gid == 0)
        return QByteArrayLiteral("wheel");
    const group *known = getgrgid(gid);
    return known ? QByteArray(known->gr_name) : QByteArray();
}

Attributes onDisk(const struct stat &status)
{
    const uid_t uid = runsAsRoot() ? status.st_uid : 0;
    const gid_t gid = runsAsRoot() ? status.st_gid : 0;
    return {status.st_mode & 07777U, uid, gid, userName(uid), groupName(gid), status.st_mtim.tv_sec};
}

/// The disk's attributes, but the remembered one wherever the disk is as it was left.
Attributes merged(const struct stat &status, const Record &record)
{
    Attributes attributes = onDisk(status);
    const DiskState now = diskStateOf(status);
    if (now.mode == record.disk.mode)
        attributes.mode = record.attributes.mode;
    if (now.uid == record.disk.uid) {
        attributes.uid = record.attributes.uid;
        attributes.user = record.attributes.user;
    }
    if (now.gid == record.disk.gid) {
        attributes.gid = record.attributes.gid;
        attributes.group = record.attributes.group;
    }
    return attributes;
}

/// Digests keep the attribute's name short whatever the link is called.
QByteArray linkRecordName(const QByteArray &name)
{
    return "user.pct.link." + digestOf(DigestAlgorithm::Sha1, name).toHex();
}

void timesFor(const Attributes &attributes, timespec (&times)[2])
{
    times[0] = {0, UTIME_OMIT};
    times[1] = attributes.modified ? timespec{*attributes.modified, 0} : timespec{0, UTIME_OMIT};
}

void applyTime(int fd, const Attributes &attributes)
{
    timespec times[2];
    timesFor(attributes, times);
    if (futimens(fd, times) != 0)
        throw systemError("its time cannot be set");
}

} // namespace

void applyAttributes(int fd, const Attributes &attributes)
{
    const bool folder = S_ISDIR(statusOf(fd).st_mode);
    if (runsAsRoot()) // a container may lack the number: then the record below has it
        static_cast<void>(!fchown(fd, attributes.uid, attributes.gid));
    DiskState disk = diskStateOf(statusOf(fd));
    disk.mode = workableMode(attributes.mode, folder);
    setExtendedAttribute(fd, entryRecord, toBytes({attributes, disk, {}}));
    applyTime(fd, attributes);
    if (fchmod(fd, disk.mode) != 0)
        throw systemError("its mode cannot be set");
}

void applyLinkAttributes(int folder, const QByteArray &name, const Attributes &attributes)
{
    if (runsAsRoot())
        static_cast<void>(
            !fchownat(folder, name.constData(), attributes.uid, attributes.gid, AT_SYMLINK_NOFOLLOW));
    timespec times[2];
    timesFor(attributes, times);
    if (utimensat(folder, name.constData(), times, AT_SYMLINK_NOFOLLOW) != 0)
        throw systemError("its time cannot be set");
    const Record record{attributes, diskStateOf(statusIn(folder, name)), linkTargetIn(folder, name)};
    setExtendedAttribute(folder, linkRecordName(name), toBytes(record));
}

Attributes attributesOf(int fd)
{
    const struct stat status = statusOf(fd);
    const auto record = recordFrom(extendedAttribute(fd, entryRecord));
    return record ? merged(status, *record) : onDisk(status);
}

Attributes linkAttributesOf(int folder, const QByteArray &name)
{
    const struct stat status = statusIn(folder, name);
    const auto record = recordFrom(extendedAttribute(folder, linkRecordName(name)));
    const bool sameLink = record && record->witness == linkTargetIn(folder, name);
    return sameLink ? merged(status, *record) : onDisk(status);
}

void rememberScriptsMember(int folder, const Attributes &attributes, qint64 newest)
{
    Attributes kept = attributes;
    kept.modified = attributes.modified.value_or(newest);
    setExtendedAttribute(folder, memberRecord, toBytes({kept, {}, QByteArray::number(newest)}));
}

Attributes scriptsMemberOf(int folder, qint64 newest)
{
    const auto record = recordFrom(extendedAttribute(folder, memberRecord));
    Attributes attributes = record ? record->attributes : Attributes();
    if (!record || record->witness != QByteArray::number(newest))
        attributes.modified = newest;
    return attributes;
}

} // namespace FlatPkg
