// SPDX-License-Identifier: Apache-2.0
#include "tests/app/looks/ShownTexts.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QStyle>
#include <QStyleOption>
#include <QTextEdit>

namespace {

QRect contentsOf(const QWidget &button, QStyle::SubElement element)
{
    QStyleOptionButton option;
    option.initFrom(&button);
    return button.style()->subElementRect(element, &option, &button);
}

QRect titleOf(const QGroupBox &box)
{
    QStyleOptionGroupBox option;
    option.initFrom(&box);
    option.text = box.title();
    option.lineWidth = 1;
    option.subControls = QStyle::SC_GroupBoxFrame | QStyle::SC_GroupBoxLabel;
    return box.style()->subControlRect(QStyle::CC_GroupBox, &option, QStyle::SC_GroupBoxLabel, &box);
}

QRect fieldOf(const QComboBox &box)
{
    QStyleOptionComboBox option;
    option.initFrom(&box);
    return box.style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, &box);
}

/// Beside the icon, where there is one.
QRect textOf(const QAbstractButton &button)
{
    if (qobject_cast<const QCheckBox *>(&button))
        return contentsOf(button, QStyle::SE_CheckBoxContents);
    if (qobject_cast<const QRadioButton *>(&button))
        return contentsOf(button, QStyle::SE_RadioButtonContents);
    const int icon = button.icon().isNull() ? 0 : button.width() / 3;
    const bool mirrored = button.layoutDirection() == Qt::RightToLeft;
    return button.rect().adjusted(mirrored ? 4 : 4 + icon, 4, mirrored ? -4 - icon : -4, -4);
}

QList<ShownText> rowsOf(QAbstractItemView &view)
{
    QList<ShownText> texts;
    const QAbstractItemModel &model = *view.model();
    for (int row = 0; row < model.rowCount(view.rootIndex()); ++row) {
        const QModelIndex index = model.index(row, 0, view.rootIndex());
        const QRect rect = view.visualRect(index) & view.viewport()->rect();
        if (!rect.isEmpty() && !view.indexWidget(index))
            texts += {view.viewport(), index.data().toString(), rect.adjusted(1, 1, -1, -1)};
    }
    return texts;
}

QString visibleTextOf(const QLineEdit &edit)
{
    return edit.text().isEmpty() ? edit.placeholderText() : edit.text();
}

QList<ShownText> textsOf(QWidget *widget)
{
    if (auto *label = qobject_cast<QLabel *>(widget))
        return {{label, label->text(), label->contentsRect()}};
    if (auto *button = qobject_cast<QAbstractButton *>(widget))
        return {{button, button->text(), textOf(*button)}};
    if (auto *group = qobject_cast<QGroupBox *>(widget))
        return {{group, group->title(), titleOf(*group)}};
    if (auto *box = qobject_cast<QComboBox *>(widget))
        return {{box, box->currentText(), fieldOf(*box)}};
    if (auto *line = qobject_cast<QLineEdit *>(widget))
        return {{line, visibleTextOf(*line), line->rect().adjusted(4, 4, -4, -4)}};
    if (auto *edit = qobject_cast<QTextEdit *>(widget))
        return {{edit->viewport(), edit->toPlainText(), edit->viewport()->rect()}};
    if (auto *view = qobject_cast<QAbstractItemView *>(widget))
        return view->model() ? rowsOf(*view) : QList<ShownText>();
    return {};
}

} // namespace

QList<ShownText> shownTextsIn(QWidget &window)
{
    QList<ShownText> shown;
    for (QWidget *widget : window.findChildren<QWidget *>()) {
        if (!widget->isVisible())
            continue;
        for (const ShownText &text : textsOf(widget)) {
            if (!text.text.trimmed().isEmpty())
                shown += text;
        }
    }
    return shown;
}

QRect seenPartOf(const ShownText &text, const QWidget &window)
{
    const QRect seen = text.rect & text.widget->visibleRegion().boundingRect();
    return {text.widget->mapTo(&window, seen.topLeft()), seen.size()};
}
