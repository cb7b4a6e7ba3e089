// SPDX-License-Identifier: Apache-2.0
#include "cli/description/Describe.h"

#include "cli/description/Descriptions.h"
#include "core/SafeFile.h"

#include <cstdio>

namespace {

Result<QString> describedBy(const VerbTable &table, const QString &kind, const QString &form)
{
    if (kind == QLatin1String("bash"))
        return bashCompletion(table, form);
    if (kind == QLatin1String("zsh"))
        return zshCompletion(table, form);
    if (kind == QLatin1String("fish"))
        return fishCompletion(table, form);
    if (kind == QLatin1String("manual"))
        return manualPage(table, form);
    return Problem{{}, QStringLiteral("cannot be made as \"%1\"; say bash, zsh, fish or manual").arg(kind)};
}

Result<> writeDescription(const VerbTable &table, const QString &kind, const QString &form,
                          const QString &path)
{
    const Result<QByteArray> bytes = SafeFile::readContents(form);
    if (!bytes)
        return bytes.problem();
    const Result<QString> text = describedBy(table, kind, QString::fromUtf8(*bytes));
    if (!text)
        return Problem{form, text.problem().text};
    return SafeFile::replaceContents(path, text->toUtf8(), SafeFile::Lasting::No);
}

} // namespace

int describe(const VerbTable &table, const QStringList &arguments)
{
    const Result<> written =
        arguments.size() == 3
            ? writeDescription(table, arguments.at(0), arguments.at(1), arguments.at(2))
            : Problem{QStringLiteral("usage"), QStringLiteral("bash|zsh|fish|manual TEMPLATE FILE")};
    if (written)
        return 0;
    std::fputs(qPrintable(written.problem().line() + QLatin1Char('\n')), stderr);
    return 1;
}
