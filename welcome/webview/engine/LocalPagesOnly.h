// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QWebEngineUrlRequestInterceptor>

class PageRules;

/// Blocks every request that the rules do not allow. Pages need no network, so they get none.
class LocalPagesOnly : public QWebEngineUrlRequestInterceptor
{
public:
    /// `rules` have to live as long as the profile that this is set in.
    explicit LocalPagesOnly(const PageRules &rules);

    void interceptRequest(QWebEngineUrlRequestInfo &info) override;

private:
    const PageRules &m_rules;
};
