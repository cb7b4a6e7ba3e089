// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>
#include <QVariant>

/// What a `CustomAiWebView` tells: the widget around it listens. User-interface thread only.
///
/// Purely virtual, because a module implements the other side: it reaches the program in no other way.
class WebViewTarget
{
public:
    virtual ~WebViewTarget() = default;

    virtual void loadStart() = 0;
    virtual void loadFinish(const QString &url, const QString &content) = 0;
    /// A resource could not be loaded; not called for one whose loading was cancelled.
    virtual void loadError() = 0;
    virtual void urlChanged(const QString &url) = 0;
    /// The view is about to go to an address.
    virtual void decidePolicyForNavigationAction(const QString &url) = 0;

    /// Calls of the page's scripts. What is returned is what the script gets.
    virtual QVariant DispatchFun(const QString &module, const QString &function,
                                 const QString &parameter) = 0;
    virtual QVariant DispatchFunAsync(const QString &module, const QString &function,
                                      const QString &parameter, const QString &callback) = 0;

    /// Whether there is a page that can be looked at.
    virtual void pageAvailable(bool available) = 0;
};
