// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "config/Product.h"

#include <map>
#include <memory>

class QWidget;
struct EditorXmlData;

/// The sub-pages that a page has let in, in the order of their ids. `Handler` is their interface.
template <class Handler> class SubPages
{
public:
    using Shared = std::shared_ptr<Handler>;

    /// For a page of the product, with ids from 0 to below `count`.
    SubPages(const Product &product, int count)
        : m_product(product)
        , m_count(count)
    {
    }

    /// Keeps the handler and gives its widget, which is made for it. Null, with nothing kept, when there is
    /// no handler or no widget, when the product does not have it, when its id is none, and when it is taken.
    QWidget *add(const Shared &handler)
    {
        QWidget *widget = handler && isWanted(*handler) ? handler->GetWidget(true) : nullptr;
        if (widget)
            m_handlers.emplace(handler->GetTabId(), handler);
        return widget;
    }

    /// The handler with that id, or null.
    Shared withId(int id) const
    {
        const auto entry = m_handlers.find(id);
        return entry == m_handlers.end() ? nullptr : entry->second;
    }

    /// Fills them all from the record.
    void ImportProperty(const EditorXmlData &record) const
    {
        for (const auto &entry : m_handlers)
            entry.second->ImportProperty(entry.second->GetWidget(false), &record);
    }

    /// For a loop over ids and handlers.
    auto begin() const { return m_handlers.begin(); }
    auto end() const { return m_handlers.end(); }

private:
    bool isWanted(Handler &handler) const
    {
        const int id = handler.GetTabId();
        if (handler.IsOnlyForEditor() && !m_product.isEditor())
            return false;
        return id >= 0 && id < m_count && m_handlers.count(id) == 0;
    }

    const Product &m_product;
    const int m_count;
    std::map<int, Shared> m_handlers;
};
