// SPDX-License-Identifier: Apache-2.0
#include "welcome/webview/engine/EvaluatedScript.h"

#include <QEventLoop>
#include <QJsonDocument>
#include <QTimer>
#include <QWebEnginePage>

#include <memory>

namespace {

constexpr int longestWait = 5000; ///< milliseconds

bool isCollection(const QVariant &result)
{
    // Not by asking what it converts to: Qt 6 makes a list even of a text.
    return result.userType() == QMetaType::QVariantList || result.userType() == QMetaType::QVariantMap;
}

std::optional<QString> textOf(const QVariant &result)
{
    if (!result.isValid() || result.isNull())
        return std::nullopt;
    if (!isCollection(result))
        return result.toString();
    return QString::fromUtf8(QJsonDocument::fromVariant(result).toJson(QJsonDocument::Compact));
}

} // namespace

std::optional<QString> evaluatedScript(QWebEnginePage *page, const QString &script)
{
    // The result may come when nobody waits any more.
    const auto result = std::make_shared<std::optional<QString>>();
    const auto loop = std::make_shared<QEventLoop>();
    page->runJavaScript(script, [result, loop](const QVariant &value) {
        *result = textOf(value);
        loop->quit();
    });
    QObject::connect(page, &QObject::destroyed, loop.get(), &QEventLoop::quit);
    QObject::connect(page, &QWebEnginePage::renderProcessTerminated, loop.get(), &QEventLoop::quit);
    QTimer::singleShot(longestWait, loop.get(), &QEventLoop::quit);
    loop->exec(QEventLoop::ExcludeUserInputEvents);
    return *result;
}
