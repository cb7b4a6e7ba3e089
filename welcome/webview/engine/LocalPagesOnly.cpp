// SPDX-License-Identifier: Apache-2.0
#include "welcome/webview/engine/LocalPagesOnly.h"

#include <QDir>
#include <QFileInfo>

void LocalPagesOnly::setPage(const QUrl &address)
{
    m_folder.clear();
    if (address.isLocalFile())
        m_folder = QDir::cleanPath(QFileInfo(address.toLocalFile()).absolutePath()) + QLatin1Char('/');
}

bool LocalPagesOnly::allows(const QUrl &url) const
{
    if (url.scheme() == QLatin1String("data") || url.scheme() == QLatin1String("about") ||
        url.scheme() == QLatin1String("blob"))
        return true;
    return url.isLocalFile() && !m_folder.isEmpty() &&
           QDir::cleanPath(url.toLocalFile()).startsWith(m_folder);
}

void LocalPagesOnly::interceptRequest(QWebEngineUrlRequestInfo &info)
{
    if (!allows(info.requestUrl()))
        info.block(true);
}
