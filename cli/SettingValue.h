// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "config/Settings.h"

#include <QJsonValue>
#include <QString>

// The value of one setting, as every verb writes it.

/// Booleans and integers as such, texts as text, ribbon elements as XML text or null.
QJsonValue settingValue(const Setting &setting, const EditorXmlData &data);

/// A value for people, on one line. Texts stand in quotes, so that an empty one and a number in a text can
/// be told.
QString readableValue(const QJsonValue &value);
QString readableValue(const Setting &setting, const EditorXmlData &data);
