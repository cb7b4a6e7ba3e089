// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "config/JsonReader.h"
#include "core/Result.h"

#include <QByteArray>

/// YAML as far as it says the same to every reader: one document of mappings, lists and scalars. Anchors,
/// aliases, tags and keys that stand twice are refused. Every scalar is a text, because "no", "012" and "1.0"
/// mean something else to each reader that guesses; a plain one that is empty or "null" is null. Any thread.
namespace Yaml {

constexpr qint64 maximumBytes = 1024 * 1024;
constexpr int maximumDepth = 32;

/// What the bytes say. The problem is about the place, as in "3:5", where there is one.
Result<Json::Value> read(const QByteArray &bytes);

} // namespace Yaml
