// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "cli/Problem.h"
#include "package/PackageInspection.h"

#include <QJsonObject>
#include <QJsonValue>

// The parts that the JSON of several verbs has in common.

/// The text, or null when it is empty.
QJsonValue textOrNull(const QString &text);

/// "file" and "text".
QJsonObject problemObject(const Problem &problem);

/// "code" and "text".
QJsonObject warningObject(const BuildWarning &warning);
