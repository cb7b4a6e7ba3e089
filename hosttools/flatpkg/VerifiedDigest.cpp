// SPDX-License-Identifier: Apache-2.0
#include "hosttools/flatpkg/VerifiedDigest.h"

#include "hosttools/flatpkg/ExtendedAttribute.h"
#include "hosttools/flatpkg/Files.h"

namespace FlatPkg {

namespace {

const QByteArray digestRecord = QByteArrayLiteral("user.pct.sha1");

QByteArray fingerprintOf(int fd)
{
    const struct stat status = statusOf(fd);
    return QByteArray::number(static_cast<qint64>(status.st_size)) + ' ' +
           QByteArray::number(static_cast<qint64>(status.st_mtim.tv_sec)) + '.' +
           QByteArray::number(static_cast<qint64>(status.st_mtim.tv_nsec)) + ' ' +
           QByteArray::number(static_cast<quint64>(status.st_ino)) + ' ';
}

} // namespace

void rememberDigest(int fd, const QByteArray &sha1)
{
    setExtendedAttribute(fd, digestRecord, fingerprintOf(fd) + sha1.toHex());
}

std::optional<QByteArray> verifiedDigestOf(int fd)
{
    const std::optional<QByteArray> record = extendedAttribute(fd, digestRecord);
    const QByteArray fingerprint = fingerprintOf(fd);
    if (!record || !record->startsWith(fingerprint) || record->size() != fingerprint.size() + 40)
        return std::nullopt;
    return QByteArray::fromHex(record->mid(fingerprint.size()));
}

} // namespace FlatPkg
