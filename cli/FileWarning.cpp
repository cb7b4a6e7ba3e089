// SPDX-License-Identifier: Apache-2.0
#include "cli/FileWarning.h"

#include "config/Product.h"
#include "core/PrintableText.h"

QList<FileWarning> unreadWarnings(const QString &file, const QVector<UnreadSetting> &settings)
{
    constexpr int told = 10;
    const QString code = QStringLiteral("setting-not-read");
    QList<FileWarning> warnings;
    for (const UnreadSetting &setting : settings.mid(0, told))
        warnings.append({file,
                         {code, QStringLiteral("nothing reads the %1; correct its name or remove it")
                                    .arg(printableText(setting.text))}});
    if (settings.size() > told)
        warnings.append({file, {code, QStringLiteral("there is more in it that nothing reads")}});
    return warnings;
}

FileWarning ribbonWarning(const QString &document, const QString &name)
{
    return {
        document,
        {QStringLiteral("ribbon-not-carried"),
         QStringLiteral("its %1 holds a text, or an element with the name of an attribute beside it, which a "
                        "profile cannot carry; the rest is there")
             .arg(name)}};
}

FileWarning otherProductWarning(const QString &document, const Product &made, const Product &wanted)
{
    return {document,
            {QStringLiteral("document-of-other-product"),
             QStringLiteral("is a document of the %1; settings that the %2 lacks are left out")
                 .arg(QString(made.title), QString(wanted.title))}};
}

QList<FileWarning> identityWarnings(const QStringList &remarks, const QString &command)
{
    const QString lineStart = command + QStringLiteral(": ");
    QList<FileWarning> warnings;
    for (const QString &remark : remarks) {
        const QString text = remark.startsWith(lineStart) ? remark.mid(lineStart.size()) : remark;
        warnings.append({command, {QStringLiteral("signing-identity"), text}});
    }
    return warnings;
}
