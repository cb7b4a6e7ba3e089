// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

#include <optional>

class QWebEnginePage;

/// Runs a script in a page and waits for its result, which the engine has only later. Numbers and truth
/// values become text, objects and lists JSON. Nothing when the result is null or undefined, the script
/// fails, or nothing has come in five seconds. User input waits meanwhile.
std::optional<QString> evaluatedScript(QWebEnginePage *page, const QString &script);
