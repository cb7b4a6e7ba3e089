// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "welcome/webview/PageRules.h"

#include <QList>
#include <QString>
#include <QTemporaryDir>

/// One address and what has to become of it, whatever shows the pages.
struct PageCase
{
    using Answer = PageRules::Answer;

    const char *name;
    const char *address; ///< as a link in the page says it
    bool loads;          ///< whether the view gets to see what is there
    Answer clicked;      ///< the navigation after a click in the main frame
    Answer otherwise;    ///< any other navigation
    Answer newWindow;    ///< a new window after a click

    bool isFile() const;
};

/// The table that every view is held to.
const QList<PageCase> &pageCases();

/// Makes the files and links of the cases in a help folder below `folder`, and files outside of it.
void makePageFiles(const QTemporaryDir &folder);
