// SPDX-License-Identifier: Apache-2.0
#include "package/ReplacedDocument.h"

#include "core/Logging.h"
#include "core/SafeFile.h"

#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <cstdio>
#include <unistd.h>

ReplacedDocument::ReplacedDocument() = default;

ReplacedDocument::~ReplacedDocument()
{
    if (!m_folder || putBack())
        return;
    m_folder->setAutoRemove(false);
    qCWarning(logPackage).noquote()
        << QStringLiteral("%1 cannot be put back; it is %2").arg(m_path, pathAside());
}

Result<> ReplacedDocument::layAside(const QString &path)
{
    if (SafeFile::kindOf(path) != SafeFile::Kind::File)
        return {};
    m_path = path;
    m_folder = std::make_unique<QTemporaryDir>(QFileInfo(path).absolutePath() +
                                               QStringLiteral("/.pct-document-XXXXXX"));
    Result<> kept = keep();
    if (!kept)
        m_folder.reset();
    return kept;
}

void ReplacedDocument::forget()
{
    m_folder.reset();
}

/// A second name for the file itself where the file system has such names, and a copy elsewhere.
Result<> ReplacedDocument::keep() const
{
    if (!m_folder->isValid())
        return Problem{m_path, QStringLiteral("cannot write beside it: ") + m_folder->errorString()};
    if (::link(QFile::encodeName(m_path).constData(), QFile::encodeName(pathAside()).constData()) == 0)
        return {};
    const Result<> copied = SafeFile::copyNew(m_path, pathAside());
    return copied ? copied
                  : Problem{m_path, QStringLiteral("cannot be laid aside: ") + copied.problem().text};
}

/// As the very file that it was, with its permissions and times.
bool ReplacedDocument::putBack() const
{
    const SafeFile::Kind inTheWay = SafeFile::kindOf(m_path);
    return (inTheWay == SafeFile::Kind::File || inTheWay == SafeFile::Kind::Missing) &&
           std::rename(QFile::encodeName(pathAside()).constData(), QFile::encodeName(m_path).constData()) ==
               0;
}

QString ReplacedDocument::pathAside() const
{
    return m_folder->filePath(QFileInfo(m_path).fileName());
}
