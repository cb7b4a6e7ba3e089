// SPDX-License-Identifier: Apache-2.0
#include "package/SourceDate.h"

#include <QDateTime>
#include <QFile>
#include <QRegularExpression>

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>

namespace {

/// Digits alone: toLongLong() would take a sign and blanks as well.
bool isWholeNumber(const QString &text)
{
    static const QRegularExpression digits(QStringLiteral("\\A[0-9]+\\z"));
    return digits.match(text).hasMatch();
}

/// Errors leave their reason in errno.
bool limitTime(const QByteArray &path, qint64 newest)
{
    struct stat status = {};
    if (lstat(path.constData(), &status) != 0)
        return false;
    if (status.st_mtime <= newest)
        return true;
    const timespec times[] = {{0, UTIME_OMIT}, {static_cast<time_t>(newest), 0}};
    return utimensat(AT_FDCWD, path.constData(), times, AT_SYMLINK_NOFOLLOW) == 0;
}

} // namespace

Result<std::optional<qint64>> SourceDate::read()
{
    const QString value = qEnvironmentVariable("SOURCE_DATE_EPOCH");
    if (!qEnvironmentVariableIsSet("SOURCE_DATE_EPOCH"))
        return std::optional<qint64>();
    bool fits = false;
    const qint64 given = value.toLongLong(&fits);
    if (!isWholeNumber(value) || !fits || given > QDateTime::currentSecsSinceEpoch())
        return Problem{QStringLiteral("SOURCE_DATE_EPOCH"),
                       QStringLiteral("\"%1\" is not a whole number of seconds from 1970 up to now; "
                                      "correct or unset the variable")
                           .arg(value)};
    return std::optional<qint64>(given);
}

Result<> SourceDate::limitTimesBelow(const QString &folder, qint64 newest)
{
    using Entries = std::filesystem::recursive_directory_iterator;
    std::error_code cause;
    for (Entries entry(QFile::encodeName(folder).toStdString(), cause); !cause && entry != Entries();
         entry.increment(cause)) {
        const QByteArray path = QByteArray::fromStdString(entry->path().string());
        if (!limitTime(path, newest))
            return Problem{QFile::decodeName(path), QString::fromLocal8Bit(std::strerror(errno))};
    }
    if (cause)
        return Problem{folder, QString::fromStdString(cause.message())};
    return {};
}
