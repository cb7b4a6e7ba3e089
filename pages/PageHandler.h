// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "config/CCommon.h"
#include "config/Product.h"
#include "pages/CTabWidget.h"
#include "pages/ICutsomizationHandler.h"
#include "pages/ISubPageHandler.h"
#include "pages/WidgetProperty.h"

#include <QPointer>

#include <type_traits>
#include <utility>

struct EditorXmlData;

/// What is known of a page before there is one. A sub-page has the first four only.
struct PageFacts
{
    enum class Products { Both, EditorOnly };
    enum class Outputs { Packages, PackagesAndProfiles };

    int id = 0; ///< place of its button, key among its kind; unique there
    QString title{};
    QString help{}; ///< file name of its help page, of a sub-page the anchor in its parent's; empty for none
    Products products = Products::Both;
    QString name{}; ///< object name of its button
    QString toolTip{};
    QString icon{}; ///< resource path
    Outputs outputs = Outputs::PackagesAndProfiles;
};

/// The file name of a help page, with or without "#anchor", as it stands in a URL: a blank becomes "%20".
QString encodedHelpPage(const QString &fileName);

/// What every handler does alike. `Interface` is the handler interface, `Page` the class of the page,
/// which takes the product (true = Editor) as first constructor argument when it differs by product.
template <class Interface, class Page> class PageHandler : public Interface
{
public:
    PageHandler(const Product &product, PageFacts facts)
        : m_product(product)
        , m_facts(std::move(facts))
    {
    }

    int GetTabId() override { return m_facts.id; }
    QString GetTabTitle() const override { return m_facts.title; }
    bool IsOnlyForEditor() override { return m_facts.products == PageFacts::Products::EditorOnly; }

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
            return new Page(isEditor(), nullptr);
        else
            return new Page(nullptr);
    }

    /// The live page, or null.
    Page *page() const { return dynamic_cast<Page *>(m_widget.data()); }

    bool isEditor() const { return m_product.isEditor(); }
    const PageFacts &facts() const { return m_facts; }

private:
    const Product &m_product;
    const PageFacts m_facts;
    /// Becomes null when whoever shows the page deletes it.
    QPointer<CTabWidget> m_widget;
};

/// What the handlers of the main window's pages do alike.
template <class Page> class MainPageHandler : public PageHandler<ICutsomizationHandler, Page>
{
public:
    using PageHandler<ICutsomizationHandler, Page>::PageHandler;

    QString GetTabName() override { return this->facts().name; }
    QString GetTabTooltip() const override { return this->facts().toolTip; }
    QString GetTabIcon() override { return this->facts().icon; }
    QString GetInfoName() override { return encodedHelpPage(this->facts().help); }

    bool SupportsProfile() override
    {
        return this->facts().outputs == PageFacts::Outputs::PackagesAndProfiles;
    }
};

/// What the handlers of all sub-pages do alike.
template <class Interface, class Page> class SubPageHandler : public PageHandler<Interface, Page>
{
public:
    using PageHandler<Interface, Page>::PageHandler;

    QString GetTabTooltip() override { return {}; }
    QString GetInfoAnchorId() override { return this->facts().help; }
};

/// What the handlers of the Preferences sub-pages do alike.
template <class Page> class PreferHandler : public SubPageHandler<IPreferenceHandler, Page>
{
public:
    using SubPageHandler<IPreferenceHandler, Page>::SubPageHandler;

protected:
    /// A form without a parent, without what the product does not have.
    Page *makePage() const override
    {
        Page *made = SubPageHandler<IPreferenceHandler, Page>::makePage();
        CCommon::ReLayout(made, this->isEditor());
        return made;
    }
};
