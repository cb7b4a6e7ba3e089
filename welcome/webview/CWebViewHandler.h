// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "welcome/webview/IWebViewHandler.h"

#include <functional>

/// Passes the synchronous calls of scripts on to a function and leaves all else alone.
class CWebViewHandler : public IWebViewHandler
{
public:
    using Function = std::function<void(const std::wstring &module, const std::wstring &function,
                                        const std::wstring &parameter, std::wstring &result)>;

    /// An empty function is allowed; nothing happens then.
    explicit CWebViewHandler(Function function);

    void DispatchFun(const std::wstring &module, const std::wstring &function, const std::wstring &parameter,
                     std::wstring &result) override;
    void DispatchFunAsync(const std::wstring &module, const std::wstring &function,
                          const std::wstring &parameter, const std::wstring &callback) override;
    void Notify(int code, const std::wstring &text, void *data) override;
    int Query() override;

private:
    const Function m_function;
};
