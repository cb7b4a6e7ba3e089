// SPDX-License-Identifier: Apache-2.0
#include "package/SharedExpansion.h"

#include "config/Product.h"
#include "core/Command.h"
#include "package/FlatPackage.h"
#include "package/ScriptsFolder.h"

#include <QDir>
#include <QFileInfo>

namespace {

/// With times and modes, and into a folder that there is, so that the one above it keeps its time.
Result<> copyContents(const QString &from, const QString &to)
{
    const CommandResult copied =
        Command::run(QStringLiteral("cp"), {QStringLiteral("-pR"), from + QStringLiteral("/."), to});
    return copied.succeeded() ? Result<>() : Problem{to, copied.problem()};
}

Result<> emptyFolder(const QString &folder)
{
    const auto entries =
        QDir(folder).entryInfoList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    for (const QFileInfo &entry : entries) {
        const QString path = entry.filePath();
        const bool isRemoved =
            entry.isDir() && !entry.isSymLink() ? QDir(path).removeRecursively() : QFile::remove(path);
        if (!isRemoved)
            return Problem{path, QStringLiteral("cannot be removed")};
    }
    return {};
}

} // namespace

SharedExpansion::SharedExpansion(const QString &folder)
    : m_folder(folder)
{
}

Result<QString> SharedExpansion::fresh(const QString &package, const Product &product)
{
    const Result<> ready = m_expanded.isEmpty() ? expand(package, product) : restore(product);
    if (!ready)
        return ready.problem();
    return m_expanded;
}

Result<> SharedExpansion::expand(const QString &package, const Product &product)
{
    const QString folder = m_folder + QStringLiteral("/package");
    if (Result<> expanded = FlatPackage::expand(package, folder); !expanded)
        return expanded;
    m_expanded = folder;
    QDir(m_folder).mkdir(QStringLiteral("scripts"));
    if (Result<> real = isRealFolder(scripts(product)); !real)
        return real;
    return copyContents(scripts(product), pristine());
}

Result<> SharedExpansion::restore(const Product &product) const
{
    const QString folder = scripts(product);
    if (Result<> real = isRealFolder(folder); !real)
        return real;
    if (Result<> emptied = emptyFolder(folder); !emptied)
        return emptied;
    return copyContents(pristine(), folder);
}

QString SharedExpansion::scripts(const Product &product) const
{
    return scriptsFolder(m_expanded + QLatin1Char('/') + product.componentPackage, product).chopped(1);
}
