// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QJsonObject>
#include <QString>

struct Product;

/// The settings described for other programs and for people, all from the table of settings. The ribbon is
/// left out of the forms of managements: it is a tree of any depth, which they cannot show. One thread.
namespace Schema {

/// A custom schema for Application & Custom Settings of Jamf Pro. What its form makes is the content of the
/// domain Product::settingsType().
QJsonObject jamf(const Product &product);

/// A manifest as ProfileManifests collects them, a property list in XML.
QByteArray manifest(const Product &product, const QDateTime &lastModified);

/// A JSON Schema, draft 7, of the JSON of settings that `pct` reads.
QJsonObject ofSettings(const Product &product);

/// A table in Markdown.
QString table(const Product &product);

} // namespace Schema
