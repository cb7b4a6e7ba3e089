// SPDX-License-Identifier: Apache-2.0
#include "package/ReplacedDocument.h"

#include "core/Logging.h"
#include "core/SafeFile.h"

#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <cstdio>
#include <unistd.h>

ReplacedDocument::ReplacedDocument(const QString &path)
    : m_path(path)
{
    if (SafeFile::kindOf(path) == SafeFile::Kind::File)
        m_problem = layAside();
    if (!m_problem.isEmpty())
        m_folder.reset();
}

ReplacedDocument::~ReplacedDocument()
{
    if (!m_folder || putBack())
        return;
    m_folder->setAutoRemove(false);
    qCWarning(logPackage).noquote()
        << QStringLiteral("%1 cannot be put back; it is %2").arg(m_path, pathAside());
}

QString ReplacedDocument::problem() const
{
    return m_problem;
}

void ReplacedDocument::forget()
{
    m_folder.reset();
}

/// A second name for the file itself where the file system has such names, and a copy elsewhere.
QString ReplacedDocument::layAside()
{
    m_folder = std::make_unique<QTemporaryDir>(QFileInfo(m_path).absolutePath() +
                                               QStringLiteral("/.pct-document-XXXXXX"));
    if (!m_folder->isValid())
        return QStringLiteral("%1: cannot write beside it: %2").arg(m_path, m_folder->errorString());
    if (::link(QFile::encodeName(m_path).constData(), QFile::encodeName(pathAside()).constData()) == 0)
        return {};
    const Result<> copied = SafeFile::copyNew(m_path, pathAside());
    return copied ? QString()
                  : QStringLiteral("%1: cannot be laid aside: %2").arg(m_path, copied.problem().text);
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
