// SPDX-License-Identifier: Apache-2.0
#include "welcome/webview/PageRules.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>

namespace {

constexpr int openingsPerSecond = 3;

bool hasScheme(const QUrl &address, std::initializer_list<const char *> schemes)
{
    const QString scheme = address.scheme();
    return std::any_of(schemes.begin(), schemes.end(),
                       [&scheme](const char *one) { return scheme == QLatin1String(one); });
}

bool isWebAddress(const QUrl &address)
{
    return hasScheme(address, {"http", "https"});
}

/// Where a file really lies. What is not there lies nowhere else.
QString resolved(const QString &path)
{
    const QString canonical = QFileInfo(path).canonicalFilePath();
    return canonical.isEmpty() ? path : canonical;
}

} // namespace

PageRules::PageRules()
    : m_openings(openingsPerSecond)
{
}

void PageRules::setPage(const QUrl &address)
{
    m_folder.clear();
    if (address.isLocalFile())
        m_folder = QDir::cleanPath(QFileInfo(address.toLocalFile()).absolutePath()) + QLatin1Char('/');
}

bool PageRules::isInFolder(const QUrl &address) const
{
    if (!address.isLocalFile() || m_folder.isEmpty())
        return false;
    const QString path = QDir::cleanPath(address.toLocalFile());
    return path.startsWith(m_folder) &&
           resolved(path).startsWith(resolved(QDir::cleanPath(m_folder)) + QLatin1Char('/'));
}

bool PageRules::isMail(const QUrl &address)
{
    return hasScheme(address, {"mailto"});
}

bool PageRules::allowsLoading(const QUrl &address) const
{
    return hasScheme(address, {"data", "about", "blob"}) || isInFolder(address);
}

PageRules::Answer PageRules::toNavigation(const QUrl &address, bool isClicked, bool isMainFrame) const
{
    // The network is closed to pages, so a link into the web is a wish for the browser.
    const bool isWishForBrowser = isClicked && isMainFrame && isWebAddress(address);
    return isMail(address) || isWishForBrowser ? Answer::OpenOutside : Answer::Use;
}

PageRules::Answer PageRules::toNewWindow(const QUrl &address, bool isClicked) const
{
    const bool opensElsewhere = isWebAddress(address) || isMail(address) || isInFolder(address);
    return isClicked && opensElsewhere ? Answer::OpenOutside : Answer::Refuse;
}

QString PageRules::closingScript()
{
    return QStringLiteral("(function() {"
                          "    ['WebSocket', 'WebTransport', 'EventSource', 'RTCPeerConnection',"
                          "     'webkitRTCPeerConnection', 'Worker', 'SharedWorker'].forEach(function(name) {"
                          "        Object.defineProperty(window, name,"
                          "            { value: undefined, writable: false, configurable: false });"
                          "    });"
                          "})()");
}
