// SPDX-License-Identifier: Apache-2.0
#include "hosttools/flatpkg/VerifiedDigest.h"

#include "hosttools/base/Files.h"
#include "hosttools/flatpkg/Digest.h"
#include "hosttools/flatpkg/ExtendedAttribute.h"

#include <ctime>
#include <QList>

namespace FlatPkg {

namespace {

QByteArray recordName(const QByteArray &name)
{
    return "user.pct.sha1." + digestOf(DigestAlgorithm::Sha1, name).toHex();
}

QByteArray text(const timespec &time)
{
    return QByteArray::number(static_cast<qint64>(time.tv_sec)) + '.' +
           QByteArray::number(static_cast<qint64>(time.tv_nsec));
}

QByteArray fingerprintFrom(const struct stat &status)
{
    return QByteArray::number(static_cast<quint64>(status.st_dev)) + ' ' +
           QByteArray::number(static_cast<quint64>(status.st_ino)) + ' ' +
           QByteArray::number(static_cast<qint64>(status.st_size)) + ' ' + text(status.st_mtim) + ' ' +
           text(status.st_ctim);
}

bool isBefore(const timespec &a, const timespec &b)
{
    return a.tv_sec < b.tv_sec || (a.tv_sec == b.tv_sec && a.tv_nsec < b.tv_nsec);
}

/// The clock that files get their times from goes in steps: a change within the same step would not show.
/// False when the file's time is not of this clock, as on a server's disk.
bool waitForTimeAfter(const timespec &changed)
{
    constexpr timespec aMillisecond = {0, 1000 * 1000};
    for (int tries = 0; tries < 30; ++tries) {
        timespec now = {};
        clock_gettime(CLOCK_REALTIME_COARSE, &now);
        if (isBefore(changed, now))
            return true;
        nanosleep(&aMillisecond, nullptr);
    }
    return false;
}

} // namespace

void rememberDigest(int folder, const QByteArray &name, const QByteArray &sha1)
{
    const struct stat status = statusIn(folder, name);
    if (waitForTimeAfter(status.st_ctim))
        setExtendedAttribute(folder, recordName(name), fingerprintFrom(status) + '\n' + sha1.toHex());
}

std::optional<QByteArray> verifiedDigestOf(int file, int folder, const QByteArray &name)
{
    const std::optional<QByteArray> record = extendedAttribute(folder, recordName(name));
    const QList<QByteArray> lines = record ? record->split('\n') : QList<QByteArray>();
    if (lines.size() != 2 || lines.first() != fingerprintOf(file) ||
        lines.last().size() != 2 * digestLength(DigestAlgorithm::Sha1))
        return std::nullopt;
    return QByteArray::fromHex(lines.last());
}

QByteArray fingerprintOf(int file)
{
    return fingerprintFrom(statusOf(file));
}

} // namespace FlatPkg
