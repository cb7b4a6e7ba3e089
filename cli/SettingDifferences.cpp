// SPDX-License-Identifier: Apache-2.0
#include "cli/SettingDifferences.h"

#include "cli/Console.h"
#include "cli/SettingValue.h"
#include "config/EditorXmlData.h"
#include "core/PrintableText.h"

namespace {

bool isEmpty(const QDomElement &element)
{
    return !element.hasAttributes() && !element.hasChildNodes();
}

/// The settings with one form for what several forms say: a ribbon and attachments as they are shipped.
EditorXmlData inOneForm(EditorXmlData settings)
{
    for (QDomElement *ribbon : {&settings.elemRibbonCategory, &settings.elemQuickAccessBar}) {
        if (isEmpty(*ribbon))
            *ribbon = {};
    }
    if (settings.strDisableOpenSaveFileAttach == QLatin1String("Default"))
        settings.strDisableOpenSaveFileAttach.clear();
    return settings;
}

} // namespace

QList<Difference> settingDifferences(const EditorXmlData &first, const EditorXmlData &second)
{
    QList<Difference> differences;
    const EditorXmlData one = inOneForm(first);
    const EditorXmlData other = inOneForm(second);
    for (const Setting &setting : settings()) {
        if (!sameValue(setting, one, other))
            differences.append({setting.name, settingValue(setting, first), settingValue(setting, second)});
    }
    return differences;
}

QJsonArray differencesArray(const QList<Difference> &differences)
{
    QJsonArray array;
    for (const Difference &difference : differences)
        array.append(QJsonObject{{QStringLiteral("name"), difference.name},
                                 {QStringLiteral("first"), difference.first},
                                 {QStringLiteral("second"), difference.second}});
    return array;
}

void writeLines(const QList<Difference> &differences, Console &console, const QString &start)
{
    for (const Difference &difference : differences)
        console.out() << visibleText(start) << difference.name << QStringLiteral(": ")
                      << readableValue(difference.first) << QStringLiteral(" -> ")
                      << readableValue(difference.second) << '\n';
}
