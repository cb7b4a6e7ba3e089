// SPDX-License-Identifier: Apache-2.0
#include "welcome/webview/CWebViewHandler.h"

CWebViewHandler::CWebViewHandler(Function function)
    : m_function(std::move(function))
{
}

void CWebViewHandler::DispatchFun(const std::wstring &module, const std::wstring &function,
                                  const std::wstring &parameter, std::wstring &result)
{
    if (m_function)
        m_function(module, function, parameter, result);
}

void CWebViewHandler::DispatchFunAsync(const std::wstring &, const std::wstring &, const std::wstring &,
                                       const std::wstring &)
{
}

void CWebViewHandler::Notify(int, const std::wstring &, void *) {}

int CWebViewHandler::Query()
{
    return 0;
}
