// SPDX-License-Identifier: Apache-2.0
#include "tests/app/looks/Clipping.h"

#include "app/CPDF_Waiting.h"
#include "tests/app/looks/Controls.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QScrollArea>
#include <QSplitter>
#include <QStyle>

namespace {

bool fitsWrapped(const QLabel &label)
{
    return label.height() >= label.heightForWidth(label.width()) &&
           label.width() >= label.minimumSizeHint().width();
}

bool fitsOnALine(const QLabel &label)
{
    const QSize text = label.textFormat() == Qt::RichText || label.text().isEmpty()
                           ? label.sizeHint()
                           : label.fontMetrics().size(0, label.text());
    return label.width() >= text.width() && label.height() >= text.height();
}

/// Whether the box that is a button's or a title's is as large as it asks for.
bool hasItsSize(const QWidget &widget)
{
    const QSize wanted =
        qobject_cast<const QGroupBox *>(&widget) ? widget.minimumSizeHint() : widget.sizeHint();
    return widget.width() >= wanted.width() && widget.height() >= wanted.height();
}

bool fitsTheChosen(const QComboBox &box)
{
    QStyleOptionComboBox option;
    option.initFrom(&box);
    const QRect field =
        box.style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, &box);
    return field.width() >= box.fontMetrics().horizontalAdvance(box.currentText());
}

/// The rows of a list that breaks the lines of its titles.
bool fitsItsRows(const QListView &list)
{
    if (!list.wordWrap())
        return true;
    for (int row = 0; row < list.model()->rowCount(); ++row) {
        const QModelIndex index = list.model()->index(row, 0);
        const QRect rect = list.visualRect(index);
        if (rect.width() < list.sizeHintForIndex(index).width() && rect.width() > list.viewport()->width())
            return false;
        if (rect.height() < list.sizeHintForIndex(index).height())
            return false;
    }
    return true;
}

bool fits(const QWidget &widget)
{
    if (const auto *label = qobject_cast<const QLabel *>(&widget))
        return label->wordWrap() ? fitsWrapped(*label) : fitsOnALine(*label);
    if (const auto *box = qobject_cast<const QComboBox *>(&widget))
        return fitsTheChosen(*box);
    if (const auto *list = qobject_cast<const QListView *>(&widget))
        return fitsItsRows(*list);
    if (qobject_cast<const QAbstractButton *>(&widget) || qobject_cast<const QGroupBox *>(&widget))
        return hasItsSize(widget);
    return true;
}

/// An area that shows what it cuts off when it is scrolled.
bool scrolls(const QWidget &viewport)
{
    const auto *area = qobject_cast<const QAbstractScrollArea *>(viewport.parentWidget());
    return area && area->viewport() == &viewport;
}

/// Part of a splitter that is closed.
bool isClosed(const QWidget &widget)
{
    for (const QWidget *part = &widget; part->parentWidget(); part = part->parentWidget()) {
        const auto *splitter = qobject_cast<const QSplitter *>(part->parentWidget());
        const int index = splitter ? splitter->indexOf(const_cast<QWidget *>(part)) : -1;
        if (index >= 0 && splitter->sizes().at(index) == 0)
            return true;
    }
    return false;
}

/// Read from right to left, a splitter puts its first part where the handle of the closed one would be.
QRect roomIn(const QWidget &parent)
{
    const int handle = parent.isRightToLeft() ? parent.style()->pixelMetric(QStyle::PM_SplitterWidth) : 0;
    return parent.rect().adjusted(-handle, 0, handle, 0);
}

/// The widget that cuts another one off; null when all of it can be seen.
const QWidget *cutOffBy(const QWidget &widget)
{
    for (const QWidget *parent = widget.parentWidget(); parent; parent = parent->parentWidget()) {
        if (scrolls(*parent))
            return nullptr;
        if (!roomIn(*parent).contains(QRect(widget.mapTo(parent, QPoint()), widget.size())))
            return parent;
        if (parent->isWindow())
            return nullptr;
    }
    return nullptr;
}

/// Dots and the scroll bar of a page stand in margins.
bool mayLieOnOthers(const QWidget &widget)
{
    return qobject_cast<const CPDF_Waiting *>(&widget) || qobject_cast<const QSplitterHandle *>(&widget) ||
           widget.objectName() == QLatin1String("changed") ||
           widget.objectName() == QLatin1String("qt_scrollarea_vcontainer") || widget.inherits("QSizeGrip") ||
           widget.inherits("QFocusFrame");
}

QStringList overlapsWithin(const QWidget &parent)
{
    QWidgetList children;
    for (QWidget *child : parent.findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly)) {
        if (child->isVisible() && !child->isWindow() && !mayLieOnOthers(*child))
            children += child;
    }
    QStringList complaints;
    for (int i = 0; i < children.size(); ++i) {
        for (int j = i + 1; j < children.size(); ++j) {
            if (children[i]->geometry().intersects(children[j]->geometry()))
                complaints += callOf(children[i]) + QStringLiteral(" lies on ") + callOf(children[j]);
        }
    }
    return complaints;
}

/// What Qt's own widgets do within themselves is not looked at.
bool isOurs(const QWidget &widget)
{
    const QWidget *parent = widget.parentWidget();
    return !widget.objectName().startsWith(QLatin1String("qt_")) &&
           !qobject_cast<const QLineEdit *>(parent) && !qobject_cast<const QComboBox *>(parent) &&
           !parent->inherits("QTableView") && !widget.inherits("QHeaderView");
}

} // namespace

QStringList clippedIn(const QWidget &window)
{
    QStringList complaints = overlapsWithin(window);
    for (const QWidget *widget : window.findChildren<QWidget *>()) {
        if (!widget->isVisible() || !isOurs(*widget) || isClosed(*widget))
            continue;
        if (!fits(*widget))
            complaints += callOf(widget) + QStringLiteral(" is too small for its text");
        if (const QWidget *cutter = cutOffBy(*widget))
            complaints += callOf(widget) + QStringLiteral(" sticks out of ") + callOf(cutter);
        if (!qobject_cast<const QLabel *>(widget) && !qobject_cast<const QComboBox *>(widget))
            complaints += overlapsWithin(*widget);
    }
    return complaints;
}
