// SPDX-License-Identifier: Apache-2.0
#include "cli/Console.h"
#include "cli/ExitCode.h"
#include "cli/VerbLine.h"
#include "config/Product.h"
#include "package/SourceDate.h"
#include "schema/Schema.h"

namespace {

const QString jamf = QStringLiteral("jamf");
const QString manifest = QStringLiteral("manifest");
const QString jsonSchema = QStringLiteral("json-schema");
const QString markdown = QStringLiteral("markdown");

int writeManifest(const Product &product, Console &console)
{
    const Result<std::optional<qint64>> moment = SourceDate::read();
    if (!moment) {
        console.error(moment.problem());
        return ExitCode::refused;
    }
    const QDateTime modified = moment->has_value() ? QDateTime::fromSecsSinceEpoch(**moment).toUTC()
                                                   : QDateTime::currentDateTimeUtc();
    console.out() << QString::fromUtf8(Schema::manifest(product, modified));
    return ExitCode::done;
}

int runSchema(const VerbLine &line, Console &console)
{
    const Product &product = line.product();
    const QString format = line.value(OptionName::format);
    if (format == manifest)
        return writeManifest(product, console);
    if (format == markdown)
        console.out() << Schema::table(product);
    else
        console.writeJson(format == jamf ? Schema::jamf(product) : Schema::ofSettings(product));
    return ExitCode::done;
}

} // namespace

Verb schemaVerb()
{
    Verb verb{QLatin1String("schema"), QLatin1String("describe the settings for other programs"), runSchema};
    verb.description = QStringLiteral(
        "Prints a description of a product's settings: a custom schema for Jamf Pro, a manifest for "
        "ProfileManifests, a JSON Schema (draft 7) of the JSON of settings, or a table for people.");
    verb.options = {required({OptionName::format, QStringLiteral("what to print"),
                              Value::choice({jamf, manifest, jsonSchema, markdown})}),
                    required(productOption(QStringLiteral("the product whose settings to describe")))};
    return verb;
}
