// SPDX-License-Identifier: Apache-2.0
#include "welcome/webview/engine/LocalPagesOnly.h"

#include "welcome/webview/PageRules.h"

LocalPagesOnly::LocalPagesOnly(const PageRules &rules)
    : m_rules(rules)
{
}

void LocalPagesOnly::interceptRequest(QWebEngineUrlRequestInfo &info)
{
    if (!m_rules.allowsLoading(info.requestUrl()))
        info.block(true);
}
