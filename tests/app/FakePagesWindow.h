// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "app/DlgCustomizationTool_v2.h"
#include "tests/app/FakeHandler.h"
#include "welcome/tab_import_xml.h"
#include "welcome/tab_welcome.h"

#include <QStackedLayout>
#include <QToolButton>

/// The main window with two fake pages.
struct FakePagesWindow
{
    using Handler = std::shared_ptr<FakeHandler>;

    explicit FakePagesWindow(bool editor = true, PCW_CONFIGTYPE type = PCW_CONFIG_PACKAGE)
        : window(editor, type)
    {
        window.Register(first);
        window.Register(last);
    }

    QToolButton *tool(const char *name) const { return window.findChild<QToolButton *>(QLatin1String(name)); }
    QToolButton *pageButton(const Handler &page) const
    {
        return window.findChild<QToolButton *>(page->GetTabName());
    }
    QWidget *current() const { return window.findChild<QStackedLayout *>()->currentWidget(); }
    bool shows(const QWidget *page) const { return current() == page || current()->isAncestorOf(page); }
    QWidget *importPage() const { return window.findChild<tab_import_xml *>(); }
    QWidget *welcomePage() const { return window.findChild<tab_welcome *>(); }

    Handler first = std::make_shared<FakeHandler>(1);
    Handler last = std::make_shared<FakeHandler>(5);
    DlgCustomizationTool_v2 window;
};
