// SPDX-License-Identifier: Apache-2.0
#include "pages/ribbonset/tab_ribbonset.h"

#include "pages/ribbonset/tab_ribbonset_ribcate.h"
#include "pages/ribbonset/tab_ribbonset_tabelem.h"
#include "ui_tab_ribbonset.h"

#include <QButtonGroup>
#include <QStackedLayout>
#include <QToolButton>

#include <algorithm>

namespace {

constexpr int subPageCount = 2;

} // namespace

tab_ribbonset::tab_ribbonset(bool editor, QWidget *parent)
    : CTabWidget(parent)
    , m_ui(std::make_unique<Ui::tab_ribbonset>())
    , m_subPages(Product::of(editor), subPageCount)
    , m_tabButtons(new QButtonGroup(this))
    , m_stack(new QStackedLayout)
{
    m_ui->setupUi(this);
    m_ui->verticalLayout->addLayout(m_stack, 1);
    connect(m_tabButtons, &QButtonGroup::idToggled, this, &tab_ribbonset::RefreshStackLayoutWidget);
}

tab_ribbonset::~tab_ribbonset() = default;

bool tab_ribbonset::Register(const std::shared_ptr<IRibbonSetHandler> &handler)
{
    QWidget *subPage = m_subPages.add(handler);
    if (!subPage)
        return false;
    // Made before the sub-page comes in, the button is reached before it with Tab.
    QToolButton *button = CreateTabButton(handler);
    m_stack->addWidget(subPage);
    if (!m_tabButtons->checkedButton())
        button->setChecked(true);
    return true;
}

QToolButton *tab_ribbonset::CreateTabButton(const std::shared_ptr<IRibbonSetHandler> &handler)
{
    auto *button = new QToolButton(this);
    button->setObjectName(handler->GetTabTitle());
    button->setText(handler->GetTabTitle());
    button->setToolTip(handler->GetTabTooltip());
    button->setCheckable(true);
    button->setFocusPolicy(Qt::StrongFocus);
    m_tabButtons->addButton(button, handler->GetTabId());
    QBoxLayout *row = m_ui->horizontalLayout_tabs;
    // Not beyond the end, where Qt 6 would write outside its list.
    row->insertWidget(std::min(handler->GetTabId(), row->count()), button);
    return button;
}

void tab_ribbonset::RefreshStackLayoutWidget()
{
    const std::shared_ptr<IRibbonSetHandler> current = GetCurrentHandler();
    if (current)
        m_stack->setCurrentWidget(current->GetWidget(false));
}

std::shared_ptr<IRibbonSetHandler> tab_ribbonset::GetCurrentHandler() const
{
    return m_subPages.withId(m_tabButtons->checkedId());
}

void tab_ribbonset::ImportProperty(const EditorXmlData &record)
{
    m_subPages.ImportProperty(record);
}

void tab_ribbonset::OnBeforeSave()
{
    for (const auto &entry : m_subPages)
        entry.second->OnBeforeSave();
}

CHandler_RibbonSet::CHandler_RibbonSet(bool editor)
    : MainPageHandler(Product::of(editor),
                      {4, tr("Ribbon Set"), QString(), PageFacts::Products::Both,
                       QStringLiteral("Ribbon Set"), tr("Allow you to hide features from the Ribbon."),
                       QStringLiteral(":/img/ribbon-set.png")})
{
}

void CHandler_RibbonSet::OnBeforeSave()
{
    if (page())
        page()->OnBeforeSave();
}

tab_ribbonset *CHandler_RibbonSet::makePage() const
{
    auto *made = new tab_ribbonset(isEditor(), nullptr);
    made->Register(std::make_shared<CHandler_RibbonSet_RibCate>(isEditor()));
    made->Register(std::make_shared<CHandler_RibbonSet_TabElem>(isEditor()));
    return made;
}

void CHandler_RibbonSet::fillPage(tab_ribbonset &page, const EditorXmlData &data)
{
    page.ImportProperty(data);
}
