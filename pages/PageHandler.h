// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "pages/CTabWidget.h"
#include "pages/WidgetProperty.h"

#include <QPointer>

#include <type_traits>

struct EditorXmlData;

/// What every handler does alike. `Interface` is the handler interface, `Page` the class of the page,
/// which takes the product (true = Editor) as first constructor argument when it differs by product.
template <class Interface, class Page> class PageHandler : public Interface
{
public:
    explicit PageHandler(bool editor)
        : m_editor(editor)
    {
    }

    QWidget *GetWidget(bool create) override
    {
        if (create && !m_widget)
            m_widget = makePage();
        return m_widget;
    }

    bool ImportProperty(QWidget *widget, const EditorXmlData *data) override
    {
        auto *target = dynamic_cast<Page *>(widget);
        if (!m_widget || !target || !data)
            return false;
        fillPage(*target, *data);
        return true;
    }

protected:
    /// Sets the page's controls from the record: those that the table of settings names. A page that shows
    /// settings in another way adds them.
    virtual void fillPage(Page &page, const EditorXmlData &data) { fillControls(&page, data); }

    /// A new page without a parent.
    virtual Page *makePage() const
    {
        if constexpr (std::is_constructible_v<Page, bool, QWidget *>)
            return new Page(m_editor, nullptr);
        else
            return new Page(nullptr);
    }

    /// The live page, or null.
    Page *page() const { return dynamic_cast<Page *>(m_widget.data()); }

    bool isEditor() const { return m_editor; }

private:
    const bool m_editor;
    /// Becomes null when whoever shows the page deletes it.
    QPointer<CTabWidget> m_widget;
};
