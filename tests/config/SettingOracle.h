// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "config/EditorXmlData.h"

#include <QJsonValue>
#include <QMap>
#include <QStringList>
#include <QVariant>

#include <functional>

/// What each setting is in documents, in profiles and on the pages: written down by hand, once for each form,
/// and never taken from the table of settings, which it judges.
namespace SettingOracle {

using Change = std::function<void(EditorXmlData &)>;

/// A value that is not the default, as the record has it and as every form says it.
struct Row
{
    const char *name;
    Change change;
    const char *place; ///< the item's key and its attribute, in documents and profiles
    const char *text;  ///< in a document
    QJsonValue value;  ///< in a profile; undefined where profiles do not have the setting
    const char *control;
    QVariant shown; ///< the control's value
};

/// Settings that mean the same in documents, where they have them, as in profiles and on the pages.
const QList<Row> &rows();

/// What a document and a profile say of the defaults, each under its item's key and its attribute.
QMap<QString, QString> textsOfTheDefaults();
QMap<QString, QJsonValue> valuesOfTheDefaults();

/// The settings that a save collects anew, and those that lose their value for the Reader. A login domain
/// mode becomes 2.
QStringList collectedAnew();
QStringList lostByTheReader();

/// The keys of a document's preferences, in its order.
QStringList preferenceKeys();

/// The controls in the order in which a save asks for them; "OnBeforeSave" is the pages' own turn.
QStringList turns();

} // namespace SettingOracle

Q_DECLARE_METATYPE(SettingOracle::Change)
