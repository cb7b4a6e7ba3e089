// SPDX-License-Identifier: Apache-2.0
#include "cli/description/Describe.h"

#include "cli/description/Descriptions.h"

#include <QFile>

#include <cstdio>

namespace {

int fail(const QString &subject, const QString &problem)
{
    std::fputs(qPrintable(QStringLiteral("%1: %2\n").arg(subject, problem)), stderr);
    return 1;
}

QString describedBy(const VerbTable &table, const QString &kind, const QString &form, QString &problem)
{
    if (kind == QLatin1String("bash"))
        return bashCompletion(table, form);
    if (kind == QLatin1String("zsh"))
        return zshCompletion(table, form);
    if (kind == QLatin1String("fish"))
        return fishCompletion(table, form);
    if (kind == QLatin1String("manual"))
        return manualPage(table, form, problem);
    problem = QStringLiteral("cannot be made as \"%1\"; say bash, zsh, fish or manual").arg(kind);
    return {};
}

} // namespace

int describe(const VerbTable &table, const QStringList &arguments)
{
    if (arguments.size() != 3)
        return fail(QStringLiteral("usage"), QStringLiteral("bash|zsh|fish|manual TEMPLATE FILE"));
    QFile form(arguments.at(1));
    if (!form.open(QIODevice::ReadOnly))
        return fail(form.fileName(), form.errorString());
    QString problem;
    const QString text = describedBy(table, arguments.at(0), QString::fromUtf8(form.readAll()), problem);
    if (!problem.isEmpty())
        return fail(form.fileName(), problem);
    form.close();
    QFile file(arguments.at(2));
    const QByteArray bytes = text.toUtf8();
    const bool written = file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.flush();
    return written ? 0 : fail(file.fileName(), file.errorString());
}
