// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

/// Receives what the scripts of a help page ask for. All calls come on the user-interface thread, those of a
/// script while the page waits for the answer.
class IWebViewHandler
{
public:
    virtual ~IWebViewHandler() = default;

    /// A script's synchronous call; `result` is empty on entry and is what the script gets.
    virtual void DispatchFun(const std::wstring &module, const std::wstring &function,
                             const std::wstring &parameter, std::wstring &result) = 0;

    /// A script's call that expects no answer now; `callback` names the script function to be told.
    virtual void DispatchFunAsync(const std::wstring &module, const std::wstring &function,
                                  const std::wstring &parameter, const std::wstring &callback) = 0;

    /// A load has ended, well or not: code 0, empty text, no data.
    virtual void Notify(int code, const std::wstring &text, void *data) = 0;

    /// The handler's state; 0 unless it has one.
    virtual int Query() = 0;
};
