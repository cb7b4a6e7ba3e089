// SPDX-License-Identifier: Apache-2.0
#include "tests/cli/BuildCommand.h"

#include "tests/support/Archive.h"
#include "tests/support/TestFiles.h"

#include <QDir>

QStringList BuildCommand::arguments() const
{
    QStringList words{QStringLiteral("build"),
                      QStringLiteral("--product"),
                      editor ? QStringLiteral("editor") : QStringLiteral("reader"),
                      QStringLiteral("--input"),
                      input,
                      QStringLiteral("--output"),
                      output};
    return words + more;
}

ExpandedPackage::ExpandedPackage(const QString &package)
{
    const QString top = m_folder.filePath(QStringLiteral("package"));
    Archive::unpack(package, top);
    m_component = top + QLatin1Char('/') + QDir(top).entryList({QStringLiteral("*.pkg")}).value(0);
    Archive::unpack(m_component + QStringLiteral("/Scripts"), m_folder.filePath(QStringLiteral("scripts")));
}

QByteArray ExpandedPackage::member(const QString &name) const
{
    return TestFiles::read(m_component + QLatin1Char('/') + name);
}

QString ExpandedPackage::scriptPath(const QString &name) const
{
    return m_folder.filePath(QStringLiteral("scripts/") + name);
}

QByteArray ExpandedPackage::script(const QString &name) const
{
    const QString path = scriptPath(name);
    return QFile::exists(path) ? TestFiles::read(path) : QByteArray();
}

QByteArray ExpandedPackage::setting(const QString &xpath) const
{
    return TestFiles::outputOf(QStringLiteral("xmllint"),
                               {QStringLiteral("--xpath"), QStringLiteral("string(%1)").arg(xpath),
                                scriptPath(QStringLiteral("ProfStore.xml"))})
        .trimmed();
}

QString preferencePath(const QString &text, const QString &attribute)
{
    return QStringLiteral("/*/Profstore/Preferences/Preference[@Text='%1']/@%2").arg(text, attribute);
}
