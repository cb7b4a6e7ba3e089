// SPDX-License-Identifier: Apache-2.0
#pragma once

class QWidget;

/// A widget that shows a Cocoa view (`NSView *`), retains it, and releases it when it is deleted.
QWidget *makeCocoaContainer(void *view, QWidget *parent);

/// Takes the view out of such a widget and releases it; the widget stays empty.
void detachCocoaView(QWidget *container);
