// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QUrl>
#include <QWebEngineUrlRequestInterceptor>

/// Blocks every request that leads out of a folder. Pages need no network, so they get none.
class LocalPagesOnly : public QWebEngineUrlRequestInterceptor
{
public:
    /// The folder is that of a page in a file; there is none for any other address.
    void setPage(const QUrl &address);

    /// Files in the folder and below, and what carries its contents in its own address.
    bool allows(const QUrl &url) const;

    void interceptRequest(QWebEngineUrlRequestInfo &info) override;

private:
    QString m_folder; ///< ends with "/", or is empty
};
