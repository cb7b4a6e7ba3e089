// SPDX-License-Identifier: Apache-2.0
#include "pages/preferences/tab_preference.h"

#include "pages/preferences/advertisement/tab_prefer_advertisement.h"
#include "pages/preferences/imanage/tab_prefer_imanage.h"
#include "pages/preferences/logindomain/tab_prefer_login_domain.h"
#include "pages/preferences/mip/tab_prefer_AIP.h"
#include "pages/preferences/myapps/tab_prefer_myapps.h"
#include "pages/preferences/security/tab_prefer_security.h"
#include "pages/preferences/startpage/tab_prefer_startpage.h"
#include "ui_tab_preference.h"

#include <QEvent>
#include <QMetaMethod>
#include <QStackedLayout>
#include <QStringListModel>
#include <QStyledItemDelegate>

#include <algorithm>

namespace {

constexpr int maxSubPages = 8;
constexpr int listStretch = 2;
constexpr int subPageStretch = 10;
constexpr int rowPadding = 6;
constexpr int listHeight = 260; // beside a sub-page

/// Rows with room above and below their titles. A style sheet's padding would not count when the lines of
/// a long title are broken.
class RowDelegate : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override
    {
        QStyleOptionViewItem narrower = option;
        narrower.rect.adjust(rowPadding, 0, -rowPadding, 0);
        return QStyledItemDelegate::sizeHint(narrower, index) + QSize(0, 2 * rowPadding);
    }
};

/// The ancestor of that name, or null.
QWidget *ancestorNamed(const QWidget &widget, QLatin1String name)
{
    QWidget *ancestor = widget.parentWidget();
    while (ancestor && ancestor->objectName() != name)
        ancestor = ancestor->parentWidget();
    return ancestor;
}

} // namespace

tab_preference::tab_preference(bool editor, QWidget *parent)
    : CTabWidget(parent)
    , m_ui(std::make_unique<Ui::tab_preference>())
    , m_subPages(Product::of(editor), maxSubPages)
    , m_titles(new QStringListModel(this))
    , m_stack(new QStackedLayout)
{
    m_ui->setupUi(this);
    m_ui->horizontalLayout->addLayout(m_stack, subPageStretch);
    m_ui->horizontalLayout->setStretchFactor(m_ui->listView, listStretch);
    m_ui->listView->setModel(m_titles);
    m_ui->listView->setItemDelegate(new RowDelegate(m_ui->listView));
    // A click with Ctrl would leave the shown sub-page without a selected row.
    connect(m_ui->listView, &QListView::clicked, m_ui->listView, &QListView::setCurrentIndex);
    connect(m_ui->listView->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &tab_preference::showSelected);
    m_ui->scrollArea->setLeastWidth([this] { return leastWidth(true); });
    for (QWidget *room : {m_ui->scrollArea->viewport(), m_ui->listView->viewport()})
        room->installEventFilter(this);
}

tab_preference::~tab_preference() = default;

bool tab_preference::Register(const std::shared_ptr<IPreferenceHandler> &handler)
{
    QWidget *subPage = m_subPages.add(handler);
    if (!subPage)
        return false;
    m_stack->addWidget(subPage);
    appendRow(handler->GetTabTitle());
    return true;
}

void tab_preference::appendRow(const QString &title)
{
    const int row = m_titles->rowCount();
    m_titles->insertRow(row);
    m_titles->setData(m_titles->index(row), title);
    m_ui->listView->selectionModel()->setCurrentIndex(m_titles->index(row),
                                                      QItemSelectionModel::ClearAndSelect);
}

void tab_preference::showSelected(const QItemSelection &selected)
{
    if (!selected.isEmpty())
        showRow(selected.indexes().constFirst().row());
}

void tab_preference::showRow(int row)
{
    if (row == m_stack->currentIndex())
        return;
    m_stack->setCurrentIndex(row);
    emit sig_reloadinformation();
}

std::shared_ptr<IPreferenceHandler> tab_preference::GetCurrentHandler() const
{
    for (const auto &entry : m_subPages) {
        QWidget *subPage = entry.second->GetWidget(false);
        if (subPage && subPage == m_stack->currentWidget())
            return entry.second;
    }
    return nullptr;
}

void tab_preference::ImportProperty(const EditorXmlData &record)
{
    m_subPages.ImportProperty(record);
}

QVariant tab_preference::GetProperty(const QString &objectName) const
{
    for (const auto &entry : m_subPages) {
        const QVariant value = entry.second->GetProperty(objectName);
        if (value.isValid())
            return value;
    }
    return {};
}

bool tab_preference::event(QEvent *event)
{
    // A widget hears of its own new parent only; that its parent has moved shows when it is shown.
    if (event->type() == QEvent::ParentChange || event->type() == QEvent::Show)
        followInMainWindow();
    return CTabWidget::event(event);
}

bool tab_preference::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Resize)
        fold();
    return CTabWidget::eventFilter(watched, event);
}

int tab_preference::leastWidth(bool folded) const
{
    const QHBoxLayout *row = m_ui->horizontalLayout;
    const QMargins around = row->contentsMargins() + m_ui->verticalLayout_contents->contentsMargins();
    const int list = m_ui->listView->minimumWidth();
    const int subPage = m_stack->minimumSize().width();
    const int both = folded ? std::max(list, subPage) : list + row->spacing() + subPage;
    return around.left() + both + around.right();
}

int tab_preference::heightOfRows() const
{
    const QListView *list = m_ui->listView;
    QStyleOptionViewItem option;
    option.initFrom(list);
    option.widget = list;
    option.font = list->font();
    option.features = QStyleOptionViewItem::WrapText;
    option.rect = list->viewport()->rect();
    int height = list->height() - list->viewport()->height();
    for (int row = 0; row < m_titles->rowCount(); ++row)
        height += list->itemDelegate()->sizeHint(option, m_titles->index(row)).height();
    return height;
}

void tab_preference::fold()
{
    const bool isFolded = m_ui->scrollArea->viewport()->width() < leastWidth(false);
    m_ui->horizontalLayout->setDirection(isFolded ? QBoxLayout::TopToBottom : QBoxLayout::LeftToRight);
    m_ui->listView->setMinimumHeight(isFolded ? heightOfRows() : listHeight);
    m_ui->listView->setMaximumHeight(isFolded ? heightOfRows() : QWIDGETSIZE_MAX);
}

void tab_preference::followInMainWindow()
{
    QWidget *window = ancestorNamed(*this, QLatin1String("DlgCustomizationTool_v2"));
    if (!window)
        return;
    // By name, because pages know nothing of the window's class.
    const int slot = window->metaObject()->indexOfSlot("On_ReloadInformation()");
    if (slot < 0)
        return;
    connect(this, QMetaMethod::fromSignal(&tab_preference::sig_reloadinformation), window,
            window->metaObject()->method(slot), Qt::UniqueConnection);
}

CHandler_Preference::CHandler_Preference(bool editor)
    : MainPageHandler(Product::of(editor),
                      {3, tr("Preferences"), QStringLiteral("Preferences.html"), PageFacts::Products::Both,
                       QStringLiteral("Preferences"), tr("Allow you to customize some basic settings."),
                       QStringLiteral(":/img/preference.png")})
{
}

QVariant CHandler_Preference::GetProperty(const QString &objectName)
{
    const QVariant value = MainPageHandler::GetProperty(objectName);
    if (value.isValid() || !page())
        return value;
    return page()->GetProperty(objectName);
}

QString CHandler_Preference::GetInfoName()
{
    const std::shared_ptr<IPreferenceHandler> current = page() ? page()->GetCurrentHandler() : nullptr;
    const QString anchor = current ? current->GetInfoAnchorId() : QString();
    if (anchor.isEmpty())
        return MainPageHandler::GetInfoName();
    return encodedHelpPage(QStringLiteral("%1#%2").arg(facts().help, anchor));
}

tab_preference *CHandler_Preference::makePage() const
{
    auto *made = new tab_preference(isEditor(), nullptr);
    made->Register(std::make_shared<CHandler_Prefer_Advertisement>(isEditor()));
    made->Register(std::make_shared<CHandler_Prefer_AIP>(isEditor()));
    made->Register(std::make_shared<CHandler_Prefer_LoginDomain>(isEditor()));
    made->Register(std::make_shared<CHandler_Prefer_IManage>(isEditor()));
    made->Register(std::make_shared<CHandler_Prefer_MyApps>(isEditor()));
    made->Register(std::make_shared<CHandler_Prefer_Security>(isEditor()));
    made->Register(std::make_shared<CHandler_Prefer_StartPage>(isEditor()));
    return made;
}

void CHandler_Preference::fillPage(tab_preference &page, const EditorXmlData &data)
{
    page.ImportProperty(data);
}
