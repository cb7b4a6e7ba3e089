// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "cli/FileWarning.h"
#include "core/Result.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QJsonValue>

struct ProfilePayloadInfo;

// The parts that the JSON of several verbs has in common.

/// The text, or null when it is empty.
QJsonValue textOrNull(const QString &text);

/// "file" and "text" of a failure's problem, or null.
QJsonValue problemOrNull(const Result<> &result);

/// "code" and "text".
QJsonObject warningObject(const BuildWarning &warning);

/// Objects with "code", "text" and "file".
QJsonArray warningsArray(const QList<FileWarning> &warnings);

/// Adds "warnings" to an object that has such a member only when there are any.
void insertWarnings(QJsonObject &object, const QList<FileWarning> &warnings);

/// The members of a profile's identity under their names.
QJsonObject identityObject(const ProfilePayloadInfo &identity);
