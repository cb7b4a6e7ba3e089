// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "config/JsonReader.h"
#include "config/Settings.h"
#include "core/Result.h"

#include <QByteArray>

#include <vector>

struct SettingsFile;

/// Reads what `pct show --json` prints, or a part of it, over what the file holds; settings may also stand in
/// the outermost object. Unknown names are refused with the nearest one. The problem names no file and begins
/// with the place.
Result<> readSettingsJson(const QByteArray &json, SettingsFile &file);

/// The object that has the settings: the member "settings", or the whole.
const Json::Value &settingsIn(const Json::Value &root);

/// The JSON with the values of these settings from the record, and all else in it as it was. Only for what
/// can be read.
QByteArray changedSettingsJson(const QByteArray &json, const std::vector<const Setting *> &changed,
                               const EditorXmlData &data);
