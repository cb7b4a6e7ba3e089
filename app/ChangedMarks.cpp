// SPDX-License-Identifier: Apache-2.0
#include "app/ChangedMarks.h"

#include "config/ProductSettings.h"
#include "pages/PXCheckBox.h"
#include "pages/ribbonset/tab_ribbonset_ribcate.h"
#include "pages/ribbonset/tab_ribbonset_tabelem.h"
#include "pages/WidgetProperty.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QMenu>
#include <QPainter>
#include <QTableView>
#include <QTextEdit>
#include <QTreeWidget>

#include <algorithm>
#include <memory>

namespace {

constexpr int dotSize = 6;
constexpr int dotDistance = 3;

class Dot : public QWidget
{
public:
    explicit Dot(QWidget *parent)
        : QWidget(parent)
    {
        setObjectName(QStringLiteral("changed"));
        setAttribute(Qt::WA_TransparentForMouseEvents);
        resize(dotSize, dotSize);
        hide();
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        painter.setBrush(palette().color(QPalette::Highlight));
        painter.drawEllipse(rect());
    }
};

/// The tree on the sub-page of a class, or null.
template <class SubPage> QWidget *treeOn(const QWidget &page)
{
    const auto *subPage = page.findChild<SubPage *>();
    return subPage ? subPage->template findChild<QTreeWidget *>() : nullptr;
}

/// The control that stands for a setting on a page, or null.
QWidget *controlOf(const Setting &setting, const QWidget &page)
{
    if (!setting.control.name.isEmpty())
        return page.findChild<QWidget *>(setting.control.name);
    if (setting.place.section == Setting::Section::Ribbon)
        return treeOn<tab_ribbonset_ribcate>(page);
    if (setting.place.section == Setting::Section::QuickAccessBar)
        return treeOn<tab_ribbonset_tabelem>(page);
    return nullptr;
}

/// A text field's own menu, or an empty one.
std::unique_ptr<QMenu> menuFor(QWidget *control)
{
    if (auto *edit = qobject_cast<QTextEdit *>(control))
        return std::unique_ptr<QMenu>(edit->createStandardContextMenu());
    return std::make_unique<QMenu>(control);
}

} // namespace

bool differsFromDefault(const Setting &setting, const EditorXmlData &onPages, const Product &product)
{
    const EditorXmlData defaults = settingsForProduct(EditorXmlData(), product);
    if (sameValue(setting, onPages, defaults))
        return false;
    const bool isElement = std::holds_alternative<QDomElement EditorXmlData::*>(setting.member);
    const auto text = setting.document.text;
    return isElement || !text || text(onPages) != text(defaults);
}

ChangedMarks::ChangedMarks(const Product &product, const std::function<EditorXmlData()> &settingsOnPages,
                           QObject *parent)
    : QObject(parent)
    , m_product(product)
    , m_settingsOnPages(settingsOnPages)
{
    // Once for all that one click or one import changes.
    m_soon.setSingleShot(true);
    m_soon.setInterval(0);
    connect(&m_soon, &QTimer::timeout, this, &ChangedMarks::look);
}

void ChangedMarks::watch(QWidget *page)
{
    for (const Setting &setting : settings()) {
        if (QWidget *control = controlOf(setting, *page))
            mark(setting, control);
    }
}

void ChangedMarks::mark(const Setting &setting, QWidget *control)
{
    m_marks.push_back({&setting, control, new Dot(control->parentWidget()), false});
    control->installEventFilter(this);
    if (auto *area = qobject_cast<QAbstractScrollArea *>(control))
        area->viewport()->installEventFilter(this);
    listenTo(control);
}

void ChangedMarks::listenTo(QWidget *control)
{
    const auto soon = [this] { m_soon.start(); };
    if (auto *button = qobject_cast<QAbstractButton *>(control))
        connect(button, &QAbstractButton::toggled, this, soon);
    if (auto *list = qobject_cast<QComboBox *>(control))
        connect(list, QOverload<int>::of(&QComboBox::currentIndexChanged), this, soon);
    if (auto *edit = qobject_cast<QTextEdit *>(control))
        connect(edit->document(), &QTextDocument::contentsChanged, this, soon);
    for (PXCheckBox *box : control->findChildren<PXCheckBox *>())
        connect(box, &PXCheckBox::toggled, this, soon);
    auto *view = qobject_cast<QAbstractItemView *>(control);
    if (!view)
        return;
    connect(view->model(), &QAbstractItemModel::dataChanged, this, soon);
    connect(view->model(), &QAbstractItemModel::rowsInserted, this, soon);
    connect(view->model(), &QAbstractItemModel::rowsRemoved, this, soon);
}

int ChangedMarks::countOn(const QWidget *page) const
{
    return static_cast<int>(std::count_if(m_marks.begin(), m_marks.end(), [page](const Mark &mark) {
        return mark.differs && mark.control && page->isAncestorOf(mark.control);
    }));
}

void ChangedMarks::look()
{
    const EditorXmlData shown = m_settingsOnPages();
    for (Mark &mark : m_marks) {
        mark.differs = differsFromDefault(*mark.setting, shown, m_product);
        place(mark);
    }
    emit looked();
}

void ChangedMarks::place(const Mark &mark) const
{
    if (!mark.control || !mark.dot)
        return;
    const QRect control = mark.control->geometry();
    const bool fromTheRight = mark.control->isRightToLeft();
    // Within its edge where there is no margin.
    const int x = fromTheRight
                      ? std::min(control.right() + dotDistance, mark.dot->parentWidget()->width() - dotSize)
                      : std::max(control.left() - dotDistance - dotSize, 0);
    // A tall control has it beside its first line.
    mark.dot->move(x, control.top() + std::min(control.height() - dotSize, 16) / 2);
    mark.dot->setVisible(mark.differs && !mark.control->isHidden());
}

bool ChangedMarks::eventFilter(QObject *watched, QEvent *event)
{
    for (const Mark &mark : m_marks) {
        const auto *area = qobject_cast<const QAbstractScrollArea *>(mark.control.data());
        if (watched != mark.control && !(area && watched == area->viewport()))
            continue;
        if (event->type() == QEvent::Move || event->type() == QEvent::Resize)
            place(mark);
        if (event->type() == QEvent::ContextMenu) {
            offerReset(mark, static_cast<QContextMenuEvent *>(event)->globalPos());
            return true;
        }
    }
    return QObject::eventFilter(watched, event);
}

void ChangedMarks::offerReset(const Mark &mark, const QPoint &position)
{
    const std::unique_ptr<QMenu> menu = menuFor(mark.control);
    QAction *action = menu->addAction(tr("Reset to Default"));
    action->setEnabled(mark.differs);
    connect(action, &QAction::triggered, this, [mark] { resetControl(mark); });
    menu->exec(position);
}

void ChangedMarks::resetControl(const Mark &mark)
{
    if (auto *tree = qobject_cast<QTreeWidget *>(mark.control.data())) {
        for (int i = 0; i < tree->topLevelItemCount(); ++i)
            tree->topLevelItem(i)->setCheckState(0, Qt::Unchecked);
        return;
    }
    for (PXCheckBox *box : mark.control->findChildren<PXCheckBox *>())
        box->setCheckState(Qt::Unchecked);
    if (auto *view = qobject_cast<QTableView *>(mark.control.data()))
        view->model()->removeRows(0, view->model()->rowCount());
    const auto toVariant = [](const auto &value) { return QVariant(value); };
    const QVariant value = std::visit(toVariant, mark.setting->control.shown(EditorXmlData()));
    SetWidgetProperty(mark.control->parentWidget(), mark.setting->control.name, value);
}
