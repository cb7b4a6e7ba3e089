// SPDX-License-Identifier: Apache-2.0
#include "cli/InputFile.h"

#include "cli/Option.h"
#include "config/Product.h"
#include "config/XmlStream.h"
#include "core/PathRules.h"
#include "core/SafeFile.h"
#include "profile/SignedMessage.h"

#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

/// The text of errno for a file that is there but cannot be read.
QString outOfReach(const QString &give)
{
    const bool forbidden = errno == EACCES || errno == EPERM;
    const QString advice = forbidden ? QStringLiteral("check its permissions and those of its folders")
                                     : QStringLiteral("give ") + give;
    return QStringLiteral("cannot be read (%1); %2")
        .arg(QString::fromLocal8Bit(std::strerror(errno)), advice);
}

QString missing(const QString &path, const QString &give)
{
    const bool isLink = SafeFile::kindOf(path) == SafeFile::Kind::Link;
    return (isLink ? QStringLiteral("is a link to what does not exist; give ")
                   : QStringLiteral("does not exist; give ")) +
           give;
}

QByteArray beginningOf(const QString &path)
{
    constexpr qint64 enoughForTheRootElement = 64 * 1024;
    QFile file(path);
    const bool readable = QFileInfo(path).isFile() && file.open(QIODevice::ReadOnly);
    return readable ? file.read(enoughForTheRootElement) : QByteArray();
}

/// Old-style property lists begin with a brace, too, but have other marks behind a name.
bool beginsAsJson(const QByteArray &start)
{
    static const QRegularExpression listBehindBrace(
        QStringLiteral(
            "\\A(?:\\xef\\xbb\\xbf)?\\s*(?:\\[|\\{\\s*(?:\\}\\s*\\z|\"(?:[^\"\\\\]|\\\\.)*+\"\\s*[^\\s=;]))"),
        QRegularExpression::DotMatchesEverythingOption);
    constexpr int enoughForAName = 4096;
    return listBehindBrace.match(QString::fromLatin1(start.left(enoughForAName))).hasMatch();
}

bool isDocumentRoot(const QString &name)
{
    return Product::find(&Product::rootElement, name) != nullptr;
}

/// That no other option takes the file. A file of no known kind is left to its reader, who says best what is
/// wrong with it.
Result<> checkPlace(const QString &path, FileKind wanted, const QString &give)
{
    const FileKind kind = kindOfFile(path);
    const bool isSettings = kind == FileKind::Json && wanted == FileKind::Document;
    if (kind == wanted || kind == FileKind::Unknown || isSettings)
        return {};
    QString found = QStringLiteral("is an installer package, which \"pct build\" takes as --input");
    if (kind == FileKind::Profile)
        found = QStringLiteral("is a configuration profile, which \"pct profile\" takes as --from");
    if (kind == FileKind::Json)
        found = QStringLiteral("is JSON, which \"pct build\" and \"pct profile\" take as --config");
    if (kind == FileKind::Document)
        found = QStringLiteral("is a configuration document, which \"pct build\" and \"pct profile\" take as "
                               "--config");
    return Problem{path, found + QStringLiteral("; give ") + give};
}

} // namespace

FileKind kindOfFile(const QString &path)
{
    const QByteArray start = beginningOf(path);
    if (start.startsWith("xar!"))
        return FileKind::Package;
    if (beginsAsJson(start))
        return FileKind::Json;
    const bool isOldStyle = start.trimmed().startsWith('{');
    if (isOldStyle || SignedMessage::isOne(start) || start.startsWith("bplist"))
        return FileKind::Profile;
    const QString root = XmlStream::rootName(start.trimmed());
    // Property lists may lack their outermost element.
    if (root == QLatin1String("plist") || root == QLatin1String("dict"))
        return FileKind::Profile;
    return isDocumentRoot(root) ? FileKind::Document : FileKind::Unknown;
}

/// A pipe is not opened, because that would wait for its writer.
Result<> checkReadable(const QString &path, const QString &give)
{
    const QByteArray name = QFile::encodeName(path);
    struct stat status = {};
    if (::stat(name.constData(), &status) != 0)
        return Problem{path, errno == ENOENT || errno == ENOTDIR ? missing(path, give) : outOfReach(give)};
    if (S_ISDIR(status.st_mode))
        return Problem{path, QStringLiteral("is a folder; give ") + give};
    if (!S_ISREG(status.st_mode))
        return Problem{path, QStringLiteral("is not a regular file; give ") + give};
    const int descriptor = ::open(name.constData(), O_RDONLY | O_CLOEXEC);
    if (descriptor < 0)
        return Problem{path, outOfReach(give)};
    ::close(descriptor);
    return {};
}

Result<> checkFile(const QString &path, FileKind wanted, const QString &give)
{
    Result<> readable = checkReadable(path, give);
    return readable ? checkPlace(path, wanted, give) : readable;
}

Result<> checkWritable(const QString &path, bool force)
{
    if (!force && SafeFile::kindOf(path) == SafeFile::Kind::File)
        return Problem{path, QStringLiteral("exists already") + forceAdvice()};
    return PathRules::writable(path);
}

QString forceAdvice()
{
    return QStringLiteral("; use --%1 to replace it").arg(OptionName::force);
}
