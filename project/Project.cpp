// SPDX-License-Identifier: Apache-2.0
#include "project/Project.h"

#include "config/Product.h"
#include "config/SettingText.h"
#include "core/SafeFile.h"
#include "project/PlacedProblem.h"
#include "project/ProjectPaths.h"

#include <QDir>

#include <algorithm>

namespace {

QString keyOf(const QString &path)
{
    return path.normalized(QString::NormalizationForm_D).toCaseFolded();
}

/// What a text editor puts behind the last line is no part of it.
QString firstLine(const QByteArray &text)
{
    return QString::fromUtf8(text).section(QLatin1Char('\n'), 0, 0);
}

QString valueBehind(const QString &reference, const QString &folder)
{
    const QString where = reference.section(QLatin1Char(':'), 1);
    if (reference.startsWith(QLatin1String("@env:")))
        return qEnvironmentVariable(where.toUtf8().constData());
    const Result<QByteArray> text = SafeFile::readContents(QDir(folder).absoluteFilePath(where));
    return text ? firstLine(*text) : QString();
}

} // namespace

bool ProjectVariant::has(QLatin1String outputKind) const
{
    return std::any_of(outputs.begin(), outputs.end(),
                       [&](const ProjectOutput &output) { return output.kind == outputKind; });
}

EditorXmlData ProjectVariant::settings(const EditorXmlData &start, const Product &product) const
{
    EditorXmlData data = start;
    for (const ProjectChange &change : changes) {
        const Setting &setting = **SettingText::named(change.name);
        if (change.isDefault)
            SettingText::takeDefault(setting, data);
        else
            (void)SettingText::take(setting, change.value.text, product, data);
    }
    return data;
}

Problem Project::wrong(const PlacedText &text, const QString &problem) const
{
    return placedIn(file, problemAt(text.place, problem));
}

bool Project::needsVendorVersion() const
{
    const QString placeholder = QStringLiteral("${%1}").arg(Placeholders::vendorVersion);
    for (const ProjectVariant &variant : variants) {
        for (const ProjectOutput &output : variant.outputs) {
            if (output.path.text.contains(placeholder) && !variant.isAbstract)
                return true;
        }
    }
    return false;
}

Result<Project> Project::named(const QString &vendorVersion) const
{
    Project result = *this;
    QMap<QString, QString> makers;
    for (ProjectVariant &variant : result.variants) {
        if (variant.isAbstract)
            continue;
        for (ProjectOutput &output : variant.outputs) {
            QString &path = output.path.text;
            path = Placeholders::filled(path, {{Placeholders::variant, variant.name.text},
                                               {Placeholders::product, product->word},
                                               {Placeholders::vendorVersion, vendorVersion}});
            if (const Result<> usable = ProjectPaths::checkOutput(folder, path); !usable)
                return wrong(output.path, usable.problem().text);
            const QString maker = makers.value(keyOf(path));
            if (!maker.isEmpty())
                return wrong(output.path,
                             QStringLiteral("\"%1\" is an output of \"%2\" already; put ${variant} "
                                            "into \"output\" or the name")
                                 .arg(path, maker));
            makers.insert(keyOf(path), variant.name.text);
        }
    }
    return result;
}

Result<QString> Project::secret(const PlacedText &reference) const
{
    if (!reference.text.startsWith(QLatin1Char('@')))
        return reference.text;
    const QString value = valueBehind(reference.text, folder);
    return value.isEmpty()
               ? Result<QString>(wrong(
                     reference, reference.text + QStringLiteral(" holds nothing; set it, or write the value "
                                                                "out")))
               : Result<QString>(value);
}
