// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "welcome/webview/RateLimit.h"

#include <QString>
#include <QUrl>

/// What help pages may do, the same for the view of macOS and for the engine: they see the folder of the page
/// that was asked for and nothing else, and only what the user clicks leads out of the view.
/// User-interface thread only.
class PageRules
{
public:
    /// What becomes of a wish to go somewhere.
    enum class Answer {
        Use,         ///< the view goes there, as far as loading is allowed
        OpenOutside, ///< another application is to open it, and the view stays
        Refuse
    };

    PageRules();

    /// The help folder is that of a page in a file; there is none for any other address.
    void setPage(const QUrl &address);

    /// Files in the folder and below, links in it that lead out of it excluded, and what carries its contents
    /// in its own address.
    bool allowsLoading(const QUrl &address) const;

    static bool isMail(const QUrl &address);

    /// `isClicked` says that the user clicked a link.
    Answer toNavigation(const QUrl &address, bool isClicked, bool isMainFrame) const;

    /// Never Use: the view has no further windows.
    Answer toNewWindow(const QUrl &address, bool isClicked) const;

    /// Whether another application may be troubled now; a page gets few of these in each second. Counts.
    bool admitsOpening() { return m_openings.admits(); }

    /// A script that takes from a page what would reach the network without any request that can be stopped.
    /// For each frame, before its own scripts run.
    static QString closingScript();

private:
    bool isInFolder(const QUrl &address) const;

    QString m_folder; ///< ends with "/", or is empty
    RateLimit m_openings;
};
