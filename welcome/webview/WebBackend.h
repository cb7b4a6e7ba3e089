// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

#include <memory>
#include <optional>

class QUrl;
class QWidget;
class WebViewTarget;

/// The system's way to show web pages: the view of macOS, or a web engine in a module of its own.
class WebBackend
{
public:
    virtual ~WebBackend() = default;

    /// The view; owned by the backend.
    virtual QWidget *widget() = 0;

    /// Loads a page. With `timeLimit` (seconds) not 0, a load that takes longer has failed.
    virtual void load(const QUrl &address, int timeLimit) = 0;

    virtual void stop() = 0;
    virtual void setUserAgent(const QString &agent) = 0;

    /// Runs a script in the page without waiting for it.
    virtual void run(const QString &script) = 0;

    /// Runs a script in the page and waits for its result as text. Nothing when the result is null, the
    /// script fails or takes too long.
    virtual std::optional<QString> evaluate(const QString &script) = 0;
};

/// Makes the backend of this system. Null, with a line in the log, when the machine has none. `target`
/// gets no calls any more once `parent`, the widget that it is part of, is gone.
std::unique_ptr<WebBackend> makeWebBackend(WebViewTarget *target, QWidget *parent);
