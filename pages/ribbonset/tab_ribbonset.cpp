// SPDX-License-Identifier: Apache-2.0
#include "pages/ribbonset/tab_ribbonset.h"

#include "pages/IRibbonSetHandler.h"
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
    , m_editor(editor)
    , m_tabButtons(new QButtonGroup(this))
    , m_stack(new QStackedLayout)
{
    m_ui->setupUi(this);
    m_ui->verticalLayout->addLayout(m_stack, 1);
    connect(m_tabButtons, &QButtonGroup::idToggled, this, &tab_ribbonset::RefreshStackLayoutWidget);
}

tab_ribbonset::~tab_ribbonset() = default;

bool tab_ribbonset::isWanted(IRibbonSetHandler &handler) const
{
    const int id = handler.GetTabId();
    if (handler.IsOnlyForEditor() && !m_editor)
        return false;
    return id >= 0 && id < subPageCount && m_handlers.count(id) == 0;
}

bool tab_ribbonset::Register(const std::shared_ptr<IRibbonSetHandler> &handler)
{
    if (!handler || !isWanted(*handler))
        return false;
    QWidget *subPage = handler->GetWidget(true);
    if (!subPage)
        return false;
    // Made before the sub-page comes in, the button is reached before it with Tab.
    QToolButton *button = CreateTabButton(handler);
    m_stack->addWidget(subPage);
    m_handlers.emplace(handler->GetTabId(), handler);
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
    const auto entry = m_handlers.find(m_tabButtons->checkedId());
    return entry == m_handlers.end() ? nullptr : entry->second;
}

void tab_ribbonset::ImportProperty(const EditorXmlData &record)
{
    for (const auto &entry : m_handlers)
        entry.second->ImportProperty(entry.second->GetWidget(false), &record);
}

void tab_ribbonset::OnBeforeSave()
{
    for (const auto &entry : m_handlers)
        entry.second->OnBeforeSave();
}
