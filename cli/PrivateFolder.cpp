// SPDX-License-Identifier: Apache-2.0
#include "cli/PrivateFolder.h"

#include <QDir>
#include <QFile>

namespace {

/// Page by page, because a page that fits partly is no error yet.
bool hasRoomFor(QFile &sample)
{
    constexpr int leastPages = 16;
    const QByteArray page(4096, '\0');
    bool fits = sample.open(QIODevice::WriteOnly | QIODevice::Unbuffered);
    for (int i = 0; fits && i < leastPages; ++i)
        fits = sample.write(page) == page.size();
    return fits;
}

} // namespace

Result<> PrivateFolder::check() const
{
    if (!m_folder.made())
        return Problem{TransientFolder::temporaryPath(),
                       QStringLiteral("no private folder can be made there (%1); "
                                      "set TMPDIR to a folder that can be written")
                           .arg(m_folder.made().problem().text)};
    QFile sample(m_folder.filePath(QStringLiteral("sample")));
    const bool fits = hasRoomFor(sample);
    const QString cause = sample.errorString();
    sample.remove();
    if (fits)
        return {};
    return Problem{
        TransientFolder::temporaryPath(),
        QStringLiteral("nothing can be written there (%1); make room, or set TMPDIR to another folder")
            .arg(cause)};
}

QString PrivateFolder::makeSubfolder(const QString &name) const
{
    return QDir(m_folder.path()).mkdir(name) ? m_folder.filePath(name) : QString();
}
