// SPDX-License-Identifier: Apache-2.0
#include "package/contents/ArchiveHead.h"

#include <QtEndian>

namespace {

constexpr qint64 shortestHead = 28;
constexpr qint64 largestToc = 64LL * 1024 * 1024;

Problem damaged(const QString &path, const QString &what)
{
    return {path, what + QStringLiteral("; the package is damaged, get it again from where it came")};
}

} // namespace

Result<ArchiveHead> ArchiveHead::read(QFile &file)
{
    const QByteArray bytes = file.read(shortestHead);
    const Problem foreign{file.fileName(),
                          QStringLiteral("is not an installer package; give a flat package")};
    if (bytes.size() < shortestHead || !bytes.startsWith("xar!"))
        return foreign;
    ArchiveHead head;
    head.toc = qFromBigEndian<quint16>(bytes.constData() + 4);
    const auto packed = qFromBigEndian<quint64>(bytes.constData() + 8);
    const auto plain = qFromBigEndian<quint64>(bytes.constData() + 16);
    if (head.toc < shortestHead)
        return foreign;
    if (packed > largestToc || plain > largestToc)
        return damaged(file.fileName(), QStringLiteral("its table of contents is too large"));
    head.tocLength = static_cast<qint64>(packed);
    head.plainLength = static_cast<qint64>(plain);
    if (head.heap() > file.size())
        return damaged(file.fileName(), QStringLiteral("it ends too early"));
    return head;
}
