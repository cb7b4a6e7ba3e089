// SPDX-License-Identifier: Apache-2.0
#include "pages/ribbonset/HiddenItemDelegate.h"

namespace {

const QColor faintInk(0x5B, 0x5F, 0x66);

Qt::CheckState stateOf(const QModelIndex &index)
{
    return static_cast<Qt::CheckState>(index.data(Qt::CheckStateRole).toInt());
}

/// The hidden ones among the lowest items below one.
int hiddenBelow(const QModelIndex &index)
{
    int hidden = 0;
    for (int row = 0; row < index.model()->rowCount(index); ++row) {
        const QModelIndex child = index.model()->index(row, 0, index);
        const bool isLowest = index.model()->rowCount(child) == 0;
        hidden += isLowest ? int(stateOf(child) == Qt::Checked) : hiddenBelow(child);
    }
    return hidden;
}

} // namespace

void HiddenItemDelegate::initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const
{
    QStyledItemDelegate::initStyleOption(option, index);
    const Qt::CheckState state = stateOf(index);
    option->font.setStrikeOut(state == Qt::Checked);
    option->font.setItalic(state == Qt::PartiallyChecked);
    if (state == Qt::Checked)
        option->palette.setColor(QPalette::Text, faintInk);
    if (const int hidden = hiddenBelow(index))
        option->text += QStringLiteral("  ") + tr("(%n hidden)", nullptr, hidden);
}
