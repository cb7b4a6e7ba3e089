// SPDX-License-Identifier: Apache-2.0
#include "tests/app/looks/Controls.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QButtonGroup>
#include <QComboBox>
#include <QHeaderView>
#include <QLineEdit>
#include <QListWidget>
#include <QTextEdit>

namespace {

bool isPartOfAnother(const QWidget *widget)
{
    const QWidget *parent = widget->parentWidget();
    return qobject_cast<const QLineEdit *>(parent) || qobject_cast<const QComboBox *>(parent) ||
           qobject_cast<const QHeaderView *>(widget) || widget->inherits("QTableCornerButton");
}

/// A list whose rows are controls themselves.
bool isFrame(const QWidget *widget)
{
    const auto *list = qobject_cast<const QListWidget *>(widget);
    return list && list->itemWidget(list->item(0));
}

bool isControl(const QWidget *widget)
{
    return qobject_cast<const QAbstractButton *>(widget) || qobject_cast<const QComboBox *>(widget) ||
           qobject_cast<const QLineEdit *>(widget) || qobject_cast<const QTextEdit *>(widget) ||
           qobject_cast<const QAbstractItemView *>(widget);
}

} // namespace

QWidgetList controlsIn(const QWidget &window)
{
    QWidgetList controls;
    for (QWidget *widget : window.findChildren<QWidget *>()) {
        if (widget->isVisible() && isControl(widget) && !isPartOfAnother(widget) && !isFrame(widget))
            controls += widget;
    }
    return controls;
}

bool isReachedByArrows(const QWidget *control)
{
    const auto *button = qobject_cast<const QAbstractButton *>(control);
    return button && (button->autoExclusive() || (button->group() && button->group()->exclusive()));
}

QString callOf(const QWidget *widget)
{
    if (!widget)
        return QStringLiteral("nothing");
    const QString name = widget->objectName();
    return name.isEmpty() ? QString::fromLatin1(widget->metaObject()->className()) : name;
}
