// SPDX-License-Identifier: Apache-2.0
#include "tests/welcome/webview/PageCases.h"

#include "tests/support/TestFiles.h"

#include <QFile>

bool PageCase::isFile() const
{
    const QString text = QString::fromLatin1(address);
    return text.startsWith(QLatin1String("file:")) || !text.contains(QLatin1Char(':'));
}

const QList<PageCase> &pageCases()
{
    constexpr auto use = PageCase::Answer::Use;
    constexpr auto open = PageCase::Answer::OpenOutside;
    constexpr auto refuse = PageCase::Answer::Refuse;
    static const QList<PageCase> cases{
        {"page beside", "Other.html", true, use, use, open},
        {"page with a blank", "Other%20page.html", true, use, use, open},
        {"page below", "sub/Page.html", true, use, use, open},
        {"page by a detour", "sub/../Other.html", true, use, use, open},
        {"above", "../Outside.html", false, use, use, refuse},
        {"above, encoded", "%2e%2e/Outside.html", false, use, use, refuse},
        {"above, encoded slash", "sub/..%2f../Outside.html", false, use, use, refuse},
        {"same beginning", "../en-US-other/Outside.html", false, use, use, refuse},
        {"link that leads out", "Link.html", false, use, use, refuse},
        {"folder link that leads out", "linked/Outside.html", false, use, use, refuse},
        {"file of the system", "file:///etc/hosts", false, use, use, refuse},
        {"file of another machine", "file://host/etc/hosts", false, use, use, refuse},
        {"web", "http://example.invalid/", false, open, use, open},
        {"web, encrypted", "https://example.invalid/a%20b?c#d", false, open, use, open},
        {"web, capital scheme", "HTTPS://example.invalid/", false, open, use, open},
        {"mail", "mailto:help@example.invalid?subject=a%20b", false, open, open, open},
        {"socket", "ws://example.invalid/", false, use, use, refuse},
        {"socket, encrypted", "wss://example.invalid/", false, use, use, refuse},
        {"other network scheme", "ftp://example.invalid/", false, use, use, refuse},
        {"the view's own scheme", "chrome://version", false, use, use, refuse},
        {"program by its scheme", "x-man-page://rm", false, use, use, refuse},
        {"content in the address", "data:text/html,text", true, use, use, refuse},
        {"empty page", "about:blank", true, use, use, refuse},
    };
    return cases;
}

void makePageFiles(const QTemporaryDir &folder)
{
    const auto path = [&folder](const char *name) { return folder.filePath(QString::fromLatin1(name)); };
    for (const char *name : {"en-US/Other.html", "en-US/Other page.html", "en-US/sub/Page.html",
                             "Outside.html", "en-US-other/Outside.html"})
        TestFiles::write(path(name), "<!DOCTYPE html><p>text</p>");
    QFile::link(path("Outside.html"), path("en-US/Link.html"));
    QFile::link(folder.path(), path("en-US/linked"));
}
