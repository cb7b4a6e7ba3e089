// SPDX-License-Identifier: Apache-2.0
// Qt 6 has no Cocoa container any more; it wraps a foreign window instead.
#include "welcome/webview/CocoaView_mac.h"

#include <QtGlobal>

#import <AppKit/AppKit.h>

#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)

#include <QMacCocoaViewContainer>

QWidget *makeCocoaContainer(void *view, QWidget *parent)
{
    return new QMacCocoaViewContainer((NSView *)view, parent);
}

void detachCocoaView(QWidget *container)
{
    static_cast<QMacCocoaViewContainer *>(container)->setCocoaView(nil);
}

#else

#include <QWidget>
#include <QWindow>

namespace {

/// Keeps the view as long as the window that wraps it.
class ForeignView : public QWidget
{
public:
    ForeignView(NSView *view, QWidget *parent)
        : QWidget(parent)
        , m_view([view retain])
        , m_container(QWidget::createWindowContainer(QWindow::fromWinId(WId(view)), this))
    {
    }
    ~ForeignView() override { detach(); }

    void detach()
    {
        delete m_container;
        m_container = nullptr;
        [m_view release];
        m_view = nil;
    }

protected:
    void resizeEvent(QResizeEvent *) override
    {
        if (m_container)
            m_container->setGeometry(rect());
    }

private:
    NSView *m_view;
    QWidget *m_container;
};

} // namespace

QWidget *makeCocoaContainer(void *view, QWidget *parent)
{
    return new ForeignView((NSView *)view, parent);
}

void detachCocoaView(QWidget *container)
{
    static_cast<ForeignView *>(container)->detach();
}

#endif
