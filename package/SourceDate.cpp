// SPDX-License-Identifier: Apache-2.0
#include "package/SourceDate.h"

#include "package/Failure.h"

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

bool SourceDate::read(std::optional<qint64> *seconds, QString *problem)
{
    const QString value = qEnvironmentVariable("SOURCE_DATE_EPOCH");
    if (!qEnvironmentVariableIsSet("SOURCE_DATE_EPOCH"))
        return true;
    bool fits = false;
    const qint64 given = value.toLongLong(&fits);
    if (!isWholeNumber(value) || !fits || given > QDateTime::currentSecsSinceEpoch())
        return fail(problem, QStringLiteral("\"%1\" is not a whole number of seconds from 1970 up to now; "
                                            "correct or unset the variable")
                                 .arg(value));
    *seconds = given;
    return true;
}

bool SourceDate::limitTimesBelow(const QString &folder, qint64 newest, QString *problem)
{
    using Entries = std::filesystem::recursive_directory_iterator;
    std::error_code cause;
    for (Entries entry(QFile::encodeName(folder).toStdString(), cause); !cause && entry != Entries();
         entry.increment(cause)) {
        const QByteArray path = QByteArray::fromStdString(entry->path().string());
        if (!limitTime(path, newest))
            return fail(problem, QFile::decodeName(path) + QStringLiteral(": ") +
                                     QString::fromLocal8Bit(std::strerror(errno)));
    }
    return !cause || fail(problem, folder + QStringLiteral(": ") + QString::fromStdString(cause.message()));
}
