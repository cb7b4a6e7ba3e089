// SPDX-License-Identifier: Apache-2.0
#include "tests/welcome/webview/HelpPages.h"

#include "tests/support/TestFiles.h"

#include <QLabel>
#include <QtTest>

namespace {

const auto schemesOutside = {"http", "https", "mailto", "file", "ftp"};

QStringList texts(const std::initializer_list<std::wstring> &values)
{
    QStringList list;
    for (const std::wstring &value : values)
        list << QString::fromStdWString(value);
    return list;
}

} // namespace

void RecordingHandler::DispatchFun(const std::wstring &module, const std::wstring &function,
                                   const std::wstring &parameter, std::wstring &result)
{
    calls << texts({module, function, parameter});
    if (onCall)
        onCall();
    if (result.empty())
        result = answer.toStdWString();
}

void RecordingHandler::DispatchFunAsync(const std::wstring &module, const std::wstring &function,
                                        const std::wstring &parameter, const std::wstring &callback)
{
    asyncCalls << texts({module, function, parameter, callback});
}

void RecordingHandler::Notify(int code, const std::wstring &text, void *data)
{
    codes << code;
    notifiedAsAgreed = notifiedAsAgreed && text.empty() && !data;
}

HelpPages::HelpPages(IWebViewHandler *handler)
    : view(std::make_unique<WebViewInQt>())
{
    for (const char *scheme : schemesOutside)
        QDesktopServices::setUrlHandler(QLatin1String(scheme), this, "noteOpened");
    view->SetWebViewHandler(handler);
    view->resize(500, 400);
    view->show();
    if (!QTest::qWaitForWindowExposed(view.get()))
        qFatal("the view does not come to the screen");
}

HelpPages::~HelpPages()
{
    for (const char *scheme : schemesOutside)
        QDesktopServices::unsetUrlHandler(QLatin1String(scheme));
}

QString HelpPages::path(const QString &name) const
{
    return folder.filePath(QStringLiteral("en-US/") + name);
}

QString HelpPages::address(const QString &name, const QString &anchor) const
{
    QUrl url = QUrl::fromLocalFile(path(name));
    if (!anchor.isEmpty())
        url.setFragment(anchor);
    return url.toString(QUrl::FullyEncoded);
}

QString HelpPages::add(const QString &name, const QByteArray &body)
{
    TestFiles::write(path(name), "<!DOCTYPE html><html><head><meta charset=\"utf-8\"></head><body>" + body +
                                     "<script>window.complete = " + QByteArray::number(++m_written) +
                                     "</script></body></html>");
    return address(name);
}

void HelpPages::open(const QByteArray &body)
{
    const QString wanted = add(QStringLiteral("Page.html"), body);
    view->loadRequest(wanted);
    // A page of this address may be there already.
    waitFor(QStringLiteral("location.href == '%1' && window.complete == %2").arg(wanted).arg(m_written));
}

void HelpPages::openAddress(const QString &wanted)
{
    view->loadRequest(wanted);
    waitFor(QStringLiteral("location.href == '%1' && !!window.complete").arg(wanted));
}

void HelpPages::waitFor(const QString &condition)
{
    const auto holds = [&] { return in(condition) == QLatin1String("true"); };
    QVERIFY2(QTest::qWaitFor(holds, 60000), qPrintable(condition));
}

QString HelpPages::in(const QString &script)
{
    return view->runJavascript(script);
}

bool HelpPages::saysNotAvailable() const
{
    const auto *message = view->findChild<QLabel *>();
    return message->isVisible() && message->text() == QLatin1String("The help page is not available.");
}

void HelpPages::click(const QString &elementId)
{
    const QStringList place = in(QStringLiteral("(r => r.left + r.width / 2 + ' ' + (r.top + r.height / 2))"
                                                "(document.getElementById('%1').getBoundingClientRect())")
                                     .arg(elementId))
                                  .split(QLatin1Char(' '));
    QCOMPARE(place.size(), 2);
    QVERIFY(surface());
    const QPointF point(place[0].toDouble(), place[1].toDouble());
    QTest::mouseClick(surface(), Qt::LeftButton, {}, point.toPoint());
}

QWidget *HelpPages::surface() const
{
    for (const QWidget *child : view->findChildren<QWidget *>()) {
        if (child->focusProxy())
            return child->focusProxy();
    }
    return nullptr;
}

void HelpPages::noteOpened(const QUrl &url)
{
    opened << url.toString(QUrl::FullyEncoded);
}
