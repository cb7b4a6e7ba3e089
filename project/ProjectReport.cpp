// SPDX-License-Identifier: Apache-2.0
#include "project/ProjectReport.h"

#include "config/ConfigDocument.h"
#include "config/Product.h"
#include "config/ProductSettings.h"
#include "config/SettingText.h"
#include "core/PrintableText.h"
#include "core/Version.h"
#include "project/Project.h"

#include <QDomDocument>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace {

/// Empty values and the ribbon's elements have no words of their own.
QString valueInWords(const Setting &setting, const EditorXmlData &data, const Product &product)
{
    if (std::holds_alternative<QDomElement EditorXmlData::*>(setting.member))
        return elementOf(setting, data).isNull() ? QStringLiteral("as shipped")
                                                 : QStringLiteral("customized");
    const QString value = SettingText::valueOf(setting, data, product);
    return value.isEmpty() ? QStringLiteral("none") : visibleText(value);
}

ReportedSetting reported(const Setting &setting, const Product &product)
{
    return {setting.name,
            setting.title,
            setting.meaning,
            setting.help,
            {},
            valueInWords(setting, EditorXmlData(), product)};
}

bool belongsTo(const Setting &setting, const Product &product)
{
    return product.isEditor() || !setting.isOnlyForEditor;
}

QJsonObject settingObject(const ReportedSetting &setting)
{
    return {{QStringLiteral("name"), setting.name},
            {QStringLiteral("title"), setting.title},
            {QStringLiteral("meaning"), setting.meaning},
            {QStringLiteral("help"), setting.help},
            {QStringLiteral("default"), setting.usual},
            {QStringLiteral("values"), QJsonArray::fromStringList(setting.values)}};
}

QJsonArray settingsArray(const QList<ReportedSetting> &settings)
{
    QJsonArray array;
    for (const ReportedSetting &setting : settings)
        array.append(settingObject(setting));
    return array;
}

} // namespace

EditorXmlData carriedSettings(const EditorXmlData &settings, const Product &product)
{
    EditorXmlData carried;
    const EditorXmlData collected = settingsForProduct(settings, product);
    ConfigDocument::apply(ConfigDocument::fromSettings(collected, product, QString()), carried);
    return carried;
}

QList<ReportedSetting> unusualSettings(const ProjectReport &report, int variant)
{
    QList<ReportedSetting> unusual;
    const EditorXmlData &data = report.variants.at(variant).settings;
    const EditorXmlData usual = carriedSettings({}, *report.product);
    for (const Setting &setting : settings()) {
        if (!belongsTo(setting, *report.product) || sameValue(setting, data, usual))
            continue;
        unusual.append(reported(setting, *report.product));
        unusual.last().values = QStringList{valueInWords(setting, data, *report.product)};
    }
    return unusual;
}

QList<ReportedSetting> differingSettings(const ProjectReport &report)
{
    QList<ReportedSetting> differing;
    for (const Setting &setting : settings()) {
        ReportedSetting row = reported(setting, *report.product);
        bool differs = false;
        for (const ReportedVariant &variant : report.variants) {
            differs = differs || !sameValue(setting, variant.settings, report.variants.first().settings);
            row.values += valueInWords(setting, variant.settings, *report.product);
        }
        if (differs && belongsTo(setting, *report.product))
            differing.append(row);
    }
    return differing;
}

QList<QStringList> differenceTable(const ProjectReport &report)
{
    const QList<ReportedSetting> differing = differingSettings(report);
    if (differing.isEmpty())
        return {};
    QStringList heading{QStringLiteral("Setting")};
    for (const ReportedVariant &variant : report.variants)
        heading += variant.name;
    QList<QStringList> rows{heading};
    for (const ReportedSetting &setting : differing)
        rows.append(QStringList{setting.title} + setting.values);
    return rows;
}

ProjectReport reportOn(const Project &project, const QString &vendorVersion,
                       const QList<ReportedVariant> &variants)
{
    ProjectReport report{project.product, QLatin1String(toolVersion),
                         project.vendor.package.text.mid(project.folder.size() + 1), vendorVersion, variants};
    for (ReportedVariant &variant : report.variants)
        variant.settings = carriedSettings(variant.settings, *project.product);
    return report;
}

ProjectReport::Format ProjectReport::formatNamed(const QString &word)
{
    if (word == QLatin1String("markdown") || word == QLatin1String("md"))
        return Format::Markdown;
    return word == QLatin1String("json") ? Format::Json : Format::Html;
}

QByteArray ProjectReport::as(Format format) const
{
    if (format == Format::Markdown)
        return markdown();
    return format == Format::Json ? json() : html();
}

QByteArray ProjectReport::json() const
{
    QJsonArray array;
    for (int i = 0; i < variants.size(); ++i) {
        const ReportedVariant &variant = variants.at(i);
        array.append(QJsonObject{{QStringLiteral("name"), variant.name},
                                 {QStringLiteral("settings"), settingsArray(unusualSettings(*this, i))},
                                 {QStringLiteral("files"), jsonOf(variant.files)},
                                 {QStringLiteral("warnings"), QJsonArray::fromStringList(variant.warnings)},
                                 {QStringLiteral("problem"), variant.problem}});
    }
    const QJsonObject root{{QStringLiteral("product"), product->word},
                           {QStringLiteral("tool"), tool},
                           {QStringLiteral("vendorPackage"), vendorPackage},
                           {QStringLiteral("vendorVersion"), vendorVersion},
                           {QStringLiteral("variants"), array},
                           {QStringLiteral("differences"), settingsArray(differingSettings(*this))}};
    return visibleJson(QString::fromUtf8(QJsonDocument(root).toJson())).toUtf8();
}
